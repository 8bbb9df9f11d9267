#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Location.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<Location>);

using Getter = double (Location::*)() const;

/// In the order in which the members are declared.
struct Component
{
    const char *name;
    Getter get;
    Pos Location::*frame;
    void (Pos::*set)(double);
};

constexpr Component components[] = {
    {"WGS84 longitude", &Location::get_WGS84_LLH_Long, &Location::wgs84LLH, &Pos::setLLH_Longitude},
    {"WGS84 latitude", &Location::get_WGS84_LLH_Lat, &Location::wgs84LLH, &Pos::setLLH_Latitude},
    {"WGS84 height", &Location::get_WGS84_LLH_Height, &Location::wgs84LLH, &Pos::setLLH_H},
    {"WGS84 X", &Location::get_WGS84_XYZ_X, &Location::wgs84XYZ, &Pos::setXYZ_X},
    {"WGS84 Y", &Location::get_WGS84_XYZ_Y, &Location::wgs84XYZ, &Pos::setXYZ_Y},
    {"WGS84 Z", &Location::get_WGS84_XYZ_Z, &Location::wgs84XYZ, &Pos::setXYZ_Z},
    {"local longitude", &Location::get_Local_LLH_Long, &Location::localLLH, &Pos::setLLH_Longitude},
    {"local latitude", &Location::get_Local_LLH_Lat, &Location::localLLH, &Pos::setLLH_Latitude},
    {"local height", &Location::get_Local_LLH_Height, &Location::localLLH, &Pos::setLLH_H},
    {"easting", &Location::get_NEH_E, &Location::localNEH, &Pos::setENU_E},
    {"northing", &Location::get_NEH_N, &Location::localNEH, &Pos::setENU_N},
    {"height", &Location::get_NEH_H, &Location::localNEH, &Pos::setENU_U},
};

Location filled()
{
    Location location;
    double value = 1.0;
    for (const Component &component : components)
        (location.*component.frame.*component.set)(value++);
    return location;
}

void expectZeros(const Location &location)
{
    for (const Component &component : components)
        EXPECT_EQ((location.*component.get)(), 0.0) << component.name;
}

/// `location` with one component changed by `difference`.
Location changed(Location location, const Component &component, double difference)
{
    (location.*component.frame.*component.set)((location.*component.get)() + difference);
    return location;
}

TEST(Location, FreshAndClearedOnesAreTwelveZeros)
{
    expectZeros(Location());
    Location location = filled();
    location.clear();
    expectZeros(location);
    test::expectEqual(location, Location());
}

TEST(Location, EachGetterReadsItsOwnComponent)
{
    const Location location = filled();
    double value = 1.0;
    for (const Component &component : components)
        EXPECT_EQ((location.*component.get)(), value++) << component.name;
}

TEST(Location, PlaneFrameIsEastNorthHeightInMemory)
{
    const Location location = filled();
    EXPECT_EQ(location.localNEH, Pos::fromENU(10, 11, 12));
    EXPECT_EQ(location.wgs84LLH, Pos::fromLongLatH(1, 2, 3));
}

TEST(Location, CopiesAndMovesTakeAllFrames)
{
    test::expectCopiesAndMovesEqual(filled());
}

TEST(Location, EachComponentCountsForEqualityExactly)
{
    test::expectEqual(filled(), filled());
    for (const Component &component : components) {
        SCOPED_TRACE(component.name);
        // Well below the tolerance of `equals`, and a whole step of the largest component, 12.
        test::expectDifferent(filled(), changed(filled(), component, 1e-14));
    }
}

TEST(Location, EqualsToleratesATenThousandthInEachComponent)
{
    for (const Component &component : components) {
        SCOPED_TRACE(component.name);
        for (const double sign : {1.0, -1.0}) {
            // From 0, so that the difference is exactly the double that is written here.
            EXPECT_TRUE(Location().equals(changed(Location(), component, sign * 0.0001)));
            EXPECT_FALSE(Location().equals(changed(Location(), component, sign * 0.00011)));
        }
    }
}

TEST(Location, EqualsLooksAtEveryComponentByItself)
{
    Location nearby = filled();
    for (const Component &component : components)
        nearby = changed(nearby, component, 0.00009);
    EXPECT_TRUE(filled().equals(nearby));
    EXPECT_TRUE(nearby.equals(filled()));
}

TEST(Location, NaNEqualsItsOwnObjectOnly)
{
    Location location = filled();
    location.localNEH.setENU_U(std::numeric_limits<double>::quiet_NaN());
    const Location copy(location);
    EXPECT_TRUE(location == location);
    EXPECT_FALSE(location != location);
    test::expectDifferent(location, copy);
    EXPECT_FALSE(location.equals(copy));
}

} // namespace
} // namespace KelStd
