#include <KelStd/nmea/SentenceScanner.h>

#include <algorithm>

namespace KelStd::nmea {

namespace {

constexpr std::string_view sentenceEnds = "$\r\n";

} // namespace

void SentenceScanner::feed(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of(sentenceEnds), bytes.size());
        append(bytes.substr(0, end));
        if (end == bytes.size())
            return;
        endSentence();
        if (bytes[end] == '$')
            begin('$');
        else if (bytes[end] == '\n')
            endLine();
        bytes.remove_prefix(end + 1);
    }
}

void SentenceScanner::finish()
{
    endSentence();
    endLine();
}

void SentenceScanner::beginInput()
{
    m_line = 1;
    m_otherLines = 0;
}

void SentenceScanner::begin(char c)
{
    m_text.assign(1, c);
    m_hasSentence = true;
}

void SentenceScanner::append(std::string_view bytes)
{
    if (m_text.empty()) {
        const std::size_t first = bytes.find_first_not_of(" \t");
        if (first == std::string_view::npos)
            return;
        if (bytes[first] != '!' || m_hasOther || m_hasSentence) {
            m_hasOther = true;
            return;
        }
        begin('!');
        bytes.remove_prefix(first + 1);
    }
    const std::size_t room =
        maxSentenceBytes + 1 - std::min<std::size_t>(m_text.size(), maxSentenceBytes + 1);
    m_text.append(bytes.substr(0, room));
}

void SentenceScanner::endSentence()
{
    if (m_text.empty())
        return;
    m_taker(m_text, m_line);
    m_text.clear();
}

void SentenceScanner::endLine()
{
    if (m_hasOther && !m_hasSentence)
        ++m_otherLines;
    m_hasSentence = false;
    m_hasOther = false;
    ++m_line;
}

} // namespace KelStd::nmea
