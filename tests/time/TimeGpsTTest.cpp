#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using test::msPerDay;
using test::utc;

constexpr long long lowest = std::numeric_limits<long long>::min();
constexpr long long highest = std::numeric_limits<long long>::max();

TEST(TimeGpsT, BeginsIn1970WithoutLeapSeconds)
{
    const TimeGpsT time;
    EXPECT_EQ(time.toString(true), QStringLiteral("1970-01-01 00:00:00.000"));
    EXPECT_EQ(time.leapSeconds(), 0);
    TimeGpsT cleared(2024, 5, 6, 7, 8, 9, 10);
    cleared.clear();
    EXPECT_EQ(cleared, time);
    EXPECT_EQ(cleared.leapSeconds(), 0);
}

TEST(TimeGpsT, KeepsItsFields)
{
    const TimeGpsT time(2024, 5, 6, 7, 8, 9, 10);
    EXPECT_EQ(time.year(), 2024);
    EXPECT_EQ(time.month(), 5);
    EXPECT_EQ(time.day(), 6);
    EXPECT_EQ(time.hour(), 7);
    EXPECT_EQ(time.minute(), 8);
    EXPECT_EQ(time.second(), 9);
    EXPECT_EQ(time.millionSecond(), 10);
    EXPECT_EQ(time.leapSeconds(), 18);
    EXPECT_EQ(time.toString(), QStringLiteral("2024-05-06 07:08:09"));
    EXPECT_EQ(time.toString(false), QStringLiteral("2024-05-06 07:08:09"));
    EXPECT_EQ(time.toString(true), QStringLiteral("2024-05-06 07:08:09.010"));
}

TEST(TimeGpsT, IsAheadOfUtcByItsCount)
{
    EXPECT_EQ(TimeGpsT(2024, 1, 1, 0, 0, 18, 5).toUtc(), utc(2024, 1, 1, 0, 0, 0, 5));
    EXPECT_EQ(TimeGpsT(2024, 1, 1, 0, 0, 17, 999).toUtc(), utc(2023, 12, 31, 23, 59, 59, 999));
    EXPECT_EQ(TimeGpsT(1980, 1, 6, 0, 0, 0, 0).toUtc(), utc(1980, 1, 6));
    EXPECT_EQ(TimeGpsT(1975, 6, 1, 0, 0, 0, 0).toUtc(), utc(1975, 6, 1, 0, 0, 5));
    // date -u -d 2024-01-01 +%s
    EXPECT_EQ(TimeGpsT(2024, 1, 1, 0, 0, 18, 5).toValueTime(), 1704067200005);
    EXPECT_EQ(utc(2024, 1, 1).toGpsT().toString(), QStringLiteral("2024-01-01 00:00:18"));
    EXPECT_EQ(utc(1975, 6, 1).toGpsT().toString(), QStringLiteral("1975-05-31 23:59:55"));
}

TEST(TimeGpsT, AGpsInstantIsTakenUnchanged)
{
    TimeGpsT time;
    EXPECT_TRUE(time.fromGpsTime(1704067200005));
    EXPECT_EQ(time.toString(true), QStringLiteral("2024-01-01 00:00:00.005"));
    EXPECT_EQ(time.leapSeconds(), 18);
    // In the first seconds after a step the count is already the new one: 17 s early here.
    EXPECT_TRUE(time.fromGpsTime(1483228800000));
    EXPECT_EQ(time.leapSeconds(), 18);
    EXPECT_EQ(time.toUtc(), utc(2016, 12, 31, 23, 59, 42));
}

TEST(TimeGpsT, EveryCountIsInRange)
{
    for (const long long count : {lowest, highest}) {
        TimeGpsT time;
        EXPECT_TRUE(time.fromValueTime(count));
        EXPECT_TRUE(time.fromValueTime(count, 18));
        EXPECT_TRUE(time.fromGpsTime(count));
        EXPECT_EQ(time.toString(), TimeUtc(count).toString());
    }
    // Eighteen seconds on from the highest count the scale begins again at the lowest.
    TimeGpsT time;
    EXPECT_TRUE(time.fromValueTime(highest));
    EXPECT_EQ(time.toString(true), TimeUtc(lowest + 17999).toString(true));
    EXPECT_EQ(time.leapSeconds(), 18);
}

TEST(TimeGpsT, InvalidFieldsHaveNoCountTextOrWeek)
{
    const TimeGpsT time(2024, 2, 30, 12, 0, 0, 0);
    EXPECT_EQ(time.toValueTime(), 0);
    EXPECT_EQ(time.toString(true), QString());
    EXPECT_EQ(time.toUtc().day(), 30);
    EXPECT_EQ(time.toUtc().hour(), 12);
    EXPECT_EQ(time.toGpsW().gps_weeks(), 0);
    EXPECT_EQ(time.toGpsW().gps_seconds(), 0);
    EXPECT_EQ((time + msPerDay).day(), 30);
    EXPECT_EQ((time - msPerDay).day(), 30);
    // As UTC times: to the operators before every valid one, to compare() at the count 0.
    EXPECT_TRUE(time == TimeGpsT(2023, 2, 29, 12, 0, 0, 0));
    EXPECT_TRUE(time < TimeGpsT());
    EXPECT_FALSE(time > TimeGpsT());
    EXPECT_EQ(time.compare(TimeGpsT()), 0);
}

