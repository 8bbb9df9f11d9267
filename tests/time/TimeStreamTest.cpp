#include "support/Printers.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <KelStd/time/TimeSpan.h>

#include <QtCore/QDataStream>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::utc;

template <typename Time>
std::string savedHex(const Time &time)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    time.save(stream);
    return bytes.toHex(' ').toStdString();
}

template <typename Time>
bool loadHex(Time &time, const char *hex)
{
    QDataStream stream(QByteArray::fromHex(hex));
    return time.load(stream);
}

// version, year, month, day, hour, minute, second, milliseconds
const char utcBytes[] = "00 00 00 01 07 e8 02 1d 0c 22 38 03 15"; // 2024-02-29 12:34:56.789
// ... leap seconds
const char gpsTBytes[] = "00 00 00 01 07 e8 02 1d 0c 22 38 03 15 00 00 00 12";
// version, weeks, seconds, leap seconds
const char gpsWBytes[] = "00 00 00 01 00 00 08 fc 00 05 46 00 00 00 00 12"; // 2300, 345600
// version, UTC block, offset
const char localBytes[] = "00 00 00 01 00 00 00 01 07 e8 02 1d 0c 22 38 03 15 ff ff f1 f0"; // -3600
const char spanBytes[] = "00 00 00 01 ff ff ff ff fa 81 c6 77"; // -92158345 ms

TEST(TimeStream, UtcBytes)
{
    EXPECT_EQ(savedHex(utc(2024, 2, 29, 12, 34, 56, 789)), utcBytes);
    EXPECT_EQ(savedHex(TimeUtc()), "00 00 00 01 07 b2 01 01 00 00 00 00 00");
    // Years and milliseconds beyond the signed range keep their bits.
    EXPECT_EQ(savedHex(utc(65535, 255, 254, 253, 252, 251, 65534)),
              "00 00 00 01 ff ff ff fe fd fc fb ff fe");
    TimeUtc time;
    EXPECT_TRUE(loadHex(time, utcBytes));
    EXPECT_EQ(time, utc(2024, 2, 29, 12, 34, 56, 789));
    EXPECT_TRUE(loadHex(time, "00 00 00 01 ff ff ff fe fd fc fb ff fe"));
    EXPECT_EQ(time.year(), 65535);
    EXPECT_EQ(time.month(), 255);
    EXPECT_EQ(time.millionSecond(), 65534);
}

TEST(TimeStream, GpsCalendarBytes)
{
    EXPECT_EQ(savedHex(TimeGpsT(2024, 2, 29, 12, 34, 56, 789)), gpsTBytes);
    EXPECT_EQ(savedHex(TimeGpsT()), "00 00 00 01 07 b2 01 01 00 00 00 00 00 00 00 00 00");
    TimeGpsT time;
    EXPECT_TRUE(loadHex(time, gpsTBytes));
    EXPECT_EQ(time.toString(true), QStringLiteral("2024-02-29 12:34:56.789"));
    EXPECT_EQ(time.leapSeconds(), 18);
    // The count is taken as it stands there.
    EXPECT_TRUE(loadHex(time, "00 00 00 01 07 e8 02 1d 0c 22 38 03 15 ff ff ff ff"));
    EXPECT_EQ(time.leapSeconds(), -1);
}

TEST(TimeStream, GpsWeekBytes)
{
    EXPECT_EQ(savedHex(TimeGpsW(2300, 345600)), gpsWBytes);
    EXPECT_EQ(savedHex(TimeGpsW()), "00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00");
    EXPECT_EQ(savedHex(TimeUtc(0).toGpsW()), "00 00 00 01 ff ff fd f5 00 05 45 f7 ff ff ff f7");
    TimeGpsW time;
    EXPECT_TRUE(loadHex(time, gpsWBytes));
    EXPECT_EQ(time.gps_weeks(), 2300);
    EXPECT_EQ(time.gps_seconds(), 345600);
    EXPECT_EQ(time.leapSeconds(), 18);
}

