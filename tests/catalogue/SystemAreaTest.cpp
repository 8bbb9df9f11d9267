#include <KelStd/catalogue/SystemArea.h>

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd::catalogue {
namespace {

SystemArea box(double west, double south, double east, double north)
{
    SystemArea area;
    area.isKnown = true;
    area.west = west;
    area.south = south;
    area.east = east;
    area.north = north;
    return area;
}

const SystemArea fiji = box(176.81, -20.81, -178.15, -12.42);

TEST(SystemArea, ContainsPlacesOnBothSidesOf180Degrees)
{
    EXPECT_TRUE(fiji.contains({178.4, -18.1}));
    EXPECT_TRUE(fiji.contains({-179.0, -17.0}));
    EXPECT_TRUE(fiji.contains({181.0, -17.0}));
    EXPECT_FALSE(fiji.contains({0.0, -17.0}));
    EXPECT_FALSE(fiji.contains({178.4, -25.0}));
}

TEST(SystemArea, HasItsCentreOnTheSideWhereItLies)
{
    EXPECT_NEAR(fiji.centre().longitude, 179.33, 1e-9);
    EXPECT_NEAR(fiji.centre().latitude, -16.615, 1e-9);
    EXPECT_NEAR(box(170.0, 0.0, -150.0, 10.0).centre().longitude, -170.0, 1e-9);
}

TEST(SystemArea, TellsTheShareThatAnotherCovers)
{
    // On the equator's two sides a box of half the width covers one half.
    EXPECT_NEAR(box(0, -10, 10, 10).coveredBy(box(5, -10, 20, 10)), 0.5, 1e-12);
    EXPECT_NEAR(box(0, -10, 10, 10).coveredBy(box(0, 0, 10, 10)), 0.5, 1e-12);
    EXPECT_NEAR(fiji.coveredBy(box(176.0, -30.0, 180.0, 0.0)), 3.19 / 5.04, 1e-9);
    EXPECT_EQ(fiji.coveredBy(box(0, 0, 10, 10)), 0.0);
    EXPECT_EQ(fiji.coveredBy(fiji), 1.0);
    EXPECT_EQ(box(-180, -90, 180, 90).coveredBy(box(-180, -90, 180, 90)), 1.0);
}

TEST(SystemArea, IntersectsAcross180Degrees)
{
    EXPECT_TRUE(fiji.intersects(box(-180.0, -17.0, -179.0, -16.0)));
    EXPECT_TRUE(fiji.intersects(box(170.0, -17.0, 177.0, -16.0)));
    EXPECT_FALSE(fiji.intersects(box(-170.0, -17.0, 170.0, -16.0)));
    EXPECT_FALSE(fiji.intersects(SystemArea()));
}

TEST(SystemArea, AnUnknownOneContainsNothingAndIsCovered)
{
    EXPECT_FALSE(SystemArea().contains({0.0, 0.0}));
    EXPECT_EQ(SystemArea().coveredBy(fiji), 1.0);
}

} // namespace
} // namespace KelStd::catalogue
