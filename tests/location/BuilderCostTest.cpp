#include "location/CountedCalls.h"
#include "location/LocationOperations.h"
#include "location/PointsOfSystem.h"
#include "support/GridFiles.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QLibrary>

#include <gtest/gtest.h>

#include <proj.h>

#include <algorithm>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;
using Height = LocationBuilder::Height;
using test::CountedCalls;

constexpr std::size_t pointCount = 2000; ///< of each frame
constexpr std::size_t strangeEvery = 8;

constexpr Height heights[] = {Height::Ellipsoidal, Height::AboveGeoid};

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// None of these has a location, whatever its frame, nor a place in a grid.
const Pos strangePositions[] = {
    Pos::fromXYZ(nan, 52.0, 0.0),
    Pos::fromXYZ(5.0, nan, 0.0),
    Pos::fromXYZ(5.0, infinity, 0.0),
};

struct System
{
    std::string document;
    bool hasGeoid;

    friend void PrintTo(const System &system, std::ostream *out)
    {
        *out << system.document << (system.hasGeoid ? " with a geoid" : "");
    }
};

void expectNothing(const CountedCalls &calls)
{
    EXPECT_EQ(calls.allocations, 0);
    EXPECT_EQ(calls.files, 0);
    EXPECT_EQ(calls.directoryChanges, 0);
}

class BuilderCost : public test::ProjTest, public testing::WithParamInterface<System>
{
protected:
    void SetUp() override
    {
        ProjTest::SetUp();
        test::deliverEgm96();
        m_document = QString::fromStdString(GetParam().document);
        ASSERT_TRUE(Coord_IO::xml_read(test::systemPath(m_document), m_coord));
        if (GetParam().hasGeoid)
            m_coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    }

    std::vector<Location> locations() const
    {
        test::PointsOfSystem points(m_document, m_coord, 11);
        LocationBuilder builder(m_coord);
        std::vector<Location> made(pointCount);
        for (Location &location : made)
            EXPECT_TRUE(builder.make(Frame::Wgs84Geographic, points.next(), location));
        return made;
    }

    const Coord &coord() const { return m_coord; }

private:
    QString m_document;
    Coord m_coord;
};

std::vector<Pos> positionsIn(const test::LocationOperation &row,
                             const std::vector<Location> &locations)
{
    std::vector<Pos> positions;
    for (const Location &location : locations)
        positions.push_back(test::frameOf(location, row.from));
    return positions;
}

std::vector<Pos> withStrangeOnes(std::vector<Pos> positions)
{
    for (std::size_t i = 0; i < positions.size(); i += strangeEvery)
        positions[i] = strangePositions[i / strangeEvery % std::size(strangePositions)];
    return positions;
}

/// Makes one position, which creates the transformations. PROJ keeps the rows of a geoid's grid
/// that it has read, so with a model each has to be met once.
bool warmUp(LocationBuilder &builder, const test::LocationOperation &row,
            const std::vector<Location> &known)
{
    const std::vector<Pos> positions = positionsIn(test::locationOperations[0], known);
    std::vector<double> diffs(positions.size());
    for (const Height given : heights)
        builder.geoidSeparations(given, positions.data(), positions.size(), diffs.data());
    Location location;
    return builder.make(row.ofBuilder, test::frameOf(known.front(), row.from), location);
}

TEST_P(BuilderCost, IsInTheFirstPosition)
{
    const std::vector<Location> known = locations();
    for (const test::LocationOperation &row : test::locationOperations) {
        SCOPED_TRACE(row.name);
        LocationBuilder builder(coord());
        const Pos position = test::frameOf(known.front(), row.from);
        Location location;
        const CountedCalls calls =
            test::callsOf([&] { builder.make(row.ofBuilder, position, location); });
        EXPECT_GT(calls.allocations, 0);
        EXPECT_GT(calls.files, 0);
        EXPECT_EQ(calls.directoryChanges, 0);
    }
}

TEST_P(BuilderCost, IsOnlyTimeForThePositionsAfterTheFirst)
{
    const std::vector<Location> known = locations();
    LocationBuilder builder(coord());
    std::vector<Location> made(pointCount);
    std::vector<LocationBuilder::Outcome> outcomes(pointCount);
    for (const test::LocationOperation &row : test::locationOperations) {
        SCOPED_TRACE(row.name);
        const std::vector<Pos> positions = positionsIn(row, known);
        ASSERT_TRUE(warmUp(builder, row, known));

        std::size_t count = 0;
        expectNothing(test::callsOf([&] {
            count = builder.make(row.ofBuilder, positions.data(), pointCount, made.data());
        }));
        EXPECT_EQ(count, pointCount);
        expectNothing(test::callsOf([&] {
            count = builder.make(row.ofBuilder, positions.data(), pointCount, made.data(),
                                 outcomes.data());
        }));
        EXPECT_EQ(count, pointCount);

        QString error;
        count = 0;
        expectNothing(test::callsOf([&] {
            for (std::size_t i = 0; i < pointCount; ++i)
                count += builder.make(row.ofBuilder, positions[i], made[i], &error) ? 1 : 0;
        }));
        EXPECT_EQ(count, pointCount);
    }
}

