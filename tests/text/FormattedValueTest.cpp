#include "support/Printers.h"
#include "support/Raised.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace KelStd {
namespace {

using test::messageRaisedByPointer;
using test::messageRaisedByValue;
using test::text;
using Helper = CoordStringHelper;

constexpr bool keep = false;
constexpr bool erase = true;

QString formatted(EValueType type, const QVariant &value, EUnit from, EUnit to, int precision,
                  bool eraseTailZero, EFormat format = Format_None)
{
    return Helper::GetFormatString(type, value, from, to, format,
                                   static_cast<unsigned char>(precision), eraseTailZero);
}

constexpr EValueType lengthTypes[] = {ValueType_Distance,    ValueType_Height,
                                      ValueType_EarthHeight, ValueType_X,
                                      ValueType_Y,           ValueType_ElevationHeight};

struct PrecisionRow
{
    double value;
    int precision;
    const char *kept;
    const char *erased;
};

/// 0.1 is 0.1000000000000000055511151231257827021181583404541015625 to a double's last bit.
const PrecisionRow precisions[] = {
    {1.5, 3, "1.500", "1.5"},
    {-1.5, 3, "-1.500", "-1.5"},
    {1.0, 0, "1", "1"},
    {100.0, 0, "100", "100"}, // the zeros of a whole number are no trailing zeros
    {-100.0, 2, "-100.00", "-100"},
    {2.7, 0, "3", "3"},
    {0.25, 1, "0.3", "0.3"},
    {12.04, 1, "12.0", "12"},
    {123.456789, 4, "123.4568", "123.4568"},
    {123.4, 4, "123.4000", "123.4"},
    {0.1, 15, "0.100000000000000", "0.1"},
    {-0.1, 17, "-0.10000000000000001", "-0.10000000000000001"},
    {1e15, 1, "1000000000000000.0", "1000000000000000"},
};

TEST(FormattedNumber, HasThePrecisionAndTheTrailingZeroRule)
{
    for (const PrecisionRow &row : precisions) {
        SCOPED_TRACE(row.kept);
        EXPECT_EQ(formatted(ValueType_Double, row.value, Unit_None, Unit_None, row.precision, keep),
                  text(row.kept));
        EXPECT_EQ(
            formatted(ValueType_Double, row.value, Unit_None, Unit_None, row.precision, erase),
            text(row.erased));
    }
}

TEST(FormattedNumber, OfTheLargestPrecisionHasEveryDigitOfTheDouble)
{
    const QString digits = text("0.1000000000000000055511151231257827021181583404541015625");
    EXPECT_EQ(formatted(ValueType_Double, 0.1, Unit_None, Unit_None, 255, erase), digits);
    EXPECT_EQ(formatted(ValueType_Double, 0.1, Unit_None, Unit_None, 255, keep),
              digits.leftJustified(257, QLatin1Char('0')));
    EXPECT_EQ(formatted(ValueType_Double, 1.0, Unit_None, Unit_None, 255, erase), text("1"));
    EXPECT_EQ(formatted(ValueType_Double, -1e300, Unit_None, Unit_None, 255, keep).size(),
              1 + 301 + 1 + 255);
}

TEST(FormattedNumber, IsNotConverted)
{
    EXPECT_EQ(formatted(ValueType_Double, 1.5, Unit_Meter, Unit_Foot, 2, keep), text("1.50"));
    EXPECT_EQ(formatted(ValueType_Double, 1.5, Unit_None, Unit_Yard, 2, erase), text("1.5"));
}

TEST(FormattedLength, IsANumberLikeAnyOtherWhereTheUnitsAreEqual)
{
    for (const EValueType type : lengthTypes) {
        for (const PrecisionRow &row : precisions) {
            SCOPED_TRACE(row.kept);
            EXPECT_EQ(formatted(type, row.value, Unit_Meter, Unit_Meter, row.precision, keep),
                      text(row.kept));
            EXPECT_EQ(formatted(type, row.value, Unit_Meter, Unit_Meter, row.precision, erase),
                      text(row.erased));
        }
    }
}

TEST(FormattedLength, IsConvertedIntoTheUnitShown)
{
    for (const EValueType type : lengthTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(formatted(type, 1.0, Unit_Meter, Unit_MilliMeter, 1, keep), text("1000.0"));
        EXPECT_EQ(formatted(type, 1.0, Unit_Foot, Unit_Meter, 6, erase), text("0.3048"));
        EXPECT_EQ(formatted(type, 3937.0, Unit_USFoot, Unit_Meter, 4, keep), text("1200.0000"));
        EXPECT_EQ(formatted(type, -1609.344, Unit_Meter, Unit_Mile, 2, keep), text("-1.00"));
        // 6378137 m in international feet, 20925646.3254593...
        EXPECT_EQ(formatted(type, 6378137.0, Unit_Meter, Unit_Foot, 4, keep),
                  text("20925646.3255"));
    }
}

TEST(FormattedLength, BetweenEqualUnitsNeedsNoFactor)
{
    for (const EValueType type : lengthTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(formatted(type, 1.25, Unit_None, Unit_None, 2, keep), text("1.25"));
        EXPECT_EQ(formatted(type, 1.25, Unit_Degree, Unit_Degree, 2, keep), text("1.25"));
        // and no multiplication, which would overflow
        EXPECT_EQ(formatted(type, 1e308, Unit_Mile, Unit_Mile, 0, keep).size(), 309);
    }
}

TEST(FormattedLength, BetweenDifferentUnitsWithoutAFactorRaisesByValue)
{
    const std::optional<std::string> empty("");
    for (const EValueType type : lengthTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(messageRaisedByValue([=] { formatted(type, 1, Unit_None, Unit_Meter, 2, keep); }),
                  empty);
        EXPECT_EQ(messageRaisedByValue([=] { formatted(type, 1, Unit_Meter, Unit_None, 2, keep); }),
                  empty);
        EXPECT_EQ(messageRaisedByValue([=] { formatted(type, 1, Unit_Bar, Unit_Kelvin, 2, keep); }),
                  empty);
    }
}

TEST(FormattedInteger, IgnoresPrecisionAndUnits)
{
    EXPECT_EQ(formatted(ValueType_Int32, 100, Unit_Meter, Unit_Foot, 3, keep), text("100"));
    EXPECT_EQ(formatted(ValueType_Int32, -7, Unit_None, Unit_None, 0, erase), text("-7"));
    EXPECT_EQ(
        formatted(ValueType_Int64, Q_INT64_C(9223372036854775807), Unit_None, Unit_None, 3, erase),
        text("9223372036854775807"));
    EXPECT_EQ(formatted(ValueType_Int64, Q_INT64_C(-5000000000), Unit_None, Unit_Bar, 3, keep),
              text("-5000000000"));
}

TEST(FormattedPressure, IsConvertedByTheMatrix)
{
    EXPECT_EQ(formatted(ValueType_Pressure, 1.0, Unit_Bar, Unit_MmHg, 4, keep), text("750.0617"));
    EXPECT_EQ(formatted(ValueType_Pressure, 1013.25, Unit_MilliBar, Unit_Bar, 6, keep),
              text("1.013250"));
    EXPECT_EQ(formatted(ValueType_Pressure, 1013.25, Unit_MilliBar, Unit_MilliBar, 4, erase),
              text("1013.25"));
    EXPECT_EQ(formatted(ValueType_Pressure, 1.5, Unit_Meter, Unit_Bar, 1, keep), text("1.5"));
}

TEST(FormattedTemperature, IsConvertedByTheTable)
{
    EXPECT_EQ(formatted(ValueType_Temprature, 100.0, Unit_Celsius, Unit_Fahrenheit, 1, keep),
              text("212.0"));
    EXPECT_EQ(formatted(ValueType_Temprature, 0.0, Unit_Kelvin, Unit_Celsius, 2, erase),
              text("-273.15"));
    EXPECT_EQ(formatted(ValueType_Temprature, 21.0, Unit_Celsius, Unit_Celsius, 2, erase),
              text("21"));
    EXPECT_EQ(formatted(ValueType_Temprature, 21.5, Unit_None, Unit_Kelvin, 1, keep), text("21.5"));
}

TEST(FormattedFlag, IsAWord)
{
    for (const EValueType type : {ValueType_Boolean, ValueType_Proj4_Param_Bool}) {
        EXPECT_EQ(formatted(type, true, Unit_None, Unit_None, 3, keep), text("true"));
        EXPECT_EQ(formatted(type, 0, Unit_None, Unit_None, 3, keep), text("false"));
        EXPECT_EQ(formatted(type, text("false"), Unit_None, Unit_None, 3, keep), text("false"));
        EXPECT_EQ(formatted(type, QVariant(), Unit_None, Unit_None, 3, keep), text("false"));
    }
}

TEST(FormattedEnumeration, IsItsDescriptionOrEmpty)
{
    const auto shown = [](EValueType type, int value) {
        return formatted(type, value, Unit_None, Unit_None, 3, keep);
    };
    EXPECT_EQ(shown(ValueType_LocationZeroType, 0), text("Equator_Zero"));
    EXPECT_EQ(shown(ValueType_LocationZeroType, 1), text("Central_Meridian_Zero"));
    EXPECT_EQ(shown(ValueType_LocationZeroType, 2), QString());
    EXPECT_EQ(shown(ValueType_WhichHalfEarth, 0), text("N"));
    EXPECT_EQ(shown(ValueType_WhichHalfEarth, 1), text("S"));
    EXPECT_EQ(shown(ValueType_WhichHalfEarth, -1), QString());
    EXPECT_EQ(shown(ValueType_EllipsoidDirection, 0), text("ENU"));
    EXPECT_EQ(shown(ValueType_EllipsoidDirection, 1), text("WSU"));
    EXPECT_EQ(shown(ValueType_EllipsoidDirection, 2), text("ESU"));
    EXPECT_EQ(shown(ValueType_EllipsoidDirection, 3), text("WNU"));
    EXPECT_EQ(shown(ValueType_EllipsoidDirection, 4), QString());
}

TEST(FormattedTime, IsRefusedByPointer)
{
    for (const EValueType type : {ValueType_Time, ValueType_TimeSpan}) {
        EXPECT_EQ(
            messageRaisedByPointer([type] { formatted(type, 1.0, Unit_None, Unit_None, 3, keep); }),
            std::optional<std::string>("No Time Value In Coordinate"))
            << type;
    }
}

TEST(FormattedValue, OfAnyOtherTypeIsTheVariantsOwnText)
{
    for (const int number : {0, 1, 13, 99, 106, 203, 301, -1, 2147483647}) {
        SCOPED_TRACE(number);
        const auto type = static_cast<EValueType>(number);
        const QVariant values[] = {text("Straße 高程"), 1.5, 42, QVariant()};
        const char *expected[] = {"Straße 高程", "1.5", "42", ""};
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(formatted(type, values[i], Unit_Meter, Unit_Foot, 3, keep),
                      text(expected[i]));
    }
}

TEST(FormattedValue, ReceivesTheSymbolOfTheUnitShownForEveryType)
{
    for (int number = -1; number <= 301; ++number) {
        const auto type = static_cast<EValueType>(number);
        if (type == ValueType_Time || type == ValueType_TimeSpan)
            continue;
        QString unit = text("old");
        Helper::GetFormatString(type, 1, Unit_Meter, Unit_Foot, Format_None, 2, keep, &unit);
        ASSERT_EQ(unit, text("ft")) << number;
        unit = text("old");
        Helper::GetFormatString(type, 1, Unit_Yard, Unit_Yard, Format_None, 2, keep, &unit);
        ASSERT_EQ(unit, QString()) << number;
    }
}

TEST(FormattedValue, OfTheWrongKindIsAZero)
{
    for (const QVariant &value :
         {QVariant(), QVariant(text("no number")), QVariant(QStringList({text("1"), text("2")}))}) {
        EXPECT_EQ(formatted(ValueType_Double, value, Unit_None, Unit_None, 2, keep), text("0.00"));
        EXPECT_EQ(formatted(ValueType_X, value, Unit_Meter, Unit_Foot, 2, erase), text("0"));
        EXPECT_EQ(formatted(ValueType_Int32, value, Unit_None, Unit_None, 2, keep), text("0"));
    }
    EXPECT_EQ(formatted(ValueType_Double, text("1.25"), Unit_None, Unit_None, 3, keep),
              text("1.250"));
}

TEST(FormattedParam, PassesItsTypeValueAndUnit)
{
    QString unit;
    const Param distance(ValueType_Distance, Unit_Foot, 10.0);
    EXPECT_EQ(Helper::GetFormatString(distance, Unit_Meter, Format_None, 3, keep, &unit),
              text("3.048"));
    EXPECT_EQ(unit, text("m"));
    const Param angle(ValueType_Longitude, Unit_Second, -5400.0);
    EXPECT_EQ(Helper::GetFormatString(angle, Unit_Degree, Format_Degree, 2, erase, &unit),
              text("-1.5°W"));
    EXPECT_EQ(unit, text("°"));
    EXPECT_EQ(Helper::GetFormatString(distance, Unit_Foot, Format_None, 1, keep), text("10.0"));
    EXPECT_EQ(messageRaisedByPointer([] {
                  Helper::GetFormatString(Param(ValueType_Time, Unit_None, 0), Unit_None,
                                          Format_None, 0, keep, nullptr);
              }),
              std::optional<std::string>("No Time Value In Coordinate"));
}

} // namespace
} // namespace KelStd
