// Many locations of one system, beside a bare loop of proj_trans over the same three
// transformations of the same loaded library file.

#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/coord/LocationBuilder.h>

#include <benchmark/benchmark.h>

#include <array>
#include <random>
#include <thread>
#include <vector>

namespace {

using namespace KelStd;
using bench::bareProj;
using bench::benchmarkSystem;

constexpr std::size_t mostPoints = 10'000'000;

/// Random positions about the system's central meridian.
const std::vector<Pos> &positions()
{
    static const std::vector<Pos> made = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> longitude(0.0, 6.0);
        std::uniform_real_distribution<double> latitude(40.0, 60.0);
        std::uniform_real_distribution<double> height(0.0, 1000.0);
        std::vector<Pos> list(mostPoints);
        for (Pos &pos : list)
            pos = Pos::fromLongLatH(longitude(random), latitude(random), height(random));
        return list;
    }();
    return made;
}

std::vector<Location> &locations()
{
    static std::vector<Location> made(mostPoints);
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
    static std::vector<std::array<PJ_COORD, 4>> results(mostPoints);
    const auto trans = bareProj().trans;
    for (auto _ : state) {
        for (std::size_t i = 0; i < points; ++i) {
            const stLongLatH &start = positions()[i].getLongLatH();
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

BENCHMARK(buildLocations)
    ->ArgNames({"points", "threads"})
    ->Args({1'000, 1})
    ->Args({1'000'000, 1})
    ->Args({1'000'000, 2})
    ->Args({10'000'000, 1})
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
