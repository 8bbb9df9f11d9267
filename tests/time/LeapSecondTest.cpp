#include "support/Printers.h"
#include "support/TemporaryHome.h"
#include "time/LeapSecondRows.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <gtest/gtest.h>

#include <iterator>

namespace KelStd {
namespace {

using test::LeapSecondRow;
using test::leapSecondRows;

/// A row of the table with the count before it and its instant.
struct Step
{
    long long midnight; ///< UTC count of the row's date
    int before;
    int after;
};

/// All 27.
QList<Step> steps()
{
    QList<Step> made;
    for (auto row = std::begin(leapSecondRows) + 1; row != std::end(leapSecondRows); ++row)
        made << Step{test::midnight(row->year, row->month, 1), (row - 1)->gpsMinusUtc,
                     row->gpsMinusUtc};
    return made;
}

/// The GPS calendar fields of an instant of the GPS scale, counts given by the constructor.
TimeGpsT gpsFields(long long gps)
{
    const TimeUtc fields(gps);
    return TimeGpsT(fields.year(), fields.month(), fields.day(), fields.hour(), fields.minute(),
                    fields.second(), fields.millionSecond());
}

TimeGpsT gpsFields(long long gps, int supplied)
{
    const TimeUtc fields(gps);
    return TimeGpsT(fields.year(), fields.month(), fields.day(), fields.hour(), fields.minute(),
                    fields.second(), fields.millionSecond(), supplied);
}

TEST(LeapSeconds, ThereAre27Steps)
{
    EXPECT_EQ(steps().size(), 27);
    EXPECT_EQ(steps().last().midnight, 1483228800000); // date -u -d 2017-01-01 +%s
}

TEST(LeapSeconds, OnTheUtcScaleTheStepIsAtTheDatesMidnight)
{
    for (const Step &step : steps()) {
        SCOPED_TRACE(testing::PrintToString(TimeUtc(step.midnight)));
        EXPECT_EQ(TimeUtc(step.midnight - 1).toGpsT().leapSeconds(), step.before);
        EXPECT_EQ(TimeUtc(step.midnight).toGpsT().leapSeconds(), step.after);
        EXPECT_EQ(TimeUtc(step.midnight - 1).toGpsW().leapSeconds(), step.before);
        EXPECT_EQ(TimeUtc(step.midnight).toGpsW().leapSeconds(), step.after);
        EXPECT_EQ(TimeUtc(step.midnight - 1).toGpsT().toValueTime(), step.midnight - 1);
        EXPECT_EQ(TimeUtc(step.midnight).toGpsT().toValueTime(), step.midnight);
    }
}

// By looking twice the step is where the date has the new count taken on; as long as counts are not
// positive, the first look is still in the old row and the step is where it has the old one.
TEST(LeapSeconds, OnTheGpsScaleTheStepIsSettledByTheSecondLook)
{
    for (const Step &step : steps()) {
        SCOPED_TRACE(testing::PrintToString(TimeUtc(step.midnight)));
        const long long gps = step.midnight + (step.after > 0 ? step.after : step.before) * 1000LL;
        EXPECT_EQ(gpsFields(gps - 1).leapSeconds(), step.before);
        EXPECT_EQ(gpsFields(gps).leapSeconds(), step.after);
        if (gps >= TimeGpsW::g_gpsStartTimTick) {
            const long long seconds = (gps - TimeGpsW::g_gpsStartTimTick) / 1000;
            const auto week = static_cast<unsigned short>(seconds / 604800);
            const auto rest = static_cast<unsigned int>(seconds % 604800);
            EXPECT_EQ(TimeGpsW(week, rest).leapSeconds(), step.after);
            EXPECT_EQ(TimeGpsW(week, rest - 1).leapSeconds(), step.before);
        }
    }
}

TEST(LeapSeconds, TheSecondLookSettles2017)
{
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 17, 0).leapSeconds(), 17);
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 17, 999).leapSeconds(), 17);
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 18, 0).leapSeconds(), 18);
}

TEST(LeapSeconds, GpsInstantsLookedUpOnceStepAtMidnight)
{
    for (const Step &step : steps()) {
        TimeGpsT time;
        EXPECT_TRUE(time.fromGpsTime(step.midnight - 1));
        EXPECT_EQ(time.leapSeconds(), step.before);
        EXPECT_TRUE(time.fromGpsTime(step.midnight));
        EXPECT_EQ(time.leapSeconds(), step.after);
        TimeGpsW week;
        EXPECT_TRUE(week.fromGpsTime(step.midnight - 1));
        EXPECT_EQ(week.leapSeconds(), step.before);
        EXPECT_TRUE(week.fromGpsTime(step.midnight));
        EXPECT_EQ(week.leapSeconds(), step.after);
    }
}

TEST(LeapSeconds, BeforeTheFirstRowAndAfterTheLast)
{
    EXPECT_EQ(TimeUtc(1971, 12, 31, 23, 59, 59, 999).toGpsT().leapSeconds(), -9);
    EXPECT_EQ(TimeUtc(1972, 1, 1, 0, 0, 0, 0).toGpsT().leapSeconds(), -9);
    EXPECT_EQ(TimeUtc(1, 1, 1, 0, 0, 0, 0).toGpsT().leapSeconds(), -9);
    EXPECT_EQ(TimeGpsT(1900, 1, 1, 0, 0, 0, 0).leapSeconds(), -9);
    EXPECT_EQ(TimeUtc(2100, 1, 1, 0, 0, 0, 0).toGpsT().leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(65535, 12, 31, 23, 59, 59, 999).leapSeconds(), 18);
}

