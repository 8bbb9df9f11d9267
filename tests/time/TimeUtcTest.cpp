#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using test::invalidUtc;
using test::msPerDay;
using test::utc;

constexpr long long lowest = std::numeric_limits<long long>::min();
constexpr long long highest = std::numeric_limits<long long>::max();

void expectFields(const TimeUtc &time, int year, int month, int day, int hour, int minute,
                  int second, int millisecond)
{
    EXPECT_EQ(time.year(), year);
    EXPECT_EQ(time.month(), month);
    EXPECT_EQ(time.day(), day);
    EXPECT_EQ(time.hour(), hour);
    EXPECT_EQ(time.minute(), minute);
    EXPECT_EQ(time.second(), second);
    EXPECT_EQ(time.millionSecond(), millisecond);
}

TEST(TimeUtc, BeginsAtTheOriginOfTheCount)
{
    expectFields(TimeUtc(), 1970, 1, 1, 0, 0, 0, 0);
    EXPECT_EQ(TimeUtc(), TimeUtc(0));
    EXPECT_EQ(TimeUtc().toValueTime(), 0);
    EXPECT_EQ(TimeUtc(0).toString(true), QStringLiteral("1970-01-01 00:00:00.000"));
    TimeUtc time(2024, 5, 6, 7, 8, 9, 10);
    time.clear();
    expectFields(time, 1970, 1, 1, 0, 0, 0, 0);
}

TEST(TimeUtc, KeepsFieldsAsGiven)
{
    expectFields(TimeUtc(2024, 5, 6, 7, 8, 9, 10), 2024, 5, 6, 7, 8, 9, 10);
    expectFields(TimeUtc(65535, 255, 255, 255, 255, 255, 65535), 65535, 255, 255, 255, 255, 255,
                 65535);
}

// Every day of 1970 to 2400, whose century years are common and, in 2000 and 2400, leap years.
TEST(TimeUtc, CountsTheDaysOfTheCalendar)
{
    constexpr long long timeOfDay = ((23 * 60 + 59) * 60 + 58) * 1000 + 997;
    for (test::WalkedDate date; date.year <= 2400; date.next()) {
        const TimeUtc fields = utc(date.year, date.month, date.day, 23, 59, 58, 997);
        const long long count = date.days * msPerDay + timeOfDay;
        ASSERT_EQ(fields.toValueTime(), count) << testing::PrintToString(fields);
        const TimeUtc back(count);
        ASSERT_EQ(back, fields);
        ASSERT_EQ(back.millionSecond(), 997);
    }
}

// From date(1): date -u -d DATE +%s.
TEST(TimeUtc, HasKnownCounts)
{
    EXPECT_EQ(utc(1980, 1, 6).toValueTime(), 315964800000);
    EXPECT_EQ(utc(2024, 2, 29, 12).toValueTime(), 1709208000000);
    EXPECT_EQ(utc(1969, 12, 31, 23, 59, 59, 999).toValueTime(), -1);
    EXPECT_EQ(utc(1900, 3, 1).toValueTime(), -2203891200000);
    EXPECT_EQ(utc(1, 1, 1).toValueTime(), -62135596800000);
    EXPECT_EQ(utc(9999, 12, 31, 23, 59, 59, 999).toValueTime(), 253402300799999);
    expectFields(TimeUtc(-1), 1969, 12, 31, 23, 59, 59, 999);
    expectFields(TimeUtc(-62135596800000), 1, 1, 1, 0, 0, 0, 0);
}

