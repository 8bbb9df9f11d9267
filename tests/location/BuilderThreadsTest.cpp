#include "support/GridFiles.h"
#include "support/ProjTest.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;
using Height = LocationBuilder::Height;
using Outcomes = std::vector<LocationBuilder::Outcome>;

constexpr std::size_t threads = 4;
constexpr std::size_t points = 2000;
constexpr std::size_t strangeEvery = 50;

struct FrameRow
{
    Frame frame;
    Pos Location::*positions;
};

constexpr FrameRow frameRows[] = {{Frame::Wgs84Geographic, &Location::wgs84LLH},
                                  {Frame::Wgs84Cartesian, &Location::wgs84XYZ},
                                  {Frame::LocalGeographic, &Location::localLLH},
                                  {Frame::LocalProjected, &Location::localNEH}};
constexpr Height heights[] = {Height::Ellipsoidal, Height::AboveGeoid};

/// WGS84 positions in the Netherlands, some of which fail.
std::vector<Pos> positions()
{
    std::mt19937 random(99);
    std::uniform_real_distribution<double> longitude(3.5, 7.0);
    std::uniform_real_distribution<double> latitude(51.0, 53.5);
    std::vector<Pos> made;
    for (std::size_t i = 0; i < points; ++i) {
        const double height = i % strangeEvery == 0 ? std::nan("") : 10.0;
        made.push_back(Pos::fromLongLatH(longitude(random), latitude(random), height));
    }
    return made;
}

struct Locations
{
    std::vector<Location> made = std::vector<Location>(points);
    Outcomes outcomes = Outcomes(points);
};

struct Separations
{
    std::vector<double> diffs = std::vector<double>(points);
    Outcomes outcomes = Outcomes(points);
};

/// What a builder makes of the positions: there, and back from each frame.
struct Result
{
    Locations there;
    std::array<Locations, std::size(frameRows)> back;
    std::array<Separations, std::size(heights)> separations;
};

Result build(const Coord &coord, const std::vector<Pos> &positions)
{
    Result result;
    LocationBuilder builder(coord);
    builder.make(Frame::Wgs84Geographic, positions.data(), points, result.there.made.data(),
                 result.there.outcomes.data());
    for (std::size_t i = 0; i < std::size(frameRows); ++i) {
        std::vector<Pos> starts;
        for (const Location &location : result.there.made)
            starts.push_back(location.*frameRows[i].positions);
        starts[i] = positions.front(); // fails in every frame
        builder.make(frameRows[i].frame, starts.data(), points, result.back[i].made.data(),
                     result.back[i].outcomes.data());
    }
    for (std::size_t i = 0; i < std::size(heights); ++i)
        builder.geoidSeparations(heights[i], positions.data(), points,
                                 result.separations[i].diffs.data(),
                                 result.separations[i].outcomes.data());
    return result;
}

template <typename Value>
bool sameBits(const std::vector<Value> &a, const std::vector<Value> &b)
{
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(Value)) == 0;
}

void expectSame(const Outcomes &a, const Outcomes &b)
{
    EXPECT_TRUE(
        std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto &x, const auto &y) {
            return x.isMade == y.isMade && x.reason == y.reason;
        }));
}

void expectSame(const Locations &a, const Locations &b)
{
    EXPECT_TRUE(sameBits(a.made, b.made));
    expectSame(a.outcomes, b.outcomes);
}

std::ptrdiff_t failures(const Outcomes &outcomes)
{
    return std::count_if(outcomes.begin(), outcomes.end(), [](const auto &outcome) {
        return !outcome.isMade && !outcome.reason.isEmpty();
    });
}

using BuilderThreads = test::ProjTest;

TEST_F(BuilderThreads, EachWithItsBuilderMakeWhatOneMakes)
{
    test::deliverEgm96();
    Coord coord;
    ASSERT_TRUE(
        Coord_IO::xml_read(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"), coord));
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    const std::vector<Pos> all = positions();

    std::vector<Result> results(threads);
    std::atomic<std::size_t> waiting{threads};
    std::vector<std::thread> running;
    for (Result &result : results) {
        running.emplace_back([&] {
            --waiting;
            while (waiting > 0) // so that all create their transformations at once
                std::this_thread::yield();
            result = build(coord, all);
        });
    }
    for (std::thread &thread : running)
        thread.join();

    const Result expected = build(coord, all);
    constexpr std::ptrdiff_t strange = points / strangeEvery;
    EXPECT_EQ(failures(expected.there.outcomes), strange);
    for (const Locations &locations : expected.back)
        EXPECT_GE(failures(locations.outcomes), 1);
    for (const Separations &separations : expected.separations)
        EXPECT_EQ(failures(separations.outcomes), strange);

    for (const Result &result : results) {
        expectSame(result.there, expected.there);
        for (std::size_t i = 0; i < std::size(frameRows); ++i)
            expectSame(result.back[i], expected.back[i]);
        for (std::size_t i = 0; i < std::size(heights); ++i) {
            EXPECT_TRUE(sameBits(result.separations[i].diffs, expected.separations[i].diffs));
            expectSame(result.separations[i].outcomes, expected.separations[i].outcomes);
        }
    }
}

/// The operations of `Coord` belong on one thread, which need not be one of the builders'.
TEST_F(BuilderThreads, AreCreatedWhileAnotherThreadConvertsOneByOne)
{
    Coord coord;
    ASSERT_TRUE(
        Coord_IO::xml_read(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"), coord));
    const Pos start = Pos::fromLongLatH(5.81, 52.18, 90.0);
    Location expected;
    ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(start, expected, nullptr, &coord));

    constexpr int rounds = 30;
    std::atomic<int> right{0};
    std::vector<std::thread> running;
    for (std::size_t i = 1; i < threads; ++i) {
        running.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                LocationBuilder builder(coord);
                builder.requireDefinitions();
                Location made;
                right += builder.make(Frame::Wgs84Geographic, start, made) && made == expected;
            }
        });
    }
    for (int round = 0; round < rounds; ++round) {
        Location made;
        right +=
            Coord::MakeLocation_byWGS84LatLongH(start, made, nullptr, &coord) && made == expected;
    }
    for (std::thread &thread : running)
        thread.join();
    EXPECT_EQ(right, rounds * static_cast<int>(threads));
}

} // namespace
} // namespace KelStd
