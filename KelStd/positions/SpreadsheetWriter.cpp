#include <KelStd/positions/SpreadsheetWriter.h>

#include <KelStd/positions/CsvWriter.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr char lineEnd[] = "\r\n";

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

QString SpreadsheetWriter::mistakeIn(const InputColumns &columns) const
{
    return PrintedColumns(m_printer, columns, m_selection).mistake();
}

QByteArray SpreadsheetWriter::begin(const InputColumns &columns)
{
    m_columns = PrintedColumns(m_printer, columns, m_selection);
    QByteArray heading = "\xEF\xBB\xBF";
    if (!m_hasHeader)
        return heading;
    bool isFirst = true;
    for (const PrintedColumn &column : m_columns.all()) {
        if (!isFirst)
            heading += m_dialect.separator();
        isFirst = false;
        appendText(heading, viewOf(column.name.toUtf8()), false);
    }
    return heading + lineEnd;
}

void SpreadsheetWriter::write(QByteArray &bytes, const PrintedPosition &position) const
{
    using Kind = PrintedColumn::Kind;
    QByteArray buffer;
    bool isFirst = true;
    for (const PrintedColumn &column : m_columns.all()) {
        if (!isFirst)
            bytes += m_dialect.separator();
        isFirst = false;
        const Location *const location = column.locationIn(position);
        if (location == nullptr) {
            const std::string_view text = PrintedColumns::text(column, position, buffer);
            if (column.isNumber)
                appendNumber(bytes, text);
            else
                appendText(bytes, text, column.kind == Kind::Name);
            continue;
        }
        buffer.clear();
        m_printer.append(buffer, *column.component(), *location);
        // An angle with signs of degrees looks like nothing else. Its decimals are those of the
        // numbers beside it: points and commas in one line could mean two things.
        if (column.isNumber) {
            appendNumber(bytes, viewOf(buffer));
            continue;
        }
        std::replace(buffer.begin(), buffer.end(), '.', m_dialect.decimalPoint());
        appendCsvField(bytes, viewOf(buffer));
    }
    bytes += lineEnd;
}

/// Plain decimals, with the decimal sign of the dialect.
void SpreadsheetWriter::appendNumber(QByteArray &bytes, std::string_view text) const
{
    const auto start = bytes.size();
    bytes.append(text.data(), static_cast<int>(text.size()));
    std::replace(bytes.begin() + start, bytes.end(), '.', m_dialect.decimalPoint());
}

void SpreadsheetWriter::appendText(QByteArray &bytes, std::string_view text, bool isName) const
{
    const QString field = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    const bool isKept = isName ? m_dialect.keepsName(field) : m_dialect.keeps(field);
    appendCsvField(bytes, isKept ? text : viewOf(asSpreadsheetText(field).toUtf8()));
}

} // namespace KelStd::positions
