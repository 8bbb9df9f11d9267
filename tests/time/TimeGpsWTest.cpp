#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using test::utc;

constexpr long long lowest = std::numeric_limits<long long>::min();
constexpr long long highest = std::numeric_limits<long long>::max();
constexpr long long gpsStart = 315964800000; // date -u -d 1980-01-06 +%s

void expectWeek(const TimeGpsW &time, int week, int seconds)
{
    EXPECT_EQ(time.gps_weeks(), week);
    EXPECT_EQ(time.gps_seconds(), seconds);
}

TEST(TimeGpsW, BeginsWithZeros)
{
    expectWeek(TimeGpsW(), 0, 0);
    EXPECT_EQ(TimeGpsW().leapSeconds(), 0);
    TimeGpsW time(2300, 345600);
    time.clear();
    expectWeek(time, 0, 0);
    EXPECT_EQ(time.leapSeconds(), 0);
}

TEST(TimeGpsW, TheStartOfWeekZero)
{
    EXPECT_EQ(TimeGpsW::g_gpsStartTimTick, gpsStart);
    EXPECT_EQ(TimeGpsW::GetGpsT_ofUtcFormat(0, 0), TimeGpsW::g_gpsStartTimTick);
    EXPECT_EQ(TimeGpsW::GetGpsT_ofUtcFormat(1, 1), gpsStart + 604801000);
    EXPECT_EQ(TimeGpsW::GetGpsT_ofUtcFormat(65535, 4294967295U),
              gpsStart + (65535LL * 604800 + 4294967295) * 1000);
    EXPECT_EQ(TimeGpsW().toUtc(), utc(1980, 1, 6));
}

// Every day of 1980-01-06 to 2100, at both its ends, in both directions.
TEST(TimeGpsW, EveryDayOfACenturyHasItsWeekAndSeconds)
{
    test::WalkedDate date;
    while (date.days * test::msPerDay < gpsStart)
        date.next();
    const long long firstDay = date.days;
    for (; date.year <= 2100; date.next()) {
        const long long day = date.days - firstDay;
        const int week = static_cast<int>(day / 7);
        for (const int secondOfDay : {0, 86399}) {
            const int seconds = static_cast<int>(day % 7) * 86400 + secondOfDay;
            const TimeGpsT fields(static_cast<unsigned short>(date.year),
                                  static_cast<unsigned char>(date.month),
                                  static_cast<unsigned char>(date.day), secondOfDay == 0 ? 0 : 23,
                                  secondOfDay == 0 ? 0 : 59, secondOfDay == 0 ? 0 : 59, 0);
            const TimeGpsW made = fields.toGpsW();
            ASSERT_EQ(made.gps_weeks(), week) << testing::PrintToString(fields);
            ASSERT_EQ(made.gps_seconds(), seconds) << testing::PrintToString(fields);
            const TimeGpsW given(static_cast<unsigned short>(week),
                                 static_cast<unsigned int>(seconds));
            ASSERT_EQ(given.toGpsT().toString(true), fields.toString(true));
            ASSERT_EQ(given.leapSeconds(), fields.leapSeconds());
            ASSERT_EQ(given.toValueTime(),
                      (date.days * 86400 + secondOfDay - given.leapSeconds()) * 1000);
        }
    }
}

// Every second of a day and a second more: none is lost or doubled.
TEST(TimeGpsW, EverySecondOfADay)
{
    for (unsigned int second = 0; second <= 86400; ++second) {
        const TimeGpsW time(2295, 86400 + second);
        const TimeGpsT fields = time.toGpsT();
        ASSERT_EQ(fields.day(), second < 86400 ? 1 : 2);
        ASSERT_EQ(static_cast<unsigned int>(fields.hour() * 3600 + fields.minute() * 60
                                            + fields.second()),
                  second % 86400);
        ASSERT_EQ(fields.toGpsW().gps_seconds(), static_cast<int>(86400 + second));
    }
}

