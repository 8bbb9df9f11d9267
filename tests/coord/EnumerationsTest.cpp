#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Enumerations.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace KelStd {
namespace {

template <typename Enumeration>
constexpr bool isSigned32Bit = std::is_same_v<std::underlying_type_t<Enumeration>, qint32>;

static_assert(isSigned32Bit<EValueType> && isSigned32Bit<EUnit> && isSigned32Bit<EFormat>);
static_assert(isSigned32Bit<ELocationType> && isSigned32Bit<ELocationZeroType>);
static_assert(isSigned32Bit<EWhichHalfEarth> && isSigned32Bit<EEllipsoidDirection>);
static_assert(isSigned32Bit<EEllipsoinTransformFunction> && isSigned32Bit<EEllipsoinTransition>);
static_assert(isSigned32Bit<EPlaneTransformFunction> && isSigned32Bit<EElevationFittingFunction>);

struct Row
{
    const char *name;
    qint64 enumerator;
    qint64 number;
};

#define ROW(enumerator, number)                                                                    \
    Row                                                                                            \
    {                                                                                              \
#        enumerator, enumerator, number                                                            \
    }

constexpr Row valueTypes[] = {
    ROW(ValueType_None, 0),
    ROW(ValueType_String, 1),
    ROW(ValueType_Int32, 2),
    ROW(ValueType_Int64, 3),
    ROW(ValueType_Double, 4),
    ROW(ValueType_Boolean, 5),
    ROW(ValueType_Distance, 6),
    ROW(ValueType_Height, 7),
    ROW(ValueType_Angle, 8),
    ROW(ValueType_Time, 9),
    ROW(ValueType_TimeSpan, 10),
    ROW(ValueType_Pressure, 11),
    ROW(ValueType_Temprature, 12),
    ROW(ValueType_Longitude, 100),
    ROW(ValueType_Latitude, 101),
    ROW(ValueType_EarthHeight, 102),
    ROW(ValueType_X, 103),
    ROW(ValueType_Y, 104),
    ROW(ValueType_ElevationHeight, 105),
    ROW(ValueType_LocationZeroType, 200),
    ROW(ValueType_WhichHalfEarth, 201),
    ROW(ValueType_EllipsoidDirection, 202),
    ROW(ValueType_Proj4_Param_Bool, 300),
};

constexpr Row lengthUnits[] = {
    ROW(Unit_Meter, 10), ROW(Unit_MilliMeter, 11), ROW(Unit_Foot, 20),   ROW(Unit_Yard, 21),
    ROW(Unit_Inch, 22),  ROW(Unit_Mile, 23),       ROW(Unit_USFoot, 30),
};

constexpr Row pressureUnits[] = {
    ROW(Unit_Bar, 100),  ROW(Unit_Pascal, 101), ROW(Unit_MilliBar, 102),
    ROW(Unit_MmHg, 103), ROW(Unit_InHg, 104),
};

constexpr Row temperatureUnits[] = {
    ROW(Unit_Celsius, 200),
    ROW(Unit_Fahrenheit, 201),
    ROW(Unit_Kelvin, 202),
};

constexpr Row angleUnits[] = {
    ROW(Unit_Degree, 300),
    ROW(Unit_Second, 301),
};

constexpr Row formats[] = {
    ROW(Format_None, 0),
    ROW(Format_NorthEastHeight, 1),
    ROW(Format_EastNorthHeight, 2),
    ROW(Format_DegreeMinuteSecond, 20),
    ROW(Format_Degree, 22),
    ROW(Format_Second, 23),
    ROW(Format_Radian, 24),
    ROW(Format_UTC, 30),
    ROW(Format_Local, 31),
    ROW(Format_GPST, 32),
    ROW(Format_GPSW, 33),
};

constexpr Row kinds[] = {
    ROW(LocationType_X_Y_ElevationHeight, 0),
    ROW(LocationType_Lat_Long_EarthHeight, 1),
    ROW(LocationZeroType_Equator_Zero, 0),
    ROW(LocationZeroType_Central_Meridian_Zero, 1),
    ROW(WhichHalfEarth_North, 0),
    ROW(WhichHalfEarth_South, 1),
    ROW(EllipsoidDirection_ENU, 0),
    ROW(EllipsoidDirection_WSU, 1),
    ROW(EllipsoidDirection_ESU, 2),
    ROW(EllipsoidDirection_WNU, 3),
};

constexpr Row transformations[] = {
    ROW(EllipsoinTransformFunction_None, 0),  ROW(EllipsoinTransformFunction_Three, 1),
    ROW(EllipsoinTransformFunction_Seven, 2), ROW(EllipsoinTransition_XYZ, 0),
    ROW(EllipsoinTransition_BLH, 1),          ROW(PlaneTransformFunction_None, 0),
    ROW(PlaneTransformFunction_Four, 1),      ROW(ElevationFittingFunction_None, 0),
    ROW(ElevationFittingFunction_Fixed, 1),   ROW(ElevationFittingFunction_Plane, 2),
    ROW(ElevationFittingFunction_Curve, 3),
};

#undef ROW

template <std::size_t count>
void expectNumbers(const Row (&rows)[count])
{
    for (const Row &row : rows)
        EXPECT_EQ(row.enumerator, row.number) << row.name;
}

template <std::size_t count>
void expectBand(const Row (&rows)[count], qint64 first, qint64 last)
{
    for (const Row &row : rows) {
        EXPECT_GE(row.enumerator, first) << row.name;
        EXPECT_LE(row.enumerator, last) << row.name;
    }
}

TEST(Enumerations, ValueTypesHaveTheirNumbers)
{
    expectNumbers(valueTypes);
}

TEST(Enumerations, UnitsHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<qint64>(Unit_None), 0);
    expectNumbers(lengthUnits);
    expectNumbers(pressureUnits);
    expectNumbers(temperatureUnits);
    expectNumbers(angleUnits);
}

