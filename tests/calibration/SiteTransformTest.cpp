// What a system's plane transformation and height fitting make of coordinates, and when they are
// refused.

#include "calibration/SiteRecords.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"

#include <KelStd/calibration/SiteTransform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using calibration::SiteFailure;
using calibration::SiteFailureKind;
using calibration::SiteTransform;

const stElevationFitting noFitting;
const stPlaneTransform noPlane;

SiteTransform siteOf(const stPlaneTransform &plane, const stElevationFitting &fitting)
{
    SiteFailure failure;
    const auto site = SiteTransform::of(plane, fitting, &failure);
    EXPECT_TRUE(site.has_value()) << failure.text;
    return site.value_or(SiteTransform());
}

SiteFailureKind refusalOf(const stPlaneTransform &plane, const stElevationFitting &fitting,
                          const char *said)
{
    SiteFailure failure;
    EXPECT_FALSE(SiteTransform::of(plane, fitting, &failure).has_value());
    EXPECT_FALSE(SiteTransform::of(plane, fitting).has_value());
    EXPECT_TRUE(failure.text.contains(QLatin1String(said))) << failure.text;
    return failure.kind;
}

void expectPlace(const stENU &place, double east, double north, double height, double tolerance)
{
    EXPECT_NEAR(place.e, east, tolerance);
    EXPECT_NEAR(place.n, north, tolerance);
    EXPECT_NEAR(place.u, height, tolerance);
}

struct PlaneRow
{
    double sourceEast, sourceNorth, targetEast, targetNorth;
};

// Control points of the Institut Cartografic i Geologic de Catalunya, "Transformacio bidimensional
// de semblanca entre ED50 i ETRS89" (2010), to 1 mm; the first one is the example of EPSG's method
// 9621 in Guidance Note 7-2. ED50 / UTM zone 31N to ETRS89 / UTM zone 31N.
constexpr PlaneRow catalonia[] = {
    {300000.0, 4500000.0, 299905.060, 4499796.515},
    {315000.0, 4740000.0, 314906.904, 4739796.774},
    {520000.0, 4680000.0, 519906.767, 4679795.125},
    {420000.0, 4600000.0, 419906.005, 4599795.760},
};

// The same document's other direction, whose parameters it rounds on their own.
constexpr PlaneRow cataloniaBack[] = {
    {300000.0, 4500000.0, 300094.938, 4500203.485},
    {315000.0, 4740000.0, 315093.094, 4740203.227},
    {520000.0, 4680000.0, 520093.231, 4680204.876},
    {420000.0, 4600000.0, 420093.993, 4600204.241},
};

constexpr double published = 0.001; // [m]

TEST(SiteTransform, PlaneHasThePublishedFiguresOfTheSimilarityBothWays)
{
    const SiteTransform site =
        siteOf(test::similarity(-129.549, -208.185, 1.56504, 1.0000015504), noFitting);
    for (const PlaneRow &row : catalonia) {
        expectPlace(site.toSite({row.sourceEast, row.sourceNorth, 12.5}), row.targetEast,
                    row.targetNorth, 12.5, published);
        expectPlace(site.fromSite({row.targetEast, row.targetNorth, 12.5}), row.sourceEast,
                    row.sourceNorth, 12.5, published);
    }
    const SiteTransform back =
        siteOf(test::similarity(129.547, 208.186, -1.56504, 1.0 - 0.0000015504), noFitting);
    for (const PlaneRow &row : cataloniaBack)
        expectPlace(back.toSite({row.sourceEast, row.sourceNorth, 0.0}), row.targetEast,
                    row.targetNorth, 0.0, published);
}

