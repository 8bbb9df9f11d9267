#include <cli/run/InputText.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int markSize = 2; // of UTF-16

const char *encodingOf(const QByteArray &bytes)
{
    if (bytes.startsWith("\xFF\xFE"))
        return "UTF-16LE";
    return bytes.startsWith("\xFE\xFF") ? "UTF-16BE" : nullptr;
}

} // namespace

void InputText::normalise(QByteArray &bytes, qsizetype from, bool isAtEnd)
{
    if (!m_knowsEncoding)
        recogniseEncoding(bytes, from, isAtEnd);
    if (m_decoder) {
        QString text = m_held + m_decoder->decode(bytes.constData() + from, bytes.size() - from);
        m_held.clear();
        // The first half of a character is none before its other half is there.
        if (!isAtEnd && !text.isEmpty() && text.at(text.size() - 1).isHighSurrogate()) {
            m_held = text.right(1);
            text.chop(1);
        }
        // Half a character is none that could be left out.
        if (isAtEnd && m_decoder->isInsideCharacter())
            text += QChar(QChar::ReplacementCharacter);
        bytes.truncate(static_cast<int>(from));
        bytes += text.toUtf8();
    }
    if (m_ends == LineEnds::NotKnown) {
        recogniseLineEnds(bytes, isAtEnd);
        from = 0;
    }
    if (m_ends == LineEnds::CarriageReturns)
        std::replace(bytes.begin() + from, bytes.end(), '\r', '\n');
}

void InputText::recogniseEncoding(QByteArray &bytes, qsizetype &from, bool isAtEnd)
{
    if (bytes.size() < markSize && !isAtEnd)
        return;
    m_knowsEncoding = true;
    const char *encoding = encodingOf(bytes);
    if (encoding == nullptr)
        return;
    m_decoder.emplace(encoding, TextDecoder::Mark::Kept);
    bytes.remove(0, markSize);
    from = 0;
}

void InputText::recogniseLineEnds(const QByteArray &bytes, bool isAtEnd)
{
    const auto end =
        std::find_if(bytes.begin(), bytes.end(), [](char c) { return c == '\r' || c == '\n'; });
    if (end == bytes.end())
        return;
    const bool isLast = end + 1 == bytes.end();
    if (*end == '\r' && isLast && !isAtEnd)
        return; // a line feed may follow
    m_ends = *end == '\n' || isLast || *(end + 1) == '\n' ? LineEnds::LineFeeds
                                                          : LineEnds::CarriageReturns;
}

} // namespace KelStd::cli
