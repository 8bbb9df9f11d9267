#include <cli/run/BlockWork.h>

namespace KelStd::cli {

BlockResult BlockWork::operator()(const LineBlock &block)
{
    BlockResult result;
    result.inputBytes = block.bytes.size();
    // Four frames take some three times the room of one.
    result.output.reserve(4 * block.bytes.size());
    LineCursor cursor(block);
    while (!result.hasBadHeader && cursor.next()) {
        result.lastLine = cursor.lastLineNumber();
        if (cursor.opener() > 0) {
            m_maker.fail(result, cursor.lineNumber(), cursor.line(), pieceMistake(cursor.opener()));
            continue;
        }
        if (cursor.lineNumber() <= m_parser.skippedLines())
            m_maker.pass(result, cursor.line());
        const bool knewOrder = m_parser.knowsOrder();
        const positions::PositionParser::Result read =
            m_parser.parse(cursor.line(), cursor.lineNumber());
        if (!knewOrder && m_parser.knowsOrder() && !begin(result))
            break;
        const bool isRead = read == positions::PositionParser::Result::Position
                            || read == positions::PositionParser::Result::Nothing;
        if (isRead && m_parser.isInWindows1252() && result.firstInWindows1252 == 0)
            result.firstInWindows1252 = cursor.lineNumber();
        switch (read) {
        case positions::PositionParser::Result::Nothing: break;
        case positions::PositionParser::Result::Position:
            if (m_parser.isHeightTaken())
                ++result.heightsTaken;
            noteDecimalMark(result, cursor.lineNumber());
            if (cursor.lastLineNumber() > cursor.lineNumber())
                warnOfEnclosedLine(result);
            m_maker.take(result,
                         {m_parser.position(), m_parser.name(), m_parser.carried(),
                          positions::noFields, m_parser.heightReference()},
                         cursor.lineNumber(), cursor.line());
            break;
        case positions::PositionParser::Result::BadLine:
            m_maker.fail(result, cursor.lineNumber(), cursor.line(), m_parser.reason());
            break;
        case positions::PositionParser::Result::BadHeader:
            result.messages.push_back(
                {result.output.size(), m_parser.reasonLine(), m_parser.reason()});
            result.hasBadHeader = true;
            break;
        }
    }
    return result;
}

void BlockWork::warnOfEnclosedLine(BlockResult &result) const
{
    const qint64 line = m_parser.enclosedLine();
    if (line == 0)
        return;
    result.messages.push_back(
        {result.output.size(), line,
         QStringLiteral("warning: the line looks like a position and is none: it stands in "
                        "quotation marks that a line before it opens")});
}

void BlockWork::noteDecimalMark(BlockResult &result, qint64 line) const
{
    const auto mark = m_parser.decimalMark();
    if (mark == DecimalMark::Point && result.firstWithPoint == 0)
        result.firstWithPoint = line;
    else if (mark == DecimalMark::Comma && result.firstWithComma == 0)
        result.firstWithComma = line;
}

BlockResult BlockWork::finish()
{
    BlockResult result;
    result.hasBadHeader = !m_parser.finish();
    if (result.hasBadHeader)
        result.messages.push_back({0, m_parser.reasonLine(), m_parser.reason()});
    // An input without any line has no columns that others would have to have.
    if (m_parser.knowsOrder())
        begin(result);
    else if (!m_columns && !result.hasBadHeader)
        beginWithoutColumns(result);
    return result;
}

/// When the order of the fields is known: false where the run cannot go on with it.
bool BlockWork::begin(BlockResult &result)
{
    if (m_columns)
        m_parser.arrangeCarried(m_columns->carried);
    const positions::InputColumns columns{m_parser.hasNames(), m_parser.carriedHeadings(), {}};
    const QString mistake = m_columns ? differenceTo(columns) : m_job.mistakeIn(columns);
    if (!mistake.isEmpty()) {
        result.messages.push_back({result.output.size(), m_parser.orderLine(), mistake});
        result.hasBadHeader = true;
    } else if (!m_columns) {
        m_columns = columns;
        m_heading = m_job.begin(columns);
    }
    return mistake.isEmpty();
}

/// The heading of an input without any line.
void BlockWork::beginWithoutColumns(BlockResult &result)
{
    const QString mistake = m_job.mistakeIn({});
    if (mistake.isEmpty()) {
        m_heading = m_job.begin({});
        return;
    }
    result.messages.push_back({result.output.size(), 1, mistake});
    result.hasBadHeader = true;
}

/// Why an input with these columns cannot be taken behind the first one; empty when it can.
QString BlockWork::differenceTo(const positions::InputColumns &columns) const
{
    const auto listed = [](const QStringList &headings) {
        return headings.isEmpty() ? QStringLiteral("none") : headings.join(QLatin1String(", "));
    };
    if (columns.carried != m_columns->carried) {
        return QStringLiteral(
                   "the inputs before have other columns besides the positions (%1) than "
                   "this one (%2); put them through one by one")
            .arg(listed(m_columns->carried), listed(columns.carried));
    }
    return columns.hasNames && !m_columns->hasNames
               ? QStringLiteral("the inputs before have no names of points, as this one has; put "
                                "them through one by one")
               : QString();
}

} // namespace KelStd::cli
