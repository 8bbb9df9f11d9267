// Many locations of one system, and many separations of its geoid, beside bare loops of proj_trans
// over the same transformations of the same loaded library file.

#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace KelStd;
using bench::bareProj;
using bench::benchmarkSystem;

constexpr std::size_t maxPoints = 10'000'000;

/// Random positions about the system's central meridian.
const std::vector<Pos> &positions()
{
    static const std::vector<Pos> made = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> longitude(0.0, 6.0);
        std::uniform_real_distribution<double> latitude(40.0, 60.0);
        std::uniform_real_distribution<double> height(0.0, 1000.0);
        std::vector<Pos> list(maxPoints);
        for (Pos &pos : list)
            pos = Pos::fromLongLatH(longitude(random), latitude(random), height(random));
        return list;
    }();
    return made;
}

std::vector<Location> &locations()
{
    static std::vector<Location> made(maxPoints);
    return made;
}

/// The array call on `threads` threads, each with a builder and an equal share of the points.
void buildLocations(benchmark::State &state)
{
    const auto points = static_cast<std::size_t>(state.range(0));
    const auto threads = static_cast<std::size_t>(state.range(1));
    std::vector<LocationBuilder> builders;
    for (std::size_t i = 0; i < threads; ++i) {
        builders.emplace_back(benchmarkSystem());
        builders.back().make(LocationBuilder::Frame::Wgs84Geographic, positions().data(), 1,
                             locations().data());
    }
    for (auto _ : state) {
        std::vector<std::thread> running;
        std::vector<std::size_t> made(threads, 0);
        const auto work = [&](std::size_t i) {
            const std::size_t first = points * i / threads;
            const std::size_t last = points * (i + 1) / threads;
            made[i] = builders[i].make(LocationBuilder::Frame::Wgs84Geographic,
                                       positions().data() + first, last - first,
                                       locations().data() + first);
        };
        for (std::size_t i = 1; i < threads; ++i)
            running.emplace_back(work, i);
        work(0);
        for (std::thread &thread : running)
            thread.join();
        std::size_t all = 0;
        for (const std::size_t count : made)
            all += count;
        if (all != points)
            state.SkipWithError("some positions cannot be converted");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The array call where the projection must be one-to-one.
void buildLocationsOneToOne(benchmark::State &state)
{
    const auto points = static_cast<std::size_t>(state.range(0));
    LocationBuilder builder(benchmarkSystem());
    builder.requireOneToOne();
    for (auto _ : state) {
        if (builder.make(LocationBuilder::Frame::Wgs84Geographic, positions().data(), points,
                         locations().data())
            != points)
            state.SkipWithError("some positions cannot be converted");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The array call from the plane, with and without.
void buildFromPlane(benchmark::State &state)
{
    const auto points = static_cast<std::size_t>(state.range(0));
    LocationBuilder builder(benchmarkSystem());
    builder.make(LocationBuilder::Frame::Wgs84Geographic, positions().data(), points,
                 locations().data());
    std::vector<Pos> starts;
    for (std::size_t i = 0; i < points; ++i)
        starts.push_back(locations()[i].localNEH);
    builder.requireOneToOne(state.range(1) != 0);
    for (auto _ : state) {
        if (builder.make(LocationBuilder::Frame::LocalProjected, starts.data(), points,
                         locations().data())
            != points)
            state.SkipWithError("some positions cannot be converted");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// A transformation, destroyed with this.
class BareStage
{
public:
    BareStage(const char *from, const char *to)
        : m_object(bareProj().create(nullptr, from, to, nullptr))
    {}
    ~BareStage() { bareProj().destroy(m_object); }
    BareStage(const BareStage &) = delete;
    BareStage &operator=(const BareStage &) = delete;

    PJ *object() const { return m_object; }

private:
    PJ *m_object;
};

void buildLocationsBare(benchmark::State &state)
{
    const auto points = static_cast<std::size_t>(state.range(0));
    const bench::Definitions d(benchmarkSystem());
    const BareStage toCartesian(d.wgs84Geographic, d.wgs84Cartesian);
    const BareStage toLocal(d.wgs84Cartesian, d.localGeographic);
    const BareStage toPlane(d.localGeographic, d.localProjected);
    static std::vector<std::array<PJ_COORD, 4>> results; // for all repetitions, as `locations`
    results.resize(std::max(results.size(), points));
    const auto trans = bareProj().trans;
    const Pos *const starts = positions().data();
    for (auto _ : state) {
        for (std::size_t i = 0; i < points; ++i) {
            const stLongLatH &start = starts[i].getLongLatH();
            std::array<PJ_COORD, 4> &frames = results[i];
            frames[0] = PJ_COORD{{start.longitude, start.latitude, start.height, 0.0}};
            frames[1] = trans(toCartesian.object(), PJ_FWD, frames[0]);
            frames[2] = trans(toLocal.object(), PJ_FWD, frames[1]);
            frames[3] = trans(toPlane.object(), PJ_FWD, frames[2]);
        }
        benchmark::DoNotOptimize(results.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr std::size_t separationPoints = 100'000;

QString gridFile()
{
    return AppConfig::getInstance().homeDir().absoluteFilePath(
        QStringLiteral("geoid_model_list/egm96_15.gtx"));
}

std::vector<double> &separations()
{
    static std::vector<double> diffs(separationPoints);
    return diffs;
}

/// The array call on one model. PROJ has read the grid's rows before.
void buildSeparations(benchmark::State &state)
{
    Coord coord = benchmarkSystem();
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    LocationBuilder builder(coord);
    const auto given = state.range(0) != 0 ? LocationBuilder::Height::AboveGeoid
                                           : LocationBuilder::Height::Ellipsoidal;
    const auto all = [&] {
        return builder.geoidSeparations(given, positions().data(), separationPoints,
                                        separations().data());
    };
    if (all() != separationPoints)
        state.SkipWithError("there is no separation");
    for (auto _ : state) {
        all();
        benchmark::DoNotOptimize(separations().data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(separationPoints));
}

void buildSeparationsBare(benchmark::State &state)
{
    const std::string definition = "+proj=vgridshift +grids=\"" + gridFile().toStdString() + '"'
                                   + (state.range(0) != 0 ? " +inv" : "");
    PJ *const shift = bareProj().createOperation(nullptr, definition.c_str());
    const auto trans = bareProj().trans;
    const auto toRadians = bareProj().toRadians;
    const Pos *const starts = positions().data();
    double *const diffs = separations().data();
    const auto all = [&] {
        for (std::size_t i = 0; i < separationPoints; ++i) {
            const stLongLatH &point = starts[i].getLongLatH();
            const PJ_COORD in{{toRadians(point.longitude), toRadians(point.latitude), point.height,
                               std::numeric_limits<double>::infinity()}};
            diffs[i] = trans(shift, PJ_FWD, in).v[2] - point.height;
        }
    };
    all();
    for (auto _ : state) {
        all();
        benchmark::DoNotOptimize(diffs);
    }
    bareProj().destroy(shift);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(separationPoints));
}

BENCHMARK(buildSeparations)->ArgName("inverse")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(buildSeparationsBare)->ArgName("inverse")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(buildLocations)
    ->ArgNames({"points", "threads"})
    ->Args({1'000, 1})
    ->Args({1'000'000, 1})
    ->Args({1'000'000, 2})
    ->Args({10'000'000, 1})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildLocationsOneToOne)
    ->ArgName("points")
    ->Arg(1'000'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildFromPlane)
    ->ArgNames({"points", "checked"})
    ->Args({1'000'000, 0})
    ->Args({1'000'000, 1})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildLocationsBare)
    ->ArgName("points")
    ->Arg(1'000'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const KelStd::bench::Environment environment(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