// The two roll-overs of the broadcast week number: 1999-08-21/22 and 2019-04-06/07.
TEST(TimeGpsW, WeeksDoNotRollOver)
{
    expectWeek(TimeGpsT(1980, 1, 6, 0, 0, 0, 0).toGpsW(), 0, 0);
    expectWeek(TimeGpsT(1980, 1, 12, 23, 59, 59, 0).toGpsW(), 0, 604799);
    expectWeek(TimeGpsT(1999, 8, 21, 23, 59, 59, 0).toGpsW(), 1023, 604799);
    expectWeek(TimeGpsT(1999, 8, 22, 0, 0, 0, 0).toGpsW(), 1024, 0);
    expectWeek(TimeGpsT(2019, 4, 6, 23, 59, 59, 0).toGpsW(), 2047, 604799);
    expectWeek(TimeGpsT(2019, 4, 7, 0, 0, 0, 0).toGpsW(), 2048, 0);
    EXPECT_EQ(TimeGpsW(1024, 0).toUtc(), utc(1999, 8, 21, 23, 59, 47));
    EXPECT_EQ(TimeGpsW(2048, 0).toUtc(), utc(2019, 4, 6, 23, 59, 42));
}

TEST(TimeGpsW, BeforeWeekZeroSecondsStillCountForward)
{
    expectWeek(TimeGpsT(1980, 1, 5, 23, 59, 59, 0).toGpsW(), -1, 604799);
    expectWeek(TimeGpsT(1979, 12, 30, 0, 0, 0, 0).toGpsW(), -1, 0);
    expectWeek(TimeGpsT(1979, 12, 29, 23, 59, 59, 999).toGpsW(), -2, 604799);
    const TimeGpsW time = TimeUtc(0).toGpsW();
    expectWeek(time, -523, 345591); // 315964809 s before the start: -522 weeks, -259209 s
    EXPECT_EQ(time.leapSeconds(), -9);
    EXPECT_EQ(time.toUtc(), TimeUtc(0));
    EXPECT_EQ(time.toGpsT().toString(), QStringLiteral("1969-12-31 23:59:51"));
}

TEST(TimeGpsW, LosesMilliseconds)
{
    expectWeek(utc(2024, 1, 1, 0, 0, 0, 999).toGpsW(), 2295, 86418);
    EXPECT_EQ(utc(2024, 1, 1, 0, 0, 0, 999).toGpsW().toUtc(), utc(2024, 1, 1));
    TimeGpsW time;
    EXPECT_TRUE(time.fromGpsTime(gpsStart + 1999));
    expectWeek(time, 0, 1);
    EXPECT_TRUE(time.fromGpsTime(gpsStart - 1));
    expectWeek(time, -1, 604799);
}

TEST(TimeGpsW, SecondsBeyondAWeekAreKept)
{
    const TimeGpsW time(2295, 604800);
    expectWeek(time, 2295, 604800);
    EXPECT_EQ(time, TimeGpsW(2296, 0));
    expectWeek(time + 0, 2296, 0);
    expectWeek(TimeGpsW(0, 4294967295U), 0, -1);
}

TEST(TimeGpsW, ASuppliedCountIsKeptOrJudged)
{
    EXPECT_EQ(TimeGpsW(2300, 0).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsW(2300, 0, 19, true).leapSeconds(), 19);
    EXPECT_EQ(TimeGpsW(2300, 0, 17, true).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsW(2300, 0, 18, true).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsW(2300, 0, 17, false).leapSeconds(), 17);
    EXPECT_EQ(TimeGpsW(2300, 0, -400, false).leapSeconds(), -400);
    EXPECT_EQ(TimeGpsW(1000, 0, 19, true).leapSeconds(), 13);
    EXPECT_EQ(TimeGpsW(2300, 0, 17, false).toUtc(), TimeGpsW(2300, 1).toUtc());
    // As calendar fields, the count is judged again.
    EXPECT_EQ(TimeGpsW(2300, 0, 17, false).toGpsT().leapSeconds(), 18);
    EXPECT_EQ(TimeGpsW(2300, 0, 19, false).toGpsT().leapSeconds(), 19);
}

