#include "location/LocationOperations.h"
#include "location/PointsOfSystem.h"
#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <ostream>
#include <thread>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;
using test::sameBits;

constexpr int pointsPerFrame = KELSTD_BUILDER_POINTS;

/// A system that is built instead of read, or read and then changed.
struct System
{
    std::string name;
    std::string document; ///< whose points are used
    std::function<void(Coord &)> change;

    friend void PrintTo(const System &system, std::ostream *out) { *out << system.name; }
};

const QString model = QStringLiteral("egm96_15.gtx");

void withModel(Coord &coord)
{
    coord.geoidModel.modelFileName = model;
}

std::vector<System> systems()
{
    std::vector<System> all;
    for (const std::string &document : test::publishedSystems()) {
        all.push_back({test::testName(QString::fromStdString(document)), document, [](Coord &) {}});
    }
    all.push_back({"rd_new_with_geoid", "rd_new.xml", withModel});
    all.push_back({"ups_north_with_geoid", "ups_north.xml", withModel});
    all.push_back({"unknown_geoid", "rd_new.xml", [](Coord &coord) {
                       coord.geoidModel.modelFileName = QStringLiteral("nowhere.gtx");
                   }});
    all.push_back({"refused_projection", "rd_new.xml", [](Coord &coord) {
                       coord.projection.proj4Projection = QStringLiteral("nosuch");
                   }});
    all.push_back({"refused_ellipsoid", "rd_new.xml", [](Coord &coord) {
                       coord.ellipsoid.proj4EllpsName = QStringLiteral("nosuch");
                   }});
    all.push_back({"default_system", "wgs72_utm_31n.xml",
                   [](Coord &coord) { Coord::CreateDefaultTMercCoordination(coord); }});
    return all;
}

