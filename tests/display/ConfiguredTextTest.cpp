#include "support/Printers.h"
#include "support/Raised.h"
#include "support/ScopedShowConfig.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <set>
#include <string>

namespace KelStd {
namespace {

using test::ScopedShowConfig;
using test::text;
using Helper = CoordStringHelper;

/// A configuration in which every field differs from its neighbours, so that a field taken from
/// another row shows.
stShowConfig distinctConfig()
{
    stShowConfig config;
    config.doublePrecision = 1;
    config.doubleKeepZero = true;
    config.latLongFormat = Format_Degree;
    config.latLongPrecision = 7;
    config.latLongKeepZero = true;
    config.earthHeightUnit = Unit_MilliMeter;
    config.earthHeightPrecision = 2;
    config.earthHeightKeepZero = true;
    config.xyUnit = Unit_USFoot;
    config.xyPrecision = 3;
    config.xyKeepZero = true;
    config.elevationHeightUnit = Unit_Foot;
    config.elevationHeightPrecision = 5;
    config.elevationHeightKeepZero = true;
    config.tempratureUnit = Unit_Kelvin;
    config.tempraturePrecision = 6;
    config.tempratureKeepZero = true;
    config.pressureUnit = Unit_MmHg;
    config.pressurePrecision = 8;
    config.pressureKeepZero = true;
    config.angleFormat = Format_DegreeMinuteSecond;
    config.anglePrecision = 4;
    config.angleKeepZero = true;
    config.distanceUnit = Unit_Mile;
    config.distancePrecision = 9;
    config.distanceKeepZero = true;
    config.heightUnit = Unit_Yard;
    config.heightPrecision = 10;
    config.heightKeepZero = true;
    return config;
}

/// The row of a kind of value: what the configuration gives to the operation that takes its
/// settings as arguments.
struct Row
{
    const char *name;
    EValueType type;
    EUnit unit; ///< of the value
    EUnit shownUnit;
    EFormat format;
    int precision;
    bool stShowConfig::*keepZero; ///< null: zeros are kept

