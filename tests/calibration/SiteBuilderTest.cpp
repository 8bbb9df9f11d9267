// Coordinates at the site beside locations, and locations of coordinates at the site.

#include "calibration/SiteRecords.h"
#include "location/PointsOfSystem.h"
#include "location/PublishedFigures.h"
#include "support/Components.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace KelStd {
namespace {

using calibration::SiteBuilder;
using calibration::SiteFailure;
using calibration::SiteFailureKind;
using Frame = LocationBuilder::Frame;

constexpr double pi = 3.14159265358979323846;
constexpr std::size_t pointCount = 200;

Coord systemOf(const std::string &document)
{
    Coord coord;
    QString error;
    EXPECT_TRUE(
        Coord_IO::xml_read(test::systemPath(QString::fromStdString(document)), coord, &error))
        << error;
    return coord;
}

std::vector<Pos> pointsOf(const std::string &document, const Coord &coord)
{
    test::PointsOfSystem points(QString::fromStdString(document), coord, 1);
    std::vector<Pos> list;
    for (std::size_t i = 0; i < pointCount; ++i)
        list.push_back(points.next());
    return list;
}

/// A turn by 30 degrees about the place, into coordinates about (1000, 2000), and a plane.
void makeSite(Coord &coord, const stENU &place)
{
    const double cosine = std::sqrt(3.0) / 2.0;
    const double sine = 0.5;
    const double east = place.e * cosine + place.n * sine;
    const double north = -place.e * sine + place.n * cosine;
    coord.planeTransform =
        test::similarity(1000.0 - 0.9999 * east, 2000.0 - 0.9999 * north, 108000.0, 0.9999);
    coord.elevationFitting = test::inclinedPlane(-3.5, 1e-5, 2e-5);
}

class SiteOfSystem : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

INSTANTIATE_TEST_SUITE_P(Published, SiteOfSystem, testing::ValuesIn(test::publishedSystems()),
                         [](const auto &system) {
                             return test::testName(QString::fromStdString(system.param));
                         });

TEST_P(SiteOfSystem, CoordinatesStandBesideTheLocationsOfABuilder)
{
    Coord coord = systemOf(GetParam());
    const std::vector<Pos> points = pointsOf(GetParam(), coord);
    LocationBuilder plain(coord);
    std::vector<Location> expected(points.size());
    const std::size_t made =
        plain.make(Frame::Wgs84Geographic, points.data(), points.size(), expected.data());
    ASSERT_EQ(made, points.size());
    const stENU origin = expected.front().localNEH.getENU();
    makeSite(coord, origin);

    auto builder = SiteBuilder::of(coord);
    ASSERT_TRUE(builder.has_value());
    std::vector<Location> locations(points.size());
    std::vector<Pos> atSite(points.size());
    std::vector<SiteBuilder::Outcome> outcomes(points.size());
    ASSERT_EQ(builder->make(Frame::Wgs84Geographic, points.data(), points.size(), locations.data(),
                            atSite.data(), outcomes.data()),
              points.size());
    EXPECT_NEAR(atSite.front().getENU().e, 1000.0, 1e-8);
    EXPECT_NEAR(atSite.front().getENU().n, 2000.0, 1e-8);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(locations[i], expected[i]);
        EXPECT_TRUE(outcomes[i].isMade);
        // Distances and directions from the first point: turned clockwise, as the axes turn
        // counter-clockwise.
        const stENU plane = expected[i].localNEH.getENU();
        const stENU site = atSite[i].getENU();
        const double distance = std::hypot(plane.e - origin.e, plane.n - origin.n);
        const double direction = std::atan2(plane.n - origin.n, plane.e - origin.e);
        const double turned = direction - pi / 6.0;
        EXPECT_NEAR(site.e, 1000.0 + 0.9999 * distance * std::cos(turned), 1e-6);
        EXPECT_NEAR(site.n, 2000.0 + 0.9999 * distance * std::sin(turned), 1e-6);
        EXPECT_NEAR(site.u, plane.u - 3.5 + 1e-5 * site.n + 2e-5 * site.e, 1e-9);
    }
}

