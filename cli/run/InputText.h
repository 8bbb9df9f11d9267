#pragma once

#include <KelStd/text/TextDecoder.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// What programs write as text, as UTF-8 with line feeds: UTF-16 behind its byte-order mark, as
/// spreadsheets write "Unicode text", and lines that a carriage return alone ends. Other bytes are
/// left as they are.
class InputText
{
public:
    /// Whether lines that a carriage return alone ends stay as they are.
    enum class LoneReturns
    {
        BecomeLineFeeds,
        AreKept
    };

    explicit InputText(LoneReturns returns = LoneReturns::BecomeLineFeeds)
        : m_ends(returns == LoneReturns::AreKept ? LineEnds::LineFeeds : LineEnds::NotKnown)
    {}

    /// Turns the bytes behind `from`, which follow those of the calls before, into such text.
    /// `bytes` holds at least what stands behind the last line end. `isAtEnd`: no more follow.
    void normalise(QByteArray &bytes, qsizetype from, bool isAtEnd);

    /// Whether so much was read that the encoding is known; until then the bytes are kept.
    bool knowsEncoding() const { return m_knowsEncoding; }

private:
    enum class LineEnds
    {
        NotKnown,
        LineFeeds, ///< also behind carriage returns
        CarriageReturns
    };

    void recogniseEncoding(QByteArray &bytes, qsizetype &from, bool isAtEnd);
    void recogniseLineEnds(const QByteArray &bytes, bool isAtEnd);

    bool m_knowsEncoding = false;
    std::optional<TextDecoder> m_decoder; ///< of UTF-16
    QString m_held;                       ///< half of a pair, which the bytes before ended in
    LineEnds m_ends;
};

} // namespace KelStd::cli
