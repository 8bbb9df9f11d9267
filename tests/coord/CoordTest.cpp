#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<Coord>);

Coord filled()
{
    Coord coord;
    coord.coord_name = QStringLiteral("site");
    coord.ellipsoid.ellipsoid_name = QStringLiteral("Bessel 1841");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    coord.ellipsoid.biggerHalfAxle.value = 6377397.155;
    coord.ellipsoid.reciprocal = 299.1528128;
    coord.projection.projection_name = QStringLiteral("UTM");
    coord.projection.proj4Projection = QStringLiteral("tmerc");
    coord.projection.param[QStringLiteral("scale")] = Param(ValueType_Double, Unit_None, 0.9996);
    coord.projection.paramProj4[QStringLiteral("scale")] = QStringLiteral("k");
    coord.projection.locationType = LocationType_Lat_Long_EarthHeight;
    coord.projection.loc_or_height_unit = Unit_Foot;
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    coord.ellipsoidTransform.x_translate.value = 87.0;
    coord.planeTransform.fuction = PlaneTransformFunction_Four;
    coord.planeTransform.ratio.value = 1.0;
    coord.elevationFitting.function = ElevationFittingFunction_Fixed;
    coord.elevationFitting.a.value = 0.25;
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    return coord;
}

TEST(Coord, FreshOneHasFreshRecords)
{
    const Coord coord;
    EXPECT_TRUE(coord.coord_name.isEmpty());
    EXPECT_TRUE(coord.ellipsoid == Ellipsoid());
    EXPECT_TRUE(coord.ellipsoid.ellipsoid_name.isEmpty());
    EXPECT_TRUE(coord.projection == Projection());
    EXPECT_TRUE(coord.projection.projection_name.isEmpty());
    EXPECT_TRUE(coord.ellipsoidTransform == stEllipsoinTransform());
    EXPECT_TRUE(coord.planeTransform == stPlaneTransform());
    EXPECT_TRUE(coord.elevationFitting == stElevationFitting());
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

TEST(Coord, SwitchesOfTheDatumShiftStartAsSet)
{
    EXPECT_TRUE(Coord::s_invertParamsUseMinusNotMatrix);
    EXPECT_FALSE(Coord::s_invertParamsFunctionSwitch);
}

TEST(Coord, CopiesAndMovesTakeEveryMember)
{
    test::expectCopiesAndMovesEqual(filled());
    Coord source = filled();
    const Coord copy(source);
    EXPECT_EQ(copy.coord_name, QStringLiteral("site"));
    const Coord moved(std::move(source));
    EXPECT_EQ(moved.coord_name, QStringLiteral("site"));
    EXPECT_EQ(moved.ellipsoid.ellipsoid_name, QStringLiteral("Bessel 1841"));
    EXPECT_EQ(moved.projection.projection_name, QStringLiteral("UTM"));
}

TEST(Coord, NamesDoNotCountForEitherEquality)
{
    Coord renamed = filled();
    renamed.coord_name = QStringLiteral("another name");
    test::expectEqual(filled(), renamed);
    EXPECT_TRUE(filled().isSameLogic(renamed));
    renamed.ellipsoid.ellipsoid_name = QStringLiteral("another name");
    renamed.projection.projection_name = QStringLiteral("another name");
    test::expectEqual(filled(), renamed);
    EXPECT_TRUE(filled().isSameLogic(renamed));
}

struct Change
{
    const char *what;
    void (*apply)(Coord &);
};

/// Each counts for both equalities.
constexpr Change changesThatCount[] = {
    {"ellipsoid: PROJ name", [](Coord &c) { c.ellipsoid.proj4EllpsName.clear(); }},
    {"ellipsoid: flattening", [](Coord &c) { c.ellipsoid.reciprocal = 300.0; }},
    {"projection: value",
     [](Coord &c) { c.projection.param[QStringLiteral("scale")].value = 1.0; }},
    {"projection: unit", [](Coord &c) { c.projection.loc_or_height_unit = Unit_Meter; }},
    {"datum: function",
     [](Coord &c) { c.ellipsoidTransform.fuction = EllipsoinTransformFunction_Seven; }},
    {"datum: translation", [](Coord &c) { c.ellipsoidTransform.x_translate.value = 88.0; }},
    {"plane: function", [](Coord &c) { c.planeTransform.fuction = PlaneTransformFunction_None; }},
    {"plane: ratio", [](Coord &c) { c.planeTransform.ratio.value = 1.5; }},
    {"height: function",
     [](Coord &c) { c.elevationFitting.function = ElevationFittingFunction_None; }},
    {"height: constant", [](Coord &c) { c.elevationFitting.a.value = 0.5; }},
    {"geoid", [](Coord &c) { c.geoidModel.modelFileName = QStringLiteral("EGM96_15.gtx"); }},
};

TEST(Coord, EachRecordCountsForBothEqualities)
{
    EXPECT_TRUE(filled().isSameLogic(filled()));
    for (const Change &change : changesThatCount) {
        SCOPED_TRACE(change.what);
        Coord changed = filled();
        change.apply(changed);
        test::expectDifferent(filled(), changed);
        EXPECT_FALSE(filled().isSameLogic(changed));
        EXPECT_FALSE(changed.isSameLogic(filled()));
    }
}

/// Each counts for `==` alone: the selected functions do not use it.
constexpr Change changesWithoutConsequence[] = {
    {"rotation of a three-parameter shift",
     [](Coord &c) { c.ellipsoidTransform.z_rotate.value = 1.5; }},
    {"scale of a three-parameter shift",
     [](Coord &c) { c.ellipsoidTransform.ratio_ppm.value = 1.5; }},
    {"transition of a three-parameter shift",
     [](Coord &c) { c.ellipsoidTransform.nofuction_transtion = EllipsoinTransition_BLH; }},
    {"second coefficient of a fixed fitting", [](Coord &c) { c.elevationFitting.b.value = 1.5; }},
    {"parameter without a PROJ name",
     [](Coord &c) { c.projection.param[QStringLiteral("note")] = Param(); }},
    {"another word for the scale",
     [](Coord &c) { c.projection.paramProj4[QStringLiteral("scale")] = QStringLiteral(" K_0"); }},
    {"another key of the scale",
     [](Coord &c) {
         c.projection.param[QStringLiteral("s")] = c.projection.param.take(QStringLiteral("scale"));
         c.projection.paramProj4[QStringLiteral("s")] =
             c.projection.paramProj4.take(QStringLiteral("scale"));
     }},
};

TEST(Coord, SameLogicOverlooksWhatTheFunctionsDoNotUse)
{
    for (const Change &change : changesWithoutConsequence) {
        SCOPED_TRACE(change.what);
        Coord changed = filled();
        change.apply(changed);
        test::expectDifferent(filled(), changed);
        EXPECT_TRUE(filled().isSameLogic(changed));
        EXPECT_TRUE(changed.isSameLogic(filled()));
    }
}

TEST(Coord, SameObjectIsEqualWhateverItHolds)
{
    Coord coord = filled();
    coord.ellipsoid.reciprocal = std::numeric_limits<double>::quiet_NaN();
    const Coord copy(coord);
    EXPECT_TRUE(coord == coord);
    EXPECT_TRUE(coord.isSameLogic(coord));
    test::expectDifferent(coord, copy);
    EXPECT_FALSE(coord.isSameLogic(copy));
}

TEST(Coord, ClearClearsEveryRecord)
{
    Coord coord = filled();
    coord.clear();
    EXPECT_TRUE(coord.coord_name.isEmpty());
    EXPECT_TRUE(coord.ellipsoid.ellipsoid_name.isEmpty());
    test::expectNumber(coord.ellipsoid.biggerHalfAxle, ValueType_Distance, Unit_Meter, 0.0);
    EXPECT_EQ(coord.ellipsoid.reciprocal, 0.0);
    EXPECT_TRUE(coord.projection.projection_name.isEmpty());
    EXPECT_TRUE(coord.projection.proj4Projection.isEmpty());
    EXPECT_TRUE(coord.projection.param.isEmpty());
    EXPECT_TRUE(coord.projection.paramProj4.isEmpty());
    EXPECT_TRUE(coord.ellipsoidTransform == stEllipsoinTransform());
    EXPECT_TRUE(coord.planeTransform == stPlaneTransform());
    EXPECT_TRUE(coord.elevationFitting == stElevationFitting());
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

TEST(Coord, ClearKeepsWhatThePartialClearsKeep)
{
    Coord coord = filled();
    test::giveDictionary(coord.ellipsoid.biggerHalfAxle);
    test::giveDictionary(coord.ellipsoidTransform.z_rotate);
    test::giveDictionary(coord.planeTransform.ratio);
    test::giveDictionary(coord.elevationFitting.east_zero_y0);
    coord.clear();
    EXPECT_EQ(coord.ellipsoid.proj4EllpsName, QStringLiteral("bessel"));
    EXPECT_EQ(coord.projection.locationType, LocationType_Lat_Long_EarthHeight);
    EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_Foot);
    test::expectKeptDictionary(coord.ellipsoid.biggerHalfAxle);
    test::expectKeptDictionary(coord.ellipsoidTransform.z_rotate);
    test::expectKeptDictionary(coord.planeTransform.ratio);
    test::expectKeptDictionary(coord.elevationFitting.east_zero_y0);
}

} // namespace
} // namespace KelStd
