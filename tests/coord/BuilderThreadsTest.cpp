#include "support/ProjTest.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/LocationBuilder.h>
#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <thread>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;

constexpr std::size_t threads = 4;
constexpr std::size_t points = 2000;

std::vector<Pos> positions()
{
    std::mt19937 random(99);
    std::uniform_real_distribution<double> longitude(3.5, 7.0);
    std::uniform_real_distribution<double> latitude(51.0, 53.5);
    std::vector<Pos> made;
    for (std::size_t i = 0; i < points; ++i) {
        const double height = i % 50 == 0 ? std::nan("") : 10.0; // some fail
        made.push_back(Pos::fromLongLatH(longitude(random), latitude(random), height));
    }
    return made;
}

/// What a builder makes of the positions, and of what it made of them.
struct Result
{
    std::vector<Location> there = std::vector<Location>(points);
    std::vector<Location> back = std::vector<Location>(points);
    std::size_t made = 0;
};

Result build(const Coord &coord, const std::vector<Pos> &positions)
{
    Result result;
    LocationBuilder builder(coord);
    result.made =
        builder.make(Frame::Wgs84Geographic, positions.data(), points, result.there.data());
    std::vector<Pos> projected;
    for (const Location &location : result.there)
        projected.push_back(location.localNEH);
    builder.make(Frame::LocalProjected, projected.data(), points, result.back.data());
    return result;
}

bool sameBits(const std::vector<Location> &a, const std::vector<Location> &b)
{
    return std::memcmp(a.data(), b.data(), a.size() * sizeof(Location)) == 0;
}

using BuilderThreads = test::ProjTest;

TEST_F(BuilderThreads, EachWithItsBuilderMakeWhatOneMakes)
{
    Coord coord;
    ASSERT_TRUE(
        Coord_IO::xml_read(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"), coord));
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    const std::vector<Pos> all = positions();

    std::vector<Result> results(threads);
    std::vector<std::thread> running;
    for (Result &result : results)
        running.emplace_back([&] { result = build(coord, all); });
    for (std::thread &thread : running)
        thread.join();

    const Result expected = build(coord, all);
    EXPECT_EQ(expected.made, points - points / 50);
    for (const Result &result : results) {
        EXPECT_EQ(result.made, expected.made);
        EXPECT_TRUE(sameBits(result.there, expected.there));
        EXPECT_TRUE(sameBits(result.back, expected.back));
    }
}

} // namespace
} // namespace KelStd