TEST_P(SiteOfSystem, WayBackGivesTheSamePosition)
{
    Coord coord = systemOf(GetParam());
    const std::vector<Pos> points = pointsOf(GetParam(), coord);
    LocationBuilder plain(coord);
    Location first;
    ASSERT_TRUE(plain.make(Frame::Wgs84Geographic, points.front(), first));
    makeSite(coord, first.localNEH.getENU());
    auto builder = SiteBuilder::of(coord);
    ASSERT_TRUE(builder.has_value());
    for (const Pos &point : points) {
        Location there;
        Location back;
        Location expected;
        Pos atSite;
        SiteBuilder::Outcome outcome;
        ASSERT_TRUE(builder->make(Frame::Wgs84Geographic, point, there, atSite, outcome));
        ASSERT_TRUE(builder->makeFromSite(atSite, back, outcome)) << outcome.reason;
        ASSERT_TRUE(plain.make(Frame::LocalProjected, there.localNEH, expected));
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(test::componentsOf(back.localNEH)[i], test::componentsOf(there.localNEH)[i],
                        2e-8);
            EXPECT_NEAR(test::componentsOf(back.wgs84XYZ)[i],
                        test::componentsOf(expected.wgs84XYZ)[i], 1e-7);
        }
    }
}

class SiteBuilderOfRdNew : public test::ProjTest
{
protected:
    Coord coord = systemOf("rd_new.xml");
    Pos amersfoort = Pos::fromENU(155000.0, 463000.0, 10.0);
};

TEST_F(SiteBuilderOfRdNew, SystemWithoutSiteHasItsProjectedCoordinates)
{
    auto builder = SiteBuilder::of(coord);
    ASSERT_TRUE(builder.has_value());
    EXPECT_FALSE(builder->site().hasSite());
    Location location;
    Pos atSite;
    SiteBuilder::Outcome outcome;
    ASSERT_TRUE(builder->make(Frame::LocalProjected, amersfoort, location, atSite, outcome));
    EXPECT_EQ(atSite, amersfoort);
}

TEST_F(SiteBuilderOfRdNew, RecordsThatCannotBeAppliedAreRefused)
{
    coord.planeTransform.fuction = PlaneTransformFunction_Four; // with the ratio of a fresh record
    SiteFailure failure;
    EXPECT_FALSE(SiteBuilder::of(coord, &failure).has_value());
    EXPECT_EQ(failure.kind, SiteFailureKind::BadRatio);
    EXPECT_FALSE(SiteBuilder::of(coord).has_value());
}

TEST_F(SiteBuilderOfRdNew, GeoidComesBeforeTheFittingOfHeights)
{
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    Location plain;
    LocationBuilder::Outcome outcome;
    ASSERT_TRUE(LocationBuilder(coord).make(
        Frame::Wgs84Geographic, Pos::fromLongLatH(5.387, 52.155, 53.0), plain, outcome));
    ASSERT_EQ(outcome.projectedHeight, LocationBuilder::Height::AboveGeoid);
    coord.elevationFitting = test::fixedHeight(0.25);
    auto builder = SiteBuilder::of(coord);
    Location location;
    Pos atSite;
    ASSERT_TRUE(builder->make(Frame::Wgs84Geographic, Pos::fromLongLatH(5.387, 52.155, 53.0),
                              location, atSite, outcome));
    EXPECT_EQ(outcome.projectedHeight, LocationBuilder::Height::AboveGeoid);
    EXPECT_EQ(location, plain);
    EXPECT_NEAR(atSite.getENU().u, plain.get_NEH_H() + 0.25, 1e-9);
    ASSERT_TRUE(builder->makeFromSite(atSite, location, outcome));
    EXPECT_NEAR(location.get_WGS84_LLH_Height(), 53.0, 1e-6);
}

