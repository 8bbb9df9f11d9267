#include "support/Printers.h"
#include "support/TypedVariants.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <KelStd/time/TimeFromVariant.h>

#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using test::invalidUtc;
using test::utc;

constexpr long long newYear2024 = 1704067200000; // date -u -d 2024-01-01 +%s

template <typename Time>
QVariant variantOf(const Time &time)
{
    QVariant variant(QStringLiteral("something else"));
    time.toVariant(variant);
    return variant;
}

QVariant listOf(const QVariantList &list)
{
    return QVariant(list);
}

TEST(TimeVariant, HoldsCodeCountAndWhatElseTheTimeHas)
{
    EXPECT_EQ(variantOf(TimeUtc(newYear2024)), listOf({30, newYear2024}));
    EXPECT_EQ(variantOf(TimeLocal(TimeUtc(newYear2024), -3600)), listOf({31, newYear2024, -3600}));
    EXPECT_EQ(variantOf(TimeGpsT(2024, 1, 1, 0, 0, 18, 0)), listOf({32, newYear2024, 18}));
    EXPECT_EQ(variantOf(TimeGpsW(2295, 86418)), listOf({33, newYear2024, 18}));
    EXPECT_EQ(variantOf(invalidUtc()), listOf({30, 0LL}));
}

TEST(TimeVariant, ElementsHaveTheirTypes)
{
    const QVariantList utcList = variantOf(TimeUtc(newYear2024)).toList();
    EXPECT_EQ(utcList.at(0).userType(), QMetaType::Int);
    EXPECT_EQ(utcList.at(1).userType(), QMetaType::LongLong);
    for (const QVariant &variant :
         {variantOf(TimeLocal()), variantOf(TimeGpsT()), variantOf(TimeGpsW())}) {
        const QVariantList list = variant.toList();
        EXPECT_EQ(list.at(0).userType(), QMetaType::Int);
        EXPECT_EQ(list.at(1).userType(), QMetaType::LongLong);
        EXPECT_EQ(list.at(2).userType(), QMetaType::Int);
    }
}

TEST(TimeVariant, ComesBack)
{
    TimeUtc time;
    EXPECT_TRUE(time.fromVariant(listOf({30, newYear2024 + 7})));
    EXPECT_EQ(time, utc(2024, 1, 1, 0, 0, 0, 7));

    TimeLocal local;
    EXPECT_TRUE(local.fromVariant(listOf({31, newYear2024, 12345})));
    EXPECT_EQ(local.toUtc(), utc(2024, 1, 1));
    EXPECT_EQ(local.timeZoneSeconds(), 12345); // not the system's

    TimeGpsT gps;
    EXPECT_TRUE(gps.fromVariant(listOf({32, newYear2024, 18})));
    EXPECT_EQ(gps.toString(), QStringLiteral("2024-01-01 00:00:18"));
    EXPECT_EQ(gps.leapSeconds(), 18);

    TimeGpsW week;
    EXPECT_TRUE(week.fromVariant(listOf({33, newYear2024, 18})));
    EXPECT_EQ(week.gps_weeks(), 2295);
    EXPECT_EQ(week.gps_seconds(), 86418);
}

TEST(TimeVariant, AStoredLeapSecondCountIsASuppliedOne)
{
    TimeGpsT gps;
    TimeGpsW week;
    EXPECT_TRUE(gps.fromVariant(listOf({32, newYear2024, 19})));
    EXPECT_EQ(gps.leapSeconds(), 19);
    EXPECT_EQ(gps.toValueTime(), newYear2024);
    EXPECT_TRUE(gps.fromVariant(listOf({32, newYear2024, 5})));
    EXPECT_EQ(gps.leapSeconds(), 18);
    EXPECT_EQ(gps.toValueTime(), newYear2024);
    EXPECT_TRUE(week.fromVariant(listOf({33, newYear2024, 19})));
    EXPECT_EQ(week.leapSeconds(), 19);
    EXPECT_TRUE(week.fromVariant(listOf({33, newYear2024, 5})));
    EXPECT_EQ(week.leapSeconds(), 18);
    EXPECT_EQ(week.toValueTime(), newYear2024);
}

