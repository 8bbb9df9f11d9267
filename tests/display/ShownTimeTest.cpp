// stShowConfig::getParamValueString of times and spans of time.

#include "support/Printers.h"

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>

#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <string>

namespace KelStd {
namespace {

constexpr qint64 newYear2024 = 1704067200000; // date -u -d 2024-01-01 +%s, times 1000

QString shown(const QVariant &value, int format)
{
    stShowConfig config;
    config.timeFormat = static_cast<EFormat>(format);
    return config.getParamValueString(Param(ValueType_Time, Unit_None, value), -1);
}

/// An instant in the four scales. GPS minus UTC is TAI-UTC of IERS Bulletin C less 19 s; the days
/// since 1980-01-06, of which seven make a week, are those of the calendar.
struct Instant
{
    long long utcMilliseconds; ///< date -u -d "..." +%s, times 1000
    int leapSeconds;           ///< GPS minus UTC [s]
    const char *utc;
    const char *gps;
    const char *week;
};

const Instant instants[] = {
    {newYear2024, 18, "2024-01-01 00:00:00", "2024-01-01 00:00:18", "2295week 86418sec"},
    {newYear2024 + 999, 18, "2024-01-01 00:00:00", "2024-01-01 00:00:18", "2295week 86418sec"},
    {1483228800000, 18, "2017-01-01 00:00:00", "2017-01-01 00:00:18", "1930week 18sec"},
    {1483228799000, 17, "2016-12-31 23:59:59", "2017-01-01 00:00:16", "1930week 16sec"},
    {1136073600000, 14, "2006-01-01 00:00:00", "2006-01-01 00:00:14", "1356week 14sec"},
    {1136073599000, 13, "2005-12-31 23:59:59", "2006-01-01 00:00:12", "1356week 12sec"},
    // the first rollover of the ten bits of the GPS week
    {935279987000, 13, "1999-08-21 23:59:47", "1999-08-22 00:00:00", "1024week 0sec"},
    {935279986000, 13, "1999-08-21 23:59:46", "1999-08-21 23:59:59", "1023week 604799sec"},
    {315964800000, 0, "1980-01-06 00:00:00", "1980-01-06 00:00:00", "0week 0sec"},
};

/// The instant as the system shows it with its present offset from UTC, which local times have.
QString localText(long long utcMilliseconds)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const std::time_t moved = static_cast<std::time_t>(utcMilliseconds / 1000) + local.tm_gmtoff;
    std::tm fields{};
    gmtime_r(&moved, &fields);
    char buffer[32];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &fields);
    return QString::fromLatin1(buffer);
}

TEST(ShownTime, OfEveryScaleInEveryScale)
{
    for (const Instant &instant : instants) {
        const qint64 count = instant.utcMilliseconds;
        const QVariantList sources[] = {
            {30, count},
            {32, count, instant.leapSeconds},
            {33, count, instant.leapSeconds},
        };
        for (const QVariantList &source : sources) {
            SCOPED_TRACE(std::string(instant.utc) + " from "
                         + source.first().toString().toStdString());
            EXPECT_EQ(shown(source, 30), QString::fromLatin1(instant.utc));
            EXPECT_EQ(shown(source, 31), localText(count));
            EXPECT_EQ(shown(source, 32), QString::fromLatin1(instant.gps));
            EXPECT_EQ(shown(source, 33), QString::fromLatin1(instant.week));
        }
        for (const int offset : {0, 28800, -34200}) {
            const QVariantList local = {31, count, offset};
            EXPECT_EQ(shown(local, 30), QString::fromLatin1(instant.utc));
            EXPECT_EQ(shown(local, 32), QString::fromLatin1(instant.gps));
            EXPECT_EQ(shown(local, 33), QString::fromLatin1(instant.week));
        }
    }
}

TEST(ShownTime, ALocalTimeKeepsItsOwnOffset)
{
    EXPECT_EQ(shown(QVariantList{31, newYear2024, 28800}, 31), // 2024-01-01 UTC, in Beijing
              QStringLiteral("2024-01-01 08:00:00"));
    EXPECT_EQ(shown(QVariantList{31, newYear2024, -34200}, 31),
              QStringLiteral("2023-12-31 14:30:00"));
}

