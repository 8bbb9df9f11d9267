#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace KelStd {
namespace {

using test::invalidUtc;
using test::utc;

/// The system's offset at this moment, from the C library.
int offsetNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return static_cast<int>(local.tm_gmtoff);
}

TEST(TimeLocal, BeginsAtTheOriginWithoutOffset)
{
    const TimeLocal time;
    EXPECT_EQ(time.toString(true), QStringLiteral("1970-01-01 00:00:00.000"));
    EXPECT_EQ(time.timeZoneSeconds(), 0);
    TimeLocal cleared(2024, 5, 6, 7, 8, 9, 10, 3600);
    cleared.clear();
    EXPECT_EQ(cleared, time);
    EXPECT_EQ(cleared.timeZoneSeconds(), 0);
}

TEST(TimeLocal, GivesTheFieldsOfItsInstantInUtc)
{
    // 01:30 at an offset of two hours: another year, month, day and hour than the clock shows.
    const TimeLocal time(2023, 12, 31, 23, 30, 45, 678, 7200);
    EXPECT_EQ(time.year(), 2023);
    EXPECT_EQ(time.month(), 12);
    EXPECT_EQ(time.day(), 31);
    EXPECT_EQ(time.hour(), 23);
    EXPECT_EQ(time.minute(), 30);
    EXPECT_EQ(time.second(), 45);
    EXPECT_EQ(time.millionSecond(), 678);
    EXPECT_EQ(time.toString(true), QStringLiteral("2024-01-01 01:30:45.678"));

    // As they were given, also where they form no date.
    const TimeLocal invalid(65535, 13, 32, 25, 61, 62, 1000, -3600);
    EXPECT_EQ(invalid.year(), 65535);
    EXPECT_EQ(invalid.month(), 13);
    EXPECT_EQ(invalid.day(), 32);
    EXPECT_EQ(invalid.hour(), 25);
    EXPECT_EQ(invalid.minute(), 61);
    EXPECT_EQ(invalid.second(), 62);
    EXPECT_EQ(invalid.millionSecond(), 1000);
}

TEST(TimeLocal, ShowsTheInstantAtItsOffset)
{
    const TimeLocal time(utc(2024, 1, 1), 28800);
    unsigned short year = 0;
    unsigned char month = 0;
    unsigned char day = 0;
    unsigned char hour = 0;
    unsigned char minute = 99;
    unsigned char second = 99;
    unsigned short millisecond = 99;
    time.local_time(&year, &month, &day, &hour, &minute, &second, &millisecond);
    EXPECT_EQ(year, 2024);
    EXPECT_EQ(month, 1);
    EXPECT_EQ(day, 1);
    EXPECT_EQ(hour, 8);
    EXPECT_EQ(minute, 0);
    EXPECT_EQ(second, 0);
    EXPECT_EQ(millisecond, 0);
    EXPECT_EQ(time.toString(false), QStringLiteral("2024-01-01 08:00:00"));
    EXPECT_EQ(time.toString(), QStringLiteral("2024-01-01 08:00:00"));
    EXPECT_EQ(time.toUtc(), utc(2024, 1, 1));
    EXPECT_EQ(time.toValueTime(), 1704067200000);
}

TEST(TimeLocal, GivesOnlyWhatIsAskedFor)
{
    const TimeLocal time(2023, 12, 31, 23, 30, 15, 250, 3600);
    time.local_time(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    unsigned short year = 0;
    time.local_time(&year, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(year, 2024);
    unsigned char minute = 0;
    unsigned short millisecond = 0;
    time.local_time(nullptr, nullptr, nullptr, nullptr, &minute, nullptr, &millisecond);
    EXPECT_EQ(minute, 30);
    EXPECT_EQ(millisecond, 250);
    EXPECT_EQ(time.toString(true), QStringLiteral("2024-01-01 00:30:15.250"));
}

TEST(TimeLocal, OffsetsArePlainSeconds)
{
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1), -1).toString(), QStringLiteral("2023-12-31 23:59:59"));
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1), 19800 + 1).toString(),
              QStringLiteral("2024-01-01 05:30:01"));
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1), 100 * 3600).toString(),
              QStringLiteral("2024-01-05 04:00:00"));
    // 2147483647 s are 24855 days 3:14:07; date -u -d '2024-01-01 + 2147483647 seconds'.
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1), std::numeric_limits<int>::max()).toString(),
              QStringLiteral("2092-01-19 03:14:07"));
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1), std::numeric_limits<int>::min()).toString(),
              QStringLiteral("1955-12-13 20:45:52"));
}

