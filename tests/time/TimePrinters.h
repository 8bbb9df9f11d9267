#pragma once

#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/TimeUtc.h>

#include <ostream>

// How times look in a failed expectation: their fields, valid or not.
namespace KelStd {

inline void PrintTo(const TimeUtc &time, std::ostream *out)
{
    *out << time.year() << '-' << int(time.month()) << '-' << int(time.day()) << ' '
         << int(time.hour()) << ':' << int(time.minute()) << ':' << int(time.second()) << '.'
         << time.millionSecond();
}

inline void PrintTo(const TimeGpsT &time, std::ostream *out)
{
    *out << time.year() << '-' << int(time.month()) << '-' << int(time.day()) << ' '
         << int(time.hour()) << ':' << int(time.minute()) << ':' << int(time.second()) << '.'
         << time.millionSecond() << " (" << time.leapSeconds() << ')';
}

inline void PrintTo(const TimeGpsW &time, std::ostream *out)
{
    *out << time.gps_weeks() << ' ' << time.gps_seconds() << " (" << time.leapSeconds() << ')';
}

inline void PrintTo(const TimeLocal &time, std::ostream *out)
{
    PrintTo(time.toUtc(), out);
    *out << " (offset " << time.timeZoneSeconds() << ')';
}

} // namespace KelStd
