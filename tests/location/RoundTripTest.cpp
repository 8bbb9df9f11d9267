#include "location/LocationOperations.h"
#include "location/PointsOfSystem.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace KelStd {
namespace {

constexpr double degreeTolerance = 1e-9; // some 0.1 mm
constexpr double metreTolerance = 1e-6;
constexpr int points = KELSTD_ROUND_TRIP_POINTS;

/// Most points are left to a builder, which is a hundred times as fast and by definitions gives the
/// same bit for bit, as LocationBuilderTest.cpp shows over a hundred thousand others. The
/// operations themselves take every so manieth.
constexpr int pointsPerSingle = 5;

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
{
protected:
    void SetUp() override
    {
        ProjTest::SetUp();
        ASSERT_TRUE(
            Coord_IO::xml_read(test::systemPath(QString::fromStdString(GetParam())), m_coord));
    }

    void make(LocationBuilder &builder, const test::LocationOperation &operation, const Pos &from,
              bool isSingle, Location &made) const
    {
        QString error;
        ASSERT_TRUE(builder.make(operation.ofBuilder, from, made, &error)) << error;
        if (!isSingle)
            return;
        Location bySingle;
        ASSERT_TRUE(operation.make(from, bySingle, nullptr, &m_coord, &error)) << error;
        EXPECT_EQ(bySingle, made) << operation.name;
        made = bySingle;
    }

    Coord m_coord;
};

TEST_P(RoundTrip, EveryOperationReturnsToItsStart)
{
    test::PointsOfSystem source(QString::fromStdString(GetParam()), m_coord, 20260101);
    LocationBuilder builder(m_coord);
    builder.requireDefinitions();
    for (int i = 0; i < points; ++i) {
        const Pos start = source.next();
        const bool isSingle = i % pointsPerSingle == 0;
        SCOPED_TRACE(testing::Message() << "point " << i << ' ' << testing::PrintToString(start));
        Location location;
        ASSERT_NO_FATAL_FAILURE(
            make(builder, test::locationOperations[0], start, isSingle, location));
        for (const test::LocationOperation &operation : test::locationOperations) {
            Location again;
            const Pos &from = test::frameOf(location, operation.from);
            ASSERT_NO_FATAL_FAILURE(make(builder, operation, from, isSingle, again));
            // The operation's own frame is its input, untouched; the others come back.
            EXPECT_EQ(test::frameOf(again, operation.from), from);
            const double worst =
                std::max({worstDifference(again.wgs84LLH, location.wgs84LLH, true),
                          worstDifference(again.wgs84XYZ, location.wgs84XYZ, false),
                          worstDifference(again.localLLH, location.localLLH, true),
                          worstDifference(again.localNEH, location.localNEH, false)});
            ASSERT_LE(worst, timesAllowed(GetParam())) << operation.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, RoundTrip, testing::ValuesIn(test::publishedSystems()),
                         [](const auto &row) {
                             return test::testName(QString::fromStdString(row.param));
                         });

} // namespace
} // namespace KelStd
