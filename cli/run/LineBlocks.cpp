#include <cli/run/LineBlocks.h>

#include <cli/run/Input.h>
#include <cli/terminal/StandardStreams.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int pieceSize = 1 << 16;
constexpr char lineEnd = '\n';
constexpr char quotationMark = '"';

} // namespace

void LineBlocks::joinQuotedFields(qint64 skipped)
{
    m_groupsOf.emplace(skipped);
    m_isSettled = false;
}

void LineBlocks::setShape(const positions::ListShape &shape, bool isSettled)
{
    m_groupsOf->setShape(shape);
    m_isSettled = isSettled;
}

bool LineBlocks::hasLine()
{
    findEnds();
    return m_whole > 0;
}

/// Goes on through the rest to the end of its last whole line; where each line is a block, to that
/// of the first one.
void LineBlocks::findEnds()
{
    if (!m_groupsOf) {
        m_whole = static_cast<int>(m_rest.lastIndexOf(lineEnd)) + 1;
        return;
    }
    while (m_whole < m_rest.size() && (m_isSettled || m_whole == 0)) {
        if (m_isSettled) {
            // Lines without a quotation mark end where they end.
            const auto mark = m_rest.indexOf(quotationMark, m_whole);
            advance(static_cast<int>(m_rest.lastIndexOf(lineEnd, mark)) + 1);
            if (mark < 0)
                return;
        }
        // What was read of a line before a stop was requested is no line.
        const auto end = m_groupsOf->endOf(m_rest, m_whole, m_nextLine + m_wholeLines,
                                           m_isAtEnd && !m_input.isStopped(), m_groups);
        if (!end)
            return;
        advance(*end);
    }
}

/// So much of the rest is whole lines.
void LineBlocks::advance(int whole)
{
    if (whole <= m_whole)
        return;
    m_wholeLines += std::count(m_rest.cbegin() + m_whole, m_rest.cbegin() + whole, lineEnd);
    m_whole = whole;
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
    if (m_rest.size() > positions::maxLineBytes && m_rest.lastIndexOf(lineEnd) < 0) {
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
    if (m_whole == 0) {
        // What was read of a line before a stop was requested is no line.
        if (m_rest.isEmpty() || m_input.isStopped())
            return Result::End;
        m_whole = static_cast<int>(m_rest.size()); // the input's last line has no end
    }
    QByteArray bytes;
    bytes.swap(m_rest);
    m_rest = bytes.mid(m_whole);
    bytes.truncate(m_whole);
    block.firstLine = m_nextLine;
    block.groups.swap(m_groups);
    m_nextLine += m_groupsOf ? m_wholeLines : std::count(bytes.cbegin(), bytes.cend(), lineEnd);
    block.bytes = std::move(bytes);
    m_groups.clear();
    m_whole = 0;
    m_wholeLines = 0;
    return Result::Block;
}

LineCursor::LineCursor(const LineBlock &block)
    : m_size(static_cast<std::size_t>(block.bytes.size())), m_rest(block.bytes.constData(), m_size),
      m_lineNumber(block.firstLine - 1), m_group(block.groups.data()),
      m_groupsEnd(m_group + block.groups.size())
{}

bool LineCursor::next()
{
    if (m_rest.empty())
        return false;
    m_lineNumber += m_lines;
    m_lines = 1;
    m_opener = 0;
    const std::size_t end =
        m_group == m_groupsEnd ? std::min(m_rest.find(lineEnd), m_rest.size()) : endInGroups();
    m_line = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    m_isTooLong = m_line.size() > positions::maxLineBytes;
    if (!m_isTooLong && !m_line.empty() && m_line.back() == '\r')
        m_line.remove_suffix(1);
    return true;
}

/// Where the line ends at which the rest begins, of a block with groups.
std::size_t LineCursor::endInGroups()
{
    const std::size_t begin = m_size - m_rest.size();
    const auto endOfGroup = static_cast<std::size_t>(m_group->end);
    const std::size_t end = std::min(m_rest.find(lineEnd), m_rest.size());
    if (begin < static_cast<std::size_t>(m_group->begin))
        return end;
    m_opener = m_group->opener;
    if (m_opener > 0) {
        if (begin + end >= endOfGroup)
            ++m_group;
        return end;
    }
    ++m_group;
    const std::string_view line = m_rest.substr(0, endOfGroup - begin);
    m_lines += std::count(line.begin(), line.end(), lineEnd);
    return line.size();
}

} // namespace KelStd::cli