TEST(SiteTransform, PlaneIsProjsTwoDimensionalHelmert)
{
    const QList<Pos> places = {Pos::fromENU(155000.0, 463000.0, 0.0),
                               Pos::fromENU(-742000.25, -1043000.75, 0.0),
                               Pos::fromENU(0.0, 0.0, 0.0), Pos::fromENU(12.0, -7.0, 0.0)};
    const struct
    {
        double east, north, rotation, ratio;
    } rows[] = {{100.0, -200.0, 0.0, 1.0},
                {-155012.345, -462987.654, 123456.789, 0.99987654},
                {1e6, 2e6, -648000.0, 1.0},
                {5.5, 6.5, 324000.0, 0.3048},
                {0.0, 0.0, -0.001, 3.28}};
    for (const auto &row : rows) {
        const SiteTransform site =
            siteOf(test::similarity(row.east, row.north, row.rotation, row.ratio), noFitting);
        const QString definition = QStringLiteral("+proj=helmert +x=%1 +y=%2 +theta=%3 +s=%4")
                                       .arg(row.east, 0, 'g', 17)
                                       .arg(row.north, 0, 'g', 17)
                                       .arg(row.rotation, 0, 'g', 17)
                                       .arg(row.ratio, 0, 'g', 17);
        QList<Pos> ours;
        for (const Pos &place : places) {
            Pos result;
            const stENU atSite = site.toSite(place.getENU());
            result.setENU(atSite.e, atSite.n, atSite.u);
            ours += result;
        }
        test::expectNear(ours, test::runCct(definition, places), 1e-7);
    }
}

// H' = H + a + b x + c y + d x^2 + e y^2 + f x y, worked by hand.
TEST(SiteTransform, SurfacesAreAddedToHeights)
{
    // x = 100, y = -50: 1.5 + 0.01 * 100 - 0.02 * 50 + 1e-5 * 10000 - 2e-5 * 2500 - 4e-5 * 5000
    const SiteTransform curve = siteOf(
        noPlane, test::curvedSurface(1.5, 0.01, 0.02, 1e-5, -2e-5, 4e-5, 463000.0, 155000.0));
    expectPlace(curve.toSite({154950.0, 463100.0, 10.0}), 154950.0, 463100.0, 11.35, 1e-9);
    // At the origin nothing but the constant is left.
    expectPlace(curve.toSite({155000.0, 463000.0, 10.0}), 155000.0, 463000.0, 11.5, 1e-9);
    // An origin in the record does not move a plane, which counts from the zeros of the site:
    // 3 + 1e-5 * 463100 - 2e-5 * 154950
    stElevationFitting inclined = test::inclinedPlane(3.0, 1e-5, -2e-5);
    inclined.north_zero_x0.value = 463000.0;
    inclined.d.value = 7.0;
    expectPlace(siteOf(noPlane, inclined).toSite({154950.0, 463100.0, 10.0}), 154950.0, 463100.0,
                14.532, 1e-9);
    stElevationFitting fixed = test::fixedHeight(-47.25);
    fixed.b.value = 7.0;
    expectPlace(siteOf(noPlane, fixed).toSite({1.0, 2.0, 10.0}), 1.0, 2.0, -37.25, 1e-12);
}

TEST(SiteTransform, SurfaceIsTakenAtTheTransformedPlace)
{
    // A quarter turn: E' = 1000 + N, N' = 2000 - E.
    const SiteTransform site = siteOf(test::similarity(1000.0, 2000.0, 324000.0, 1.0),
                                      test::inclinedPlane(0.5, 0.01, 0.1));
    // E' = 1030, N' = 1980: 0.5 + 19.8 + 103
    expectPlace(site.toSite({20.0, 30.0, 7.0}), 1030.0, 1980.0, 130.3, 1e-9);
    expectPlace(site.fromSite({1030.0, 1980.0, 130.3}), 20.0, 30.0, 7.0, 1e-9);
}