Coord makeSystem(const System &system)
{
    Coord coord;
    EXPECT_TRUE(
        Coord_IO::xml_read(test::systemPath(QString::fromStdString(system.document)), coord));
    system.change(coord);
    return coord;
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Positions that fail in some frame or other, or are at its very edge.
const Pos strangePositions[] = {
    Pos::fromXYZ(0.0, 0.0, 0.0),      Pos::fromXYZ(nan, 52.0, 0.0),
    Pos::fromXYZ(5.0, infinity, 0.0), Pos::fromXYZ(5.0, 52.0, -infinity),
    Pos::fromXYZ(5.0, 91.0, 0.0),     Pos::fromXYZ(5.0, -90.0, 0.0),
    Pos::fromXYZ(1e30, 1e30, 1e30),   Pos::fromXYZ(1e300, -1e300, 0.0),
    Pos::fromXYZ(540.0, 12.0, 1e7),   Pos::fromXYZ(180.0, 90.0, 0.0),
    Pos::fromXYZ(1e7, 1e7, 0.0),      Pos::fromXYZ(-1e12, 3.0, 0.0),
};

/// Positions in the frame of `operation` of which every eighth is strange.
std::vector<Pos> positionsIn(const test::LocationOperation &operation,
                             const std::vector<Location> &locations)
{
    std::vector<Pos> positions;
    std::size_t strange = 0;
    for (const Location &location : locations) {
        const bool isStrange = positions.size() % 8 == 7;
        positions.push_back(isStrange ? strangePositions[strange++ % std::size(strangePositions)]
                                      : test::frameOf(location, operation.from));
    }
    return positions;
}

class LocationBuilderTest : public test::ProjTest, public testing::WithParamInterface<System>
{
protected:
    void SetUp() override
    {
        ProjTest::SetUp();
        test::deliverEgm96();
    }

    /// Locations about the places of a published system.
    static std::vector<Location> locationsOf(const System &system, int count)
    {
        const QString document = QString::fromStdString(system.document);
        Coord published;
        EXPECT_TRUE(Coord_IO::xml_read(test::systemPath(document), published));
        test::PointsOfSystem points(document, published, 4711);
        LocationBuilder builder(published);
        std::vector<Location> locations(static_cast<std::size_t>(count));
        for (Location &location : locations)
            EXPECT_TRUE(builder.make(Frame::Wgs84Geographic, points.next(), location));
        return locations;
    }
};

TEST_P(LocationBuilderTest, GivesByDefinitionsBitForBitWhatTheSinglePositionOperationsGive)
{
    const test::LogCapture log; // some systems are refused, each time
    const Coord coord = makeSystem(GetParam());
    const std::vector<Location> locations = locationsOf(GetParam(), pointsPerFrame);
    LocationBuilder builder(coord);
    builder.requireDefinitions();
    for (const test::LocationOperation &operation : test::locationOperations) {
        const std::vector<Pos> positions = positionsIn(operation, locations);
        for (const Pos &position : positions) {
            SCOPED_TRACE(testing::PrintToString(position));
            Location expected = locations.front();
            Location made = locations.front();
            QString expectedError;
            QString error;
            const bool isExpected =
                operation.make(position, expected, nullptr, &coord, &expectedError);
            ASSERT_EQ(builder.make(operation.ofBuilder, position, made, &error), isExpected);
            ASSERT_EQ(error, expectedError);
            ASSERT_TRUE(sameBits(made, expected)) << testing::PrintToString(made) << " instead of "
                                                  << testing::PrintToString(expected);
        }
    }
}

TEST_P(LocationBuilderTest, MakesOfAnArrayWhatItMakesOfEachElement)
{
    const Coord coord = makeSystem(GetParam());
    const std::vector<Location> locations = locationsOf(GetParam(), 64);
    for (const test::LocationOperation &operation : test::locationOperations) {
        const std::vector<Pos> positions = positionsIn(operation, locations);
        std::vector<Location> made = locations;
        std::vector<LocationBuilder::Outcome> outcomes(positions.size());
        outcomes.back().reason = QStringLiteral("old");
        LocationBuilder builder(coord);
        const std::size_t count = builder.make(operation.ofBuilder, positions.data(),
                                               positions.size(), made.data(), outcomes.data());

        LocationBuilder single(coord);
        std::size_t expectedCount = 0;
        for (std::size_t i = 0; i < positions.size(); ++i) {
            Location expected = locations[i];
            QString reason;
            const bool isMade = single.make(operation.ofBuilder, positions[i], expected, &reason);
            expectedCount += isMade ? 1 : 0;
            EXPECT_EQ(outcomes[i].isMade, isMade) << i;
            EXPECT_EQ(outcomes[i].reason, reason) << i;
            EXPECT_TRUE(sameBits(made[i], expected)) << i;
        }
        EXPECT_EQ(count, expectedCount);

        std::vector<Location> withoutOutcomes = locations;
        EXPECT_EQ(builder.make(operation.ofBuilder, positions.data(), positions.size(),
                               withoutOutcomes.data()),
                  count);
        for (std::size_t i = 0; i < positions.size(); ++i)
            EXPECT_TRUE(sameBits(withoutOutcomes[i], made[i])) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, LocationBuilderTest, testing::ValuesIn(systems()),
                         [](const auto &row) { return row.param.name; });

using LocationBuilderLife = LocationBuilderTest;

Coord rdNew(bool withGeoid = false)
{
    return makeSystem({"", "rd_new.xml", [withGeoid](Coord &coord) {
                           if (withGeoid)
                               withModel(coord);
                       }});
}

const Pos inTheNetherlands = Pos::fromLongLatH(5.81, 52.18, 90.0);

TEST_F(LocationBuilderLife, FailsWithoutPROJAndWorksAgainWithIt)
{
    LocationBuilder builder(rdNew(true));
    Location before;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, inTheNetherlands, before));

    ProjLib::___unloadEnviroment();
    for (const test::LocationOperation &operation : test::locationOperations) {
        Location location = before;
        QString error;
        EXPECT_FALSE(builder.make(operation.ofBuilder, inTheNetherlands, location, &error));
        EXPECT_EQ(error, QStringLiteral("No proj library."));
        EXPECT_TRUE(sameBits(location, before));
    }
    double diff = 7.0;
    QString error;
    EXPECT_FALSE(builder.geoidSeparation(LocationBuilder::Height::Ellipsoidal, inTheNetherlands,
                                         diff, &error));
    EXPECT_EQ(error, QStringLiteral("No proj library."));
    EXPECT_EQ(diff, 7.0);

    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    Location after;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, inTheNetherlands, after, &error)) << error;
    EXPECT_TRUE(sameBits(after, before));
}

TEST_F(LocationBuilderLife, CanBeMadeAndGivenUpWhilePROJIsNotLoaded)
{
    ProjLib::___unloadEnviroment();
    {
        LocationBuilder builder(rdNew());
        Location location;
        EXPECT_FALSE(builder.make(Frame::LocalProjected, Pos(), location));
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        EXPECT_TRUE(builder.make(Frame::Wgs84Geographic, inTheNetherlands, location));
        ProjLib::___unloadEnviroment();
    }
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
}

TEST_F(LocationBuilderLife, MovesWithItsTransformations)
{
    LocationBuilder first(rdNew());
    Location made;
    ASSERT_TRUE(first.make(Frame::Wgs84Geographic, inTheNetherlands, made));
    LocationBuilder second = std::move(first);
    Location again;
    ASSERT_TRUE(second.make(Frame::Wgs84Geographic, inTheNetherlands, again));
    EXPECT_TRUE(sameBits(again, made));
    second = LocationBuilder(rdNew(true));
    ASSERT_TRUE(second.make(Frame::Wgs84Geographic, inTheNetherlands, again));
    EXPECT_NE(again.get_NEH_H(), made.get_NEH_H());
}

