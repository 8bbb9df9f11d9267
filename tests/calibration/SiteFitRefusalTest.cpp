// What is refused before a site is fitted, and what a surveyor is warned of.

#include "calibration/MeasuredSite.h"
#include "calibration/SiteRecords.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/SiteCheck.h>

#include <algorithm>
#include <functional>
#include <limits>

namespace KelStd {
namespace {

using calibration::CalibrationFailure;
using calibration::CalibrationFault;
using calibration::CalibrationWarningKind;
using calibration::HeightMethod;
using calibration::PlanMethod;
using calibration::SiteFit;
using calibration::SiteFitOptions;
using test::controlOf;
using test::fitted;
using test::TrueSite;

class SiteFitRefusalTest : public test::ProjTest
{
protected:
    const Coord m_base = test::planeSystem();
};

struct Problem
{
    Coord base;
    ControlPoints control;
    SiteFitOptions options;
};

/// Puts the points into one line, or on a circle.
void place(const Coord &base, ControlPoints &control, const std::function<stENU(int)> &at)
{
    for (int i = 0; i < control.size(); ++i) {
        const stENU to = at(i);
        control[i].wgs84 = test::measuredAt(base, to.e, to.n, to.u);
        control[i].east = to.e;
        control[i].north = to.n;
        control[i].height = to.u;
    }
}

stENU inLine(int i)
{
    return {500000.0 + 100.0 * i, 5200000.0 + 30.0 * i, 10.0};
}

stENU onCircle(int i)
{
    return {500000.0 + 100.0 * std::cos(i * 0.7), 5200000.0 + 100.0 * std::sin(i * 0.7), 10.0};
}

struct RefusalRow
{
    const char *title;
    CalibrationFault fault;
    const char *says;
    std::function<void(Problem &)> spoil;
};

void keep(Problem &problem, int count)
{
    problem.control.resize(count);
}

std::vector<RefusalRow> refusalRows()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {
        {"no point", CalibrationFault::NothingToFit, "nothing is to be fitted",
         [](Problem &p) { p.control.clear(); }},
        {"neither method", CalibrationFault::NothingToFit, "choose a method",
         [](Problem &p) {
             p.options.plan = PlanMethod::None;
             p.options.height = HeightMethod::None;
         }},
        {"one point for four", CalibrationFault::TooFewPoints, "at least 2, and 1 can be used",
         [](Problem &p) { keep(p, 1); }},
        {"one point for a rotation", CalibrationFault::TooFewPoints, "choose a simpler method",
         [](Problem &p) {
             keep(p, 1);
             p.options.plan = PlanMethod::Rotation;
         }},
        {"no point for a shift", CalibrationFault::TooFewPoints, "at least 1",
         [](Problem &p) {
             p.options.plan = PlanMethod::Shift;
             for (ControlPoint &point : p.control)
                 point.isUsedInPlan = false;
         }},
        {"no height for one shift", CalibrationFault::TooFewPoints, "height",
         [](Problem &p) {
             p.options.height = HeightMethod::Fixed;
             for (ControlPoint &point : p.control)
                 point.height.reset();
         }},
        {"two heights for a plane", CalibrationFault::TooFewPoints, "at least 3",
         [](Problem &p) {
             keep(p, 2);
             p.options.height = HeightMethod::Plane;
         }},
        {"five heights for a curve", CalibrationFault::TooFewPoints, "at least 6",
         [](Problem &p) {
             keep(p, 5);
             p.options.height = HeightMethod::Curve;
         }},
        {"a point without a name", CalibrationFault::MissingName, "number 3 has no name",
         [](Problem &p) { p.control[2].name = QStringLiteral(" "); }},
        {"a name twice", CalibrationFault::DuplicateName, "\"P1\" is there twice",
         [](Problem &p) { p.control[4].name = QStringLiteral("P1"); }},
        {"a name to leave out that is not there", CalibrationFault::UnknownName, "\"p1\"",
         [](Problem &p) { p.options.without = QStringList(QStringLiteral("p1")); }},
        {"no number", CalibrationFault::NotFinite, "\"P2\"",
         [nan](Problem &p) { p.control[1].east = nan; }},
        {"no number in a height", CalibrationFault::NotFinite, "\"P2\"",
         [nan](Problem &p) { p.control[1].height = nan; }},
        {"no number in a position", CalibrationFault::NotFinite, "\"P3\"",
         [nan](Problem &p) { p.control[2].wgs84.setLLH_H(nan); }},
        {"a standard deviation of nothing", CalibrationFault::BadSigma, "not between",
         [](Problem &p) { p.control[2].sigmaH = 0.0; }},
        {"a standard deviation that weighs all others down", CalibrationFault::BadSigma, "\"P1\"",
         [](Problem &p) { p.control[0].sigmaH = 1e-200; }},
        {"coordinates beyond all digits", CalibrationFault::NotReproduced, "too large",
         [](Problem &p) { p.control[0].north = 1e300; }},
        {"coordinates of which doubles keep a metre", CalibrationFault::NotReproduced, "too large",
         [](Problem &p) {
             for (ControlPoint &point : p.control)
                 point.east += 1e16;
         }},
        {"a height beyond all digits", CalibrationFault::NotReproduced, "too large",
         [](Problem &p) { p.control[3].height = -1e300; }},
        {"a negative one for all", CalibrationFault::BadSigma, "not between",
         [](Problem &p) { p.options.sigmaV = -0.01; }},
        {"a standard deviation of some", CalibrationFault::MissingSigma, "all points, or none",
         [](Problem &p) { p.control[2].sigmaV = 0.01; }},
        {"measured in one place", CalibrationFault::CoincidentPoints, "\"P2\" and \"P5\"",
         [](Problem &p) { p.control[4].wgs84 = p.control.at(1).wgs84; }},
        {"given in one place", CalibrationFault::CoincidentPoints, "given in one place",
         [](Problem &p) {
             p.control[4].east = p.control.at(1).east;
             p.control[4].north = p.control.at(1).north + 0.0004;
         }},
        {"in one line", CalibrationFault::CollinearPoints, "in one line",
         [](Problem &p) { place(p.base, p.control, inLine); }},
        {"on a circle", CalibrationFault::CollinearPoints, "conic",
         [](Problem &p) {
             place(p.base, p.control, onCircle);
             p.options.height = HeightMethod::Curve;
         }},
        {"axes to the south", CalibrationFault::UnusualAxes, "west and south",
         [](Problem &p) { p.base.ellipsoid.positiveDir = EllipsoidDirection_WSU; }},
        {"longitudes for a plane", CalibrationFault::UnusualAxes, "longitudes and latitudes",
         [](Problem &p) { p.base.projection.proj4Projection = QStringLiteral("longlat"); }},
        {"a plane in feet", CalibrationFault::UnusualAxes, "metres",
         [](Problem &p) { p.base.projection.loc_or_height_unit = Unit_Foot; }},
        {"no geoid model", CalibrationFault::MissingGeoidModel, "no-such-geoid",
         [](Problem &p) { p.base.geoidModel.modelFileName = QStringLiteral("no-such-geoid.gtx"); }},
        {"a position that is none", CalibrationFault::NotConverted, "\"P1\"",
         [](Problem &p) { p.control[0].wgs84 = Pos::fromLongLatH(10.0, 95.0, 0.0); }},
    };
}

TEST_F(SiteFitRefusalTest, IsRefusedWithASentenceThatSaysWhatToDo)
{
    for (const RefusalRow &row : refusalRows()) {
        SCOPED_TRACE(row.title);
        Problem problem{m_base, controlOf(m_base, TrueSite()), {}};
        row.spoil(problem);
        CalibrationFailure failure;
        EXPECT_FALSE(
            calibration::fitSite(problem.base, problem.control, problem.options, &failure));
        EXPECT_FALSE(calibration::fitSite(problem.base, problem.control, problem.options));
        EXPECT_EQ(failure.kind, row.fault) << failure.text;
        EXPECT_TRUE(failure.text.contains(QLatin1String(row.says))) << failure.text;
        EXPECT_TRUE(failure.text.contains(QLatin1Char(';'))) << failure.text;
    }
}

TEST_F(SiteFitRefusalTest, PointsInOneLineAreEnoughForAPlaneWithoutSlopes)
{
    ControlPoints control = controlOf(m_base, TrueSite());
    place(m_base, control, inLine);
    SiteFitOptions options;
    options.height = HeightMethod::Fixed;
    EXPECT_NEAR(fitted(m_base, control, options).plan.similarity.scale, 1.0, 1e-9);
}

struct WarningRow
{
    const char *title;
    CalibrationWarningKind kind;
    bool isWarned;
    std::function<void(Problem &)> change;
};

void scale(Problem &problem, double factor)
{
    for (ControlPoint &point : problem.control) {
        point.east *= factor;
        point.north *= factor;
    }
}

void tilt(Problem &problem, double slope)
{
    for (ControlPoint &point : problem.control)
        point.height = *point.height + slope * point.north;
}

std::vector<WarningRow> warningRows()
{
    using Kind = CalibrationWarningKind;
    return {
        {"eight points", Kind::NoRedundancy, false, [](Problem &) {}},
        {"two points", Kind::NoRedundancy, true, [](Problem &p) { keep(p, 2); }},
        {"a scale of 90 ppm", Kind::Scale, false, [](Problem &p) { scale(p, 1.00009); }},
        {"a scale of 110 ppm", Kind::Scale, true, [](Problem &p) { scale(p, 1.00011); }},
        {"a slope of 40 ppm", Kind::Slope, false, [](Problem &p) { tilt(p, 40e-6); }},
        {"a slope of 60 ppm", Kind::Slope, true, [](Problem &p) { tilt(p, -60e-6); }},
        {"feet for metres", Kind::Feet, true, [](Problem &p) { scale(p, 1.0 / 0.3048); }},
        {"survey feet for metres", Kind::Feet, true, [](Problem &p) { scale(p, 3937.0 / 1200.0); }},
        {"metres for feet, the scale held", Kind::Feet, true,
         [](Problem &p) {
             scale(p, 0.3048);
             p.options.plan = PlanMethod::Rotation;
         }},
        {"a scale of a half", Kind::Feet, false, [](Problem &p) { scale(p, 0.5); }},
        {"northing and easting swapped", Kind::Mirrored, true,
         [](Problem &p) {
             for (ControlPoint &point : p.control)
                 std::swap(point.east, point.north);
         }},
        {"the easting mirrored", Kind::Mirrored, true,
         [](Problem &p) {
             for (ControlPoint &point : p.control)
                 point.east = -point.east;
         }},
        {"turned by a half", Kind::Mirrored, false,
         [](Problem &p) {
             for (ControlPoint &point : p.control) {
                 point.east = -point.east;
                 point.north = -point.north;
             }
         }},
        {"a blunder", Kind::LeftOut, true, [](Problem &p) { p.control[1].east += 1.0; }},
        {"errors of 5 mm", Kind::Suspect, false, [](Problem &) {}},
    };
}

TEST_F(SiteFitRefusalTest, IsWarnedOf)
{
    for (const WarningRow &row : warningRows()) {
        SCOPED_TRACE(row.title);
        Problem problem{m_base, controlOf(m_base, TrueSite(), 1.0), {}};
        row.change(problem);
        const SiteFit fit = fitted(problem.base, problem.control, problem.options);
        const bool isWarned =
            std::any_of(fit.warnings.begin(), fit.warnings.end(),
                        [&row](const auto &warning) { return warning.kind == row.kind; });
        EXPECT_EQ(isWarned, row.isWarned);
    }
}

TEST_F(SiteFitRefusalTest, TellsASwapFromAMirror)
{
    for (const bool isSwapped : {true, false}) {
        ControlPoints control = controlOf(m_base, TrueSite(), 1.0);
        for (ControlPoint &point : control) {
            if (isSwapped)
                std::swap(point.east, point.north);
            else
                point.north = -point.north;
        }
        const SiteFit fit = fitted(m_base, control);
        const auto found =
            std::find_if(fit.warnings.begin(), fit.warnings.end(), [](const auto &warning) {
                return warning.kind == CalibrationWarningKind::Mirrored;
            });
        ASSERT_NE(found, fit.warnings.end());
        EXPECT_EQ(found->text.contains(QStringLiteral("swapped")), isSwapped) << found->text;
    }
}

TEST_F(SiteFitRefusalTest, TwentyThousandPointsAreFittedAtOnce)
{
    const stENU corner{500000.0, 5200000.0, 0.0};
    // Positions on a grid of degrees, at the coordinates that the system gives them.
    LocationBuilder builder(m_base);
    ControlPoints control;
    for (int i = 0; i < 20000; ++i) {
        const Pos at = Pos::fromLongLatH(1.0 + (i % 200) * 1e-4, 47.0 + (i / 200) * 1e-4, 10.0);
        Location location;
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic, at, location));
        ControlPoint point;
        point.name = test::pointName(i);
        point.wgs84 = at;
        point.east = location.get_NEH_E() - corner.e;
        point.north = location.get_NEH_N() - corner.n;
        point.height = location.get_NEH_H() + 3.0;
        control += point;
    }
    const SiteFit fit = fitted(m_base, control);
    EXPECT_NEAR(fit.plan.similarity.scale, 1.0, 1e-12);
    EXPECT_NEAR(fit.height.shiftAtCentroid, 3.0, 1e-9);
}