TEST(TimeLocal, TheSystemsOffsetIsThatOfTheMoment)
{
    const int offset = offsetNow();
    // Not those of a winter's and a summer's instant.
    EXPECT_EQ(TimeLocal(utc(2024, 1, 1)).timeZoneSeconds(), offset);
    EXPECT_EQ(TimeLocal(utc(2024, 7, 1)).timeZoneSeconds(), offset);
    EXPECT_EQ(TimeLocal(2024, 7, 1, 0, 0, 0, 0).timeZoneSeconds(), offset);
    EXPECT_EQ(TimeLocal(2024, 7, 1, 0, 0, 0, 0).toUtc(), utc(2024, 7, 1));
    EXPECT_EQ(utc(2024, 7, 1).toLocal().timeZoneSeconds(), offset);
    EXPECT_EQ(TimeGpsT(2024, 7, 1, 0, 0, 18, 0).toLocal().timeZoneSeconds(), offset);
    EXPECT_EQ(TimeGpsW(2300, 0).toLocal().timeZoneSeconds(), offset);
    TimeLocal time(utc(2024, 1, 1), 17);
    EXPECT_TRUE(time.fromValueTime(0));
    EXPECT_EQ(time.timeZoneSeconds(), offset);
    EXPECT_EQ(time.toUtc(), TimeUtc(0));
    EXPECT_EQ(TimeLocal::makeCurrent().timeZoneSeconds(), offset);
}

TEST(TimeLocal, TheCurrentTimeIsTheSystems)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const TimeLocal now = TimeLocal::makeCurrent();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_LE(before, now.toValueTime());
    EXPECT_LE(now.toValueTime(), after);
}

TEST(TimeLocal, InvalidFieldsHaveNoCountAndNoText)
{
    const TimeLocal time(invalidUtc(), 3600);
    EXPECT_EQ(time.toValueTime(), 0);
    EXPECT_EQ(time.toString(), QString());
    EXPECT_EQ(time.timeZoneSeconds(), 3600);
    unsigned char day = 0;
    time.local_time(nullptr, nullptr, &day, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(day, 30);
    // Taken over from an invalid time, the offset is 0 and not the system's.
    EXPECT_EQ(invalidUtc().toLocal().timeZoneSeconds(), 0);
    EXPECT_EQ(invalidUtc().toLocal().toUtc().day(), 30);
    EXPECT_EQ(TimeGpsT(2024, 2, 30, 0, 0, 0, 0).toLocal().timeZoneSeconds(), 0);
}

TEST(TimeLocal, TheOffsetTakesNoPartInComparison)
{
    const TimeLocal here(utc(2024, 1, 1), 0);
    const TimeLocal there(utc(2024, 1, 1), 3600);
    EXPECT_TRUE(here == there);
    EXPECT_FALSE(here != there);
    EXPECT_FALSE(here < there);
    EXPECT_FALSE(here > there);
    EXPECT_EQ(here.compare(there), 0);
    EXPECT_EQ(here - there, 0);

    const TimeLocal later(utc(2024, 1, 1, 0, 0, 0, 1), -3600);
    EXPECT_TRUE(here < later);
    EXPECT_TRUE(later > here);
    EXPECT_TRUE(here != later);
    EXPECT_EQ(here.compare(later), -1);
    EXPECT_EQ(later.compare(here), 1);
    EXPECT_EQ(later - here, 1);
}

TEST(TimeLocal, MovesKeepTheOffset)
{
    TimeLocal time(utc(2024, 2, 28, 12), 17);
    EXPECT_EQ((time + 86400000).toUtc(), utc(2024, 2, 29, 12));
    EXPECT_EQ((time + 86400000).timeZoneSeconds(), 17);
    EXPECT_EQ((time - 86400000).toUtc(), utc(2024, 2, 27, 12));
    EXPECT_EQ((time - 86400000).timeZoneSeconds(), 17);
    EXPECT_EQ(&(time += 1), &time);
    EXPECT_EQ(time.toUtc(), utc(2024, 2, 28, 12, 0, 0, 1));
    EXPECT_EQ(&(time -= 2), &time);
    EXPECT_EQ(time.toUtc(), utc(2024, 2, 28, 11, 59, 59, 999));
    EXPECT_EQ(time.timeZoneSeconds(), 17);
}

TEST(TimeLocal, BecomesGpsTimeByItsInstant)
{
    const TimeLocal time(utc(2024, 1, 1, 0, 0, 0, 5), 28800);
    EXPECT_EQ(time.toGpsT().toString(true), QStringLiteral("2024-01-01 00:00:18.005"));
    EXPECT_EQ(time.toGpsT().leapSeconds(), 18);
    EXPECT_EQ(time.toGpsW().toString(), QStringLiteral("2295week 86418sec"));
    EXPECT_EQ(time.toGpsT().toLocal().toUtc(), time.toUtc());
    EXPECT_EQ(time.toGpsW().toLocal().toUtc(), utc(2024, 1, 1));
}

} // namespace
} // namespace KelStd