// The way back would be off by the separation of the geoid, some forty metres here.
TEST_F(SiteBuilderOfRdNew, NothingComesBackFromHeightsAboveAGeoidThatIsNotThere)
{
    coord.geoidModel.modelFileName = QStringLiteral("lost.gtx");
    const Location before = [] {
        Location location;
        location.wgs84LLH = Pos::fromLongLatH(1.0, 2.0, 3.0);
        return location;
    }();
    constexpr std::size_t count = 100;
    const std::vector<Pos> atSite(count, amersfoort);
    const auto made = [&](bool hasOutcomes, std::vector<Location> &locations,
                          std::vector<SiteBuilder::Outcome> &outcomes) {
        locations.assign(count, before);
        outcomes.assign(count, {});
        auto builder = SiteBuilder::of(coord);
        return builder->makeFromSite(atSite.data(), count, locations.data(),
                                     hasOutcomes ? outcomes.data() : nullptr);
    };
    std::vector<Location> locations;
    std::vector<SiteBuilder::Outcome> outcomes;
    coord.elevationFitting = test::fixedHeight(0.25);
    for (const bool hasOutcomes : {true, false}) {
        EXPECT_EQ(made(hasOutcomes, locations, outcomes), 0U);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(locations[i], before) << i;
            ASSERT_EQ(outcomes[i].failure, hasOutcomes ? ConversionFailureKind::NoGeoidModel
                                                       : ConversionFailureKind::None);
            ASSERT_EQ(outcomes[i].reason.contains(QLatin1String("lost.gtx")), hasOutcomes);
        }
    }
    Location one = before;
    SiteBuilder::Outcome outcome;
    EXPECT_FALSE(SiteBuilder::of(coord)->makeFromSite(amersfoort, one, outcome));
    EXPECT_FALSE(outcome.isMade);
    EXPECT_EQ(outcome.failure, ConversionFailureKind::NoGeoidModel);
    EXPECT_EQ(one, before);

    // What was not fitted is the projected height.
    coord.elevationFitting = stElevationFitting();
    coord.planeTransform = test::similarity(0.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(made(true, locations, outcomes), count);
    EXPECT_EQ(outcomes[0].projectedHeight, LocationBuilder::Height::Ellipsoidal);

    // With the model each of them is there.
    coord.elevationFitting = test::fixedHeight(0.25);
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    for (const bool hasOutcomes : {true, false}) {
        EXPECT_EQ(made(hasOutcomes, locations, outcomes), count);
        for (const Location &location : locations)
            ASSERT_NEAR(location.get_NEH_H(), 9.75, 1e-9);
    }
}

TEST_F(SiteBuilderOfRdNew, FailureLeavesEverythingAndCostsTheOthersNothing)
{
    coord.planeTransform = test::similarity(0.0, 0.0, 0.0, 1e305);
    coord.elevationFitting = test::fixedHeight(1.0);
    auto builder = SiteBuilder::of(coord);
    ASSERT_TRUE(builder.has_value());
    builder->locations().requireOneToOne();
    // The second has projected coordinates, but none at the site.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Pos given[] = {Pos::fromENU(1e8, 1e8, 0.0), amersfoort, Pos::fromENU(0.0, nan, 0.0)};
    const Location before = [] {
        Location location;
        location.wgs84LLH = Pos::fromLongLatH(1.0, 2.0, 3.0);
        return location;
    }();
    std::vector<Location> locations(3, before);
    std::vector<Pos> atSite(3, Pos::fromENU(7.0, 8.0, 9.0));
    std::vector<SiteBuilder::Outcome> outcomes(3);
    EXPECT_EQ(builder->make(Frame::LocalProjected, given, 3, locations.data(), atSite.data(),
                            outcomes.data()),
              0U);
    EXPECT_EQ(builder->make(Frame::LocalProjected, given, 3, locations.data(), atSite.data()), 0U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(locations[i], before);
        EXPECT_EQ(atSite[i], Pos::fromENU(7.0, 8.0, 9.0));
        EXPECT_FALSE(outcomes[i].isMade);
        EXPECT_FALSE(outcomes[i].reason.isEmpty());
    }
    EXPECT_EQ(outcomes[1].failure, ConversionFailureKind::NoResult);
    EXPECT_TRUE(outcomes[1].reason.contains(QLatin1String("site"))) << outcomes[1].reason;

    const Pos back[] = {Pos::fromENU(nan, 0.0, 0.0), Pos::fromENU(155000.0, 463000.0, 1e300)};
    EXPECT_EQ(builder->makeFromSite(back, 2, locations.data(), outcomes.data()), 0U);
    EXPECT_EQ(builder->makeFromSite(back, 1, locations.data()), 0U);
    EXPECT_EQ(locations[0], before);
    EXPECT_EQ(outcomes[0].failure, ConversionFailureKind::NoResult);
}

