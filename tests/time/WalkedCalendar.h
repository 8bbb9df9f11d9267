#pragma once

#include <KelStd/time/TimeUtc.h>

namespace KelStd::test {

constexpr long long msPerDay = 86400000;

inline bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// A date that is walked to from 1970-01-01, one day after the other by the lengths of the months:
/// slow, and independent of every formula.
struct WalkedDate
{
    int year = 1970;
    int month = 1;
    int day = 1;
    long long days = 0; ///< since 1970-01-01

    void next()
    {
        constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const int length = lengths[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
        ++days;
        if (++day > length) {
            day = 1;
            if (++month > 12) {
                month = 1;
                ++year;
            }
        }
    }
};

/// The count of a UTC date's midnight, 1970 or later.
inline long long midnight(int year, int month, int day)
{
    WalkedDate date;
    while (date.year != year || date.month != month || date.day != day)
        date.next();
    return date.days * msPerDay;
}

/// The fields of a date and time of day, without casts where they are used.
inline TimeUtc utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                   int millisecond = 0)
{
    return TimeUtc(static_cast<unsigned short>(year), static_cast<unsigned char>(month),
                   static_cast<unsigned char>(day), static_cast<unsigned char>(hour),
                   static_cast<unsigned char>(minute), static_cast<unsigned char>(second),
                   static_cast<unsigned short>(millisecond));
}

/// Fields that form no date-time.
inline TimeUtc invalidUtc()
{
    return utc(2024, 2, 30, 12);
}

} // namespace KelStd::test
