#pragma once

#include <KelStd/time/TimeUtc.h>

#include <QtCore/QDateTime>

#include <limits>
#include <optional>

/// Between calendar fields and the millisecond count. `TimeUtc` serves as the fields of the GPS
/// scale, too: the calendar is the same, and GPS instants are counted from 1970-01-01 00:00 of
/// their own scale.
namespace KelStd::calendar {

constexpr qint64 msPerSecond = 1000;
constexpr qint64 msPerMinute = 60 * msPerSecond;
constexpr qint64 msPerHour = 60 * msPerMinute;
constexpr qint64 msPerDay = 24 * msPerHour;

constexpr qint64 julianDayOf1970 = 2440588; // of 1970-01-01

/// The days from 1970-01-01 to a date of the Gregorian calendar, year 1 or later.
constexpr qint64 daysSince1970(int year, int month, int day)
{
    // Years begin in March here, so that the leap day is the last: every month's first day is then
    // a linear function of the month, rounded down.
    const qint64 marchYear = month > 2 ? year : year - 1;
    const qint64 dayOfYear = (153 * ((month + 9) % 12) + 2) / 5 + day - 1;
    constexpr qint64 from0000March = 719468;
    return 365 * marchYear + marchYear / 4 - marchYear / 100 + marchYear / 400 + dayOfYear
           - from0000March;
}

/// The counts that fields can hold: from year 1 to the end of 65535. Others wrap in the year.
constexpr qint64 firstCount = daysSince1970(1, 1, 1) * msPerDay;
constexpr qint64 lastCount =
    daysSince1970(std::numeric_limits<quint16>::max() + 1, 1, 1) * msPerDay - 1;

constexpr bool holds(qint64 count)
{
    return count >= firstCount && count <= lastCount;
}

/// Sum and difference wrap around at the ends of the range, as the count does.
constexpr qint64 sum(qint64 a, qint64 b)
{
    return static_cast<qint64>(static_cast<quint64>(a) + static_cast<quint64>(b));
}

constexpr qint64 difference(qint64 a, qint64 b)
{
    return static_cast<qint64>(static_cast<quint64>(a) - static_cast<quint64>(b));
}

/// The quotient rounded down, and what is left then, also where the dividend is negative.
constexpr qint64 quotient(qint64 dividend, qint64 divisor)
{
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

constexpr qint64 remainder(qint64 dividend, qint64 divisor)
{
    return dividend % divisor + (dividend % divisor < 0 ? divisor : 0);
}

/// The count of these fields; nothing when they are invalid. The calendar is that of `QDate`, so
/// that this is the count of the `QDateTime` in UTC, without making one.
std::optional<qint64> countOf(const TimeUtc &fields);

/// The `QDateTime` of these fields in UTC, invalid when they are.
QDateTime dateTimeOf(const TimeUtc &fields);

/// Whether a comparison (`std::less<>` and the like) holds between the date-times of two fields.
template <typename Operation>
bool holdsBetween(const TimeUtc &left, const TimeUtc &right, Operation operation)
{
    const auto leftCount = countOf(left);
    const auto rightCount = countOf(right);
    // How invalid date-times compare is Qt's to say.
    return leftCount && rightCount ? operation(*leftCount, *rightCount)
                                   : operation(dateTimeOf(left), dateTimeOf(right));
}

} // namespace KelStd::calendar