TEST_P(BuilderCost, OfTheWayBackIsOnlyTime)
{
    const std::vector<Location> known = locations();
    LocationBuilder builder(coord());
    builder.requireOneToOne();
    std::vector<Location> made(pointCount);
    for (const test::LocationOperation &row : test::locationOperations) {
        SCOPED_TRACE(row.name);
        const std::vector<Pos> positions = positionsIn(row, known);
        ASSERT_TRUE(warmUp(builder, row, known));
        std::size_t count = 0;
        expectNothing(test::callsOf([&] {
            count = builder.make(row.ofBuilder, positions.data(), pointCount, made.data());
        }));
        EXPECT_EQ(count, pointCount);
    }
}

TEST_P(BuilderCost, OfAFailureIsAtMostItsText)
{
    const std::vector<Location> known = locations();
    LocationBuilder builder(coord());
    std::vector<Location> made(pointCount);
    std::vector<LocationBuilder::Outcome> outcomes(pointCount);
    for (const test::LocationOperation &row : test::locationOperations) {
        SCOPED_TRACE(row.name);
        const std::vector<Pos> positions = withStrangeOnes(positionsIn(row, known));
        ASSERT_TRUE(warmUp(builder, row, known));

        std::size_t count = 0;
        expectNothing(test::callsOf([&] {
            count = builder.make(row.ofBuilder, positions.data(), pointCount, made.data());
        }));
        EXPECT_EQ(count, pointCount - pointCount / strangeEvery);

        const CountedCalls withTexts = test::callsOf([&] {
            count = builder.make(row.ofBuilder, positions.data(), pointCount, made.data(),
                                 outcomes.data());
        });
        EXPECT_EQ(count, pointCount - pointCount / strangeEvery);
        EXPECT_FALSE(outcomes.front().reason.isEmpty());
        EXPECT_EQ(withTexts.files, 0);
        EXPECT_EQ(withTexts.directoryChanges, 0);
    }
}

TEST_P(BuilderCost, OfSeparationsIsOnlyTime)
{
    const std::vector<Location> known = locations();
    const std::vector<Pos> positions = positionsIn(test::locationOperations[0], known);
    const std::vector<Pos> strange = withStrangeOnes(positions);
    const std::size_t all = GetParam().hasGeoid ? pointCount : 0;
    std::vector<double> diffs(pointCount);
    std::vector<LocationBuilder::Outcome> outcomes(pointCount);
    LocationBuilder builder(coord());
    ASSERT_TRUE(warmUp(builder, test::locationOperations[0], known));
    for (const Height given : heights) {
        std::size_t count = 0;
        expectNothing(test::callsOf([&] {
            count = builder.geoidSeparations(given, positions.data(), pointCount, diffs.data());
        }));
        EXPECT_EQ(count, all);
        expectNothing(test::callsOf([&] {
            count = builder.geoidSeparations(given, strange.data(), pointCount, diffs.data());
        }));
        EXPECT_EQ(count, all - all / strangeEvery);
        if (all == 0)
            continue; // and a text for each
        expectNothing(test::callsOf([&] {
            count = builder.geoidSeparations(given, positions.data(), pointCount, diffs.data(),
                                             outcomes.data());
        }));
        EXPECT_EQ(count, all);
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, BuilderCost,
                         testing::Values(System{"rd_new.xml", false}, System{"rd_new.xml", true},
                                         System{"ups_north.xml", false},
                                         System{"ups_north.xml", true}),
                         [](const auto &row) {
                             return test::testName(QString::fromStdString(row.param.document))
                                    + (row.param.hasGeoid ? "_with_geoid" : "");
                         });

using BuilderCostCounters = test::ProjTest;

/// That nothing is counted would mean nothing if PROJ's calls did not reach the counters.
TEST_F(BuilderCostCounters, CountTheCallsOfPROJ)
{
    QLibrary library(AppConfig::getInstance().homeDir().absoluteFilePath(
        QStringLiteral("proj/" KELSTD_PROJ_LIBRARY_NAME)));
    const auto create = reinterpret_cast<decltype(&::proj_create)>(library.resolve("proj_create"));
    const auto destroy =
        reinterpret_cast<decltype(&::proj_destroy)>(library.resolve("proj_destroy"));
    ASSERT_TRUE(create != nullptr && destroy != nullptr);
    const std::string definition =
        "+proj=vgridshift +grids=\"" + test::egm96Path().toStdString() + '"';
    PJ *shift = nullptr;
    const CountedCalls calls = test::callsOf([&] { shift = create(nullptr, definition.c_str()); });
    ASSERT_TRUE(shift != nullptr);
    destroy(shift);
    EXPECT_GT(calls.allocations, 0);
    EXPECT_GT(calls.files, 0);
}

} // namespace
} // namespace KelStd
