#include <KelStd/text/TextDecoder.h>

#include <QtCore/QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#    include <QtCore/QTextCodec>
#else
#    include <QtCore/QStringDecoder>
#endif

#include <algorithm>

namespace KelStd {

// What differs between the two Qts is this class.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

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

#else

class TextDecoder::Codec : private QStringDecoder
{
public:
    Codec(const QByteArray &encoding, Mark mark)
        : QStringDecoder(encoding.constData(),
                         mark == Mark::Kept ? Flag::ConvertInitialBom : Flag::Default)
    {}
    bool isKnown() const { return isValid(); }
    QString decode(const char *bytes, qsizetype size)
    {
        if (!isValid())
            return {};
        QString text = QStringDecoder::decode(QByteArrayView(bytes, size));
        // ICU's converters of encodings in Asia put this in place of what is no text.
        constexpr QChar substitute(0x1A);
        if (hasError() && text.contains(substitute))
            text.replace(substitute, QChar(QChar::ReplacementCharacter));
        return text;
    }
    bool hasFoundDamage() const { return hasError(); }
    bool isInsideCharacter() const { return state.remainingChars > 0; }
};

#endif

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
