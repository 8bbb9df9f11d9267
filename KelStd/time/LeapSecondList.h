#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>
#include <KelStd/time/LeapSecondTable.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <optional>

namespace KelStd {

/// What is wrong with bytes that should be a list of leap seconds.
enum class LeapSecondListMistake
{
    None,          ///< no mistake
    NoLeapSeconds, ///< there is no row at all
    BadRow,        ///< a line is neither a row nor a comment
    NotInOrder,    ///< a row is not later than the one before it
    BadExpiry      ///< the line "#@" holds no time
};

/// A failure of one of the kinds of `LeapSecondListMistake`.
using LeapSecondListFailure = Failure<LeapSecondListMistake>;

/// The list `leap-seconds.list` of the tz database, which IERS and NIST publish, too.
///
/// A line is a time [s since 1900-01-01 00:00 UTC] and the count TAI minus UTC [s] from then on,
/// with a note behind a "#" if there is one. "#@" and a time say until when the list is valid;
/// other lines that begin with "#" are comments. The checksum in the line "#h" is a comment, too:
/// the rows of a list that was added to by hand are read all the same.
///
///     LeapSecondListFailure failure;
///     if (const auto list = LeapSecondList::parse(bytes, &failure))
///         differences = leapSecondDifferences(leapSecondTable(), list->rows);
struct KELSTD_EXPORT LeapSecondList
{
    QList<LeapSecondRow> rows;     ///< in order of time, at least one
    std::optional<TimeUtc> expiry; ///< until when no leap second is missing (UTC), if it says so

    /// Reads a list. Nothing is guessed: a line that cannot be read whole, a time beyond the year
    /// 9999 and a count above 1000 s fail. May be called on any thread.
    ///
    /// \param bytes a list's content; all of it is read, so the caller bounds its size
    /// \param failure (when given) why there is no list and which line is at fault; no failure
    ///        where there is one
    /// \return nothing for bytes that are no list
    static std::optional<LeapSecondList> parse(const QByteArray &bytes,
                                               LeapSecondListFailure *failure = nullptr);
};

/// An instant at which one table of leap seconds has another count than the other.
struct LeapSecondDifference
{
    TimeUtc from;                  ///< UTC
    std::optional<int> firstCount; ///< GPS minus UTC [s]; nothing where the first has no row
    std::optional<int> otherCount; ///< the same of the other
};

/// Every difference between two tables, in order of time. May be called on any thread.
KELSTD_EXPORT QList<LeapSecondDifference> leapSecondDifferences(const QList<LeapSecondRow> &first,
                                                                const QList<LeapSecondRow> &other);

} // namespace KelStd