TEST_F(SiteFitRefusalTest, ACheckGivesDifferencesBySiteLessGiven)
{
    TrueSite truth;
    truth.turn = 0.3;
    truth.a = 2.0;
    const ControlPoints control = controlOf(m_base, truth);
    const SiteFit fit = fitted(m_base, control);
    ControlPoints check = control;
    check[0].east -= 0.03;
    check[0].north += 0.04;
    check[1].height = *check.at(1).height - 0.06;
    check[2].isUsedInPlan = false;
    check[3].height.reset();
    const auto found = calibration::checkSite(fit.coord, check);
    ASSERT_TRUE(found);
    EXPECT_NEAR(*found->points.at(0).east, 0.03, 1e-7);
    EXPECT_NEAR(*found->points.at(0).north, -0.04, 1e-7);
    EXPECT_NEAR(*found->points.at(1).height, 0.06, 1e-7);
    EXPECT_FALSE(found->points.at(2).north);
    EXPECT_FALSE(found->points.at(3).height);
    EXPECT_EQ(found->plan.points, 7);
    EXPECT_NEAR(*found->plan.rms, 0.05 / std::sqrt(7.0), 1e-7);
    EXPECT_NEAR(*found->plan.max, 0.05, 1e-7);
    EXPECT_EQ(found->plan.maxPoint, QStringLiteral("P1"));
    EXPECT_NEAR(*found->height.rms, 0.06 / std::sqrt(7.0), 1e-7);
    EXPECT_EQ(found->height.maxPoint, QStringLiteral("P2"));

    CalibrationFailure failure;
    EXPECT_FALSE(calibration::checkSite(fit.coord, {}, &failure));
    EXPECT_EQ(failure.kind, CalibrationFault::TooFewPoints);
    Coord bad = fit.coord;
    bad.planeTransform.ratio.value = 0.0;
    EXPECT_FALSE(calibration::checkSite(bad, check, &failure));
    EXPECT_EQ(failure.kind, CalibrationFault::BadRecords);
}

} // namespace
} // namespace KelStd
