#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/Raised.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <array>

namespace KelStd {
namespace {

QString definitionOf(const Coord &coord, const QString &projectionName = QString())
{
    std::array<char, 1000> buffer{};
    ProjLib::CoordToProjString(&coord, buffer.data(), projectionName);
    return QString::fromUtf8(buffer.data());
}

Coord utmInFeet()
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = " GRS80 ";
    coord.projection.proj4Projection = "utm";
    coord.projection.loc_or_height_unit = Unit_USFoot;
    coord.projection.param["zone"] = Param(ValueType_Int32, Unit_None, 18);
    coord.projection.paramProj4["zone"] = "zone";
    coord.projection.param["half"] = Param(ValueType_Proj4_Param_Bool, Unit_None, true);
    coord.projection.paramProj4["half"] = "south";
    return coord;
}

TEST(SingleDefinition, HasItsPiecesInOrder)
{
    EXPECT_EQ(definitionOf(utmInFeet()),
              "+proj=utm +ellps=GRS80 +axis=enu +south +zone=18 +units=us-in +towgs84=0,0,0 "
              "+no_defs");
}

TEST(SingleDefinition, GivenNameReplacesTheProjectionsOwn)
{
    EXPECT_EQ(definitionOf(utmInFeet(), "etmerc"),
              "+proj=etmerc +ellps=GRS80 +axis=enu +south +zone=18 +units=us-in +towgs84=0,0,0 "
              "+no_defs");
}

TEST(SingleDefinition, NamedLongLatHasNeitherParametersNorUnits)
{
    for (const char *name : {"longlat", "LongLat", "LONGLAT"}) {
        EXPECT_EQ(definitionOf(utmInFeet(), name),
                  QString("+proj=") + name + " +ellps=GRS80 +axis=enu +towgs84=0,0,0 +no_defs");
    }
}

TEST(SingleDefinition, OnlyTheGivenNameIsCompared)
{
    Coord coord = utmInFeet();
    coord.projection.proj4Projection = "longlat";
    EXPECT_EQ(definitionOf(coord), "+proj=longlat +ellps=GRS80 +axis=enu +south +zone=18 "
                                   "+units=us-in +towgs84=0,0,0 +no_defs");
    // Nor is anything but the very word.
    for (const char *name : {"longlat ", "latlong", "long"}) {
        EXPECT_EQ(definitionOf(coord, name),
                  QString("+proj=") + name
                      + " +ellps=GRS80 +axis=enu +south +zone=18 +units=us-in +towgs84=0,0,0 "
                        "+no_defs");
    }
}

TEST(SingleDefinition, SpellsOutTheEllipsoidAndWritesItsAxes)
{
    Coord coord = utmInFeet();
    coord.ellipsoid.proj4EllpsName = " ";
    coord.ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Foot, 20922931.8);
    coord.ellipsoid.reciprocal = 298.25;
    coord.ellipsoid.positiveDir = EllipsoidDirection_WSU;
    EXPECT_EQ(definitionOf(coord, "longlat"),
              "+proj=longlat +a=6377309.6126in +rf=298.25 +axis=wsu +towgs84=0,0,0 +no_defs");
    coord.ellipsoid.positiveDir = static_cast<EEllipsoidDirection>(4);
    EXPECT_EQ(definitionOf(coord, "longlat"),
              "+proj=longlat +a=6377309.6126in +rf=298.25 +towgs84=0,0,0 +no_defs");
}

TEST(SingleDefinition, ShiftStandsBetweenUnitsAndNoDefs)
{
    Coord coord = utmInFeet();
    coord.projection.loc_or_height_unit = Unit_Meter;
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    coord.ellipsoidTransform.x_translate.value = 100.0;
    coord.ellipsoidTransform.y_translate.value = -20.0;
    coord.ellipsoidTransform.z_translate.value = 5.0;
    EXPECT_EQ(definitionOf(coord), "+proj=utm +ellps=GRS80 +axis=enu +south +zone=18 +units=m "
                                   "+towgs84=100,-20,5 +no_defs");
    EXPECT_EQ(definitionOf(coord, "LongLat"),
              "+proj=LongLat +ellps=GRS80 +axis=enu +towgs84=100,-20,5 +no_defs");
}

TEST(SingleDefinition, NeedsNoLoadedProj)
{
    ProjLib::___unloadEnviroment();
    EXPECT_TRUE(definitionOf(Coord()).endsWith(" +no_defs"));
}

TEST(SingleDefinition, UnitWithoutAWordRaisesOnlyWhereItIsWritten)
{
    Coord coord = utmInFeet();
    coord.projection.loc_or_height_unit = Unit_MilliMeter;
    EXPECT_EQ(test::messageRaisedByPointer([&] { definitionOf(coord); }), "Error unit for proj4");
    EXPECT_EQ(definitionOf(coord, "longlat"),
              "+proj=longlat +ellps=GRS80 +axis=enu +towgs84=0,0,0 +no_defs");

    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Seven;
    coord.ellipsoidTransform.z_translate.unit = Unit_Degree;
    EXPECT_EQ(test::messageRaisedByValue([&] { definitionOf(coord, "longlat"); }), "");
}

using SingleDefinitionInProj = test::ProjTest;

TEST_F(SingleDefinitionInProj, OfAGeographicSystemIsAccepted)
{
    const Coord coord = utmInFeet();
    Pos pos = Pos::fromLongLatH(-75.0, -10.0, 25.0);
    QString error;
    ASSERT_TRUE(ProjLib::ConvertPosList(definitionOf(coord, "longlat"),
                                        "+proj=longlat +ellps=GRS80", pos,
                                        ProjLib::LocalLatLongH_to_WGS84XYZ, &error))
        << error;
    EXPECT_TRUE(pos.equals(Pos::fromLongLatH(-75.0, -10.0, 25.0))) << testing::PrintToString(pos);
}

/// A position of a system whose unit is the foot: PROJ is told "us-in", the US survey inch, on
/// purpose. 500,000 m are 500000 * 39.37 of them.
TEST_F(SingleDefinitionInProj, FeetAreWrittenAsInches)
{
    Pos pos = Pos::fromLongLatH(-75.0, -10.0, 0.0);
    QString error;
    ASSERT_TRUE(ProjLib::ConvertPosList("+proj=longlat +ellps=GRS80", definitionOf(utmInFeet()),
                                        pos, ProjLib::LocalLatLongH_to_LocalNEH, &error))
        << error;
    EXPECT_NEAR(pos.getENU().e, 500000.0 * 39.37, 1e-5); // the last bits of 2e7
}

} // namespace
} // namespace KelStd
