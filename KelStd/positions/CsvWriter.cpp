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

QString CsvWriter::mistakeIn(const InputColumns &columns) const
{
    return PrintedColumns(m_printer, columns, m_selection).mistake();
}

QByteArray CsvWriter::begin(const InputColumns &columns)
{
    m_columns = PrintedColumns(m_printer, columns, m_selection);
    if (!m_hasHeader)
        return {};
    QByteArray heading;
    for (const PrintedColumn &column : m_columns.all()) {
        if (!heading.isEmpty())
            heading += ',';
        const QByteArray text = column.name.toUtf8();
        appendCsvField(heading, {text.constData(), static_cast<std::size_t>(text.size())});
    }
    return heading + '\n';
}

void CsvWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    QByteArray buffer;
    for (const PrintedColumn &column : m_columns.all()) {
        if (const Location *const location = column.locationIn(position))
            m_printer.append(bytes, *column.component(), *location);
        else
            appendCsvField(bytes, PrintedColumns::text(column, position, buffer));
        bytes += ',';
    }
    if (m_columns.all().empty())
        bytes += '\n';
    else
        bytes.back() = '\n'; // in place of the last comma
}

} // namespace KelStd::positions