TEST(TimeUtc, InvalidFieldsHaveTheCountZeroAndNoText)
{
    EXPECT_EQ(TimeUtc(2024, 2, 30, 0, 0, 0, 0).toValueTime(), 0);
    for (const TimeUtc &time :
         {utc(2024, 2, 30, 12), utc(2023, 2, 29), utc(2024, 0, 1), utc(2024, 13, 1),
          utc(2024, 1, 0), utc(2024, 4, 31), utc(0, 1, 1), utc(2024, 1, 1, 24),
          utc(2024, 1, 1, 255), utc(2024, 1, 1, 0, 60), utc(2024, 1, 1, 0, 0, 60),
          utc(2016, 12, 31, 23, 59, 60), utc(2024, 1, 1, 0, 0, 0, 1000)}) {
        SCOPED_TRACE(testing::PrintToString(time));
        EXPECT_EQ(time.toValueTime(), 0);
        EXPECT_EQ(time.toString(false), QString());
        EXPECT_EQ(time.toString(true), QString());
        EXPECT_TRUE(time == time);
        // Nothing moves what is no instant.
        const TimeUtc moved = time + msPerDay;
        expectFields(moved, time.year(), time.month(), time.day(), time.hour(), time.minute(),
                     time.second(), time.millionSecond());
    }
}

TEST(TimeUtc, FromValueTimeTakesEveryCount)
{
    for (const long long count : {lowest, lowest + 1, -1LL, 0LL, 1LL, highest}) {
        TimeUtc time;
        EXPECT_TRUE(time.fromValueTime(count)) << count;
        EXPECT_EQ(TimeUtc(count), time) << count;
    }
}

// The ends of the 64-bit range are -292275055-05-16 (astronomical year; the calendar has no year 0)
// 16:47:04.192 and 292278994-08-17 07:12:55.807, as every 64-bit millisecond clock has them.
TEST(TimeUtc, YearsOutsideSixteenBitsWrap)
{
    expectFields(TimeUtc(lowest), (-292275056) & 0xffff, 5, 16, 16, 47, 4, 192);
    expectFields(TimeUtc(highest), 292278994 & 0xffff, 8, 17, 7, 12, 55, 807);
    // The year before 1 is the year -1.
    expectFields(TimeUtc(-62135596800001), 65535, 12, 31, 23, 59, 59, 999);
    // date -u -d 65536-01-01 +%s
    expectFields(TimeUtc(2005949145600000), 0, 1, 1, 0, 0, 0, 0);
    EXPECT_EQ(utc(65535, 12, 31, 23, 59, 59, 999).toValueTime(), 2005949145599999);
}

TEST(TimeUtc, MovesThroughMonthsAndYears)
{
    EXPECT_EQ(utc(2024, 2, 28, 12) + 86400000, utc(2024, 2, 29, 12));
    EXPECT_EQ(utc(2023, 2, 28, 12) + 86400000, utc(2023, 3, 1, 12));
    EXPECT_EQ(utc(2023, 12, 31, 23, 59, 59, 999) + 1, utc(2024, 1, 1));
    EXPECT_EQ(utc(2024, 1, 1) - 1, utc(2023, 12, 31, 23, 59, 59, 999));
    EXPECT_EQ(utc(1970, 1, 1) - msPerDay, utc(1969, 12, 31));
    EXPECT_EQ(utc(2024, 3, 1) + (-msPerDay), utc(2024, 2, 29));
    EXPECT_EQ(utc(2024, 2, 29) - (-msPerDay), utc(2024, 3, 1));

    TimeUtc time = utc(2024, 12, 31);
    EXPECT_EQ(&(time += msPerDay), &time);
    EXPECT_EQ(time, utc(2025, 1, 1));
    EXPECT_EQ(&(time -= msPerDay), &time);
    EXPECT_EQ(time, utc(2024, 12, 31));
}

TEST(TimeUtc, SumsWrapAtTheEndsOfTheRange)
{
    // 1 + highest is the lowest count, and so on round the clock.
    EXPECT_EQ(TimeUtc(1) + highest, TimeUtc(lowest));
    EXPECT_EQ(TimeUtc(-2) - highest, TimeUtc(highest));
    EXPECT_EQ(TimeUtc(0) - lowest, TimeUtc(lowest));
    TimeUtc time(-1);
    time += lowest;
    EXPECT_EQ(time, TimeUtc(highest));
}

