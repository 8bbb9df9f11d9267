#pragma once

#include <KelStd/Export.h>
#include <KelStd/nmea/Sentence.h>

#include <QtCore/QtGlobal>

#include <functional>
#include <string>
#include <string_view>

namespace KelStd::nmea {

/// Finds the sentences in bytes as they come, among binary messages, blocks in front of sentences
/// and lines of another kind. It holds no more than one sentence, however long a line is.
///
/// A sentence begins with "$", or with "!" at a line's beginning, and reaches to the line's end or
/// the next "$".
class KELSTD_EXPORT SentenceScanner
{
public:
    /// Is given the text of each sentence, without the line's end, and its line from 1. The text is
    /// valid for the time of the call; one that is too long lacks what is beyond
    /// `maxSentenceBytes` + 1.
    using Taker = std::function<void(std::string_view text, qint64 line)>;

    /// Nothing is read yet.
    explicit SentenceScanner(Taker taker) : m_taker(std::move(taker)) {}

    /// Reads on; sentences that end in `bytes` are taken before the call returns.
    void feed(std::string_view bytes);

    /// At the end of the input: what was read of the last line is taken.
    void finish();

    /// Behind `finish`: another input begins, whose lines are counted from 1.
    void beginInput();

    /// The line that is being read, from 1.
    qint64 line() const { return m_line; }

    /// How many lines were neither blank nor had a sentence.
    qint64 otherLines() const { return m_otherLines; }

private:
    void endSentence();
    void endLine();
    void begin(char c);
    void append(std::string_view bytes);

    Taker m_taker;
    std::string m_text; ///< of the sentence that is being read; empty between two
    qint64 m_line = 1;
    qint64 m_otherLines = 0;
    bool m_hasSentence = false; ///< the line
    bool m_hasOther = false;    ///< the line, besides blanks
};

} // namespace KelStd::nmea
