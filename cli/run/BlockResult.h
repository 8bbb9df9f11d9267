#pragma once

#include <cli/run/Notices.h>
#include <cli/run/PositionJob.h>

#include <KelStd/positions/ReadPosition.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <string_view>
#include <vector>

namespace KelStd::cli {

/// What became of some positions that stand behind each other.
struct BlockResult
{
    struct Message
    {
        qint64 position; ///< how many bytes of the output stand before it
        qint64 line;
        QString text;
    };

    QString inputName; ///< of the input that they are of, where a run has several; else empty
    QByteArray output; ///< the separator before each position
    std::vector<Message> messages;
    QByteArray passed;  ///< the lines that are passed over at the beginning, where rejects are kept
    QByteArray rejects; ///< the lines that failed, as they stand
    qint64 taken = 0;
    qint64 failed = 0;
    qint64 lastLine = 0;
    qint64 inputBytes = 0;
    qint64 heightsTaken = 0; ///< by positions whose field of the height is empty
    Notices notices;
    qint64 firstInWindows1252 = 0; ///< the first line that was read so; 0 for none
    qint64 firstWithComma = 0;     ///< the first line with decimal commas; 0 for none
    qint64 firstWithPoint = 0;     ///< the same of decimal points
    bool hasBadHeader = false;     ///< its message is the last one, and the run cannot go on
};

/// Takes positions on one thread and notes what became of them.
class ResultMaker
{
public:
    ResultMaker(const PositionJob &job, bool keepsRejects)
        : m_keepsRejects(keepsRejects), m_taker(job.makeTaker()), m_separator(job.separator())
    {}

    /// `line`: its number in the input. `source`: its bytes there, for the rejects.
    void take(BlockResult &result, const positions::ReadPosition &position, qint64 line,
              std::string_view source);

    /// One that cannot be taken, with the reason.
    void fail(BlockResult &result, qint64 line, std::string_view source,
              const QString &reason) const;

    /// A line that the user has passed over, to stand above the rejects.
    void pass(BlockResult &result, std::string_view source) const;

private:
    bool m_keepsRejects;
    std::unique_ptr<PositionTaker> m_taker;
    QByteArray m_separator;
};

} // namespace KelStd::cli