// Positions are made some tens at a time, where all of them can be.
TEST_F(SiteBuilderOfRdNew, FailuresAnywhereInALongArrayAreTheirsAlone)
{
    makeSite(coord, amersfoort.getENU());
    auto builder = SiteBuilder::of(coord);
    constexpr std::size_t count = 1000;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto isBad = [](std::size_t i) { return i % 97 == 5; };
    for (const bool hasBad : {false, true}) {
        std::vector<Pos> given;
        for (std::size_t i = 0; i < count; ++i) {
            given.push_back(
                Pos::fromENU(hasBad && isBad(i) ? nan : 1e5 + double(i), 4e5, double(i)));
        }
        const std::size_t good = hasBad ? count - 11 : count;
        std::vector<Location> locations(count);
        std::vector<Pos> atSite = given;
        std::vector<SiteBuilder::Outcome> outcomes(count);
        // In their place, with outcomes and without.
        ASSERT_EQ(builder->make(Frame::LocalProjected, atSite.data(), count, locations.data(),
                                atSite.data(), outcomes.data()),
                  good);
        std::vector<Pos> again(count);
        ASSERT_EQ(builder->make(Frame::LocalProjected, given.data(), count, locations.data(),
                                again.data()),
                  good);
        std::vector<Location> back(count);
        ASSERT_EQ(builder->makeFromSite(atSite.data(), count, back.data(), outcomes.data()), good);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isMade = !hasBad || !isBad(i);
            ASSERT_EQ(outcomes[i].isMade, isMade) << i;
            if (!isMade) {
                EXPECT_EQ(again[i], Pos());
                EXPECT_EQ(back[i], Location());
                continue;
            }
            EXPECT_EQ(again[i], atSite[i]);
            EXPECT_EQ(locations[i].localNEH, given[i]);
            EXPECT_TRUE(back[i].localNEH.equals(given[i]));
        }
    }
}

TEST_F(SiteBuilderOfRdNew, ArraysAndSinglePositionsAgree)
{
    makeSite(coord, amersfoort.getENU());
    auto builder = SiteBuilder::of(coord);
    const Pos given[] = {amersfoort, Pos::fromENU(0.0, 400000.0, -3.0)};
    Location locations[2];
    Pos atSite[2];
    ASSERT_EQ(builder->make(Frame::LocalProjected, given, 2, locations, atSite), 2U);
    Location back[2];
    ASSERT_EQ(builder->makeFromSite(atSite, 2, back), 2U);
    for (int i = 0; i < 2; ++i) {
        Location one;
        Pos oneAtSite;
        SiteBuilder::Outcome outcome;
        ASSERT_TRUE(builder->make(Frame::LocalProjected, given[i], one, oneAtSite, outcome));
        EXPECT_EQ(one, locations[i]);
        EXPECT_EQ(oneAtSite, atSite[i]);
        ASSERT_TRUE(builder->makeFromSite(atSite[i], one, outcome));
        EXPECT_EQ(one, back[i]);
    }
}

} // namespace
} // namespace KelStd