TEST(SiteTransform, WayBackIsExact)
{
    const SiteTransform site =
        siteOf(test::similarity(-155012.345, -462987.654, 123456.789, 0.99987654),
               test::curvedSurface(-1.0, 2e-5, 3e-5, 1e-9, 2e-9, -1e-9, 12.0, 13.0));
    for (const stENU &place : {stENU{155000.0, 463000.0, 3.0}, stENU{-7e5, 1.2e6, 4000.0}}) {
        const stENU back = site.fromSite(site.toSite(place));
        expectPlace(back, place.e, place.n, place.u, 2e-9);
    }
}

TEST(SiteTransform, UnitsOfTheRecordsAreConverted)
{
    stPlaneTransform plane = test::similarity(100.0, 1000.0, 90.0, 1.0);
    plane.east_translate.unit = Unit_Foot;
    plane.north_translate.unit = Unit_MilliMeter;
    plane.rotate_angle.unit = Unit_Degree;
    stElevationFitting fitting = test::fixedHeight(10.0);
    fitting.a.unit = Unit_Foot;
    expectPlace(siteOf(plane, fitting).toSite({20.0, 30.0, 7.0}), 30.48 + 30.0, 1.0 - 20.0,
                7.0 + 3.048, 1e-9);
}

TEST(SiteTransform, RecordsWithoutFunctionAreNoSite)
{
    stPlaneTransform plane = test::similarity(1.0, 2.0, 3.0, 4.0);
    plane.fuction = PlaneTransformFunction_None;
    stElevationFitting fitting = test::fixedHeight(5.0);
    fitting.function = ElevationFittingFunction_None;
    const SiteTransform site = siteOf(plane, fitting);
    EXPECT_FALSE(site.hasSite());
    EXPECT_FALSE(site.hasPlane());
    EXPECT_FALSE(site.hasSurface());
    expectPlace(site.toSite({1.1, 2.2, 3.3}), 1.1, 2.2, 3.3, 0.0);
    expectPlace(site.fromSite({1.1, 2.2, 3.3}), 1.1, 2.2, 3.3, 0.0);
    EXPECT_FALSE(SiteTransform::of(Coord())->hasSite());

    EXPECT_TRUE(siteOf(test::similarity(0.0, 0.0, 0.0, 1.0), noFitting).hasPlane());
    EXPECT_TRUE(siteOf(noPlane, test::fixedHeight(0.0)).hasSurface());
}

TEST(SiteTransform, RatioThatIsNotPositiveIsRefused)
{
    // 0 is what a record has that nobody filled.
    for (const double ratio : {0.0, -0.0, -1.0, -1e-300}) {
        EXPECT_EQ(
            refusalOf(test::similarity(1.0, 2.0, 3.0, ratio), noFitting, "ratio of the planar"),
            SiteFailureKind::BadRatio);
    }
}

TEST(SiteTransform, ParametersThatAreNoFiniteNumbersAreRefused)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const QVariant values[] = {std::nan(""), infinity, -infinity, QVariant(),
                               QStringLiteral("one")};
    constexpr Param stPlaneTransform::*planeParams[] = {
        &stPlaneTransform::north_translate, &stPlaneTransform::east_translate,
        &stPlaneTransform::rotate_angle, &stPlaneTransform::ratio};
    constexpr Param stElevationFitting::*fittingParams[] = {&stElevationFitting::a,
                                                            &stElevationFitting::b,
                                                            &stElevationFitting::c,
                                                            &stElevationFitting::d,
                                                            &stElevationFitting::e,
                                                            &stElevationFitting::f,
                                                            &stElevationFitting::north_zero_x0,
                                                            &stElevationFitting::east_zero_y0};
    for (const QVariant &value : values) {
        for (const auto param : planeParams) {
            stPlaneTransform plane = test::similarity(1.0, 2.0, 3.0, 1.0);
            (plane.*param).value = value;
            EXPECT_EQ(refusalOf(plane, noFitting, "finite"), SiteFailureKind::BadParameter);
        }
        for (const auto param : fittingParams) {
            stElevationFitting fitting = test::curvedSurface(1, 2, 3, 4, 5, 6, 7, 8);
            (fitting.*param).value = value;
            EXPECT_EQ(refusalOf(noPlane, fitting, "finite"), SiteFailureKind::BadParameter);
        }
    }
    // Finite in miles, but not in metres.
    stPlaneTransform plane = test::similarity(1e308, 2.0, 3.0, 1.0);
    plane.east_translate.unit = Unit_Mile;
    EXPECT_EQ(refusalOf(plane, noFitting, "finite"), SiteFailureKind::BadParameter);
}

