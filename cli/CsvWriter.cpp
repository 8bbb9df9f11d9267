#include <cli/CsvWriter.h>

#include <cli/Columns.h>
#include <cli/Console.h>

#include <QtCore/QStringList>

#include <algorithm>

namespace KelStd::cli {

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

void CsvWriter::begin(bool /*hasNames*/)
{
    QStringList fields = {QStringLiteral("point")};
    for (const Column &column : columns())
        fields += m_printer.csvName(column);
    fields += QStringLiteral("local_height_reference");
    m_console.print(fields.join(QLatin1Char(',')));
}

void CsvWriter::write(const QString &name, const Location &location, const QString &geoidModel)
{
    QStringList fields = {csvField(name)};
    for (const Column &column : columns())
        fields += m_printer.text(column, location);
    fields += csvField(heightReference(geoidModel));
    m_console.print(fields.join(QLatin1Char(',')));
}

} // namespace KelStd::cli
