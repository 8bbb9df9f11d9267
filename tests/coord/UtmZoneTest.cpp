#include <KelStd/coord/Coord.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

struct ZoneRow
{
    double longitude; ///< [deg]
    int zone;
};

constexpr ZoneRow zoneRows[] = {
    {-180.0, 1},
    {-177.0, 1},
    {-174.0, 2},
    {0.0, 31},
    {3.0, 31},
    {179.9, 60},
    // Just below an edge and on it.
    {-174.000001, 1},
    {-0.000001, 30},
    {5.999999, 31},
    {6.0, 32},
    {174.0, 60},
    // Zones do not wrap, eastwards ...
    {180.0, 61},
    {185.9, 61},
    {186.0, 62},
    {360.0, 91},
    // ... and westwards, where the truncation keeps zone 1 for another six degrees.
    {-180.000001, 1},
    {-183.0, 1},
    {-185.999999, 1},
    {-186.0, 0},
    {-191.9, 0},
    {-192.0, -1},
    {-360.0, -29},
};

TEST(UtmZone, LongitudeGivesItsZone)
{
    for (const ZoneRow &row : zoneRows)
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(row.longitude), row.zone) << row.longitude;
}

// From -180 upwards the zones count six degrees each; a tenth of a degree off every edge.
TEST(UtmZone, ZonesAreSixDegreesWide)
{
    for (int zone = 1; zone <= 60; ++zone) {
        const double west = -180.0 + 6.0 * (zone - 1);
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(west), zone);
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(west + 0.1), zone);
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(west + 5.9), zone);
    }
}

struct MeridianRow
{
    int zone;
    double meridian; ///< [deg]
};

constexpr MeridianRow meridianRows[] = {
    {1, -177.0}, {2, -171.0}, {30, -3.0},   {31, 3.0},    {60, 177.0},
    {0, -183.0}, {61, 183.0}, {-1, -189.0}, {100, 417.0},
};

TEST(UtmZone, ZoneGivesItsCentralMeridian)
{
    for (const MeridianRow &row : meridianRows)
        EXPECT_EQ(Coord::UtmZone_to_DegreedLogitude(row.zone), row.meridian) << row.zone;
}

TEST(UtmZone, CentralMeridianLiesInItsZone)
{
    for (int zone = 1; zone <= 70; ++zone) {
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(Coord::UtmZone_to_DegreedLogitude(zone)), zone);
    }
}

TEST(UtmZone, ExtremeZonesDoNotOverflow)
{
    EXPECT_EQ(Coord::UtmZone_to_DegreedLogitude(std::numeric_limits<int>::max()),
              2147483646.0 * 6.0 - 177.0);
    EXPECT_EQ(Coord::UtmZone_to_DegreedLogitude(std::numeric_limits<int>::min()),
              -2147483649.0 * 6.0 - 177.0);
}

// A conversion of such a number to int would be undefined.
TEST(UtmZone, LongitudesWithoutAnIntZoneGiveTheNearestOne)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr int minZone = std::numeric_limits<int>::min();
    constexpr int maxZone = std::numeric_limits<int>::max();
    EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(std::numeric_limits<double>::quiet_NaN()), 0);
    for (const double longitude : {1e18, 1e300, infinity}) {
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(longitude), maxZone) << longitude;
        EXPECT_EQ(Coord::DegreedLogitude_to_UtmZone(-longitude), minZone) << longitude;
    }
}

} // namespace
} // namespace KelStd
