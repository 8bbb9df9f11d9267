#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/ScopedShowConfig.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

// How distances are shown decides how a spelled-out semi-major axis is written: its unit, its
// decimals and its trailing zeros. That is the contract, a dangerous one: a host must keep
// distances in metres with 3 decimals or more while it converts. These tests hold it, so that
// nobody changes it unawares, and hold everything else free of it.

namespace KelStd {
namespace {

stShowConfig distancesIn(EUnit unit, unsigned char precision, bool keepZeros = false)
{
    stShowConfig config;
    config.distanceUnit = unit;
    config.distancePrecision = precision;
    config.distanceKeepZero = keepZeros;
    return config;
}

Coord spelledOutWgs84()
{
    Coord coord;
    coord.ellipsoid.biggerHalfAxle.value = 6378137.0;
    coord.ellipsoid.reciprocal = 298.257223563;
    coord.projection.proj4Projection = "tmerc";
    coord.projection.param["k"] = Param(ValueType_Double, Unit_None, 0.5);
    coord.projection.paramProj4["k"] = "k_0";
    return coord;
}

struct Definitions
{
    QString geographic;
    QString projected;
    QString single;
};

Definitions definitionsOf(const Coord &coord)
{
    std::array<std::array<char, 512>, 4> chain{};
    Coord::__MakeCoordStrings(nullptr, &coord, chain[0].data(), chain[1].data(), chain[2].data(),
                              chain[3].data());
    std::array<char, 1000> single{};
    ProjLib::CoordToProjString(&coord, single.data(), QString());
    return {chain[2].data(), chain[3].data(), single.data()};
}

struct AxisRow
{
    stShowConfig config;
    double axis; ///< [m]
    QString text;
};

TEST(DisplayConfiguration, ReachesTheSpelledOutAxis)
{
    const AxisRow rows[] = {
        {stShowConfig(), 6378137.0, "6378137"},
        {stShowConfig(), 6377563.396, "6377563.396"},
        {stShowConfig(), 6377563.39612, "6377563.3961"},
        {distancesIn(Unit_Meter, 2), 6377563.396, "6377563.4"},
        {distancesIn(Unit_Meter, 0), 6377563.396, "6377563"},
        {distancesIn(Unit_Meter, 4, true), 6378137.0, "6378137.0000"},
        {distancesIn(Unit_MilliMeter, 0), 6377563.396, "6377563396"},
        // 6378137 m / 0.3048 and / (1200/3937); the unit's word does not appear, because the
        // ellipsoid's own unit is the metre.
        {distancesIn(Unit_Foot, 4), 6378137.0, "20925646.3255"},
        {distancesIn(Unit_USFoot, 4), 6378137.0, "20925604.4742"},
    };
    for (const AxisRow &row : rows) {
        SCOPED_TRACE(row.text.toStdString());
        const test::ScopedShowConfig scope(row.config);
        Coord coord = spelledOutWgs84();
        coord.ellipsoid.biggerHalfAxle.value = row.axis;
        const QString piece = " +a=" + row.text + " +rf=298.257223563 +axis=enu";
        const Definitions definitions = definitionsOf(coord);
        EXPECT_EQ(definitions.geographic, "+proj=longlat" + piece + " +towgs84=0,0,0 +units=m");
        EXPECT_EQ(definitions.projected,
                  "+proj=tmerc +k_0=0.5" + piece + " +towgs84=0,0,0 +units=m");
        EXPECT_EQ(definitions.single,
                  "+proj=tmerc" + piece + " +k_0=0.5 +units=m +towgs84=0,0,0 +no_defs");
    }
}

TEST(DisplayConfiguration, ReachesAnAxisOfAnotherKindByThatKindsRow)
{
    stShowConfig config;
    config.doublePrecision = 1;
    const test::ScopedShowConfig scope(config);
    Coord coord = spelledOutWgs84();
    coord.ellipsoid.biggerHalfAxle = Param(ValueType_Double, Unit_Meter, 6377563.396);
    EXPECT_TRUE(definitionsOf(coord).geographic.startsWith("+proj=longlat +a=6377563.4 +rf="));
}

/// Everything but distances is shown in the strangest way.
stShowConfig strangeButForDistances()
{
    stShowConfig config;
    config.coordOrder = Format_EastNorthHeight;
    config.doublePrecision = 0;
    config.latLongFormat = Format_Radian;
    config.latLongPrecision = 0;
    config.earthHeightUnit = config.xyUnit = config.elevationHeightUnit = config.heightUnit =
        Unit_Foot;
    config.xyPrecision = config.earthHeightPrecision = config.heightPrecision = 0;
    config.angleFormat = Format_DegreeMinuteSecond;
    config.anglePrecision = 0;
    return config;
}

TEST(DisplayConfiguration, ReachesNothingElse)
{
    Coord coord = spelledOutWgs84();
    coord.projection.param["lon"] = Param(ValueType_Longitude, Unit_Degree, 9.123456789);
    coord.projection.paramProj4["lon"] = "lon_0";
    coord.projection.param["x"] = Param(ValueType_Y, Unit_Meter, 500000.123456);
    coord.projection.paramProj4["x"] = "x_0";
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Seven;
    coord.ellipsoidTransform.x_translate.value = 12.3456789;
    coord.ellipsoidTransform.x_rotate.value = 1.23456789;
    const Definitions plain = definitionsOf(coord);

    const test::ScopedShowConfig scope(strangeButForDistances());
    EXPECT_EQ(definitionsOf(coord).geographic, plain.geographic);
    EXPECT_EQ(definitionsOf(coord).projected, plain.projected);
    EXPECT_EQ(definitionsOf(coord).single, plain.single);
}

TEST(DisplayConfiguration, DoesNotReachANamedEllipsoid)
{
    Coord coord = spelledOutWgs84();
    coord.ellipsoid.proj4EllpsName = "WGS84";
    const Definitions plain = definitionsOf(coord);
    const test::ScopedShowConfig scope(distancesIn(Unit_Foot, 0, true));
    EXPECT_EQ(definitionsOf(coord).geographic, plain.geographic);
    EXPECT_EQ(definitionsOf(coord).projected, plain.projected);
    EXPECT_EQ(definitionsOf(coord).single, plain.single);
}

using DisplayConfigurationInProj = test::ProjTest;

TEST_F(DisplayConfigurationInProj, ReachesTheProjectionsDefinition)
{
    const test::ScopedShowConfig scope(distancesIn(Unit_Foot, 4));
    const Coord coord = spelledOutWgs84();
    QString out;
    EXPECT_TRUE(ProjLib::GetProjectionString_proj4(&coord.projection, &coord.ellipsoid, out));
    EXPECT_EQ(out, "+proj=tmerc +a=20925646.3255 +rf=298.257223563 +axis=enu +k_0=0.5 +units=m");
}

/// What the contract costs: shown in feet, the earth is 3.28 times as big, and success is reported.
TEST_F(DisplayConfigurationInProj, InFeetMovesEveryPosition)
{
    const Coord coord = spelledOutWgs84();
    const auto northing = [&coord] {
        const Definitions definitions = definitionsOf(coord);
        Pos pos = Pos::fromLongLatH(0.0, 45.0, 0.0);
        EXPECT_TRUE(ProjLib::ConvertPosList(definitions.geographic, definitions.projected, pos,
                                            ProjLib::LocalLatLongH_to_LocalNEH));
        return pos.getENU().n;
    };
    const double inMetres = northing();
    const test::ScopedShowConfig scope(distancesIn(Unit_Foot, 4));
    // Half of the axis's fourth decimal is 2.4e-12 of it: 0.00002 of these eight million.
    EXPECT_NEAR(northing(), inMetres / 0.3048, 1e-4);
    EXPECT_GT(northing() - inMetres, 1000e3);
}

} // namespace
} // namespace KelStd