TEST(TimeGpsW, TakesEveryCount)
{
    for (const long long count : {lowest, highest}) {
        TimeGpsW time;
        EXPECT_TRUE(time.fromValueTime(count));
        EXPECT_TRUE(time.fromValueTime(count, 19));
        EXPECT_TRUE(time.fromGpsTime(count));
        // The year wraps as that of calendar fields does.
        EXPECT_EQ(time.toGpsT().toString(), TimeUtc(count).toString());
    }
    // The year 65536 wraps to the year 0, which no calendar has.
    TimeGpsW time(2300, 5);
    EXPECT_TRUE(time.fromGpsTime(2005949145600000));
    expectWeek(time, 0, 0);
}

TEST(TimeGpsW, Compares)
{
    const TimeGpsW early(2300, 604799);
    const TimeGpsW late(2301, 0);
    EXPECT_EQ(early.compare(late), -1);
    EXPECT_EQ(late.compare(early), 1);
    EXPECT_EQ(early.compare(early), 0);
    EXPECT_TRUE(early < late);
    EXPECT_FALSE(late < early);
    EXPECT_TRUE(late > early);
    EXPECT_FALSE(early > late);
    EXPECT_TRUE(early != late);
    EXPECT_TRUE(early == TimeGpsW(early));
    // One instant with two counts.
    EXPECT_TRUE(TimeGpsW(2300, 19, 19, true) == TimeGpsW(2300, 18));
    EXPECT_EQ(TimeGpsW(2300, 19, 19, true).compare(TimeGpsW(2300, 18)), 0);
    EXPECT_FALSE(TimeGpsW(2300, 19, 19, true) > TimeGpsW(2300, 18));
}

TEST(TimeGpsW, MovesOnItsOwnScale)
{
    expectWeek(TimeGpsW(2300, 604799) + 1000, 2301, 0);
    expectWeek(TimeGpsW(2301, 0) - 1000, 2300, 604799);
    expectWeek(TimeGpsW(2300, 10) + 1999, 2300, 11);
    expectWeek(TimeGpsW(2300, 10) - 1, 2300, 9);
    EXPECT_EQ(TimeGpsW(2301, 5) - TimeGpsW(2300, 604795), 10000);
    EXPECT_EQ(TimeGpsW(2300, 604795) - TimeGpsW(2301, 5), -10000);

    TimeGpsW time(1930, 0); // 2017-01-01 00:00:00 of the GPS scale
    EXPECT_EQ(time.leapSeconds(), 17);
    EXPECT_EQ(&(time += 18000), &time);
    EXPECT_EQ(time.leapSeconds(), 18);
    EXPECT_EQ(&(time -= 1000), &time);
    EXPECT_EQ(time.leapSeconds(), 17);
    EXPECT_EQ(utc(2017, 1, 1).toGpsW() - utc(2016, 12, 31, 23, 59, 59).toGpsW(), 2000);
    // A count that was kept as given outlives a move that meets no leap second.
    EXPECT_EQ((TimeGpsW(2300, 0, 5, false) + 1000).leapSeconds(), 5);
}

TEST(TimeGpsW, TheText)
{
    EXPECT_EQ(TimeGpsW(2300, 345600).toString(), QStringLiteral("2300week 345600sec"));
    EXPECT_EQ(TimeGpsW().toString(), QStringLiteral("0week 0sec"));
    EXPECT_EQ(TimeUtc(0).toGpsW().toString(), QStringLiteral("-523week 345591sec"));
}

TEST(TimeGpsW, TheCurrentTimeIsTheSystems)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const TimeGpsW now = TimeGpsW::makeCurrent();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_LE(before - 999, now.toValueTime());
    EXPECT_LE(now.toValueTime(), after);
}

} // namespace
} // namespace KelStd
