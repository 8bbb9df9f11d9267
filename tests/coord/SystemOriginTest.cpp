// Where a system came from, and the area in which it is meant to be used.

#include <KelStd/coord/SystemOrigin.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

// As the EPSG Dataset has them: EPSG:28992, EPSG:3460, and the whole world.
constexpr AreaOfUse netherlands{3.2, 50.75, 7.24, 53.7};
constexpr AreaOfUse fiji{176.81, -20.81, -178.15, -12.42};
constexpr AreaOfUse world{-180.0, -90.0, 180.0, 90.0};
constexpr AreaOfUse eastOfDateLine{-180.0, 0.0, -174.0, 84.0}; // EPSG:32601

struct Row
{
    const AreaOfUse &area;
    double longitude;
    double latitude;
    bool isInside;
};

TEST(AreaOfUse, HoldsWhatLiesInTheBoxOrOnItsBorder)
{
    const Row rows[] = {
        {netherlands, 5.39, 52.16, true},
        {netherlands, 3.2, 50.75, true},
        {netherlands, 7.24, 53.7, true},
        {netherlands, 3.199999, 52.0, false},
        {netherlands, 7.240001, 52.0, false},
        {netherlands, 5.0, 50.749999, false},
        {netherlands, 5.0, 53.700001, false},
        {netherlands, 365.39, 52.16, true}, // the same longitude, counted further round
        {netherlands, -354.61, 52.16, true},
        {netherlands, 52.16, 5.39, false},
        {fiji, 178.0, -18.0, true},
        {fiji, 180.0, -18.0, true},
        {fiji, -180.0, -18.0, true},
        {fiji, -179.0, -18.0, true},
        {fiji, 181.0, -18.0, true},
        {fiji, 176.0, -18.0, false},
        {fiji, -178.0, -18.0, false},
        {fiji, 0.0, -18.0, false},
        {fiji, 178.0, 18.0, false},
        {world, 180.0, 90.0, true},
        {world, -180.0, -90.0, true},
        {world, 359.0, 0.0, true},
        {eastOfDateLine, 180.0, 10.0, true},
        {eastOfDateLine, -180.0, 10.0, true},
        {eastOfDateLine, 540.0, 10.0, true},
        {eastOfDateLine, 179.9, 10.0, false},
        {netherlands, nan, 52.0, false},
        {netherlands, 5.0, nan, false},
        {world, infinite, 0.0, false},
        {world, 0.0, infinite, false},
        {world, 0.0, 90.1, false},
        {fiji, nan, -18.0, false},
        {fiji, infinite, -18.0, false},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.area.west << ": " << row.longitude << ' ' << row.latitude);
        EXPECT_EQ(row.area.contains(row.longitude, row.latitude), row.isInside);
    }
}

TEST(AreaOfUse, IsValidWithinTheRangesOfLongitudesAndLatitudes)
{
    for (const AreaOfUse &area :
         {netherlands, fiji, world, AreaOfUse{}, AreaOfUse{5.0, 50.0, 5.0, 50.0}})
        EXPECT_TRUE(area.isValid());
    for (const AreaOfUse &area : {AreaOfUse{-180.1, 0.0, 0.0, 1.0}, AreaOfUse{0.0, 0.0, 181.0, 1.0},
                                  AreaOfUse{0.0, -90.1, 1.0, 1.0}, AreaOfUse{0.0, 0.0, 1.0, 91.0},
                                  AreaOfUse{0.0, 2.0, 1.0, 1.0}, AreaOfUse{nan, 0.0, 1.0, 1.0},
                                  AreaOfUse{0.0, nan, 1.0, 1.0}, AreaOfUse{0.0, 0.0, infinite, 1.0},
                                  AreaOfUse{0.0, 0.0, 1.0, nan}})
        EXPECT_FALSE(area.isValid());
}

TEST(AreaOfUse, ReachesEastwardFromWestToEast)
{
    EXPECT_NEAR(netherlands.width(), 4.04, 1e-12);
    EXPECT_NEAR(fiji.width(), 5.04, 1e-12);
    EXPECT_DOUBLE_EQ(world.width(), 360.0);
}

SystemOrigin fullOrigin()
{
    SystemOrigin origin;
    origin.authority = QStringLiteral("EPSG");
    origin.code = QStringLiteral("28992");
    origin.databaseVersion = QStringLiteral("EPSG v10.076");
    origin.operation = SystemOrigin::Operation{QStringLiteral("EPSG:4833"),
                                               QStringLiteral("Amersfoort to WGS 84 (4)"), 1.0};
    origin.area = netherlands;
    origin.areaName = QStringLiteral("Netherlands - onshore.");
    origin.countries = QStringList{QStringLiteral("Netherlands")};
    origin.planeUnit = SystemOrigin::PlaneUnit{QStringLiteral("foot"), 0.3048};
    return origin;
}

TEST(SystemOrigin, OfNothingIsEmpty)
{
    EXPECT_TRUE(SystemOrigin().isEmpty());
    EXPECT_FALSE(fullOrigin().isEmpty());
    EXPECT_EQ(SystemOrigin().fullCode(), QString());
    EXPECT_EQ(fullOrigin().fullCode(), QStringLiteral("EPSG:28992"));
    SystemOrigin half;
    half.code = QStringLiteral("28992");
    EXPECT_EQ(half.fullCode(), QString());
}

TEST(SystemOrigin, EqualityAsksForEveryMember)
{
    using Change = void (*)(SystemOrigin &);
    const Change changes[] = {
        [](SystemOrigin &o) { o.authority = QStringLiteral("ESRI"); },
        [](SystemOrigin &o) { o.code = QStringLiteral("28991"); },
        [](SystemOrigin &o) { o.databaseVersion.clear(); },
        [](SystemOrigin &o) { o.operation.reset(); },
        [](SystemOrigin &o) { o.operation->code.clear(); },
        [](SystemOrigin &o) { o.operation->name.clear(); },
        [](SystemOrigin &o) { o.operation->accuracyM.reset(); },
        [](SystemOrigin &o) { o.operation->accuracyM = 2.0; },
        [](SystemOrigin &o) { o.area.reset(); },
        [](SystemOrigin &o) { o.area->west = 0.0; },
        [](SystemOrigin &o) { o.area->south = 0.0; },
        [](SystemOrigin &o) { o.area->east = 0.0; },
        [](SystemOrigin &o) { o.area->north = 0.0; },
        [](SystemOrigin &o) { o.areaName.clear(); },
        [](SystemOrigin &o) { o.countries.clear(); },
        [](SystemOrigin &o) { o.planeUnit.reset(); },
        [](SystemOrigin &o) { o.planeUnit->name.clear(); },
        [](SystemOrigin &o) { o.planeUnit->metres = 0.3; },
    };
    EXPECT_TRUE(fullOrigin() == fullOrigin());
    EXPECT_FALSE(fullOrigin() != fullOrigin());
    int index = 0;
    for (const Change change : changes) {
        SCOPED_TRACE(index++);
        SystemOrigin other = fullOrigin();
        change(other);
        EXPECT_TRUE(other != fullOrigin());
        EXPECT_FALSE(other == fullOrigin());
    }
}

} // namespace
} // namespace KelStd
