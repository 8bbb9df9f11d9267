#include "support/Raised.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace KelStd {
namespace {

using test::messageRaisedByValue;
using Helper = CoordStringHelper;
using UnitPair = std::pair<EUnit, EUnit>;

constexpr EUnit allUnits[] = {Unit_None,
                              Unit_Meter,
                              Unit_MilliMeter,
                              Unit_Foot,
                              Unit_Yard,
                              Unit_Inch,
                              Unit_Mile,
                              Unit_USFoot,
                              Unit_Bar,
                              Unit_Pascal,
                              Unit_MilliBar,
                              Unit_MmHg,
                              Unit_InHg,
                              Unit_Celsius,
                              Unit_Fahrenheit,
                              Unit_Kelvin,
                              Unit_Degree,
                              Unit_Second,
                              static_cast<EUnit>(99),
                              static_cast<EUnit>(-5)};

const std::map<EUnit, double> metres = {{Unit_Meter, 1.0},
                                        {Unit_MilliMeter, 0.001},
                                        {Unit_Foot, 0.3048},
                                        {Unit_Yard, 0.9144},
                                        {Unit_Inch, 0.0254},
                                        {Unit_Mile, 1609.344},
                                        {Unit_USFoot, 0.3048006096012192}};

TEST(ConvertLength, MultipliesByTheOneFactorAndDividesByTheOther)
{
    for (const auto &[from, fromMetres] : metres) {
        for (const auto &[to, toMetres] : metres) {
            for (const double value : {0.0, 1.0, -2.5, 6378137.0, 1e-7}) {
                EXPECT_EQ(Helper::ConvertUnit_Length(value, from, to),
                          value * fromMetres / toMetres)
                    << value << " from " << from << " to " << to;
            }
        }
    }
}

TEST(ConvertLength, KnownLengths)
{
    EXPECT_EQ(Helper::ConvertUnit_Length(1.0, Unit_USFoot, Unit_Meter), 0.3048006096012192);
    EXPECT_EQ(Helper::ConvertUnit_Length(1.0, Unit_Meter, Unit_Meter), 1.0);
    EXPECT_DOUBLE_EQ(Helper::ConvertUnit_Length(1.0, Unit_Mile, Unit_Foot), 5280.0);
    EXPECT_DOUBLE_EQ(Helper::ConvertUnit_Length(1.0, Unit_Yard, Unit_Inch), 36.0);
}

TEST(ConvertLength, IsComputedEvenBetweenEqualUnits)
{
    // A value that its factor takes beyond the range of a double does not come back.
    const double huge = std::numeric_limits<double>::max();
    EXPECT_EQ(Helper::ConvertUnit_Length(huge, Unit_Mile, Unit_Mile),
              std::numeric_limits<double>::infinity());
}

TEST(ConvertLength, AUnitWithoutAFactorRaisesByValueOnEitherSideAndAgainstItself)
{
    for (const EUnit unit : allUnits) {
        if (metres.count(unit) != 0)
            continue;
        SCOPED_TRACE(unit);
        const std::optional<std::string> empty("");
        EXPECT_EQ(messageRaisedByValue([=] { Helper::ConvertUnit_Length(1.0, unit, Unit_Meter); }),
                  empty);
        EXPECT_EQ(messageRaisedByValue([=] { Helper::ConvertUnit_Length(1.0, Unit_Meter, unit); }),
                  empty);
        EXPECT_EQ(messageRaisedByValue([=] { Helper::ConvertUnit_Length(1.0, unit, unit); }),
                  empty);
    }
}

TEST(ConvertAngle, DegreesAndSeconds)
{
    EXPECT_EQ(Helper::ConvertUnit_Angle(1.0, Unit_Degree, Unit_Second), 3600.0);
    EXPECT_EQ(Helper::ConvertUnit_Angle(3600.0, Unit_Second, Unit_Degree), 1.0);
    EXPECT_EQ(Helper::ConvertUnit_Angle(-0.5, Unit_Degree, Unit_Second), -1800.0);
    EXPECT_EQ(Helper::ConvertUnit_Angle(1.0, Unit_Second, Unit_Degree), 1.0 / 3600.0);
}

TEST(ConvertAngle, EveryOtherPairLeavesTheValue)
{
    EXPECT_EQ(Helper::ConvertUnit_Angle(5.0, Unit_Degree, Unit_Meter), 5.0);
    for (const EUnit from : allUnits) {
        for (const EUnit to : allUnits) {
            if (from != to && (from == Unit_Degree || from == Unit_Second)
                && (to == Unit_Degree || to == Unit_Second))
                continue;
            EXPECT_EQ(Helper::ConvertUnit_Angle(5.25, from, to), 5.25) << from << " to " << to;
        }
    }
}

/// A factor that multiplies, or, where the table divides, its divisor.
struct PressureFactor
{
    char operation;
    double factor;
};

const std::map<UnitPair, PressureFactor> pressureFactors = {
    {{Unit_Bar, Unit_Pascal}, {'*', 100000.0}},
    {{Unit_Bar, Unit_MilliBar}, {'*', 1000.0}},
    {{Unit_Bar, Unit_MmHg}, {'*', 750.0617000000232}},
    {{Unit_Bar, Unit_InHg}, {'*', 29.61340000000015}},
    {{Unit_Pascal, Unit_Bar}, {'/', 100000.0}},
    {{Unit_Pascal, Unit_MilliBar}, {'/', 100.0}},
    {{Unit_Pascal, Unit_MmHg}, {'/', 133.32236534674}},
    {{Unit_Pascal, Unit_InHg}, {'/', 3376.8496694064}},
    {{Unit_MilliBar, Unit_Bar}, {'*', 0.001}},
    {{Unit_MilliBar, Unit_Pascal}, {'*', 100.0}},
    {{Unit_MilliBar, Unit_MmHg}, {'*', 0.7500617000000233}},
    {{Unit_MilliBar, Unit_InHg}, {'*', 0.02961340000000015}},
    {{Unit_MmHg, Unit_Bar}, {'*', 0.0013332236534674001}},
    {{Unit_MmHg, Unit_Pascal}, {'*', 133.32236534674}},
    {{Unit_MmHg, Unit_MilliBar}, {'*', 1.3332236534674002}},
    {{Unit_MmHg, Unit_InHg}, {'*', 0.03948128533959171}},
    {{Unit_InHg, Unit_Bar}, {'*', 0.033768496694064}},
    {{Unit_InHg, Unit_Pascal}, {'*', 3376.8496694064}},
    {{Unit_InHg, Unit_MilliBar}, {'*', 33.768496694064}},
    {{Unit_InHg, Unit_MmHg}, {'*', 25.328456036794808}},
};

TEST(ConvertPressure, FollowsTheMatrixToTheLastBit)
{
    ASSERT_EQ(pressureFactors.size(), 20U);
    for (const auto &[units, by] : pressureFactors) {
        for (const double value : {1.0, 1.7, -0.3, 1013.25}) {
            const double expected = by.operation == '*' ? value * by.factor : value / by.factor;
            EXPECT_EQ(Helper::ConvertUnit_Pressure(value, units.first, units.second), expected)
                << value << " from " << units.first << " to " << units.second;
        }
    }
}

TEST(ConvertPressure, BarToMillimetresIsNotTheReciprocalOfTheWayBack)
{
    EXPECT_EQ(Helper::ConvertUnit_Pressure(1.0, Unit_Bar, Unit_MmHg), 750.0617000000232);
    EXPECT_NE(Helper::ConvertUnit_Pressure(1.0, Unit_MmHg, Unit_Bar), 1.0 / 750.0617000000232);
}

TEST(ConvertPressure, EveryPairOutsideTheMatrixLeavesTheValue)
{
    EXPECT_EQ(Helper::ConvertUnit_Pressure(1.0, Unit_Bar, Unit_Bar), 1.0);
    for (const EUnit from : allUnits) {
        for (const EUnit to : allUnits) {
            if (pressureFactors.count({from, to}) != 0)
                continue;
            EXPECT_EQ(Helper::ConvertUnit_Pressure(1.7, from, to), 1.7) << from << " to " << to;
        }
    }
}

TEST(ConvertTemperature, FollowsTheTable)
{
    for (const double v : {0.0, 100.0, -40.0, 21.35, 310.15}) {
        SCOPED_TRACE(v);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Celsius, Unit_Fahrenheit), v * 1.8 + 32.0);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Celsius, Unit_Kelvin), v + 273.15);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Fahrenheit, Unit_Celsius),
                  (v - 32.0) / 1.8);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Fahrenheit, Unit_Kelvin),
                  (v - 32.0) / 1.8 + 273.15);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Kelvin, Unit_Celsius), v - 273.15);
        EXPECT_EQ(Helper::ConvertUnit_Temprature(v, Unit_Kelvin, Unit_Fahrenheit),
                  (v - 273.15) * 1.8 + 32.0);
    }
}

TEST(ConvertTemperature, KnownTemperatures)
{
    EXPECT_EQ(Helper::ConvertUnit_Temprature(100.0, Unit_Celsius, Unit_Fahrenheit), 212.0);
    EXPECT_EQ(Helper::ConvertUnit_Temprature(0.0, Unit_Kelvin, Unit_Celsius), -273.15);
    EXPECT_EQ(Helper::ConvertUnit_Temprature(32.0, Unit_Fahrenheit, Unit_Celsius), 0.0);
}

TEST(ConvertTemperature, EveryOtherPairLeavesTheValue)
{
    const std::set<EUnit> temperatures = {Unit_Celsius, Unit_Fahrenheit, Unit_Kelvin};
    for (const EUnit from : allUnits) {
        for (const EUnit to : allUnits) {
            if (from != to && temperatures.count(from) != 0 && temperatures.count(to) != 0)
                continue;
            EXPECT_EQ(Helper::ConvertUnit_Temprature(21.35, from, to), 21.35)
                << from << " to " << to;
        }
    }
}

} // namespace
} // namespace KelStd
