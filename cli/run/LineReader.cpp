#include <cli/run/LineReader.h>

namespace KelStd::cli {

LineReader::Result LineReader::next(QByteArray &line)
{
    line.clear();
    while (!m_cursor.next()) {
        switch (m_blocks.next(m_block)) {
        case LineBlocks::Result::End: return Result::End;
        case LineBlocks::Result::Error: return Result::Error;
        case LineBlocks::Result::Block: m_cursor = LineCursor(m_block); break;
        }
    }
    if (m_cursor.isTooLong())
        return Result::TooLong;
    line = QByteArray(m_cursor.line().data(), static_cast<int>(m_cursor.line().size()));
    return Result::Line;
}

} // namespace KelStd::cli
