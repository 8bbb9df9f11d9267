#pragma once

#include <KelStd/text/TextDecoder.h>

#include <QtCore/QByteArray>

#include <optional>

namespace KelStd::cli {

/// What programs write as text, as UTF-8 with line feeds: UTF-16 behind its byte-order mark, as
/// spreadsheets write "Unicode text", and lines that a carriage return alone ends. Other bytes are
/// left as they are.
class InputText
{
public:
    /// Turns the bytes behind `from`, which follow those of the calls before, into such text.
    /// `bytes` holds at least what stands behind the last line end. `isAtEnd`: no more follow.
    void normalise(QByteArray &bytes, qsizetype from, bool isAtEnd);

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
    LineEnds m_ends = LineEnds::NotKnown;
};

} // namespace KelStd::cli
