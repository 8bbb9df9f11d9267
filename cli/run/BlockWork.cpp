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
        result.lastLine = cursor.lineNumber();
        const bool knewOrder = m_parser.knowsOrder();
        const positions::PositionParser::Result read =
            m_parser.parse(cursor.line(), cursor.lineNumber());
        if (!knewOrder && m_parser.knowsOrder())
            m_heading = m_job.begin({m_parser.hasNames(), m_parser.carriedHeadings()});
        switch (read) {
        case positions::PositionParser::Result::Nothing: break;
        case positions::PositionParser::Result::Position: take(result, cursor); break;
        case positions::PositionParser::Result::BadLine:
            fail(result, cursor, m_parser.reason());
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

BlockResult BlockWork::finish()
{
    BlockResult result;
    result.hasBadHeader = !m_parser.finish();
    if (result.hasBadHeader)
        result.messages.push_back({0, m_parser.reasonLine(), m_parser.reason()});
    m_heading = m_job.begin({m_parser.hasNames(), m_parser.carriedHeadings()});
    return result;
}

void BlockWork::take(BlockResult &result, const LineCursor &cursor)
{
    const int size = result.output.size();
    result.output += m_separator;
    QString reason;
    const bool isTaken = m_taker->take(m_parser, result.output, reason);
    addNotices(result.notices, m_taker->notices(), cursor.lineNumber());
    if (!isTaken) {
        result.output.truncate(size);
        fail(result, cursor, reason);
        return;
    }
    ++result.taken;
    // A warning stands before what it is about.
    if (!reason.isEmpty())
        result.messages.push_back({size, cursor.lineNumber(), reason});
}

void BlockWork::fail(BlockResult &result, const LineCursor &cursor, const QString &reason)
{
    result.messages.push_back({result.output.size(), cursor.lineNumber(), reason});
    ++result.failed;
    if (m_keepsRejects) {
        const std::string_view line = cursor.line();
        result.rejects.append(line.data(), static_cast<int>(line.size()));
        result.rejects += '\n';
    }
}

} // namespace KelStd::cli