TEST(SiteTransform, UnitsThatAParameterCannotHaveAreRefused)
{
    const auto inUnit = [](auto record, auto param, EUnit unit) {
        (record.*param).unit = unit;
        return record;
    };
    const stPlaneTransform plane = test::similarity(1.0, 2.0, 3.0, 1.0);
    using Plane = stPlaneTransform;
    for (const stPlaneTransform &record :
         {inUnit(plane, &Plane::north_translate, Unit_None),
          inUnit(plane, &Plane::east_translate, Unit_Second),
          inUnit(plane, &Plane::rotate_angle, Unit_None),
          inUnit(plane, &Plane::rotate_angle, Unit_Meter), inUnit(plane, &Plane::ratio, Unit_Meter),
          inUnit(plane, &Plane::north_translate, static_cast<EUnit>(12345))})
        EXPECT_EQ(refusalOf(record, noFitting, "unit"), SiteFailureKind::BadParameter);
    const stElevationFitting curve = test::curvedSurface(1, 2, 3, 4, 5, 6, 7, 8);
    using Fitting = stElevationFitting;
    for (const stElevationFitting &record :
         {inUnit(curve, &Fitting::a, Unit_Second), inUnit(curve, &Fitting::b, Unit_Meter),
          inUnit(curve, &Fitting::east_zero_y0, Unit_None)})
        EXPECT_EQ(refusalOf(noPlane, record, "unit"), SiteFailureKind::BadParameter);
}

TEST(SiteTransform, UnknownFunctionsAreRefused)
{
    for (const int code : {2, -1, 100}) {
        stPlaneTransform plane = test::similarity(1.0, 2.0, 3.0, 1.0);
        plane.fuction = static_cast<EPlaneTransformFunction>(code);
        EXPECT_EQ(refusalOf(plane, noFitting, "planar transformation"),
                  SiteFailureKind::UnknownFunction);
    }
    for (const int code : {4, -1, 100}) {
        stElevationFitting fitting = test::fixedHeight(1.0);
        fitting.function = static_cast<EElevationFittingFunction>(code);
        EXPECT_EQ(refusalOf(noPlane, fitting, "height fitting"), SiteFailureKind::UnknownFunction);
    }
}

TEST(SiteTransform, LongitudesAndLatitudesHaveNoSite)
{
    Coord coord;
    coord.projection.proj4Projection = QStringLiteral("longlat");
    EXPECT_FALSE(SiteTransform::of(coord)->hasSite());
    coord.elevationFitting = test::fixedHeight(1.0);
    SiteFailure failure;
    EXPECT_FALSE(SiteTransform::of(coord, &failure).has_value());
    EXPECT_EQ(failure.kind, SiteFailureKind::NoPlane);
    EXPECT_TRUE(failure.text.contains(QLatin1String("longitudes and latitudes")));
    EXPECT_FALSE(SiteTransform::of(coord).has_value());
}

TEST(SiteTransform, CoordinatesBeyondNumbersAreNotFinite)
{
    const SiteTransform site = siteOf(test::similarity(0.0, 0.0, 3600.0, 1e300), noFitting);
    EXPECT_FALSE(std::isfinite(site.toSite({1e300, 1e300, 0.0}).e));
    EXPECT_TRUE(std::isnan(site.fromSite({std::nan(""), 0.0, 0.0}).n));
}

} // namespace
} // namespace KelStd