TEST_F(LocationBuilderLife, KeepsTheSystemThatItWasMadeFor)
{
    Coord coord = rdNew();
    LocationBuilder builder(coord);
    builder.requireDefinitions();
    Location expected;
    ASSERT_TRUE(
        Coord::MakeLocation_byWGS84LatLongH(inTheNetherlands, expected, nullptr, &coord, nullptr));
    coord.projection.proj4Projection = QStringLiteral("merc");
    Coord::s_invertParamsFunctionSwitch = true;
    Location made;
    const bool isMade = builder.make(Frame::Wgs84Geographic, inTheNetherlands, made);
    Coord::s_invertParamsFunctionSwitch = false;
    ASSERT_TRUE(isMade);
    EXPECT_TRUE(sameBits(made, expected));
}

TEST_F(LocationBuilderLife, LeavesTheCurrentDirectoryAlone)
{
    const QString before = QDir::currentPath();
    LocationBuilder builder(rdNew(true));
    Location location;
    for (const test::LocationOperation &operation : test::locationOperations) {
        ASSERT_TRUE(builder.make(operation.ofBuilder,
                                 operation.ofBuilder == Frame::Wgs84Geographic
                                     ? inTheNetherlands
                                     : test::frameOf(location, operation.from),
                                 location));
        EXPECT_EQ(QDir::currentPath(), before);
    }
}

TEST_F(LocationBuilderLife, TakesAPositionOfTheLocationThatItWrites)
{
    const std::pair<Frame, Pos Location::*> frames[] = {
        {Frame::Wgs84Geographic, &Location::wgs84LLH},
        {Frame::Wgs84Cartesian, &Location::wgs84XYZ},
        {Frame::LocalGeographic, &Location::localLLH},
        {Frame::LocalProjected, &Location::localNEH},
    };
    LocationBuilder builder(rdNew(true));
    Location start;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, Pos::fromLongLatH(5.8, 52.1, 90.0), start));
    for (const auto &from : frames) {
        for (const auto &part : frames) {
            Location expected;
            const bool isMade = builder.make(from.first, start.*part.second, expected);
            Location location = start;
            EXPECT_EQ(builder.make(from.first, location.*part.second, location), isMade);
            EXPECT_TRUE(location == (isMade ? expected : start));
        }
    }
}

TEST_F(LocationBuilderLife, SeparationsOfManyPointsAreThoseOfOne)
{
    const Coord coord = rdNew(true);
    LocationBuilder builder(coord);
    const std::vector<Pos> positions = {
        inTheNetherlands, Pos::fromLongLatH(nan, 0.0, 0.0), Pos::fromLongLatH(0.0, 90.0, 5.0),
        Pos::fromLongLatH(5.0, 95.0, 0.0), Pos::fromLongLatH(179.99, -10.0, 100.0)};
    const QString grid = test::egm96Path();
    struct Direction
    {
        LocationBuilder::Height given;
        bool (*single)(double, double, double, const QString &, double &, QString *);
    };
    for (const Direction &direction :
         {Direction{LocationBuilder::Height::Ellipsoidal, &ProjLib::Calc_geoid_diff},
          Direction{LocationBuilder::Height::AboveGeoid, &ProjLib::Calc_geoid_diff_inverse}}) {
        std::vector<double> diffs(positions.size(), 7.0);
        std::vector<LocationBuilder::Outcome> outcomes(positions.size());
        std::size_t expectedCount = 0;
        const std::size_t count = builder.geoidSeparations(
            direction.given, positions.data(), positions.size(), diffs.data(), outcomes.data());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            const stLongLatH &point = positions[i].getLongLatH();
            double expected = 7.0;
            QString reason;
            const bool isKnown = direction.single(point.latitude, point.longitude, point.height,
                                                  grid, expected, &reason);
            expectedCount += isKnown ? 1 : 0;
            EXPECT_EQ(outcomes[i].isMade, isKnown) << i;
            EXPECT_EQ(outcomes[i].reason, reason) << i;
            EXPECT_EQ(diffs[i], expected) << i;
        }
        EXPECT_EQ(count, expectedCount);
        EXPECT_GE(count, 3U);
        EXPECT_LT(count, positions.size());
    }
}

TEST_F(LocationBuilderLife, HasNoSeparationWithoutAModel)
{
    LocationBuilder builder(rdNew());
    double diff = 7.0;
    QString error;
    EXPECT_FALSE(builder.geoidSeparation(LocationBuilder::Height::Ellipsoidal, inTheNetherlands,
                                         diff, &error));
    EXPECT_EQ(error, QStringLiteral("Geoid model file is empty."));
    EXPECT_EQ(diff, 7.0);
}

} // namespace
} // namespace KelStd
