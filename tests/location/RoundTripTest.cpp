#include "location/LocationOperations.h"
#include "location/PointsOfSystem.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace KelStd {
namespace {

constexpr double degreeTolerance = 1e-9; // some 0.1 mm
constexpr double metreTolerance = 1e-6;
constexpr int points = KELSTD_ROUND_TRIP_POINTS;

/// Projections whose inverse is approximate in PROJ itself (`proj | invproj` shows the same), with
/// how many times the tolerances above they miss at most.
struct ApproximateInverse
{
    const char *system;
    double times;
};

constexpr ApproximateInverse approximateInverses[] = {
    // laea: the authalic latitude by a series of three terms; 0.3 mm at 50 degrees north.
    {"etrs89_laea_europe.xml", 400.0},
    // nzmg: Newton's method, ended at 1e-10 of the axis.
    {"nzgd49_nzmg.xml", 120.0},
    // cass: a series in the easting; 0.006 mm at 110 km from the meridian.
    {"trinidad_grid.xml", 10.0},
};

double timesAllowed(const std::string &system)
{
    for (const ApproximateInverse &row : approximateInverses) {
        if (system == row.system)
            return row.times;
    }
    return 1.0;
}

/// The largest difference of two positions, in units of the tolerances above.
double worstDifference(const Pos &a, const Pos &b, bool geographic)
{
    const auto x = test::componentsOf(a);
    const auto y = test::componentsOf(b);
    double worst = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool isAngle = geographic && i < 2;
        worst =
            std::max(worst, std::abs(x[i] - y[i]) / (isAngle ? degreeTolerance : metreTolerance));
    }
    return worst;
}

class RoundTrip : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

TEST_P(RoundTrip, EveryOperationReturnsToItsStart)
{
    const QString system = QString::fromStdString(GetParam());
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(test::systemPath(system), coord));
    test::PointsOfSystem source(system, coord, 20260101);

    for (int i = 0; i < points; ++i) {
        const Pos start = source.next();
        Location location;
        QString error;
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(start, location, nullptr, &coord, &error))
            << error;
        for (const test::LocationOperation &operation : test::locationOperations) {
            Location again;
            const Pos &from = test::frameOf(location, operation.from);
            ASSERT_TRUE(operation.make(from, again, nullptr, &coord, &error)) << error;
            // The operation's own frame is its input, untouched; the others come back.
            EXPECT_EQ(test::frameOf(again, operation.from), from);
            const double worst =
                std::max({worstDifference(again.wgs84LLH, location.wgs84LLH, true),
                          worstDifference(again.wgs84XYZ, location.wgs84XYZ, false),
                          worstDifference(again.localLLH, location.localLLH, true),
                          worstDifference(again.localNEH, location.localNEH, false)});
            ASSERT_LE(worst, timesAllowed(GetParam()))
                << operation.name << ", point " << i << ' ' << testing::PrintToString(start);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, RoundTrip, testing::ValuesIn(test::publishedSystems()),
                         [](const auto &row) {
                             return test::testName(QString::fromStdString(row.param));
                         });

} // namespace
} // namespace KelStd
