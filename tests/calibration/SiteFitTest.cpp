// The parameters that a fit finds, and what its records make of positions.

#include "calibration/MeasuredSite.h"
#include "calibration/OriginOfBase.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/SystemDocument.h>

#include <QtCore/QTemporaryDir>

namespace KelStd {
namespace {

using calibration::HeightMethod;
using calibration::PlanMethod;
using calibration::SiteFit;
using calibration::SiteFitOptions;
using calibration::SiteTransform;
using test::controlOf;
using test::fitted;
using test::TrueSite;

class SiteFitTest : public test::ProjTest
{
protected:
    const Coord m_base = test::planeSystem();
};

// C. D. Ghilani, Adjustment Computations, 5th ed. (2010), example 18.1: three control points in
// state plane coordinates, in feet, and measured on a map; E = a x - b y + Te, N = b x + a y + Tn.
TEST_F(SiteFitTest, FourParametersAreThoseOfGhilanisExample)
{
    const struct
    {
        const char *name;
        double east, north, x, y, residualEast, residualNorth;
    } rows[] = {
        {"A", 1049422.40, 51089.20, 121.622, -128.066, 0.004, -0.029},
        {"B", 1049413.95, 49659.30, 141.228, 187.718, 0.101, -0.077},
        {"C", 1049244.95, 49884.95, 175.802, 135.728, -0.105, 0.106},
    };
    ControlPoints control;
    for (const auto &row : rows) {
        ControlPoint point;
        point.name = QLatin1String(row.name);
        point.wgs84 = test::measuredAt(m_base, row.x, row.y, 0.0);
        point.east = row.east;
        point.north = row.north;
        control += point;
    }
    const SiteFit fit = fitted(m_base, control);
    constexpr double degree = 3.14159265358979323846 / 180.0;
    const double theta = fit.plan.similarity.rotation / 3600.0 * degree;
    const double scale = fit.plan.similarity.scale;
    EXPECT_NEAR(scale * std::cos(theta), -4.51249, 0.5e-5);
    EXPECT_NEAR(-scale * std::sin(theta), -0.25371, 0.5e-5);
    EXPECT_NEAR(fit.plan.similarity.eastShift, 1050003.715, 0.5e-3);
    EXPECT_NEAR(fit.plan.similarity.northShift, 50542.131, 0.5e-3);
    EXPECT_NEAR(scale, 4.51962, 0.5e-5);
    EXPECT_EQ(fit.plan.statistics.redundancy, 2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(*fit.points.at(i).residualEast, rows[i].residualEast, 0.5e-3);
        EXPECT_NEAR(*fit.points.at(i).residualNorth, rows[i].residualNorth, 0.5e-3);
    }
}

struct SiteRow
{
    const char *title;
    PlanMethod plan;
    HeightMethod height;
    TrueSite site;
};

TrueSite turned(double turn, double scale, double east, double north)
{
    TrueSite site;
    site.turn = turn;
    site.scale = scale;
    site.east = east;
    site.north = north;
    return site;
}

TrueSite withHeights(TrueSite site, double a, double b = 0.0, double c = 0.0, double d = 0.0,
                     double e = 0.0, double f = 0.0)
{
    site.a = a;
    site.b = b;
    site.c = c;
    site.d = d;
    site.e = e;
    site.f = f;
    return site;
}

std::vector<SiteRow> siteRows()
{
    return {
        {"a turn of a third circle", PlanMethod::Four, HeightMethod::Plane,
         withHeights(turned(2.1, 1.000123, 1000.0, 2000.0), 0.123, 12e-6, -7e-6)},
        {"a plane far from its origin", PlanMethod::Four, HeightMethod::Plane,
         withHeights(turned(-1.3, 0.9996, 3500000.0, 5400000.0), -45.678, -33e-6, 21e-6)},
        {"nearly half a turn", PlanMethod::Rotation, HeightMethod::Fixed,
         withHeights(turned(3.1415, 1.0, -80.0, 12.5), 3.5)},
        {"a shift", PlanMethod::Shift, HeightMethod::Fixed,
         withHeights(turned(0.0, 1.0, 500123.456, 5200654.321), -1.25)},
        {"a curve", PlanMethod::Four, HeightMethod::Curve,
         withHeights(turned(0.4, 1.00002, 10000.0, 20000.0), 0.2, 8e-6, -3e-6, 2e-8, -1e-8, 3e-8)},
        {"a plane alone", PlanMethod::Four, HeightMethod::None, turned(0.7, 1.0001, 5.0, 6.0)},
    };
}

TEST_F(SiteFitTest, SitesWithoutErrorsAreRecoveredToAMicrometre)
{
    for (const SiteRow &row : siteRows()) {
        SCOPED_TRACE(row.title);
        SiteFitOptions options;
        options.plan = row.plan;
        options.height = row.height;
        const SiteFit fit = fitted(m_base, controlOf(m_base, row.site), options);
        const auto site = SiteTransform::of(fit.coord);
        ASSERT_TRUE(site);
        // A place that took no part, in the middle and outside.
        for (const stENU &place : {stENU{333.0, 222.0, 50.0}, stENU{1500.0, -700.0, 5.0}}) {
            const double east = row.site.baseEast + place.e;
            const double north = row.site.baseNorth + place.n;
            const stENU expected = row.site.at(east, north, place.u);
            const stENU found = site->toSite({east, north, place.u});
            EXPECT_NEAR(found.e, expected.e, 1e-6);
            EXPECT_NEAR(found.n, expected.n, 1e-6);
            EXPECT_NEAR(found.u, expected.u, 1e-6);
        }
        for (const auto &point : fit.points) {
            EXPECT_FALSE(point.plan.isSuspect);
            EXPECT_FALSE(point.height.isSuspect);
        }
    }
}

TEST_F(SiteFitTest, NoHeightsAreFittedIntoTheVerticalPartOfAHorizontalSite)
{
    SiteFitOptions options;
    options.height = HeightMethod::None;
    const SiteFit fit = fitted(m_base, controlOf(m_base, TrueSite()), options);
    EXPECT_EQ(fit.coord.elevationFitting.function, ElevationFittingFunction_None);
    EXPECT_FALSE(fit.points.first().residualHeight);
    EXPECT_EQ(fit.control.first().useWord(), QStringLiteral("h"));
}

// The slopes of EPSG's method 9657 (Guidance Note 7-2, vertical offset and slope, LN02 to
// EVRF2000): 0.210" to the north, 0.032" to the east, both falling, and -0.245 m.
TEST_F(SiteFitTest, AnInclinedPlaneOfThePublishedSlopesIsRecovered)
{
    constexpr double arcSecond = 3.14159265358979323846 / 180.0 / 3600.0;
    const TrueSite site =
        withHeights(turned(0.0, 1.0, 0.0, 0.0), -0.245, -0.210 * arcSecond, -0.032 * arcSecond);
    SiteFitOptions options;
    options.plan = PlanMethod::Shift;
    const SiteFit fit = fitted(m_base, controlOf(m_base, site), options);
    EXPECT_EQ(fit.height.method, HeightMethod::Plane);
    EXPECT_NEAR(fit.height.surface.a, -0.245, 1e-7);
    EXPECT_NEAR(fit.height.surface.b / arcSecond, -0.210, 1e-4);
    EXPECT_NEAR(fit.height.surface.c / arcSecond, -0.032, 1e-4);
}

TEST_F(SiteFitTest, TheDocumentOfASiteGivesItsCoordinatesAndItsControlPoints)
{
    const QTemporaryDir directory;
    for (const SiteRow &row : siteRows()) {
        SCOPED_TRACE(row.title);
        SiteFitOptions options;
        options.plan = row.plan;
        options.height = row.height;
        options.sigmaH = 0.008;
        const SiteFit fit = fitted(m_base, controlOf(m_base, row.site, 1.0), options);
        SystemOrigin origin;
        origin.control = fit.control;
        const QString file = directory.filePath(QStringLiteral("site.xml"));
        io::DocumentFailure failure;
        ASSERT_TRUE(io::writeSystem(fit.coord, origin, file, failure)) << failure.text;

        Coord read;
        SystemOrigin readOrigin;
        ASSERT_TRUE(io::readSystem(file, read, readOrigin, failure)) << failure.text;
        EXPECT_TRUE(readOrigin == origin);
        Coord byRecords;
        QString error;
        ASSERT_TRUE(Coord_IO::xml_read(file, byRecords, &error)) << error;
        EXPECT_TRUE(byRecords == read);
        QList<io::DocumentFinding> findings;
        ASSERT_TRUE(io::reviewCoord(file, byRecords, findings, &error)) << error;
        EXPECT_TRUE(findings.isEmpty());

        const auto before = SiteTransform::of(fit.coord);
        const auto after = SiteTransform::of(read);
        ASSERT_TRUE(before && after);
        for (const auto &point : fit.points) {
            const stENU stored = after->toSite(point.base);
            // What 15 digits of a rotation are at five thousand kilometres.
            EXPECT_NEAR(stored.e, point.site.e, 2e-8);
            EXPECT_NEAR(stored.n, point.site.n, 2e-8);
            EXPECT_NEAR(stored.u, point.site.u, 2e-8);
            const stENU back = after->fromSite(stored);
            EXPECT_NEAR(back.e, point.base.e, 2e-8);
            EXPECT_NEAR(back.n, point.base.n, 2e-8);
            EXPECT_NEAR(back.u, point.base.u, 2e-8);
            if (point.residualNorth) {
                EXPECT_NEAR(point.site.n - point.control.n, *point.residualNorth, 1e-7);
                EXPECT_NEAR(point.site.e - point.control.e, *point.residualEast, 1e-7);
            }
            if (point.residualHeight) {
                EXPECT_NEAR(point.site.u - point.control.u, *point.residualHeight, 1e-7);
            }
        }
    }
}

TEST_F(SiteFitTest, ChoosesAPlaneOfHeightsFromFourPointsOn)
{
    for (const int count : {1, 2, 3, 4, 5}) {
        ControlPoints control = controlOf(m_base, TrueSite());
        for (int i = count; i < control.size(); ++i)
            control[i].height.reset();
        const SiteFit fit = fitted(m_base, control);
        EXPECT_EQ(fit.height.method, count < 4 ? HeightMethod::Fixed : HeightMethod::Plane);
        EXPECT_EQ(fit.height.statistics.points, count);
        EXPECT_FALSE(fit.points.at(7).residualHeight);
        EXPECT_EQ(fit.control.at(7).useWord(), QStringLiteral("h"));
    }
}

TEST_F(SiteFitTest, ReplacesTheSiteOfItsBase)
{
    const SiteFit first = fitted(m_base, controlOf(m_base, turned(0.3, 1.0001, 10.0, 20.0)));
    const SiteFit second = fitted(first.coord, controlOf(m_base, TrueSite()));
    const SiteFit direct = fitted(m_base, controlOf(m_base, TrueSite()));
    EXPECT_TRUE(second.coord == direct.coord);
    EXPECT_TRUE(std::any_of(second.warnings.begin(), second.warnings.end(), [](const auto &w) {
        return w.kind == calibration::CalibrationWarningKind::ReplacedRecords;
    }));
}

TEST_F(SiteFitTest, PutsTheSurfaceOfHeightsWhereThePlaneIsTransformedTo)
{
    // A quarter turn: what rises to the north of the system rises to the west of the site.
    TrueSite site = withHeights(turned(1.5707963267948966, 1.0, 0.0, 0.0), 0.0, 0.0, -100e-6);
    const SiteFit fit = fitted(m_base, controlOf(m_base, site));
    EXPECT_NEAR(fit.height.surface.b, 0.0, 1e-11);
    EXPECT_NEAR(fit.height.surface.c, -100e-6, 1e-11);
}

TEST(SiteOrigins, KeepWhatHoldsForThePlaceButNoCode)
{
    const SystemOrigin base = test::originOfBase();
    ControlPoint point;
    point.name = QStringLiteral("1");

    SystemOrigin expected = base;
    expected.authority = expected.code = expected.databaseVersion = QString();
    expected.control = {point};
    EXPECT_TRUE(calibration::siteOrigin(base, {point}) == expected);
    EXPECT_EQ(calibration::siteOrigin(base, {point}).fullCode(), QString());
}

} // namespace
} // namespace KelStd
