#pragma once

#include <KelStd/Export.h>
#include <KelStd/nmea/OpenEpoch.h>
#include <KelStd/nmea/ReceiverEpoch.h>
#include <KelStd/nmea/SentenceScanner.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <deque>
#include <optional>
#include <string_view>

namespace KelStd::nmea {

/// How often something was found, and where first.
struct SentenceCount
{
    qint64 count = 0;     ///< how often
    qint64 firstLine = 0; ///< from 1; 0 for none
    QString firstReason;  ///< what was wrong there

    /// Counts one more; the first one is kept with its line and reason.
    void add(qint64 line, const QString &reason = {});
};

/// What became of an input's sentences.
struct SentenceTally
{
    qint64 used = 0;             ///< of the types that are read
    qint64 ofOtherTypes = 0;     ///< right ones, passed over
    qint64 otherLines = 0;       ///< lines that are neither blank nor hold a sentence
    SentenceCount noChecksum;    ///< broken
    SentenceCount badChecksum;   ///< broken
    SentenceCount textBehind;    ///< broken: something follows the checksum, which is right
    SentenceCount malformed;     ///< broken, though the checksum is right
    SentenceCount late;          ///< of an epoch that was given out before
    SentenceCount contradicting; ///< another position of one time, see `OpenEpoch::contradicts`
    SentenceCount otherDate;     ///< a date that contradicts another one or the time
    SentenceCount otherDatum;    ///< DTM names another datum than WGS84, which is the first reason

    /// How many sentences were broken, in any way.
    qint64 broken() const
    {
        return noChecksum.count + badChecksum.count + textBehind.count + malformed.count;
    }
};

/// Combines the sentences of a receiver to epochs, by the time that they carry.
///
///     EpochCombiner combiner;
///     while (read(bytes)) {
///         combiner.feed(bytes);
///         while (auto epoch = combiner.next())
///             use(*epoch);
///     }
///     combiner.finish();
///     while (auto epoch = combiner.next())
///         use(*epoch);
///
/// An epoch ends when a sentence of another time comes, one of another date, or `flush` is called;
/// where epochs may interleave, and where it has no height yet, when the next but one begins. What
/// comes behind that is late: it is counted and only its date is used. Sentences without a time are
/// combined until a type comes again. The talker may be any. Where several sentences of an epoch
/// give a position, one with a fix goes before one without, GGA and GNS before RMC, the better
/// quality (fixed, floating, differential or precise, single, estimated) before the worse one, the
/// talker GN (all systems together) before those of single systems, GGA before GNS, and the first
/// one before those behind it. Where it lacks the undulation, that of another sentence of the same
/// position and talker is taken. Standard deviations are those of the position's talker, else of
/// GN, else the first. The date comes from RMC or ZDA, whose full year goes before RMC's two
/// digits, and is carried on
/// (`DateKeeper`).
///
/// Epochs that say nothing of a position are not given out. Nothing is raised but `std::bad_alloc`.
class KELSTD_EXPORT EpochCombiner
{
public:
    /// How sentences of different times come.
    enum class Order
    {
        InTurn,       ///< an epoch ends where another one begins, as one that is waited for should
        MayInterleave ///< those of two epochs may be mixed, as in a file
    };

    /// Nothing is read yet.
    explicit EpochCombiner(Order order = Order::InTurn);
    EpochCombiner(const EpochCombiner &) = delete;
    EpochCombiner &operator=(const EpochCombiner &) = delete;

    /// Takes bytes of the input, cut anywhere.
    void feed(std::string_view bytes) { m_scanner.feed(bytes); }

    /// Ends the epoch, for a receiver that has been silent: what it says of the same time
    /// afterwards comes late. An epoch without GGA and GNS is not ended, which may yet come, and a
    /// sentence that is not yet whole is waited for.
    void flush();

    /// Ends the input.
    void finish();

    /// Ends the input, and begins another one of the same receiver: epochs are counted on, lines
    /// and sentences anew, and a date is carried on where the time of day goes on.
    void beginInput();

    /// Ends the input where it is no longer read: a sentence that is not yet whole is none.
    void abandon();

    /// The oldest epoch that has ended and was not yet given out; nothing where there is none.
    std::optional<ReceiverEpoch> next();

    /// Whether `flush` would end an epoch.
    bool canFlush() const;

    /// The line that is being read, from 1.
    qint64 line() const { return m_scanner.line(); }

    /// What became of the sentences up to here.
    SentenceTally tally() const;

private:
    void takeText(std::string_view text, qint64 line);
    void take(Message message, std::string_view text, qint64 line);
    OpenEpoch *openEpochOf(const Message &message);
    bool comesLate(const Message &message) const;
    void endSurplus();
    void endEpoch();
    std::optional<QDate> dateOf(const TimeOfDay &time, const std::optional<ReceivedDate> &date,
                                qint64 line);

    Order m_order;
    SentenceScanner m_scanner;
    std::deque<OpenEpoch> m_open;   ///< in the order in which they began; two at most
    std::deque<OpenEpoch> m_recent; ///< that have ended, some of the last ones
    DateKeeper m_dates;
    std::optional<TimeOfDay>
        m_flushed; ///< the time of an epoch that had a position when silence ended it
    qint64 m_lastNumber = 0;
    qint64 m_otherLine = 0; ///< the last one that had something like a sentence
    std::deque<ReceiverEpoch> m_ended;
    SentenceTally m_tally;
};

} // namespace KelStd::nmea