// Both sides of every step, in steps of half a second over half a minute, whatever is supplied.
TEST(LeapSeconds, ConversionsComeBackAroundEveryStep)
{
    for (const Step &step : steps()) {
        for (long long utc = step.midnight - 30000; utc <= step.midnight + 30000; utc += 500) {
            const int right = utc < step.midnight ? step.before : step.after;
            const TimeGpsT gps = TimeUtc(utc).toGpsT();
            ASSERT_EQ(gps.leapSeconds(), right);
            ASSERT_EQ(gps.toUtc(), TimeUtc(utc));
            // The fields alone give the count back.
            ASSERT_EQ(gpsFields(utc + right * 1000LL).leapSeconds(), right) << utc;
            ASSERT_EQ(TimeUtc(utc).toGpsW().toUtc(), TimeUtc(utc - utc % 1000)) << utc;
            for (const int supplied : {right, -1000000, -9, 0, 17, 18, 19, 1000000}) {
                TimeGpsT suppliedTo;
                ASSERT_TRUE(suppliedTo.fromValueTime(utc, supplied));
                ASSERT_EQ(suppliedTo.toValueTime(), utc) << supplied;
                TimeGpsW week;
                ASSERT_TRUE(week.fromValueTime(utc, supplied));
                ASSERT_EQ(week.toValueTime(), utc - utc % 1000) << supplied;
                if (supplied == right) {
                    ASSERT_EQ(suppliedTo.leapSeconds(), right);
                    ASSERT_EQ(week.leapSeconds(), right);
                }
            }
        }
    }
}

TEST(LeapSeconds, ASuppliedCountIsBelievedBeyondTheTableOnly)
{
    // Greater than the table's last count, and later than its last row with the count taken off.
    EXPECT_EQ(TimeGpsT(2030, 1, 1, 0, 0, 0, 0, 19).leapSeconds(), 19);
    EXPECT_EQ(TimeGpsT(2030, 1, 1, 0, 0, 0, 0, 18).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(2030, 1, 1, 0, 0, 0, 0, 17).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(2030, 1, 1, 0, 0, 0, 0, -5).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 19, 1, 19).leapSeconds(), 19);
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 19, 0, 19).leapSeconds(), 18);
    EXPECT_EQ(TimeGpsT(2017, 1, 1, 0, 0, 17, 0, 19).leapSeconds(), 17);
    EXPECT_EQ(TimeGpsT(2010, 1, 1, 0, 0, 0, 0, 19).leapSeconds(), 15);
    EXPECT_EQ(TimeGpsT(2010, 1, 1, 0, 0, 0, 0, 14).leapSeconds(), 15);
    EXPECT_EQ(TimeGpsT(2010, 1, 1, 0, 0, 0, 0, 2147483647).leapSeconds(), 15);
    EXPECT_EQ(TimeGpsT(2010, 1, 1, 0, 0, 0, 0, -2147483647 - 1).leapSeconds(), 15);

    TimeGpsT time;
    EXPECT_TRUE(time.fromValueTime(1483228800001, 19));
    EXPECT_EQ(time.leapSeconds(), 19);
    EXPECT_EQ(time.toString(true), QStringLiteral("2017-01-01 00:00:19.001"));
    EXPECT_TRUE(time.fromValueTime(1483228800000, 19));
    EXPECT_EQ(time.leapSeconds(), 18);
    EXPECT_TRUE(time.fromValueTime(1483228800001, 17));
    EXPECT_EQ(time.leapSeconds(), 18);
}

TEST(LeapSeconds, AtEveryStepASuppliedCountIsJudgedByTheFields)
{
    for (const Step &step : steps()) {
        const long long gps = step.midnight + step.after * 1000LL;
        for (const int supplied : {step.before, step.after, step.after + 1})
            EXPECT_EQ(gpsFields(gps, supplied).leapSeconds(), step.after) << supplied;
    }
}

/// Where the times of the list begin to count.
constexpr long long secondsFrom1900 = 2208988800;

TEST(LeapSeconds, AreThoseOfTheTimeZoneDatabase)
{
    const QByteArray list = test::readFile(QStringLiteral("/usr/share/zoneinfo/leap-seconds.list"));
    QList<Step> listed;
    for (const QByteArray &line : list.split('\n')) {
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QList<QByteArray> words = line.simplified().split(' ');
        ASSERT_GE(words.size(), 2) << line.constData();
        bool timeOk = false;
        bool countOk = false;
        const long long midnight = (words.at(0).toLongLong(&timeOk) - secondsFrom1900) * 1000;
        const int gpsMinusUtc = words.at(1).toInt(&countOk) - 19;
        ASSERT_TRUE(timeOk && countOk) << line.constData();
        listed << Step{midnight, 0, gpsMinusUtc};
    }
    ASSERT_EQ(listed.size(), static_cast<int>(std::size(leapSecondRows)))
        << "the list has a leap second that the library does not know";
    for (const Step &row : listed) {
        SCOPED_TRACE(testing::PrintToString(TimeUtc(row.midnight)));
        EXPECT_EQ(TimeUtc(row.midnight).toGpsT().leapSeconds(), row.after);
    }
    for (int i = 1; i < listed.size(); ++i)
        EXPECT_EQ(TimeUtc(listed.at(i).midnight - 1).toGpsT().leapSeconds(),
                  listed.at(i - 1).after);
}

} // namespace
} // namespace KelStd
