#pragma once

#include <KelStd/coord/Pos.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace KelStd::cli {

namespace streams {
class StopRequests;
}

/// A position of a source that is no list of lines, or the reason why there is none. Texts are
/// UTF-8.
struct SourceRecord
{
    qint64 number = 0; ///< in the source, for messages; not smaller than that of the one before
    QString inputName; ///< what messages call the input that it is of; empty: as the source
    Pos position;      ///< in the frame of the run
    QByteArray name;
    std::vector<QByteArray> carried; ///< one for each heading
    std::vector<QByteArray> extras;  ///< one for each extra column; null where there is no value
    QByteArray heightReference;      ///< as `ReadPosition` has it
    QString failure;                 ///< why it is no position; empty when it is one
    QByteArray source;               ///< what is kept of one that fails, without its line's end
};

/// Gives positions one after the other, such as the epochs of a receiver or the features of a
/// layer. Used by one thread.
class RecordSource
{
public:
    enum class Result
    {
        Record,
        End,
        Error ///< `errorText` says why; nothing follows
    };

    RecordSource() = default;
    virtual ~RecordSource() = default;
    RecordSource(const RecordSource &) = delete;
    RecordSource &operator=(const RecordSource &) = delete;

    /// What messages call it, and one of what it gives: "feature".
    virtual QString displayName() const = 0;
    virtual QString item() const = 0;

    /// What its records have besides their positions; known before the first one.
    virtual positions::InputColumns columns() const = 0;

    /// What stands above what is kept of records that fail.
    virtual QByteArray headerLine() const { return {}; }

    /// From now on a request to stop ends the source; null for none. It must outlive the reading.
    virtual void endAt(const streams::StopRequests *stop) = 0;

    /// Whether such a request was made.
    virtual bool isStopped() const = 0;

    /// Whether `next` does not have to wait for whoever makes the records.
    virtual bool isReady() = 0;

    virtual Result next(SourceRecord &record) = 0;

    /// Whether what it has given cannot be had again, as of an instrument: a run that is stopped,
    /// or whose source fails, keeps the file of what came before then.
    virtual bool isLive() const { return false; }
    virtual QString errorText() const = 0;

    /// How far a bar can show the run to be: a size, and how much of it is done. Nothing where the
    /// size is not known.
    virtual std::optional<qint64> size() const { return {}; }
    virtual qint64 done() const { return 0; }

    /// What is to be said at the end.
    virtual QStringList remarks() const { return {}; }
};

} // namespace KelStd::cli