TEST(TimeUtc, DifferencesAreMilliseconds)
{
    EXPECT_EQ(utc(2024, 3, 1) - utc(2024, 2, 28, 23, 59, 59, 999), msPerDay + 1);
    EXPECT_EQ(utc(2024, 2, 28) - utc(2024, 3, 1), -2 * msPerDay);
    // A leap second lies between; UTC counts do not have it.
    EXPECT_EQ(utc(2017, 1, 1) - utc(2016, 12, 31, 23, 59, 59), 1000);
    EXPECT_EQ(utc(2024, 1, 1) - invalidUtc(), utc(2024, 1, 1).toValueTime());
}

TEST(TimeUtc, Compares)
{
    const TimeUtc early = utc(2024, 2, 29, 23, 59, 59, 999);
    const TimeUtc late = utc(2024, 3, 1);
    EXPECT_EQ(early.compare(late), -1);
    EXPECT_EQ(late.compare(early), 1);
    EXPECT_EQ(early.compare(early), 0);
    EXPECT_EQ(early.compare(TimeUtc(early)), 0);
    EXPECT_TRUE(early < late);
    EXPECT_FALSE(late < early);
    EXPECT_TRUE(late > early);
    EXPECT_FALSE(early > late);
    EXPECT_TRUE(early != late);
    EXPECT_FALSE(early == late);
    EXPECT_TRUE(early == TimeUtc(early));
    EXPECT_FALSE(early < early);
    EXPECT_FALSE(early > early);
    EXPECT_FALSE(early != early);
}

// compare() goes by the counts, which are 0; the operators by the date-times, which Qt puts before
// every valid one.
TEST(TimeUtc, InvalidFieldsCompareDifferentlyByCountAndByDateTime)
{
    const TimeUtc early = utc(1, 1, 1);
    for (const TimeUtc &invalid : {invalidUtc(), utc(2024, 1, 1, 24)}) {
        EXPECT_EQ(invalid.compare(TimeUtc()), 0);
        EXPECT_EQ(invalid.compare(early), 1);
        EXPECT_EQ(early.compare(invalid), -1);
        EXPECT_FALSE(invalid == TimeUtc());
        EXPECT_FALSE(invalid == utc(2024, 1, 1));
        EXPECT_TRUE(invalid < early);
        EXPECT_TRUE(early > invalid);
        EXPECT_FALSE(invalid > early);
    }
    EXPECT_TRUE(invalidUtc() == utc(2024, 1, 1, 24));
    EXPECT_FALSE(invalidUtc() < utc(2024, 1, 1, 24));
}

TEST(TimeUtc, TextsArePadded)
{
    EXPECT_EQ(utc(2024, 2, 9, 4, 5, 6, 7).toString(true),
              QStringLiteral("2024-02-09 04:05:06.007"));
    EXPECT_EQ(utc(2024, 2, 9, 4, 5, 6, 999).toString(false), QStringLiteral("2024-02-09 04:05:06"));
    EXPECT_EQ(utc(2024, 2, 9, 4, 5, 6, 999).toString(), QStringLiteral("2024-02-09 04:05:06"));
    EXPECT_EQ(utc(33, 4, 3).toString(), QStringLiteral("0033-04-03 00:00:00"));
    EXPECT_EQ(utc(12345, 1, 1).toString(), QStringLiteral("12345-01-01 00:00:00"));
}

TEST(TimeUtc, TheCurrentTimeIsTheSystems)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const long long now = TimeUtc::makeCurrent().toValueTime();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(TimeUtc, CopiesAndMoves)
{
    TimeUtc time = utc(2024, 5, 6, 7, 8, 9, 10);
    const TimeUtc copy(time);
    EXPECT_EQ(copy, time);
    const TimeUtc moved(std::move(time));
    EXPECT_EQ(moved, copy);
    TimeUtc assigned;
    assigned = moved;
    EXPECT_EQ(assigned, copy);
}

} // namespace
} // namespace KelStd
