#pragma once

#include <KelStd/Export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>

namespace KelStd {

/// Bytes of an encoding as text, piece by piece: a character may begin in one piece and end in the
/// next. Bytes that are no text of the encoding become U+FFFD. Raises nothing. Decoders may be used
/// on any thread, each on one at a time.
///
/// The encodings are those of `QTextCodec`, which is in Qt 5 and beside Qt 6: the UTFs and Latin-1
/// always, and all that ICU has where Qt was built with it, as Debian's is.
class KELSTD_EXPORT TextDecoder
{
public:
    /// What becomes of a byte-order mark at the beginning.
    enum class Mark
    {
        Dropped, ///< no text comes of it
        Kept     ///< it comes as U+FEFF
    };

    /// \param encoding a name of it, as "UTF-8", "UTF-16LE" or "windows-1251", in any case
    explicit TextDecoder(const QByteArray &encoding, Mark mark = Mark::Dropped);
    ~TextDecoder();
    /// Takes over what the other has begun; the other may only be assigned to or destroyed then.
    TextDecoder(TextDecoder &&) noexcept;
    /// The same.
    TextDecoder &operator=(TextDecoder &&) noexcept;

    /// Whether the encoding is known. Otherwise there is no text: `decode` gives an empty one.
    bool isKnown() const;

    /// The text of the bytes that follow those of the calls before. The bytes of a character that
    /// has not ended wait for the next call.
    QString decode(const char *bytes, qsizetype size);
    /// The same.
    QString decode(const QByteArray &bytes) { return decode(bytes.constData(), bytes.size()); }

    /// Whether something so far was no text of the encoding. Known of the UTFs only.
    bool hasFoundDamage() const;

    /// Whether the last character has not ended, which at the end of the bytes is damage. Known of
    /// the UTFs only.
    bool isInsideCharacter() const;

private:
    class Codec;
    std::unique_ptr<Codec> m_codec;
};

/// The encoding that the byte-order mark at the beginning names: "UTF-8", "UTF-16LE", "UTF-16BE",
/// "UTF-32LE" or "UTF-32BE". Empty where there is none.
KELSTD_EXPORT QByteArray encodingOfMark(const QByteArray &bytes);

/// Whether the bytes are text in UTF-8.
KELSTD_EXPORT bool isUtf8(const char *bytes, qsizetype size);

} // namespace KelStd
