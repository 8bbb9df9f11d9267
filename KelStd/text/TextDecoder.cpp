#include <KelStd/text/TextDecoder.h>

#include <QTextCodec> // of QtCore in Qt 5, of QtCore5Compat in Qt 6

#include <algorithm>

namespace KelStd {

class TextDecoder::Codec
{
public:
    Codec(const QByteArray &encoding, Mark mark)
        : m_codec(QTextCodec::codecForName(encoding)),
          m_state(mark == Mark::Kept ? QTextCodec::IgnoreHeader : QTextCodec::DefaultConversion)
    {}
    bool isKnown() const { return m_codec != nullptr; }
    QString decode(const char *bytes, qsizetype size)
    {
        return m_codec == nullptr ? QString()
                                  : m_codec->toUnicode(bytes, static_cast<int>(size), &m_state);
    }
    bool hasFoundDamage() const { return m_state.invalidChars > 0; }
    bool isInsideCharacter() const { return m_state.remainingChars > 0; }

private:
    QTextCodec *m_codec;
    QTextCodec::ConverterState m_state;
};

TextDecoder::TextDecoder(const QByteArray &encoding, Mark mark)
    : m_codec(std::make_unique<Codec>(encoding, mark))
{}

TextDecoder::~TextDecoder() = default;
TextDecoder::TextDecoder(TextDecoder &&) noexcept = default;
TextDecoder &TextDecoder::operator=(TextDecoder &&) noexcept = default;

bool TextDecoder::isKnown() const
{
    return m_codec->isKnown();
}

QString TextDecoder::decode(const char *bytes, qsizetype size)
{
    return m_codec->decode(bytes, size);
}

bool TextDecoder::hasFoundDamage() const
{
    return m_codec->hasFoundDamage();
}

bool TextDecoder::isInsideCharacter() const
{
    return m_codec->isInsideCharacter();
}

QByteArray encodingOfMark(const QByteArray &bytes)
{
    // The marks of UTF-32 before those of UTF-16, which one of them begins with.
    static const struct
    {
        QByteArray mark;
        const char *encoding;
    } rows[] = {
        {QByteArray("\xFF\xFE\0\0", 4), "UTF-32LE"},
        {QByteArray("\0\0\xFE\xFF", 4), "UTF-32BE"},
        {"\xFF\xFE", "UTF-16LE"},
        {"\xFE\xFF", "UTF-16BE"},
        {"\xEF\xBB\xBF", "UTF-8"},
    };
    for (const auto &row : rows) {
        if (bytes.startsWith(row.mark))
            return row.encoding;
    }
    return {};
}

bool isUtf8(const char *bytes, qsizetype size)
{
    // Nearly all texts are of ASCII alone.
    if (std::all_of(bytes, bytes + size, [](char c) { return c > 0; }))
        return true;
    TextDecoder decoder("UTF-8");
    decoder.decode(bytes, size);
    return !decoder.hasFoundDamage() && !decoder.isInsideCharacter();
}

} // namespace KelStd
