#include <KelStd/time/Epoch.h>

#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <gtest/gtest.h>

#include <time.h>

namespace KelStd {
namespace {

using Mistake = EpochMistake;

Epoch epochOf(const char *text, TimeScale scale, std::optional<int> offset = 0)
{
    EpochFailure failure{Mistake::WrongForm, QStringLiteral("of the call before")};
    const auto epoch = Epoch::read(QString::fromUtf8(text), scale, offset, &failure);
    EXPECT_TRUE(epoch) << text << ": " << failure.text;
    EXPECT_FALSE(failure) << text;
    EXPECT_EQ(failure.text, QString());
    return epoch.value_or(Epoch());
}

struct Written
{
    TimeScale scale;
    const char *text;
    int offset; ///< [s]
};

/// One epoch, 2024-02-29 12:34:56 UTC, in each scale. Week 2303 began on 2024-02-25, four days and
/// 12:35:14 earlier.
TEST(EpochText, IsTheSameEpochInEveryForm)
{
    const Written rows[] = {
        {TimeScale::Utc, "2024-02-29 12:34:56", 0},
        {TimeScale::Utc, "2024-02-29T12:34:56", 0},
        {TimeScale::Utc, "2024-02-29T12:34:56Z", 0},
        {TimeScale::Utc, "2024-02-29 12:34:56Z", 0},
        {TimeScale::Utc, "2024-02-29 12:34:56.0", 0},
        {TimeScale::Utc, "2024-02-29 12:34:56", 19800},
        {TimeScale::GpsT, "2024-02-29 12:35:14", 0},
        {TimeScale::GpsT, "2024-02-29T12:35:14.000", 0},
        {TimeScale::GpsW, "2303:390914", 0},
        {TimeScale::GpsW, "2303 390914", 0},
        {TimeScale::GpsW, "2303, 390914", 0},
        {TimeScale::GpsW, "2303week 390914sec", 0}, // as TimeGpsW::toString writes it
        {TimeScale::Local, "2024-02-29 18:04:56", 19800},
        {TimeScale::Local, "2024-02-29 07:34:56", -18000},
    };
    for (const Written &row : rows) {
        SCOPED_TRACE(row.text);
        const Epoch epoch = epochOf(row.text, row.scale, row.offset);
        EXPECT_EQ(epoch.utc, test::utc(2024, 2, 29, 12, 34, 56));
        EXPECT_EQ(epoch.utc.toValueTime(), 1709210096000); // date -u -d '2024-02-29 12:34:56' +%s
        EXPECT_EQ(epoch.gpsT.toString(true), QStringLiteral("2024-02-29 12:35:14.000"));
        EXPECT_EQ(epoch.gpsT.leapSeconds(), 18);
        EXPECT_EQ(epoch.gpsW.gps_weeks(), 2303);
        EXPECT_EQ(epoch.gpsW.gps_seconds(), 390914);
        EXPECT_EQ(epoch.local.toUtc(), epoch.utc);
        EXPECT_EQ(epoch.local.timeZoneSeconds(), row.offset);
        EXPECT_FALSE(epoch.isLeapSecond());
    }
}

TEST(EpochText, WithoutAnOffsetLocalTimesHaveTheSystems)
{
    const bool wasSet = qEnvironmentVariableIsSet("TZ");
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "KEL-05:30"); // POSIX: a zone without daylight saving, 5:30 h east of Greenwich
    tzset();
    const Epoch epoch = epochOf("2024-02-29 18:04:56", TimeScale::Local, std::nullopt);
    if (wasSet)
        qputenv("TZ", before);
    else
        qunsetenv("TZ");
    tzset();
    EXPECT_EQ(epoch.local.timeZoneSeconds(), 19800);
    EXPECT_EQ(epoch.utc.toValueTime(), 1709210096000); // 12:34:56 UTC
}

TEST(EpochText, DecimalsAreFractionsOfASecond)
{
    EXPECT_EQ(epochOf("2024-01-01 00:00:00.5", TimeScale::Utc).utc.millionSecond(), 500);
    EXPECT_EQ(epochOf("2024-01-01 00:00:00.05", TimeScale::Utc).utc.millionSecond(), 50);
    EXPECT_EQ(epochOf("2024-01-01 00:00:00.005", TimeScale::Utc).utc.millionSecond(), 5);
}

// As receivers write the epochs of 5 to 20 Hz, and RINEX with seven decimals.
TEST(EpochText, FractionsPassThroughEveryScale)
{
    struct Row
    {
        TimeScale scale;
        const char *text;
        int milliseconds;
    };
    const Row rows[] = {
        {TimeScale::Utc, "2024-02-29T12:34:56.05Z", 50},
        {TimeScale::Utc, "2024-02-29 12:34:56.9990000", 999},
        {TimeScale::GpsT, "2024-02-29 12:35:14.2000000", 200},
        {TimeScale::Local, "2024-02-29 12:34:56.1", 100},
        {TimeScale::GpsW, "2303:390914.05", 50},
        {TimeScale::GpsW, "2303 390914.2", 200},
        {TimeScale::GpsW, "2303, 390914.9990000000", 999},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        const Epoch epoch = epochOf(row.text, row.scale);
        EXPECT_EQ(epoch.utc.toValueTime(), 1709210096000 + row.milliseconds);
        EXPECT_EQ(epoch.utc.millionSecond(), row.milliseconds);
        EXPECT_EQ(epoch.gpsT.millionSecond(), row.milliseconds);
        EXPECT_EQ(epoch.local.toUtc().millionSecond(), row.milliseconds);
        EXPECT_EQ(epoch.gpsW.gps_seconds(), 390914);
    }
}

// The last millisecond of week 2303 and the first of the next: Saturday, 2024-03-02.
TEST(EpochText, AFractionDoesNotLeadIntoAnotherWeek)
{
    const Epoch last = epochOf("2303:604799.999", TimeScale::GpsW);
    EXPECT_EQ(last.gpsT.toString(true), QStringLiteral("2024-03-02 23:59:59.999"));
    EXPECT_EQ(last.gpsW.gps_weeks(), 2303);
    EXPECT_EQ(epochOf("2304:0.000", TimeScale::GpsW).gpsT - last.gpsT, 1);
}

// The leap second of 2016-12-31 23:59:60 is the GPS second that begins at 2017-01-01 00:00:17.
TEST(EpochText, TellsALeapSecondFromItsNeighbours)
{
    EXPECT_FALSE(epochOf("2017-01-01 00:00:16.999", TimeScale::GpsT).isLeapSecond());
    EXPECT_TRUE(epochOf("2017-01-01 00:00:17", TimeScale::GpsT).isLeapSecond());
    EXPECT_TRUE(epochOf("2017-01-01 00:00:17.999", TimeScale::GpsT).isLeapSecond());
    EXPECT_TRUE(epochOf("1930:17", TimeScale::GpsW).isLeapSecond());
    EXPECT_FALSE(epochOf("2017-01-01 00:00:18", TimeScale::GpsT).isLeapSecond());
    EXPECT_FALSE(epochOf("2016-12-31 23:59:59.999", TimeScale::Utc).isLeapSecond());
    EXPECT_FALSE(epochOf("2017-01-01 00:00:00", TimeScale::Utc).isLeapSecond());
}

struct Refusal
{
    TimeScale scale;
    const char *text;
    Mistake mistake;
};

TEST(EpochText, WhatIsNoneIsRefusedWithItsKind)
{
    const Refusal rows[] = {
        {TimeScale::Utc, "bad", Mistake::WrongForm},
        {TimeScale::Utc, "", Mistake::WrongForm},
        {TimeScale::Utc, " 2024-01-01 00:00:00", Mistake::WrongForm},
        {TimeScale::Utc, "2024-01-01", Mistake::WrongForm},
        {TimeScale::Utc, "2024-1-1 00:00:00", Mistake::WrongForm},
        {TimeScale::Utc, "2024-01-01 00:00:00.", Mistake::WrongForm},
        {TimeScale::Utc, "2024-01-01 00:00:00.1234", Mistake::TooFine},
        {TimeScale::GpsT, "2024-01-01 00:00:00.0000001", Mistake::TooFine},
        {TimeScale::Local, "2024-01-01 00:00:00.12300004", Mistake::TooFine},
        {TimeScale::GpsW, "2300:1.0005", Mistake::TooFine},
        {TimeScale::GpsW, "2300:1.", Mistake::WrongForm},
        {TimeScale::GpsW, "2300:.5", Mistake::WrongForm},
        {TimeScale::GpsW, "2300week 1.5sec", Mistake::WrongForm},
        {TimeScale::Utc, "2024-01-01 00:00:00,5", Mistake::WrongForm},
        {TimeScale::Utc, "12024-01-01 00:00:00", Mistake::WrongForm},
        {TimeScale::Utc, "\xD9\xA2\xD9\xA0\xD9\xA2\xD9\xA4-01-01 00:00:00", Mistake::WrongForm},
        {TimeScale::Utc, "2024-02-30 00:00:00", Mistake::NoSuchTime},
        {TimeScale::Utc, "2024-01-01 24:00:00", Mistake::NoSuchTime},
        {TimeScale::Utc, "0000-01-01 00:00:00", Mistake::NoSuchTime},
        {TimeScale::Utc, "2016-12-31 23:59:60", Mistake::LeapSecondInUtc},
        {TimeScale::Utc, "2016-12-31T23:59:60.999Z", Mistake::LeapSecondInUtc},
        {TimeScale::Utc, "2024-02-30 12:34:60", Mistake::NoSuchTime},
        {TimeScale::Utc, "2024-02-30 23:59:60", Mistake::NoSuchTime},
        {TimeScale::Utc, "2024-02-29 12:34:60", Mistake::NoSuchTime},
        {TimeScale::Utc, "2024-02-29 23:58:60", Mistake::NoSuchTime},
        {TimeScale::Utc, "2024-02-29 22:59:60", Mistake::NoSuchTime},
        {TimeScale::Utc, "2016-12-31 23:59:61", Mistake::NoSuchTime},
        {TimeScale::Utc, "0001-01-01 00:00:00", Mistake::YearOutOfRange},
        {TimeScale::Utc, "9999-12-31 23:59:59", Mistake::YearOutOfRange},
        {TimeScale::GpsT, "2024-01-01T00:00:00Z", Mistake::WrongForm},
        {TimeScale::GpsT, "2016-12-31 23:59:60", Mistake::NoSuchTime},
        {TimeScale::Local, "2024-01-01T00:00:00Z", Mistake::WrongForm},
        {TimeScale::GpsW, "2300", Mistake::WrongForm},
        {TimeScale::GpsW, "2300:1,5", Mistake::WrongForm},
        {TimeScale::GpsW, "2300:604800.5", Mistake::WeekOutOfRange},
        {TimeScale::GpsW, "65536:0", Mistake::WeekOutOfRange},
        {TimeScale::GpsW, "2300:604800", Mistake::WeekOutOfRange},
    };
    for (const Refusal &row : rows) {
        SCOPED_TRACE(row.text);
        const QString text = QString::fromUtf8(row.text);
        EpochFailure failure;
        EXPECT_FALSE(Epoch::read(text, row.scale, 0, &failure));
        EXPECT_EQ(failure.kind, row.mistake);
        EXPECT_NE(failure.text, QString());
        EXPECT_FALSE(Epoch::read(text, row.scale, 0)) << "no failure is asked for";
    }
}

TEST(EpochText, AnOffsetCannotLeadOutOfTheYears)
{
    constexpr int farEast = 2147483647; // [s]
    EpochFailure failure;
    EXPECT_FALSE(
        Epoch::read(QStringLiteral("9990-01-01 00:00:00"), TimeScale::Utc, farEast, &failure));
    EXPECT_EQ(failure.kind, Mistake::YearOutOfRange);
    EXPECT_EQ(epochOf("2024-01-01 00:00:00", TimeScale::Utc, farEast).local.toString(),
              QStringLiteral("2092-01-19 03:14:07"));
}

TEST(TimeScales, AreFoundByTheirNames)
{
    const auto scales = timeScales();
    ASSERT_EQ(scales.size(), 4);
    for (int i = 0; i < scales.size(); ++i) {
        EXPECT_EQ(static_cast<int>(scales.at(i).scale), i);
        const TimeScaleRow *found = findTimeScale(QString::fromLatin1(scales.at(i).name));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->scale, scales.at(i).scale);
    }
    EXPECT_EQ(findTimeScale(QStringLiteral("tai")), nullptr);
    EXPECT_EQ(findTimeScale(QString()), nullptr);
}

TEST(TimeScales, ReadTheFormsThatTheyName)
{
    for (const TimeScaleRow &row : timeScales()) {
        for (QString form : QString::fromLatin1(row.forms).split(QStringLiteral(", ")))
            EXPECT_TRUE(Epoch::read(form.remove(QLatin1Char('"')), row.scale, 0)) << form;
    }
}

} // namespace
} // namespace KelStd
