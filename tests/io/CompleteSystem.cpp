#include "io/CompleteSystem.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd::test {

namespace {

Param length(double value)
{
    return Param(ValueType_Distance, Unit_Meter, value);
}

Param arcSeconds(double value)
{
    return Param(ValueType_Angle, Unit_Second, value);
}

Param plain(double value)
{
    return Param(ValueType_Double, Unit_None, value);
}

Projection completeProjection()
{
    Projection projection;
    projection.projection_name = QStringLiteral("Oblique Mercator");
    projection.proj4Projection = QStringLiteral("omerc");
    projection.locationType = LocationType_Lat_Long_EarthHeight;
    projection.loc_or_height_unit = Unit_USFoot;

    Param ellipsoidChoice(ValueType_Double, Unit_MilliMeter, QVariant(0));
    ellipsoidChoice.isDictionary = true;
    ellipsoidChoice.dictionarySelKey = QStringLiteral("six degrees");
    ellipsoidChoice.dictionaryBindParamName = QStringLiteral("meridian");
    ellipsoidChoice.dictionaryValues = {{QStringLiteral("six degrees"), 0.9996},
                                        {QStringLiteral("three degrees"), 1.0}};
    projection.param = {
        {QStringLiteral("FalseEast"), Param(ValueType_Distance, Unit_Foot, 1640416.5)},
        {QStringLiteral("azimuth"), Param(ValueType_Angle, Unit_Degree, 53.3158204722222)},
        {QStringLiteral("choice"), ellipsoidChoice},
        {QStringLiteral("meridian"), Param(ValueType_Longitude, Unit_Degree, -115.25)},
        {QStringLiteral("no_rot"), Param(ValueType_Proj4_Param_Bool, Unit_None, true)},
    };
    projection.paramProj4 = {
        {QStringLiteral("FalseEast"), QStringLiteral("x_0")},
        {QStringLiteral("azimuth"), QStringLiteral("alpha")},
        {QStringLiteral("meridian"), QStringLiteral("lonc")},
    };
    return projection;
}

} // namespace

Coord completeSystem()
{
    Coord coord;
    coord.coord_name = QString::fromUtf8("Düne & Söhne <7>");
    coord.ellipsoid.ellipsoid_name = QStringLiteral("Everest 1830");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("evrstSS");
    coord.ellipsoid.biggerHalfAxle = length(6377298.556);
    coord.ellipsoid.reciprocal = 300.8017;
    coord.ellipsoid.positiveDir = EllipsoidDirection_WNU;

    coord.projection = completeProjection();

    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Seven;
    coord.ellipsoidTransform.nofuction_transtion = EllipsoinTransition_BLH;
    coord.ellipsoidTransform.x_translate = length(-679.5);
    coord.ellipsoidTransform.y_translate = Param(ValueType_Height, Unit_Foot, 669.25);
    coord.ellipsoidTransform.z_translate = length(-48.125);
    coord.ellipsoidTransform.x_rotate = arcSeconds(0.4094);
    coord.ellipsoidTransform.y_rotate = Param(ValueType_Angle, Unit_Degree, -0.3597);
    coord.ellipsoidTransform.z_rotate = arcSeconds(1.8685);
    coord.ellipsoidTransform.ratio_ppm = plain(-4.0772);

    coord.planeTransform.fuction = PlaneTransformFunction_Four;
    coord.planeTransform.north_translate = length(12.5);
    coord.planeTransform.east_translate = length(-13.5);
    coord.planeTransform.rotate_angle = arcSeconds(14.5);
    coord.planeTransform.ratio = plain(1.000015);

    coord.elevationFitting.function = ElevationFittingFunction_Curve;
    coord.elevationFitting.a = plain(0.21);
    coord.elevationFitting.b = plain(0.22);
    coord.elevationFitting.c = plain(-0.23);
    coord.elevationFitting.d = plain(2.4e-07);
    coord.elevationFitting.e = plain(-2.5e-08);
    coord.elevationFitting.f = plain(2.6e-09);
    coord.elevationFitting.north_zero_x0 = Param(ValueType_X, Unit_Meter, 4500000.25);
    coord.elevationFitting.east_zero_y0 = Param(ValueType_Y, Unit_Meter, 510000.75);

    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    return coord;
}

void expectSameParam(const Param &actual, const Param &expected)
{
    EXPECT_TRUE(actual == expected);
    EXPECT_EQ(actual.valType, expected.valType);
    EXPECT_EQ(actual.unit, expected.unit);
    EXPECT_STREQ(actual.value.typeName(), expected.value.typeName());
    EXPECT_EQ(actual.value.toString(), expected.value.toString());
    EXPECT_EQ(actual.isDictionary, expected.isDictionary);
    EXPECT_EQ(actual.dictionarySelKey, expected.dictionarySelKey);
    EXPECT_EQ(actual.dictionaryBindParamName, expected.dictionaryBindParamName);
    EXPECT_EQ(QStringList(actual.dictionaryValues.keys()),
              QStringList(expected.dictionaryValues.keys()));
}

void expectSameSystem(const Coord &actual, const Coord &expected)
{
    EXPECT_EQ(actual.coord_name, expected.coord_name);
    EXPECT_EQ(actual.ellipsoid.ellipsoid_name, expected.ellipsoid.ellipsoid_name);
    EXPECT_EQ(actual.projection.projection_name, expected.projection.projection_name);
    EXPECT_TRUE(actual.ellipsoid == expected.ellipsoid);
    EXPECT_TRUE(actual.projection == expected.projection);
    EXPECT_TRUE(actual.ellipsoidTransform == expected.ellipsoidTransform);
    EXPECT_TRUE(actual.planeTransform == expected.planeTransform);
    EXPECT_TRUE(actual.elevationFitting == expected.elevationFitting);
    EXPECT_TRUE(actual.geoidModel == expected.geoidModel);
    EXPECT_EQ(QStringList(actual.projection.param.keys()),
              QStringList(expected.projection.param.keys()));
    for (auto entry = expected.projection.param.constBegin();
         entry != expected.projection.param.constEnd(); ++entry) {
        SCOPED_TRACE(entry.key().toStdString());
        expectSameParam(actual.projection.param.value(entry.key()), entry.value());
    }
}

} // namespace KelStd::test
