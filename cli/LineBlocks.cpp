#include <cli/LineBlocks.h>

#include <cli/Input.h>
#include <cli/StandardStreams.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int pieceSize = 1 << 16;
constexpr char lineEnd = '\n';

} // namespace

/// Appends what the input has; false at the end and on an error.
bool LineBlocks::append(QByteArray &bytes)
{
    const int old = bytes.size();
    bytes.resize(old + pieceSize);
    const qint64 count = m_input.read(bytes.data() + old, pieceSize);
    if (count < 0)
        m_error = streams::lastErrorText();
    bytes.resize(old + static_cast<int>(std::max<qint64>(count, 0)));
    if (m_isSkipping) {
        const int end = bytes.indexOf(lineEnd, old);
        m_isSkipping = end < 0;
        bytes.remove(old, (m_isSkipping ? bytes.size() : end) - old);
    }
    return count > 0;
}

LineBlocks::Result LineBlocks::next(LineBlock &block)
{
    QByteArray bytes;
    bytes.swap(m_rest);
    int end = -1; // of the last whole line
    while (end < 0) {
        if (!append(bytes)) {
            if (!m_error.isEmpty())
                return Result::Error;
            // What was read of a line before the program was told to stop is no line.
            if (bytes.isEmpty() || streams::isToldToStop())
                return Result::End;
            end = bytes.size() - 1; // the input's last line has no end
            break;
        }
        end = bytes.lastIndexOf(lineEnd);
        if (end < 0 && bytes.size() > mostBytesOfLine) {
            bytes.truncate(mostBytesOfLine + 1);
            m_isSkipping = true;
        }
    }
    m_rest = bytes.mid(end + 1);
    bytes.truncate(end + 1);
    block.firstLine = m_nextLine;
    m_nextLine += std::count(bytes.cbegin(), bytes.cend(), lineEnd);
    block.bytes = std::move(bytes);
    return Result::Block;
}

LineCursor::LineCursor(const LineBlock &block)
    : m_rest(block.bytes.constData(), static_cast<std::size_t>(block.bytes.size())),
      m_lineNumber(block.firstLine - 1)
{}

bool LineCursor::next()
{
    if (m_rest.empty())
        return false;
    ++m_lineNumber;
    const std::size_t end = std::min(m_rest.find(lineEnd), m_rest.size());
    m_line = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    m_isTooLong = m_line.size() > mostBytesOfLine;
    if (!m_isTooLong && !m_line.empty() && m_line.back() == '\r')
        m_line.remove_suffix(1);
    return true;
}

} // namespace KelStd::cli
