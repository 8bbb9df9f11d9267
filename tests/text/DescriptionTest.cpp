#include "support/Printers.h"
#include "support/Raised.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace KelStd {
namespace {

using Helper = CoordStringHelper;
using Texts = std::map<int, const char *>;

/// Every number near and in the bands has the description listed, or the empty text.
template <typename Enumeration>
void expectDescriptions(QString (*describe)(Enumeration), const Texts &expected)
{
    for (int number = -2; number <= 310; ++number) {
        const auto row = expected.find(number);
        EXPECT_EQ(describe(static_cast<Enumeration>(number)),
                  QString::fromLatin1(row != expected.end() ? row->second : ""))
            << number;
    }
}

TEST(Descriptions, OfValueTypes)
{
    const Texts expected = {
        {0, "None"},
        {1, "String"},
        {2, "Int32"},
        {3, "Int64"},
        {4, "Double"},
        {5, "Boolean"},
        {6, "Distance"},
        {7, "Height"},
        {8, "Angle"},
        {11, "Pressure"},
        {12, "Temprature"},
        {100, "Longitude"},
        {101, "Latitude"},
        {102, "EarthHeight"},
        {103, "X"},
        {104, "Y"},
        {105, "ElevationHeight"},
        {200, "LocationZeroType"},
        {201, "WhichHalfEarth"},
        {202, "EllipsoidDirection"},
        {300, "Proj4_Param_Bool"},
    };
    for (int number = -2; number <= 310; ++number) {
        if (number == ValueType_Time || number == ValueType_TimeSpan)
            continue;
        const auto row = expected.find(number);
        EXPECT_EQ(Helper::ValueType_to_DescriptionString(static_cast<EValueType>(number)),
                  QString::fromLatin1(row != expected.end() ? row->second : ""))
            << number;
    }
}

TEST(Descriptions, OfTheTwoTimeKindsAreRefusedByPointer)
{
    for (const EValueType type : {ValueType_Time, ValueType_TimeSpan}) {
        EXPECT_EQ(
            test::messageRaisedByPointer([type] { Helper::ValueType_to_DescriptionString(type); }),
            std::optional<std::string>("No Time Value In Coordinate"))
            << type;
    }
}

TEST(Descriptions, OfUnits)
{
    expectDescriptions(Helper::Unit_to_DescriptionString, {{10, "meter"},
                                                           {11, "milli meter"},
                                                           {20, "Foot"},
                                                           {30, "US Foot"},
                                                           {100, "bar"},
                                                           {101, "Pascal"},
                                                           {102, "milli bar"},
                                                           {103, "mm Hg"},
                                                           {104, "inch Hg"},
                                                           {200, "Celsius"},
                                                           {201, "Fahrenheit"},
                                                           {202, "Kelvin"},
                                                           {300, "Degree"},
                                                           {301, "Second"}});
}

TEST(Descriptions, UnitsThatAreOnlyFactorsHaveNone)
{
    for (const EUnit unit : {Unit_None, Unit_Yard, Unit_Inch, Unit_Mile})
        EXPECT_EQ(Helper::Unit_to_DescriptionString(unit), QString()) << unit;
}

TEST(Descriptions, OfFormats)
{
    expectDescriptions(Helper::Format_to_DescriptionString, {{1, "North East Height"},
                                                             {2, "East North Height"},
                                                             {20, "Degree Minute Second"},
                                                             {22, "Degree"},
                                                             {23, "Second"},
                                                             {24, "Radian"},
                                                             {30, "UTC"},
                                                             {31, "Local"},
                                                             {32, "GPST"},
                                                             {33, "GPSW"}});
}

TEST(Descriptions, NoFormatHasAFileWordButNoDescription)
{
    EXPECT_EQ(Helper::Format_to_DescriptionString(Format_None), QString());
    EXPECT_EQ(Helper::ForCoordIO_Format_to_AsciiString(Format_None), QStringLiteral("None"));
}

TEST(Descriptions, OfTheModelsEnumerations)
{
    expectDescriptions(Helper::ELocationType_to_DescriptionString,
                       {{0, "X_Y_ElevationHeight"}, {1, "Lat_Long_EarthHeight"}});
    expectDescriptions(Helper::ELocationZeroType_to_DescriptionString,
                       {{0, "Equator_Zero"}, {1, "Central_Meridian_Zero"}});
    expectDescriptions(Helper::EWhichHalfEarth_to_DescriptionString, {{0, "N"}, {1, "S"}});
    expectDescriptions(Helper::EEllipsoidDirection_to_DescriptionString,
                       {{0, "ENU"}, {1, "WSU"}, {2, "ESU"}, {3, "WNU"}});
    expectDescriptions(Helper::EEllipsoinTransformFunction_to_DescriptionString,
                       {{0, "None"}, {1, "Three"}, {2, "Seven"}});
    expectDescriptions(Helper::EEllipsoinTransition_to_DescriptionString, {{0, "XYZ"}, {1, "BLH"}});
    expectDescriptions(Helper::EPlaneTransformFunction_to_DescriptionString,
                       {{0, "None"}, {1, "Four"}});
    expectDescriptions(Helper::EElevationFittingFunction_to_DescriptionString,
                       {{0, "None"}, {1, "Fixed"}, {2, "Plane"}, {3, "Curve"}});
}

} // namespace
} // namespace KelStd
