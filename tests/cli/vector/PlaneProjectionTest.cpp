// Projections compared however they are written.

#include <cli/vector/PlaneProjection.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using cli::vector::PlaneProjection;

struct Pair
{
    const char *one;
    const char *other;
    const char *difference; ///< a part of what is said; empty for none
};

void PrintTo(const Pair &row, std::ostream *out)
{
    *out << row.one << " | " << row.other;
}

class PlaneProjections : public testing::TestWithParam<Pair>
{};

TEST_P(PlaneProjections, AreOneOrNot)
{
    const PlaneProjection one = PlaneProjection::from(GetParam().one);
    const PlaneProjection other = PlaneProjection::from(GetParam().other);
    const QString said = one.differenceTo(other);
    EXPECT_TRUE(said.contains(QLatin1String(GetParam().difference))) << said;
    EXPECT_EQ(said.isEmpty(), *GetParam().difference == '\0') << said;
    EXPECT_EQ(other.differenceTo(one).isEmpty(), said.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PlaneProjections,
    testing::Values(
        // Snyder, Map Projections, p. 57: zone n of UTM has its meridian at 6 n - 183 degrees.
        Pair{"+proj=utm +zone=32 +datum=WGS84 +units=m +no_defs",
             "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +ellps=WGS84", ""},
        Pair{"+proj=utm +zone=32 +south +datum=WGS84",
             "+proj=tmerc +lon_0=9 +k_0=0.9996 +x_0=500000 +y_0=10000000", ""},
        Pair{"+proj=utm +zone=32", "+proj=utm +zone=33", "lon_0 is 9 there and 15 here"},
        Pair{"+proj=utm +zone=32", "+proj=utm +zone=32 +south", "y_0 is 0 there and 10000000 here"},
        Pair{"+proj=lcc +lat_0=40 +lat_1=41 +lat_2=45 +lon_0=3",
             "+proj=lcc +lat_0=40 +lat_1=45 +lat_2=41 +lon_0=3", ""},
        Pair{"+proj=lcc +lat_1=41 +lat_2=45", "+proj=lcc +lat_1=41 +lat_2=45.1", "lat_1"},
        Pair{"+proj=tmerc +lon_0=9", "+proj=lcc +lon_0=9", "the projection is tmerc there and lcc"},
        Pair{"+proj=tmerc +lon_0=9 +x_0=500000", "+proj=tmerc +lon_0=9 +x_0=500000.00005", ""},
        Pair{"+proj=tmerc +lon_0=9 +x_0=500000", "+proj=tmerc +lon_0=9 +x_0=500000.001", "x_0"},
        Pair{"+proj=tmerc +k=0.9996", "+proj=tmerc +k=0.999601", "k_0"},
        // The datum and the unit are compared elsewhere.
        Pair{"+proj=tmerc +ellps=bessel +towgs84=1,2,3 +units=m",
             "+proj=tmerc +ellps=intl +units=us-ft", ""},
        Pair{"+proj=omerc +alpha=30 +no_uoff", "+proj=omerc +alpha=30", "other options"}));

} // namespace
} // namespace KelStd
