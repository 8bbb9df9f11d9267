#include <KelStd/positions/CsvWriter.h>

#include <KelStd/positions/Columns.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

bool isCommon(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'
           || c == '-' || c == '.' || c == '/';
}

QString csvField(const QString &text)
{
    // A leading # would make a comment of the line, a semicolon another separator, for whoever
    // reads it back.
    const QString special = QStringLiteral(",;\"\t\r\n");
    const bool needsQuotes = text.startsWith(QLatin1Char('#')) || text.trimmed() != text
                             || std::any_of(text.cbegin(), text.cend(),
                                            [&special](QChar c) { return special.contains(c); });
    if (!needsQuotes)
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\""))
           + QLatin1Char('"');
}

} // namespace

void appendCsvField(QByteArray &bytes, std::string_view text)
{
    const int size = static_cast<int>(text.size());
    if (std::all_of(text.begin(), text.end(), isCommon))
        bytes.append(text.data(), size);
    else
        bytes += csvField(QString::fromUtf8(text.data(), size)).toUtf8();
}

QStringList columnNames(const LocationPrinter &printer, const InputColumns &columns)
{
    QStringList names = {QStringLiteral("point")};
    for (const Column &column : positions::columns())
        names += printer.csvName(column);
    names += QStringLiteral("local_height_reference");
    for (const QString &heading : columns.carried) {
        QString name = heading;
        for (int number = 2; names.contains(name); ++number)
            name = QStringLiteral("%1_%2").arg(heading).arg(number);
        names += name;
    }
    return names;
}

QByteArray CsvWriter::begin(const InputColumns &columns)
{
    if (!m_hasHeader)
        return {};
    QByteArray heading;
    for (const QString &name : columnNames(m_printer, columns)) {
        if (!heading.isEmpty())
            heading += ',';
        const QByteArray text = name.toUtf8();
        appendCsvField(heading, {text.constData(), static_cast<std::size_t>(text.size())});
    }
    return heading + '\n';
}

void CsvWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    appendCsvField(bytes, position.name);
    for (const Column &column : columns()) {
        bytes += ',';
        m_printer.append(bytes, column, position.location);
    }
    bytes += ',';
    if (position.geoidModel.isEmpty())
        bytes += m_ellipsoid;
    else
        bytes += csvField(heightReference(position.geoidModel)).toUtf8();
    for (const std::string_view field : position.carried) {
        bytes += ',';
        appendCsvField(bytes, field);
    }
    bytes += '\n';
}

} // namespace KelStd::positions