TEST(TimeStream, GpsWeeksOfAnyNumberAreSafe)
{
    for (const char *hex : {"00 00 00 01 7f ff ff ff 7f ff ff ff 7f ff ff ff",
                            "00 00 00 01 80 00 00 00 80 00 00 00 80 00 00 00"}) {
        TimeGpsW time;
        ASSERT_TRUE(loadHex(time, hex));
        EXPECT_EQ(time.toValueTime(), time.toUtc().toValueTime());
        EXPECT_EQ(time - time, 0);
        EXPECT_EQ(time.compare(TimeGpsW(time)), 0);
        EXPECT_EQ(time.toGpsT().toUtc().toString().isEmpty(), time.toGpsT().toValueTime() == 0);
        time += std::numeric_limits<long long>::max();
        EXPECT_GE(time.gps_seconds(), 0);
        EXPECT_LT(time.gps_seconds(), 604800);
    }
}

TEST(TimeStream, LocalBytes)
{
    EXPECT_EQ(savedHex(TimeLocal(utc(2024, 2, 29, 12, 34, 56, 789), -3600)), localBytes);
    EXPECT_EQ(savedHex(TimeLocal()),
              "00 00 00 01 00 00 00 01 07 b2 01 01 00 00 00 00 00 00 00 00 00");
    TimeLocal time;
    EXPECT_TRUE(loadHex(time, localBytes));
    EXPECT_EQ(time.toUtc(), utc(2024, 2, 29, 12, 34, 56, 789));
    EXPECT_EQ(time.timeZoneSeconds(), -3600);
}

TEST(TimeStream, SpanBytes)
{
    EXPECT_EQ(savedHex(TimeSpan(-92158345)), spanBytes);
    EXPECT_EQ(savedHex(TimeSpan()), "00 00 00 01 00 00 00 00 00 00 00 00");
    TimeSpan span;
    EXPECT_TRUE(loadHex(span, spanBytes));
    EXPECT_EQ(span.time_span(), -92158345);
}

/// Another version, no bytes at all: false, and what was there before is gone.
template <typename Time>
void expectRefused(Time time, const char *bytes)
{
    const std::string defaults = savedHex(Time());
    ASSERT_NE(savedHex(time), defaults);
    for (const char *version : {"00 00 00 02", "00 00 00 00", "ff ff ff ff", "01 00 00 00", ""}) {
        Time loaded(time);
        const QByteArray changed = QByteArray(version) + (*version ? bytes + 11 : "");
        EXPECT_FALSE(loadHex(loaded, changed.constData())) << version;
        EXPECT_EQ(savedHex(loaded), defaults) << version;
    }
}

TEST(TimeStream, AnotherVersionIsRefusedAndResets)
{
    expectRefused(utc(2024, 5, 6, 7, 8, 9, 10), utcBytes);
    expectRefused(TimeGpsT(2024, 5, 6, 7, 8, 9, 10), gpsTBytes);
    expectRefused(TimeGpsW(2300, 5), gpsWBytes);
    expectRefused(TimeLocal(utc(2024, 5, 6), 3600), localBytes);
    expectRefused(TimeSpan(7), spanBytes);
}

TEST(TimeStream, AnotherVersionOfTheInnerBlockIsRefused)
{
    TimeLocal time(utc(2024, 5, 6), 3600);
    EXPECT_FALSE(loadHex(time, "00 00 00 01 00 00 00 02 07 e8 02 1d 0c 22 38 03 15 ff ff f1 f0"));
    EXPECT_EQ(savedHex(time), savedHex(TimeLocal()));
}

// The loaders leave the stream's status to the caller: what a short stream lacks is zero.
TEST(TimeStream, AShortStreamLoadsZeros)
{
    TimeUtc time;
    EXPECT_TRUE(loadHex(time, "00 00 00 01 07 e8 02"));
    EXPECT_EQ(time.year(), 2024);
    EXPECT_EQ(time.month(), 2);
    EXPECT_EQ(time.day(), 0);
    EXPECT_EQ(time.millionSecond(), 0);
    TimeSpan span(5);
    EXPECT_TRUE(loadHex(span, "00 00 00 01 00 00"));
    EXPECT_EQ(span.time_span(), 0);
    TimeGpsW week;
    EXPECT_TRUE(loadHex(week, "00 00 00 01 00 00 08 fc"));
    EXPECT_EQ(week.gps_weeks(), 2300);
    EXPECT_EQ(week.gps_seconds(), 0);
}

TEST(TimeStream, TheCallersByteOrderIsUsed)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    TimeSpan(1).save(stream);
    EXPECT_EQ(bytes.toHex(' ').toStdString(), "01 00 00 00 01 00 00 00 00 00 00 00");
}

} // namespace
} // namespace KelStd
