#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/proj/ProjLib.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

using namespace KelStd;
using bench::bareProj;
using bench::benchmarkSystem;
using bench::Definitions;

constexpr int listSize = 100'000;

PJ_COORD bareStage(const char *from, const char *to, const PJ_COORD &in)
{
    PJ *transformation = bareProj().create(nullptr, from, to, nullptr);
    const PJ_COORD out = bareProj().trans(transformation, PJ_FWD, in);
    bareProj().destroy(transformation);
    return out;
}

/// Random positions about the system's central meridian.
const QList<Pos> &positions()
{
    static const QList<Pos> list = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> longitude(0.0, 6.0);
        std::uniform_real_distribution<double> latitude(40.0, 60.0);
        std::uniform_real_distribution<double> height(0.0, 1000.0);
        QList<Pos> made;
        made.reserve(listSize);
        for (int i = 0; i < listSize; ++i)
            made << Pos::fromLongLatH(longitude(random), latitude(random), height(random));
        return made;
    }();
    return list;
}

void oneLocation(benchmark::State &state)
{
    const Pos start = positions().first();
    Location location;
    for (auto _ : state) {
        if (!Coord::MakeLocation_byWGS84LatLongH(start, location, nullptr, &benchmarkSystem()))
            state.SkipWithError("the position cannot be converted");
        benchmark::DoNotOptimize(location);
    }
}

void oneLocationBare(benchmark::State &state)
{
    const Definitions d(benchmarkSystem());
    const stLongLatH &start = positions().first().getLongLatH();
    for (auto _ : state) {
        const PJ_COORD geographic{{start.longitude, start.latitude, start.height, 0.0}};
        const PJ_COORD xyz = bareStage(d.wgs84Geographic, d.wgs84Cartesian, geographic);
        const PJ_COORD local = bareStage(d.wgs84Cartesian, d.localGeographic, xyz);
        PJ_COORD plane = bareStage(d.localGeographic, d.localProjected, local);
        benchmark::DoNotOptimize(plane);
    }
}

/// A stage of the chain: cheap arithmetic shows what a list costs besides.
struct Stage
{
    const char *from;
    const char *to;
};

Stage stageOf(const Definitions &d, const benchmark::State &state)
{
    return state.range(0) == 0 ? Stage{d.wgs84Geographic, d.wgs84Cartesian}
                               : Stage{d.localGeographic, d.localProjected};
}

void list(benchmark::State &state)
{
    const Definitions d(benchmarkSystem());
    const Stage stage = stageOf(d, state);
    const QString from = QString::fromUtf8(stage.from);
    const QString to = QString::fromUtf8(stage.to);
    for (auto _ : state) {
        state.PauseTiming();
        QList<Pos> converted = positions();
        converted.detach();
        state.ResumeTiming();
        if (!ProjLib::ConvertPosList(from, to, converted, ProjLib::WGS84LatLongH_to_WGS84XYZ))
            state.SkipWithError("the list cannot be converted");
        benchmark::DoNotOptimize(converted);
        state.PauseTiming();
        converted.clear();
        state.ResumeTiming();
    }
}

void listBare(benchmark::State &state)
{
    const Definitions d(benchmarkSystem());
    const Stage stage = stageOf(d, state);
    for (auto _ : state) {
        state.PauseTiming();
        QList<Pos> converted = positions();
        converted.detach();
        state.ResumeTiming();
        PJ *transformation = bareProj().create(nullptr, stage.from, stage.to, nullptr);
        const auto trans = bareProj().trans;
        for (Pos &pos : converted) {
            const stXYZ &in = pos.getXYZ();
            const PJ_COORD out = trans(transformation, PJ_FWD, PJ_COORD{{in.x, in.y, in.z, 0.0}});
            pos.setXYZ(out.v[0], out.v[1], out.v[2]);
        }
        bareProj().destroy(transformation);
        benchmark::DoNotOptimize(converted);
        state.PauseTiming();
        converted.clear();
        state.ResumeTiming();
    }
}

BENCHMARK(oneLocation)->Unit(benchmark::kMicrosecond);
BENCHMARK(oneLocationBare)->Unit(benchmark::kMicrosecond);
BENCHMARK(list)->ArgName("projected")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(listBare)->ArgName("projected")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

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