/// Every wrong shape is refused, and the time stays.
template <typename Time>
void expectRefused(const Time &time, int code, int size)
{
    QVariantList right{code, newYear2024};
    if (size == 3)
        right << 18;
    QVariantList shorter = right;
    shorter.removeLast();
    QVariantList longer = right;
    longer << 0;
    QVariantList otherCode = right;
    otherCode[0] = code == 33 ? 30 : code + 1;
    QVariantList noCode = right;
    noCode[0] = QStringLiteral("UTC");
    QVariantList nullCode = right;
    nullCode[0] = QVariant();
    QVariantList reversed(right.rbegin(), right.rend());

    Time kept(time);
    for (const QVariant &wrong :
         {QVariant(), test::nullVariant(QMetaType::QVariantList), QVariant(QVariantList()),
          QVariant(code), QVariant(newYear2024), QVariant(QStringLiteral("2024-01-01 00:00:00")),
          QVariant(QVariantMap{{QStringLiteral("30"), newYear2024}}), QVariant(QByteArray("\x1e")),
          QVariant(shorter), QVariant(longer), QVariant(otherCode), QVariant(noCode),
          QVariant(nullCode), QVariant(reversed), QVariant(QVariantList{QVariant(right)})}) {
        EXPECT_FALSE(kept.fromVariant(wrong)) << wrong.typeName();
        EXPECT_EQ(kept, time);
    }
    EXPECT_TRUE(kept.fromVariant(right));
    EXPECT_NE(kept, time);
}

TEST(TimeVariant, WrongShapesAreRefused)
{
    expectRefused(utc(2020, 1, 1), 30, 2);
    expectRefused(TimeLocal(utc(2020, 1, 1), 60), 31, 3);
    expectRefused(TimeGpsT(2020, 1, 1, 0, 0, 0, 0), 32, 3);
    expectRefused(TimeGpsW(2200, 0), 33, 3);
}

TEST(TimeVariant, AUtcListOfThreeIsRefused)
{
    TimeUtc time = utc(2020, 1, 1);
    EXPECT_FALSE(time.fromVariant(listOf({30, newYear2024, 18})));
    EXPECT_EQ(time, utc(2020, 1, 1));
}

// No count is out of Qt's range, so nothing in a list of the right shape can fail: the ends of the
// range are accepted, and an element that is no number is 0.
TEST(TimeVariant, TheInnerConversionIsNotReported)
{
    for (const long long count :
         {std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}) {
        TimeUtc time;
        EXPECT_TRUE(time.fromVariant(listOf({30, count})));
        EXPECT_EQ(time, TimeUtc(count));
        TimeLocal local;
        EXPECT_TRUE(local.fromVariant(listOf({31, count, 0})));
        EXPECT_EQ(local.toUtc(), TimeUtc(count));
        TimeGpsT gps;
        EXPECT_TRUE(gps.fromVariant(listOf({32, count, 18})));
        TimeGpsW week;
        EXPECT_TRUE(week.fromVariant(listOf({33, count, 18})));
    }
    TimeUtc time = utc(2020, 1, 1);
    EXPECT_TRUE(time.fromVariant(listOf({30, QStringLiteral("no number")})));
    EXPECT_EQ(time, TimeUtc(0));
}

TEST(TimeVariant, TheFormatTellsWhichClassReadsIt)
{
    EXPECT_EQ(TimeFromVariant::ParseFormat(variantOf(TimeUtc())), Format_UTC);
    EXPECT_EQ(TimeFromVariant::ParseFormat(variantOf(TimeLocal())), Format_Local);
    EXPECT_EQ(TimeFromVariant::ParseFormat(variantOf(TimeGpsT())), Format_GPST);
    EXPECT_EQ(TimeFromVariant::ParseFormat(variantOf(TimeGpsW())), Format_GPSW);
}

TEST(TimeVariant, TheFormatOfAnythingElse)
{
    EXPECT_EQ(TimeFromVariant::ParseFormat(QVariant()), Format_None);
    EXPECT_EQ(TimeFromVariant::ParseFormat(QVariant(QVariantList())), Format_None);
    EXPECT_EQ(TimeFromVariant::ParseFormat(QVariant(30)), Format_None);
    EXPECT_EQ(TimeFromVariant::ParseFormat(QVariant(QStringLiteral("UTC"))), Format_None);
    EXPECT_EQ(static_cast<int>(TimeFromVariant::ParseFormat(listOf({99}))), 99);
    EXPECT_EQ(static_cast<int>(TimeFromVariant::ParseFormat(listOf({-1, 2, 3, 4}))), -1);
    EXPECT_EQ(TimeFromVariant::ParseFormat(listOf({QStringLiteral("UTC")})), Format_None);
}

} // namespace
} // namespace KelStd