TEST(TimeGpsT, ComparesTrueInstants)
{
    const TimeGpsT early(2024, 1, 1, 0, 0, 18, 0);
    const TimeGpsT late(2024, 1, 1, 0, 0, 18, 1);
    EXPECT_EQ(early.compare(late), -1);
    EXPECT_EQ(late.compare(early), 1);
    EXPECT_EQ(early.compare(early), 0);
    EXPECT_TRUE(early < late);
    EXPECT_FALSE(late < early);
    EXPECT_TRUE(late > early);
    EXPECT_FALSE(early > late);
    EXPECT_TRUE(early != late);
    EXPECT_TRUE(early == TimeGpsT(early));
    EXPECT_FALSE(early < early);

    // One instant, once with the table's count and once with a newer one.
    const TimeGpsT newer(2024, 1, 1, 0, 0, 19, 0, 19);
    EXPECT_NE(newer.toString(), early.toString());
    EXPECT_TRUE(newer == early);
    EXPECT_FALSE(newer != early);
    EXPECT_FALSE(early < newer);
    EXPECT_FALSE(newer > early);
    EXPECT_EQ(newer.compare(early), 0);
}

TEST(TimeGpsT, MovesOnItsOwnScale)
{
    const TimeGpsT before(2016, 12, 31, 23, 59, 59, 500);
    const TimeGpsT after = before + 18500;
    EXPECT_EQ(after.toString(true), QStringLiteral("2017-01-01 00:00:18.000"));
    EXPECT_EQ(before.leapSeconds(), 17);
    EXPECT_EQ(after.leapSeconds(), 18);
    EXPECT_EQ(after - before, 18500);
    EXPECT_EQ(before - after, -18500);
    EXPECT_EQ(after - 18500, before);
    EXPECT_EQ((after - 18500).leapSeconds(), 17);

    TimeGpsT time(2024, 2, 28, 12, 0, 0, 0);
    EXPECT_EQ(&(time += msPerDay), &time);
    EXPECT_EQ(time.toString(), QStringLiteral("2024-02-29 12:00:00"));
    EXPECT_EQ(&(time -= 2 * msPerDay), &time);
    EXPECT_EQ(time.toString(), QStringLiteral("2024-02-27 12:00:00"));
}

// UTC says that one second passes from 23:59:59 to 00:00:00; a GPS receiver counts two.
TEST(TimeGpsT, ADifferenceCountsLeapSeconds)
{
    const TimeUtc last = utc(2016, 12, 31, 23, 59, 59);
    const TimeUtc first = utc(2017, 1, 1);
    EXPECT_EQ(first - last, 1000);
    EXPECT_EQ(first.toGpsT() - last.toGpsT(), 2000);
}

TEST(TimeGpsT, AMoveWithoutALeapSecondKeepsTheCount)
{
    const TimeGpsT newer = TimeGpsT(2024, 1, 1, 0, 0, 0, 0, 19) + msPerDay;
    EXPECT_EQ(newer.leapSeconds(), 19);
    // Back beyond the last row, the table knows better.
    EXPECT_EQ((newer - 10 * 366 * msPerDay).leapSeconds(), 16);
    // The default's count is not the table's; it stays until a leap second is met.
    EXPECT_EQ(TimeGpsT() + 0, TimeGpsT());
    EXPECT_EQ((TimeGpsT() + msPerDay).leapSeconds(), 0);
    EXPECT_EQ((TimeGpsT() + 20000 * msPerDay).leapSeconds(), 18);
}

TEST(TimeGpsT, MovesWrapAtTheEndsOfTheRange)
{
    TimeGpsT one;
    EXPECT_TRUE(one.fromGpsTime(1));
    EXPECT_EQ((one + highest).toString(true), TimeUtc(lowest).toString(true));
    EXPECT_EQ((one - lowest).toString(true), TimeUtc(lowest + 1).toString(true));
}

// Taking a negative count off leads out of the years that fields hold: the UTC fields wrap to the
// year 0, which is no year, and the time is before every valid one.
TEST(TimeGpsT, AtTheEndOfTheYearsComparisonSeesTheWrappedFields)
{
    const TimeGpsW last = TimeGpsT(65535, 12, 31, 23, 59, 59, 0).toGpsW();
    EXPECT_EQ(last.toUtc(), utc(65535, 12, 31, 23, 59, 41));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    utc(65535, 12, 31, 23, 59, 59).save(out);
    out << qint32(-9);
    QDataStream in(bytes);
    TimeGpsT time;
    ASSERT_TRUE(time.load(in));
    EXPECT_EQ(time.toUtc().year(), 0);
    EXPECT_EQ(time.toUtc().second(), 8);
    EXPECT_EQ(time.toValueTime(), 0);
    EXPECT_TRUE(time < TimeGpsT());
    EXPECT_FALSE(time > TimeGpsT());
    EXPECT_EQ(time.compare(TimeGpsT()), 0);
}

TEST(TimeGpsT, BecomesWeekAndSeconds)
{
    const TimeGpsW week = TimeGpsT(2024, 1, 1, 0, 0, 18, 999).toGpsW();
    EXPECT_EQ(week.gps_weeks(), 2295);
    EXPECT_EQ(week.gps_seconds(), 86418);
    EXPECT_EQ(week.leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(2024, 1, 1, 0, 0, 0, 0, 19).toGpsW().leapSeconds(), 19);
    // The default's own count of 0 is supplied, and judged.
    EXPECT_EQ(TimeGpsT().toGpsW().leapSeconds(), -9);
}

TEST(TimeGpsT, TheCurrentTimeIsTheSystems)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const TimeGpsT now = TimeGpsT::makeCurrent();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_LE(before, now.toValueTime());
    EXPECT_LE(now.toValueTime(), after);
    EXPECT_EQ(now.leapSeconds(), TimeUtc(before).toGpsT().leapSeconds());
}

} // namespace
} // namespace KelStd
