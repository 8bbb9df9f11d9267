#include <KelStd/coord/GeographicProjections.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

// cs2cs of PROJ 9.1.1 takes these for longitude and latitude.
TEST(GeographicProjections, HaveFourNames)
{
    for (const char *name : {"longlat", "latlong", "lonlat", "latlon"})
        EXPECT_TRUE(isGeographicProjection(QString::fromLatin1(name))) << name;
    for (const char *name : {"", " ", "longlat latlong", "LongLat", "long", "tmerc", "geocent"})
        EXPECT_FALSE(isGeographicProjection(QString::fromLatin1(name))) << name;
}

} // namespace
} // namespace KelStd
