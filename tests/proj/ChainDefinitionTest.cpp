#include "support/Printers.h"
#include "support/Raised.h"

#include <KelStd/coord/Coord.h>

#include <gtest/gtest.h>

#include <array>
#include <climits>

namespace KelStd {
namespace {

using Buffer = std::array<char, 512>;

struct Chain
{
    QString wgs84LatLong;
    QString wgs84XYZ;
    QString localLatLong;
    QString localProjected;
};

Chain chainOf(const Coord &coord, const Coord *ignored = nullptr)
{
    std::array<Buffer, 4> buffers{};
    Coord::__MakeCoordStrings(ignored, &coord, buffers[0].data(), buffers[1].data(),
                              buffers[2].data(), buffers[3].data());
    return {QString::fromUtf8(buffers[0].data()), QString::fromUtf8(buffers[1].data()),
            QString::fromUtf8(buffers[2].data()), QString::fromUtf8(buffers[3].data())};
}

Coord tmercOnBessel()
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = "bessel";
    coord.projection.proj4Projection = "tmerc";
    coord.projection.param["x"] = Param(ValueType_Y, Unit_Meter, 3500000.0);
    coord.projection.paramProj4["x"] = "x_0";
    coord.projection.param["lon"] = Param(ValueType_Longitude, Unit_Degree, 9.0);
    coord.projection.paramProj4["lon"] = "lon_0";
    return coord;
}

TEST(ChainDefinition, Wgs84DefinitionsAreFixed)
{
    for (const Coord &coord : {Coord(), tmercOnBessel()}) {
        const Chain chain = chainOf(coord);
        EXPECT_EQ(chain.wgs84LatLong, "+proj=longlat +datum=WGS84 +axis=enu");
        EXPECT_EQ(chain.wgs84XYZ, "+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m");
    }
}

TEST(ChainDefinition, LocalGeographicHasEllipsoidAxisShiftUnits)
{
    EXPECT_EQ(chainOf(tmercOnBessel()).localLatLong,
              "+proj=longlat +ellps=bessel +axis=enu +towgs84=0,0,0 +units=m");
}

TEST(ChainDefinition, LocalProjectedHasParametersBeforeTheEllipsoid)
{
    EXPECT_EQ(chainOf(tmercOnBessel()).localProjected,
              "+proj=tmerc +lon_0=9 +x_0=3500000 +ellps=bessel +axis=enu +towgs84=0,0,0 +units=m");
}

TEST(ChainDefinition, UnitsAreMetresWhateverTheProjectionSays)
{
    Coord coord = tmercOnBessel();
    const Chain metres = chainOf(coord);
    for (const EUnit unit : {Unit_Foot, Unit_USFoot, Unit_MilliMeter, Unit_None, Unit_Degree}) {
        coord.projection.loc_or_height_unit = unit;
        EXPECT_EQ(chainOf(coord).localProjected, metres.localProjected) << unit;
        EXPECT_EQ(chainOf(coord).localLatLong, metres.localLatLong) << unit;
    }
}

TEST(ChainDefinition, FirstCoordIsIgnored)
{
    const Coord coord = tmercOnBessel();
    Coord other;
    other.ellipsoid.proj4EllpsName = "clrk66";
    other.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    const Chain expected = chainOf(coord);
    const Chain chain = chainOf(coord, &other);
    EXPECT_EQ(chain.localLatLong, expected.localLatLong);
    EXPECT_EQ(chain.localProjected, expected.localProjected);
}

TEST(ChainDefinition, BlankEllipsoidNameIsSpelledOut)
{
    Coord coord = tmercOnBessel();
    coord.ellipsoid.biggerHalfAxle.value = 6377397.155;
    coord.ellipsoid.reciprocal = 299.1528128;
    for (const char *name : {"", "  \t "}) {
        coord.ellipsoid.proj4EllpsName = name;
        EXPECT_EQ(chainOf(coord).localLatLong,
                  "+proj=longlat +a=6377397.155 +rf=299.1528128 +axis=enu +towgs84=0,0,0 +units=m");
        EXPECT_EQ(chainOf(coord).localProjected,
                  "+proj=tmerc +lon_0=9 +x_0=3500000 +a=6377397.155 +rf=299.1528128 +axis=enu "
                  "+towgs84=0,0,0 +units=m");
    }
    coord.ellipsoid.proj4EllpsName = " bessel ";
    EXPECT_EQ(chainOf(coord).localLatLong,
              "+proj=longlat +ellps=bessel +axis=enu +towgs84=0,0,0 +units=m");
}

TEST(ChainDefinition, GluesTheUnitsWordToTheAxis)
{
    Coord coord = tmercOnBessel();
    coord.ellipsoid.proj4EllpsName.clear();
    coord.ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Foot, 20922931.8);
    coord.ellipsoid.reciprocal = 300.0;
    EXPECT_EQ(chainOf(coord).localLatLong,
              "+proj=longlat +a=6377309.6126in +rf=300 +axis=enu +towgs84=0,0,0 +units=m");
}

