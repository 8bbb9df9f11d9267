#include <KelStd/positions/GpxWriter.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/positions/XmlText.h>

namespace KelStd::positions {

namespace {

bool maybeInName(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('-')
           || c == QLatin1Char('.');
}

QString elementName(const QString &name)
{
    QString element;
    for (const QChar c : name)
        element += maybeInName(c) && !c.isSurrogate() ? c : QLatin1Char('_');
    if (element.isEmpty() || !(element.at(0).isLetter() || element.at(0) == QLatin1Char('_')))
        element.prepend(QLatin1Char('_'));
    return element;
}

} // namespace

QStringList GpxWriter::elementNames(const QStringList &names)
{
    QStringList elements;
    for (const QString &name : names) {
        const QString plain = elementName(name);
        QString element = plain;
        for (int number = 2; elements.contains(element); ++number)
            element = QStringLiteral("%1_%2").arg(plain).arg(number);
        elements += element;
    }
    return elements;
}

QByteArray GpxWriter::begin(const InputColumns &columns)
{
    m_columns.take(printedColumns(columns));
    m_elements.clear();
    for (const QString &name : elementNames())
        m_elements.push_back("ogr:" + name.toUtf8());
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<gpx version=\"1.1\" creator=\"KelStd\" xmlns=\"http://www.topografix.com/GPX/1/1\" "
           "xmlns:ogr=\"http://osgeo.org/gdal\">\n";
}

QByteArray GpxWriter::ending() const
{
    return "</gpx>\n";
}

void GpxWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    const Location &location = position.location;
    bytes += "<wpt lat=\"";
    appendNumber(bytes, location.get_WGS84_LLH_Lat(), csvAngleDecimals);
    bytes += "\" lon=\"";
    appendNumber(bytes, within180(location.get_WGS84_LLH_Long()), csvAngleDecimals);
    bytes += "\"><ele>";
    appendNumber(bytes, location.get_WGS84_LLH_Height(), csvLengthDecimals);
    bytes += "</ele>";
    if (!position.name.empty()) {
        bytes += "<name>";
        appendXml(bytes, position.name);
        bytes += "</name>";
    }
    bytes += "<extensions>";
    QByteArray buffer;
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        const std::string_view text =
            AttributeColumns::text(printer(), m_columns.all()[i], position, buffer);
        if (!AttributeColumns::isValue(m_columns.all()[i], text))
            continue;
        bytes += '<' + m_elements[i] + '>';
        appendXml(bytes, text);
        bytes += "</" + m_elements[i] + '>';
    }
    bytes += "</extensions></wpt>\n";
}

} // namespace KelStd::positions
