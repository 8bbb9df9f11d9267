#include <cli/run/LineBlocks.h>

#include <cli/run/Input.h>
#include <cli/terminal/StandardStreams.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int pieceSize = 1 << 16;
constexpr char lineEnd = '\n';

} // namespace

bool LineBlocks::hasLine() const
{
    return m_rest.lastIndexOf(lineEnd) >= 0;
}

/// Appends what the input has to the rest.
void LineBlocks::read()
{
    const auto old = m_rest.size();
    m_rest.resize(old + pieceSize);
    const qint64 count = m_input.read(m_rest.data() + old, pieceSize);
    if (count < 0)
        m_error = streams::lastErrorText();
    m_isAtEnd = count <= 0;
    m_rest.resize(old + static_cast<int>(std::max<qint64>(count, 0)));
    m_text.normalise(m_rest, old, m_isAtEnd);
    if (m_isSkipping) {
        const auto end = m_rest.indexOf(lineEnd, old);
        m_isSkipping = end < 0;
        m_rest.remove(old, (m_isSkipping ? m_rest.size() : end) - old);
    }
    if (m_rest.size() > positions::maxLineBytes && !hasLine()) {
        m_rest.truncate(positions::maxLineBytes + 1);
        m_isSkipping = true;
    }
}

bool LineBlocks::isReady()
{
    while (!hasLine() && !m_isAtEnd && m_input.isReady())
        read();
    return hasLine() || m_isAtEnd;
}

LineBlocks::Result LineBlocks::next(LineBlock &block)
{
    while (!hasLine() && !m_isAtEnd)
        read();
    if (!m_error.isEmpty())
        return Result::Error;
    auto end = m_rest.lastIndexOf(lineEnd);
    if (end < 0) {
        // What was read of a line before a stop was requested is no line.
        if (m_rest.isEmpty() || m_input.isStopped())
            return Result::End;
        end = m_rest.size() - 1; // the input's last line has no end
    }
    QByteArray bytes;
    bytes.swap(m_rest);
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
    m_isTooLong = m_line.size() > positions::maxLineBytes;
    if (!m_isTooLong && !m_line.empty() && m_line.back() == '\r')
        m_line.remove_suffix(1);
    return true;
}

} // namespace KelStd::cli
