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
            m_heading = m_job.begin({m_parser.hasNames(), m_parser.carriedHeadings(), {}});
        switch (read) {
        case positions::PositionParser::Result::Nothing: break;
        case positions::PositionParser::Result::Position:
            m_maker.take(result, {m_parser.position(), m_parser.name(), m_parser.carried()},
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

BlockResult BlockWork::finish()
{
    BlockResult result;
    result.hasBadHeader = !m_parser.finish();
    if (result.hasBadHeader)
        result.messages.push_back({0, m_parser.reasonLine(), m_parser.reason()});
    m_heading = m_job.begin({m_parser.hasNames(), m_parser.carriedHeadings(), {}});
    return result;
}

} // namespace KelStd::cli