    friend void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }
};

using C = stShowConfig;

/// For `distinctConfig`.
const Row rows[] = {
    {"String", ValueType_String, Unit_Meter, Unit_None, Format_None, 0, nullptr},
    {"Int32", ValueType_Int32, Unit_Meter, Unit_Meter, Format_None, 0, nullptr},
    {"Int64", ValueType_Int64, Unit_Foot, Unit_Foot, Format_None, 0, nullptr},
    {"Double", ValueType_Double, Unit_Meter, Unit_Meter, Format_None, 1, &C::doubleKeepZero},
    {"Boolean", ValueType_Boolean, Unit_Meter, Unit_None, Format_None, 0, nullptr},
    {"Distance", ValueType_Distance, Unit_Meter, Unit_Mile, Format_None, 9, &C::distanceKeepZero},
    {"Height", ValueType_Height, Unit_Meter, Unit_Yard, Format_None, 10, &C::heightKeepZero},
    {"AngleInDegrees", ValueType_Angle, Unit_Degree, Unit_Degree, Format_DegreeMinuteSecond, 4,
     &C::angleKeepZero},
    {"AngleInSeconds", ValueType_Angle, Unit_Second, Unit_Second, Format_DegreeMinuteSecond, 4,
     &C::angleKeepZero},
    {"Pressure", ValueType_Pressure, Unit_Bar, Unit_MmHg, Format_None, 8, &C::pressureKeepZero},
    {"Temprature", ValueType_Temprature, Unit_Celsius, Unit_Kelvin, Format_None, 6,
     &C::tempratureKeepZero},
    {"Longitude", ValueType_Longitude, Unit_Degree, Unit_Degree, Format_Degree, 7,
     &C::latLongKeepZero},
    {"Latitude", ValueType_Latitude, Unit_Second, Unit_Second, Format_Degree, 7,
     &C::latLongKeepZero},
    {"EarthHeight", ValueType_EarthHeight, Unit_Meter, Unit_MilliMeter, Format_None, 2,
     &C::earthHeightKeepZero},
    {"X", ValueType_X, Unit_Meter, Unit_USFoot, Format_None, 3, &C::xyKeepZero},
    {"Y", ValueType_Y, Unit_Meter, Unit_USFoot, Format_None, 3, &C::xyKeepZero},
    {"ElevationHeight", ValueType_ElevationHeight, Unit_Meter, Unit_Foot, Format_None, 5,
     &C::elevationHeightKeepZero},
    {"LocationZeroType", ValueType_LocationZeroType, Unit_Meter, Unit_None, Format_None, 0,
     nullptr},
    {"WhichHalfEarth", ValueType_WhichHalfEarth, Unit_Meter, Unit_None, Format_None, 0, nullptr},
    {"EllipsoidDirection", ValueType_EllipsoidDirection, Unit_Meter, Unit_None, Format_None, 0,
     nullptr},
    {"Proj4_Param_Bool", ValueType_Proj4_Param_Bool, Unit_Meter, Unit_None, Format_None, 0,
     nullptr},
};

class ConfiguredText : public testing::TestWithParam<Row>
{};

TEST_P(ConfiguredText, IsTheCoreOperationWithTheSettingsOfItsRow)
{
    const Row &row = GetParam();
    for (const bool keepZero : {true, false}) {
        stShowConfig config = distinctConfig();
        if (row.keepZero != nullptr)
            config.*row.keepZero = keepZero;
        const ScopedShowConfig shown(config);
        for (const double value : {1.0, -12.5, 0.0, 1234.56789}) {
            SCOPED_TRACE(value);
            QString unit = text("old");
            QString expectedUnit;
            const QString expected =
                Helper::GetFormatString(row.type, value, row.unit, row.shownUnit, row.format,
                                        static_cast<unsigned char>(row.precision),
                                        row.keepZero != nullptr && !keepZero, &expectedUnit);
            EXPECT_EQ(Helper::GetFormatString(row.type, value, row.unit, &unit), expected);
            EXPECT_EQ(unit, expectedUnit);
            unit = text("old");
            EXPECT_EQ(Helper::GetFormatString(Param(row.type, row.unit, value), &unit), expected);
            EXPECT_EQ(unit, expectedUnit);
            EXPECT_EQ(Helper::GetFormatString(row.type, value, row.unit), expected);
            EXPECT_EQ(Helper::GetFormatString(Param(row.type, row.unit, value)), expected);
        }
    }
}

std::string nameOf(const testing::TestParamInfo<Row> &row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ConfiguredText, testing::ValuesIn(rows), nameOf);

TEST(ConfiguredTextByHand, OfADistinctConfiguration)
{
    const ScopedShowConfig shown(distinctConfig());
    const auto configured = [](EValueType type, const QVariant &value, EUnit unit) {
        return Helper::GetFormatString(type, value, unit);
    };
    EXPECT_EQ(configured(ValueType_Double, 2.0, Unit_None), text("2.0"));
    EXPECT_EQ(configured(ValueType_Distance, 804.672, Unit_Meter), text("0.500000000"));
    EXPECT_EQ(configured(ValueType_Height, 1.8288, Unit_Meter), text("2.0000000000"));
    EXPECT_EQ(configured(ValueType_Angle, 1.5, Unit_Degree), text("1.0000°30.0000′0.0000″"));
    EXPECT_EQ(configured(ValueType_Pressure, 1.0, Unit_Bar), text("750.06170000"));
    EXPECT_EQ(configured(ValueType_Temprature, 20.0, Unit_Celsius), text("293.150000"));
    EXPECT_EQ(configured(ValueType_Longitude, -1.5, Unit_Degree), text("-1.5000000°W"));
    EXPECT_EQ(configured(ValueType_Latitude, -1.5, Unit_Degree), text("-1.5000000°S"));
    EXPECT_EQ(configured(ValueType_EarthHeight, 1.5, Unit_Meter), text("1500.00"));
    EXPECT_EQ(configured(ValueType_X, 1200.0, Unit_Meter), text("3937.000"));
    EXPECT_EQ(configured(ValueType_Y, 2400.0, Unit_Meter), text("7874.000"));
    EXPECT_EQ(configured(ValueType_ElevationHeight, 3.048, Unit_Meter), text("10.00000"));
    EXPECT_EQ(configured(ValueType_String, text("a text"), Unit_Meter), text("a text"));
    EXPECT_EQ(configured(ValueType_Int32, 42, Unit_Meter), text("42"));
    EXPECT_EQ(configured(ValueType_Proj4_Param_Bool, true, Unit_None), text("true"));
}

TEST(ConfiguredTextByHand, OfTheWorkingDefaults)
{
    const ScopedShowConfig shown{stShowConfig()};
    EXPECT_EQ(Helper::GetFormatString(ValueType_Double, 0.9996, Unit_None), text("0.9996"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Double, 1.23456789, Unit_None), text("1.234568"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_X, 4321.123456, Unit_Meter), text("4321.1235"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Distance, 6378137.0, Unit_Meter), text("6378137"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Longitude, 116.1, Unit_Degree), text("116°6′0″E"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Temprature, 20.6, Unit_Celsius), text("21"));
}

TEST(ConfiguredTextByHand, AnAngleStaysInItsOwnUnitWhateverTheStyle)
{
    stShowConfig config;
    config.latLongFormat = Format_Second;
    const ScopedShowConfig shown(config);
    QString unit;
    EXPECT_EQ(config.angleFormat, Format_Second);
    EXPECT_EQ(Helper::GetFormatString(ValueType_Angle, 1.5, Unit_Degree, &unit), text("1.5″"));
    EXPECT_EQ(unit, text("°"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Longitude, 1.5, Unit_Degree), text("1.5″E"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Latitude, -1.5, Unit_Degree), text("-1.5″S"));
}

TEST(ConfiguredTextByHand, AKindThatNoRowKnowsIsEmptyAndLeavesTheUnitText)
{
    std::set<int> known = {ValueType_Time, ValueType_TimeSpan};
    for (const Row &row : rows)
        known.insert(row.type);
    for (int number = -1; number <= 301; ++number) {
        if (known.count(number) != 0)
            continue;
        const auto type = static_cast<EValueType>(number);
        QString unit = text("old");
        ASSERT_EQ(Helper::GetFormatString(type, text("value"), Unit_Meter, &unit), QString())
            << number;
        ASSERT_EQ(unit, text("old")) << number;
        ASSERT_EQ(Helper::GetFormatString(Param(type, Unit_Meter, 1.5), &unit), QString())
            << number;
        ASSERT_EQ(unit, text("old")) << number;
    }
}

TEST(ConfiguredTextByHand, TimesAreRefusedByPointer)
{
    const std::optional<std::string> refusal("No Time Value In Coordinate");
    for (const EValueType type : {ValueType_Time, ValueType_TimeSpan}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(
            test::messageRaisedByPointer([type] { Helper::GetFormatString(type, 1.0, Unit_None); }),
            refusal);
        EXPECT_EQ(test::messageRaisedByPointer(
                      [type] { Helper::GetFormatString(Param(type, Unit_None, 1.0)); }),
                  refusal);
    }
}

TEST(ConfiguredTextByHand, ALengthThatCannotBeConvertedRaisesByValue)
{
    const ScopedShowConfig shown{stShowConfig()};
    EXPECT_EQ(test::messageRaisedByValue(
                  [] { Helper::GetFormatString(ValueType_Distance, 1.0, Unit_None); }),
              std::optional<std::string>(""));
}

TEST(ConfiguredTextByHand, EveryPrecisionOfTheConfigurationIsTaken)
{
    for (const int precision : {0, 1, 4, 15, 255}) {
        stShowConfig config;
        config.xyPrecision = static_cast<unsigned char>(precision);
        config.xyKeepZero = true;
        const ScopedShowConfig shown(config);
        const QString expected =
            precision == 0 ? text("2") : text("2.").leftJustified(2 + precision, QLatin1Char('0'));
        EXPECT_EQ(Helper::GetFormatString(ValueType_X, 2.0, Unit_Meter), expected);
    }
}

} // namespace
} // namespace KelStd
