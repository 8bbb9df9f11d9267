#include "support/Printers.h"
#include "support/Raised.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace KelStd {
namespace {

using test::text;
using Helper = CoordStringHelper;

QString exact(EValueType type, const QVariant &value, EUnit unit = Unit_None)
{
    return Helper::GetNoFormatString(Param(type, unit, value));
}

constexpr EValueType exactNumbers[] = {
    ValueType_Double,      ValueType_Distance,        ValueType_Height, ValueType_Angle,
    ValueType_Longitude,   ValueType_Latitude,        ValueType_X,      ValueType_Y,
    ValueType_EarthHeight, ValueType_ElevationHeight,
};

TEST(ExactText, NumbersHaveTwentyDecimalsWithoutTrailingZeros)
{
    struct Row
    {
        double value;
        const char *expected;
    };
    // The decimal expansions of the doubles themselves: 0.1 is 0.1000000000000000055511151231...
    const Row rows[] = {
        {0.1, "0.10000000000000000555"},
        {-0.1, "-0.10000000000000000555"},
        {0.5, "0.5"},
        {0.0, "0"},
        {100.0, "100"},
        {6378137.0, "6378137"},
        {-16.1, "-16.10000000000000142109"},
        {1e-20, "0.00000000000000000001"},
        {1e-21, "0"},
        {9007199254740993.0, "9007199254740992"},
        {1e22, "10000000000000000000000"},
    };
    for (const EValueType type : exactNumbers) {
        SCOPED_TRACE(type);
        for (const Row &row : rows)
            EXPECT_EQ(exact(type, row.value), text(row.expected));
    }
}

TEST(ExactText, AnglesHaveNoStyleNoLetterAndStayInTheirUnit)
{
    EXPECT_EQ(exact(ValueType_Latitude, -30.5, Unit_Degree), text("-30.5"));
    EXPECT_EQ(exact(ValueType_Longitude, -109800.0, Unit_Second), text("-109800"));
    EXPECT_EQ(exact(ValueType_Angle, 1.5, Unit_Second), text("1.5"));
    EXPECT_EQ(exact(ValueType_Distance, 2.0, Unit_USFoot), text("2"));
}

TEST(ExactText, ALargeNumberHasNoExponent)
{
    // 2 to the 100th, exactly
    EXPECT_EQ(exact(ValueType_Double, 1267650600228229401496703205376.0),
              text("1267650600228229401496703205376"));
    EXPECT_EQ(exact(ValueType_Double, std::numeric_limits<double>::max()).size(), 309);
    EXPECT_EQ(exact(ValueType_Double, std::numeric_limits<double>::denorm_min()), text("0"));
}

TEST(ExactText, IntegersAreDecimal)
{
    EXPECT_EQ(exact(ValueType_Int32, 50), text("50"));
    EXPECT_EQ(exact(ValueType_Int32, -2147483647 - 1), text("-2147483648"));
    EXPECT_EQ(exact(ValueType_Int64, Q_INT64_C(-9223372036854775807) - 1),
              text("-9223372036854775808"));
    EXPECT_EQ(exact(ValueType_Int64, Q_INT64_C(9007199254740993)), text("9007199254740993"));
    EXPECT_EQ(exact(ValueType_Int32, QStringLiteral("17")), text("17"));
}

TEST(ExactText, PressuresAndTemperaturesHaveAtMostTwoDecimals)
{
    for (const EValueType type : {ValueType_Pressure, ValueType_Temprature}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(exact(type, 1013.25, Unit_MilliBar), text("1013.25"));
        EXPECT_EQ(exact(type, 21.5, Unit_Celsius), text("21.5"));
        EXPECT_EQ(exact(type, 21.0, Unit_Fahrenheit), text("21"));
        EXPECT_EQ(exact(type, -0.127, Unit_Kelvin), text("-0.13"));
        EXPECT_EQ(exact(type, 1000.0, Unit_MmHg), text("1000"));
    }
}

TEST(ExactText, FlagsAndEnumerationsAreWords)
{
    for (const EValueType type : {ValueType_Boolean, ValueType_Proj4_Param_Bool}) {
        EXPECT_EQ(exact(type, true), text("true"));
        EXPECT_EQ(exact(type, false), text("false"));
        EXPECT_EQ(exact(type, 1), text("true"));
        EXPECT_EQ(exact(type, QVariant()), text("false"));
    }
    EXPECT_EQ(exact(ValueType_LocationZeroType, 0), text("Equator_Zero"));
    EXPECT_EQ(exact(ValueType_LocationZeroType, 1), text("Central_Meridian_Zero"));
    EXPECT_EQ(exact(ValueType_WhichHalfEarth, 0), text("N"));
    EXPECT_EQ(exact(ValueType_WhichHalfEarth, 1), text("S"));
    const char *directions[] = {"ENU", "WSU", "ESU", "WNU"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(exact(ValueType_EllipsoidDirection, i), text(directions[i]));
    for (const int unknown : {-1, 4, 100}) {
        EXPECT_EQ(exact(ValueType_LocationZeroType, unknown), QString());
        EXPECT_EQ(exact(ValueType_WhichHalfEarth, unknown), QString());
        EXPECT_EQ(exact(ValueType_EllipsoidDirection, unknown), QString());
    }
}

TEST(ExactText, TimesAreRefusedByPointer)
{
    for (const EValueType type : {ValueType_Time, ValueType_TimeSpan}) {
        EXPECT_EQ(test::messageRaisedByPointer([type] { exact(type, 1.0); }),
                  std::optional<std::string>("No Time Value In Coordinate"))
            << type;
    }
}

TEST(ExactText, EverythingElseIsTheVariantsOwnText)
{
    for (const int number : {0, 1, 13, 99, 106, 203, 301, -1}) {
        SCOPED_TRACE(number);
        const auto type = static_cast<EValueType>(number);
        EXPECT_EQ(exact(type, text("Gauß-Krüger 高斯")), text("Gauß-Krüger 高斯"));
        EXPECT_EQ(exact(type, 1.5), text("1.5"));
        EXPECT_EQ(exact(type, true), text("true"));
        EXPECT_EQ(exact(type, QVariant()), QString());
    }
}

TEST(ExactText, AFreshAndAClearedParameterAreZero)
{
    Param param;
    EXPECT_EQ(Helper::GetNoFormatString(param), text("0"));
    param.clear();
    EXPECT_EQ(Helper::GetNoFormatString(param), text("0"));
}

TEST(ExactText, TheUnitTextIsTheParametersOwnUnitForEveryType)
{
    for (int number = -1; number <= 301; ++number) {
        const auto type = static_cast<EValueType>(number);
        if (type == ValueType_Time || type == ValueType_TimeSpan)
            continue;
        QString unit = text("old");
        Helper::GetNoFormatString(Param(type, Unit_USFoot, 1), &unit);
        ASSERT_EQ(unit, text("U.S ft")) << number;
        Helper::GetNoFormatString(Param(type, Unit_None, 1), &unit);
        ASSERT_EQ(unit, QString()) << number;
    }
}

TEST(ExactText, AnInfiniteValueCannotBeTakenForANumber)
{
    EXPECT_EQ(exact(ValueType_Double, std::numeric_limits<double>::infinity()), text("inf"));
    EXPECT_EQ(exact(ValueType_Double, std::numeric_limits<double>::quiet_NaN()), text("nan"));
}

} // namespace
} // namespace KelStd
