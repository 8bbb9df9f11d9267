#include <KelStd/positions/KmlWriter.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/positions/XmlText.h>

namespace KelStd::positions {

QStringList KmlWriter::fieldNames() const
{
    // Attributes of these names are taken for the placemark's own, by GDAL at least.
    static const QStringList ofPlacemarks =
        QStringLiteral("name timestamp begin end altitudeMode tessellate extrude visibility "
                       "drawOrder")
            .split(QLatin1Char(' '));
    return numberedNames(ofPlacemarks + columnNames()).mid(ofPlacemarks.size());
}

QByteArray KmlWriter::begin(const InputColumns &columns)
{
    m_columns.take(printedColumns(columns));
    m_tags.clear();
    QByteArray heading =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document id=\"points\">\n"
        "<name>";
    appendXml(heading, m_title);
    heading += "</name>\n<Schema name=\"points\" id=\"attributes\">\n";
    const QStringList fields = fieldNames();
    for (std::size_t i = 0; i < m_columns.all().size(); ++i) {
        const PrintedColumn &column = m_columns.all()[i];
        QByteArray name;
        appendXml(name, fields.at(static_cast<int>(i)));
        heading += "<SimpleField type=\"";
        heading += column.isNumber ? "double" : "string";
        heading += "\" name=\"" + name + "\"/>\n";
        m_tags.push_back("<SimpleData name=\"" + name + "\">");
    }
    return heading + "</Schema>\n";
}

QByteArray KmlWriter::ending() const
{
    return "</Document>\n</kml>\n";
}

void KmlWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    bytes += "<Placemark>";
    if (!position.name.empty()) {
        bytes += "<name>";
        appendXml(bytes, position.name);
        bytes += "</name>";
    }
    bytes += "<ExtendedData><SchemaData schemaUrl=\"#attributes\">";
    QByteArray buffer;
    for (std::size_t i = 0; i < m_tags.size(); ++i) {
        const std::string_view text =
            AttributeColumns::text(printer(), m_columns.all()[i], position, buffer);
        if (!AttributeColumns::isValue(m_columns.all()[i], text))
            continue;
        bytes += m_tags[i];
        appendXml(bytes, text);
        bytes += "</SimpleData>";
    }
    bytes += "</SchemaData></ExtendedData><Point><coordinates>";
    const Location &location = position.location;
    appendNumber(bytes, within180(location.get_WGS84_LLH_Long()), csvAngleDecimals);
    bytes += ',';
    appendNumber(bytes, location.get_WGS84_LLH_Lat(), csvAngleDecimals);
    bytes += ',';
    appendNumber(bytes, location.get_WGS84_LLH_Height(), csvLengthDecimals);
    bytes += "</coordinates></Point></Placemark>\n";
}

} // namespace KelStd::positions
