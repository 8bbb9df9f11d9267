#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

Coord defaultSystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    return coord;
}

TEST(CoordDefaults, SystemHasItsFixedName)
{
    EXPECT_EQ(defaultSystem().coord_name, QStringLiteral("default_tmerc_coodination"));
}

TEST(CoordDefaults, EllipsoidIsOfWgs84Size)
{
    const Coord coord = defaultSystem();
    EXPECT_EQ(coord.ellipsoid.ellipsoid_name, QStringLiteral("default_wgs84_ellipsoid"));
    EXPECT_EQ(coord.ellipsoid.proj4EllpsName, QStringLiteral("WGS84"));
    test::expectNumber(coord.ellipsoid.biggerHalfAxle, ValueType_Distance, Unit_Meter, 6378137.0);
    test::expectEmptyDictionary(coord.ellipsoid.biggerHalfAxle);
    EXPECT_EQ(coord.ellipsoid.positiveDir, EllipsoidDirection_ENU);
}

TEST(CoordDefaults, FlatteningIsTheLibrarysOwnNotWgs84s)
{
    EXPECT_EQ(defaultSystem().ellipsoid.reciprocal, 298.25772236);
    EXPECT_NE(defaultSystem().ellipsoid.reciprocal, 298.257223563);
}

TEST(CoordDefaults, ProjectionIsTransverseMercatorInMetres)
{
    const Projection projection = defaultSystem().projection;
    EXPECT_EQ(projection.projection_name, QStringLiteral("default_tmerc_projection"));
    EXPECT_EQ(projection.proj4Projection, QStringLiteral("tmerc"));
    EXPECT_EQ(projection.locationType, LocationType_X_Y_ElevationHeight);
    EXPECT_EQ(projection.loc_or_height_unit, Unit_Meter);
}

struct ParameterRow
{
    const char *key;
    EValueType valType;
    EUnit unit;
    double value;
    const char *projName;
};

/// In key order, which is the order of the PROJ definition.
constexpr ParameterRow parameters[] = {
    {"FalseEast", ValueType_Double, Unit_None, 0.0, "x_0"},
    {"FalseNorth", ValueType_Double, Unit_None, 0.0, "y_0"},
    {"k", ValueType_Double, Unit_None, 1.0, "k"},
    {"lat_0", ValueType_Latitude, Unit_Degree, 0.0, "lat_0"},
    {"lon_0", ValueType_Longitude, Unit_Degree, 0.0, "lon_0"},
};

TEST(CoordDefaults, ProjectionHasItsFiveParametersInOrder)
{
    const Projection projection = defaultSystem().projection;
    QStringList keys;
    QStringList projNames;
    for (const ParameterRow &row : parameters) {
        SCOPED_TRACE(row.key);
        const QString key = QString::fromLatin1(row.key);
        keys << key;
        projNames << QString::fromLatin1(row.projName);
        ASSERT_TRUE(projection.param.contains(key));
        test::expectNumber(projection.param[key], row.valType, row.unit, row.value);
        test::expectEmptyDictionary(projection.param[key]);
    }
    EXPECT_EQ(QStringList(projection.param.keys()), keys);
    EXPECT_EQ(QStringList(projection.paramProj4.keys()), keys);
    EXPECT_EQ(QStringList(projection.paramProj4.values()), projNames);
}

TEST(CoordDefaults, NoTransformationNoFittingNoGeoid)
{
    const Coord coord = defaultSystem();
    EXPECT_TRUE(coord.ellipsoidTransform == stEllipsoinTransform());
    EXPECT_TRUE(coord.planeTransform == stPlaneTransform());
    EXPECT_TRUE(coord.elevationFitting == stElevationFitting());
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

TEST(CoordDefaults, NothingOfTheFormerSystemSurvives)
{
    Coord coord;
    coord.coord_name = QStringLiteral("former");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    coord.ellipsoid.positiveDir = EllipsoidDirection_WSU;
    test::giveDictionary(coord.ellipsoid.biggerHalfAxle);
    coord.projection.param[QStringLiteral("alpha")] = Param();
    coord.projection.paramProj4[QStringLiteral("alpha")] = QStringLiteral("alpha");
    coord.projection.param[QStringLiteral("k")] = Param(ValueType_Distance, Unit_Foot, 7.0);
    test::giveDictionary(coord.projection.param[QStringLiteral("lon_0")]);
    coord.projection.locationType = LocationType_Lat_Long_EarthHeight;
    coord.projection.loc_or_height_unit = Unit_USFoot;
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Seven;
    coord.ellipsoidTransform.nofuction_transtion = EllipsoinTransition_BLH;
    coord.ellipsoidTransform.x_rotate = Param(ValueType_Double, Unit_Degree, 1.0);
    test::giveDictionary(coord.ellipsoidTransform.ratio_ppm);
    coord.planeTransform.fuction = PlaneTransformFunction_Four;
    coord.planeTransform.rotate_angle = Param(ValueType_Double, Unit_Degree, 1.0);
    test::giveDictionary(coord.planeTransform.ratio);
    coord.elevationFitting.function = ElevationFittingFunction_Curve;
    coord.elevationFitting.north_zero_x0 = Param(ValueType_Double, Unit_Foot, 1.0);
    test::giveDictionary(coord.elevationFitting.a);
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");

    Coord::CreateDefaultTMercCoordination(coord);

    // Records compare with their dictionaries and function codes.
    EXPECT_TRUE(coord == defaultSystem());
    EXPECT_EQ(coord.coord_name, defaultSystem().coord_name);
    EXPECT_EQ(coord.ellipsoid.ellipsoid_name, QStringLiteral("default_wgs84_ellipsoid"));
    EXPECT_EQ(coord.projection.projection_name, QStringLiteral("default_tmerc_projection"));
    EXPECT_TRUE(coord.ellipsoidTransform == stEllipsoinTransform());
    EXPECT_TRUE(coord.planeTransform == stPlaneTransform());
    EXPECT_TRUE(coord.elevationFitting == stElevationFitting());
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

} // namespace
} // namespace KelStd