TEST(ShownTime, AWeekLosesItsMilliseconds)
{
    EXPECT_EQ(shown(QVariantList{33, newYear2024 + 999, 18}, 30),
              QStringLiteral("2024-01-01 00:00:00"));
}

TEST(ShownTime, ALeapSecondNewerThanTheTableIsTrusted)
{
    EXPECT_EQ(shown(QVariantList{32, newYear2024, 19}, 32), QStringLiteral("2024-01-01 00:00:19"));
    EXPECT_EQ(shown(QVariantList{32, newYear2024, 19}, 30), QStringLiteral("2024-01-01 00:00:00"));
    // An older one is not.
    EXPECT_EQ(shown(QVariantList{32, newYear2024, 17}, 32), QStringLiteral("2024-01-01 00:00:18"));
}

TEST(ShownTime, InAnyOtherFormatIsEmpty)
{
    for (int format = -2; format <= 40; ++format) {
        if (format >= 30 && format <= 33)
            continue;
        EXPECT_EQ(shown(QVariantList{30, newYear2024}, format), QString()) << format;
        EXPECT_EQ(shown(QVariantList{33, newYear2024, 18}, format), QString()) << format;
    }
}

TEST(ShownTime, OfAVariantThatHoldsNoTimeIsEmpty)
{
    const QVariant variants[] = {
        QVariant(),
        QVariant(newYear2024),
        QVariant(30),
        QVariant(QStringLiteral("2024-01-01 00:00:00")),
        QVariant(QVariantList()),
        QVariant(QVariantList{30}),
        QVariant(QVariantList{30, newYear2024, 0}),
        QVariant(QVariantList{31, newYear2024}),
        QVariant(QVariantList{32, newYear2024}),
        QVariant(QVariantList{32, newYear2024, 18, 0}),
        QVariant(QVariantList{33, newYear2024}),
        QVariant(QVariantList{0, newYear2024}),
        QVariant(QVariantList{20, newYear2024}),
        QVariant(QVariantList{34, newYear2024, 18}),
        QVariant(QVariantList{99, newYear2024}),
        QVariant(QVariantList{-1, newYear2024}),
        QVariant(QVariantList{QVariant(), newYear2024}),
        QVariant(QVariantList{QStringLiteral("UTC"), newYear2024}),
        QVariant(QStringList{QStringLiteral("30")}),
    };
    for (const QVariant &variant : variants) {
        for (const int format : {30, 31, 32, 33})
            EXPECT_EQ(shown(variant, format), QString()) << variant.typeName();
    }
}

TEST(ShownTime, OfAnExtremeCountIsShownAtOnce)
{
    for (const qint64 count :
         {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(), qint64(-1)}) {
        for (const QVariantList &source :
             {QVariantList{30, count}, QVariantList{31, count, std::numeric_limits<int>::max()},
              QVariantList{32, count, std::numeric_limits<int>::max()},
              QVariantList{33, count, std::numeric_limits<int>::min()}}) {
            for (const int format : {30, 31, 32, 33})
                EXPECT_LT(shown(source, format).size(), 60);
        }
    }
}

TEST(ShownTimeSpan, IsInWords)
{
    struct Row
    {
        QVariant milliseconds;
        const char *expected;
    };
    const Row rows[] = {
        {90061001LL, "1 day 1 hour 1 minute 1 sec "},
        {-90061001LL, "-1 day 1 hour 1 minute 1 sec "},
        {3600000LL, "1 hour 0 minute 0 sec "},
        {5000LL, "5 sec "},
        {-5000LL, "-5 sec "},
        {1500LL, "1 sec "}, // without its milliseconds
        {0LL, "0 sec "},
        {QVariant(), "0 sec "},
        {QStringLiteral("5000"), "5 sec "},
        {QStringLiteral("no number"), "0 sec "},
        {QVariantList{30, 5000LL}, "0 sec "},
        {5000, "5 sec "},
    };
    for (const Row &row : rows) {
        const Param param(ValueType_TimeSpan, Unit_None, row.milliseconds);
        for (const int format : {30, 33, 0}) {
            stShowConfig config;
            config.timeFormat = static_cast<EFormat>(format);
            EXPECT_EQ(config.getParamValueString(param, -1), QString::fromLatin1(row.expected));
        }
    }
}

} // namespace
} // namespace KelStd
