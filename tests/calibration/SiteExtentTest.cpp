// Where the fit of a site holds.

#include "calibration/MeasuredSite.h"
#include "calibration/SiteRecords.h"

#include <KelStd/calibration/SiteExtent.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using calibration::SiteTransform;

TEST(SiteHull, HoldsWhatTheControlPointsEnclose)
{
    ControlPoints control;
    const double corners[][2] = {{0, 0}, {0, 100}, {100, 100}, {100, 0}, {50, 50}, {0, 50}};
    for (const auto &corner : corners) {
        ControlPoint point;
        point.name = test::pointName(control.size());
        point.north = corner[0];
        point.east = corner[1];
        control += point;
    }
    const calibration::SiteHull hull(control);
    EXPECT_TRUE(hull.hasArea());
    EXPECT_EQ(hull.corners().size(), 4);
    EXPECT_TRUE(hull.contains(50.0, 99.0));
    EXPECT_TRUE(hull.contains(100.0, 100.0));
    EXPECT_TRUE(hull.contains(-0.09, 50.0));
    EXPECT_FALSE(hull.contains(-0.11, 50.0));
    EXPECT_FALSE(hull.contains(50.0, 101.0));
    EXPECT_FALSE(hull.contains(std::numeric_limits<double>::quiet_NaN(), 0.0));

    EXPECT_FALSE(calibration::SiteHull().hasArea());
    EXPECT_TRUE(calibration::SiteHull().contains(1e6, 1e6));
}

ControlPoint controlAt(double north, double east, bool hasPlan = true, bool hasHeight = true)
{
    ControlPoint point;
    point.name = QStringLiteral("%1/%2").arg(north).arg(east);
    point.north = north;
    point.east = east;
    point.isUsedInPlan = hasPlan;
    point.isUsedInHeight = hasHeight;
    if (hasHeight)
        point.height = 1.0;
    return point;
}

// Beside a line as far as it is long, about one point 100 m.
TEST(SiteHull, HoldsNearPointsThatEncloseNothing)
{
    const calibration::SiteHull line({controlAt(0, 0), controlAt(30, 40), controlAt(15, 20)});
    EXPECT_FALSE(line.hasArea());
    EXPECT_EQ(line.corners().size(), 2);
    const struct
    {
        double north, east;
        bool isHeld;
    } rows[] = {
        {15, 20, true},       {30, 90, true},
        {30, 90.2, false},                          // beyond an end
        {-30, -40, true},     {-31, -40, false},    // before the other
        {15 - 40, 50, true},  {15 - 40, 51, false}, // across the middle
        {15 + 40, -10, true}, {15 + 41, -10, false},
        {1e6, 1e6, false},    {std::numeric_limits<double>::quiet_NaN(), 0, false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(line.contains(row.north, row.east), row.isHeld) << row.north << ' ' << row.east;

    for (const ControlPoints &points :
         {ControlPoints{controlAt(5, 7)}, ControlPoints{controlAt(5, 7), controlAt(5, 7)}}) {
        const calibration::SiteHull point(points);
        EXPECT_EQ(point.corners().size(), 1);
        EXPECT_TRUE(point.contains(5, 107));
        EXPECT_TRUE(point.contains(-55, 87)); // 60 and 80
        EXPECT_FALSE(point.contains(5, 107.2));
        EXPECT_FALSE(point.contains(1e9, 7));
    }
}

TEST(SiteExtent, HeightsThatAreSlopedHoldWhereTheirPointsAre)
{
    using calibration::SiteExtent;
    // A square in plan, and a triangle in height, with corners of both.
    const ControlPoints control = {controlAt(0, 0), controlAt(0, 100), controlAt(100, 0),
                                   controlAt(100, 100, true, false)};
    const auto outside = [](const stElevationFitting &fitting, const ControlPoints &points,
                            double north, double east) {
        const auto site = SiteTransform::of(test::similarity(0, 0, 0, 1), fitting);
        return SiteExtent(site.value_or(SiteTransform()), points).outside(north, east);
    };
    constexpr unsigned both = SiteExtent::plan | SiteExtent::heights;
    const auto sloped = test::inclinedPlane(1, 1e-5, 0);
    const auto curved = test::curvedSurface(1, 0, 0, 1e-7, 0, 0, 0, 0);
    for (const auto &fitting : {sloped, curved}) {
        EXPECT_EQ(outside(fitting, control, 40, 40), 0U);
        EXPECT_EQ(outside(fitting, control, 60, 60), SiteExtent::heights);
        EXPECT_EQ(outside(fitting, control, 101, 50), both);
        // The same points: one hull.
        EXPECT_EQ(outside(fitting, control.mid(0, 3), 60, 60), both);
        EXPECT_EQ(outside(fitting, control.mid(0, 3), 40, 40), 0U);
        // More of them in height.
        ControlPoints more = control.mid(0, 3);
        more += controlAt(100, 100, false, true);
        EXPECT_EQ(outside(fitting, more, 60, 60), SiteExtent::plan);
        // None in plan, and nothing known.
        for (ControlPoint &point : more)
            point.isUsedInPlan = false;
        EXPECT_EQ(outside(fitting, more, 60, 60), 0U);
        EXPECT_EQ(outside(fitting, more, 101, 60), both);
        EXPECT_EQ(outside(fitting, {}, 1e6, 1e6), 0U);
    }
    // One shift is the same everywhere, and without a site there is nothing that holds or not.
    for (const auto &fitting : {test::fixedHeight(1), stElevationFitting()}) {
        EXPECT_EQ(outside(fitting, control, 60, 60), 0U);
        EXPECT_EQ(outside(fitting, control, 101, 50), both);
    }
    EXPECT_EQ(SiteExtent(SiteTransform(), control).outside(1e6, 1e6), 0U);
    EXPECT_EQ(SiteExtent().outside(1e6, 1e6), 0U);
}

} // namespace
} // namespace KelStd