TEST(ChainDefinition, AxisFollowsThePositiveDirections)
{
    const QPair<int, QString> rows[] = {
        {0, " +axis=enu"}, {1, " +axis=wsu"}, {2, " +axis=esu"}, {3, " +axis=wnu"},
        {4, ""},           {-1, ""},          {INT_MAX, ""},     {INT_MIN, ""},
    };
    Coord coord = tmercOnBessel();
    for (const auto &[direction, fragment] : rows) {
        SCOPED_TRACE(direction);
        coord.ellipsoid.positiveDir = static_cast<EEllipsoidDirection>(direction);
        EXPECT_EQ(chainOf(coord).localLatLong,
                  "+proj=longlat +ellps=bessel" + fragment + " +towgs84=0,0,0 +units=m");
        EXPECT_EQ(chainOf(coord).localProjected, "+proj=tmerc +lon_0=9 +x_0=3500000 +ellps=bessel"
                                                     + fragment + " +towgs84=0,0,0 +units=m");
    }
}

TEST(ChainDefinition, FlagsMissingParametersAndUnnamedOnes)
{
    Coord coord;
    Projection &projection = coord.projection;
    coord.ellipsoid.proj4EllpsName = "GRS80";
    projection.proj4Projection = "utm";
    projection.param["a"] = Param(ValueType_Proj4_Param_Bool, Unit_None, true);
    projection.paramProj4["a"] = "south";
    projection.param["b"] = Param(ValueType_Proj4_Param_Bool, Unit_None, false);
    projection.paramProj4["b"] = "over";
    projection.paramProj4["c"] = "lat_0";                            // no such parameter
    projection.param["d"] = Param(ValueType_Double, Unit_None, 1.0); // no name
    projection.param["zone"] = Param(ValueType_Int32, Unit_None, 31);
    projection.paramProj4["zone"] = "zone";
    EXPECT_EQ(chainOf(coord).localProjected,
              "+proj=utm +south +lat_0=0 +zone=31 +ellps=GRS80 +axis=enu +towgs84=0,0,0 +units=m");
}

/// Of two equal keys PROJ takes the first, so the parameter wins over the chain's own pieces.
TEST(ChainDefinition, ParameterCalledUnitsOrAxisComesFirst)
{
    Coord coord = tmercOnBessel();
    coord.projection.param["own"] = Param(ValueType_String, Unit_None, "us-ft");
    coord.projection.paramProj4["own"] = "units";
    EXPECT_EQ(chainOf(coord).localProjected,
              "+proj=tmerc +lon_0=9 +units=us-ft +x_0=3500000 +ellps=bessel +axis=enu "
              "+towgs84=0,0,0 +units=m");
}

TEST(ChainDefinition, UnknownUnitsRaise)
{
    Coord coord = tmercOnBessel();
    const auto make = [&] { chainOf(coord); };

    coord.ellipsoid.proj4EllpsName.clear();
    coord.ellipsoid.biggerHalfAxle.unit = Unit_Mile;
    EXPECT_EQ(test::messageRaisedByPointer(make), "Error unit for proj4");
    coord.ellipsoid.biggerHalfAxle.unit = Unit_Degree;
    EXPECT_EQ(test::messageRaisedByValue(make), "");

    coord.ellipsoid.proj4EllpsName = "bessel";
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    coord.ellipsoidTransform.x_translate.unit = Unit_None;
    EXPECT_EQ(test::messageRaisedByValue(make), "");

    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_None;
    coord.projection.param["x"].valType = ValueType_TimeSpan;
    EXPECT_EQ(test::messageRaisedByPointer(make), "No Time Value In Coordinate");
}

TEST(ChainDefinition, IsUtf8)
{
    Coord coord = tmercOnBessel();
    coord.projection.proj4Projection = QStringLiteral(u"mercé");
    std::array<Buffer, 4> buffers{};
    Coord::__MakeCoordStrings(nullptr, &coord, buffers[0].data(), buffers[1].data(),
                              buffers[2].data(), buffers[3].data());
    EXPECT_EQ(std::string(buffers[3].data()).substr(0, 12), "+proj=merc\xC3\xA9");
}

} // namespace
} // namespace KelStd