TEST(Enumerations, FormatsHaveTheirNumbers)
{
    expectNumbers(formats);
}

TEST(Enumerations, LocationAndAxisKindsHaveTheirNumbers)
{
    expectNumbers(kinds);
}

TEST(Enumerations, TransformationFunctionsHaveTheirNumbers)
{
    expectNumbers(transformations);
}

TEST(Enumerations, UnitsOfOneQuantityLieInOneBand)
{
    expectBand(lengthUnits, 1, 99);
    expectBand(pressureUnits, 100, 104);
    expectBand(temperatureUnits, 200, 202);
    expectBand(angleUnits, 300, 301);
}

TEST(Enumerations, UnlistedNumbersAreKeptByTheRecordsThatHoldThem)
{
    Coord coord;
    coord.ellipsoid.positiveDir = static_cast<EEllipsoidDirection>(17);
    coord.ellipsoid.biggerHalfAxle.valType = static_cast<EValueType>(99);
    coord.ellipsoid.biggerHalfAxle.unit = static_cast<EUnit>(-5);
    coord.projection.locationType = static_cast<ELocationType>(5);
    coord.projection.param[QStringLiteral("p")] =
        Param(static_cast<EValueType>(2147483647), static_cast<EUnit>(31), 1.0);
    coord.ellipsoidTransform.fuction = static_cast<EEllipsoinTransformFunction>(7);
    coord.ellipsoidTransform.nofuction_transtion = static_cast<EEllipsoinTransition>(2);
    coord.planeTransform.fuction = static_cast<EPlaneTransformFunction>(8);
    coord.elevationFitting.function = static_cast<EElevationFittingFunction>(-2147483647);

    const Coord copy(coord);
    EXPECT_EQ(static_cast<int>(copy.ellipsoid.positiveDir), 17);
    EXPECT_EQ(static_cast<int>(copy.ellipsoid.biggerHalfAxle.valType), 99);
    EXPECT_EQ(static_cast<int>(copy.ellipsoid.biggerHalfAxle.unit), -5);
    EXPECT_EQ(static_cast<int>(copy.projection.locationType), 5);
    EXPECT_EQ(static_cast<int>(copy.projection.param[QStringLiteral("p")].valType), 2147483647);
    EXPECT_EQ(static_cast<int>(copy.projection.param[QStringLiteral("p")].unit), 31);
    EXPECT_EQ(static_cast<int>(copy.ellipsoidTransform.fuction), 7);
    EXPECT_EQ(static_cast<int>(copy.ellipsoidTransform.nofuction_transtion), 2);
    EXPECT_EQ(static_cast<int>(copy.planeTransform.fuction), 8);
    EXPECT_EQ(static_cast<int>(copy.elevationFitting.function), -2147483647);
}

TEST(Enumerations, UnassignedTwentyOneStaysTwentyOneAsAFormat)
{
    EFormat format = static_cast<EFormat>(21);
    const EFormat copy = format;
    format = Format_None;
    EXPECT_EQ(static_cast<int>(copy), 21);
}

TEST(Enumerations, TimeInAParameterStaysNine)
{
    const Param time(static_cast<EValueType>(9), Unit_None, 0);
    const Param copy = time;
    EXPECT_EQ(copy.valType, ValueType_Time);
    EXPECT_EQ(static_cast<int>(copy.valType), 9);
}

} // namespace
} // namespace KelStd
