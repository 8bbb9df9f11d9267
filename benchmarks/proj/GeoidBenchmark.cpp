#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace KelStd;
using bench::bareProj;

struct Point
{
    double latitude;
    double longitude;
    double height;
};

/// Points all over the earth, each of which meets other bytes of the grid file.
const std::vector<Point> &points()
{
    static const std::vector<Point> list = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> longitude(-180.0, 180.0);
        std::uniform_real_distribution<double> latitude(-90.0, 90.0);
        std::uniform_real_distribution<double> height(0.0, 1000.0);
        std::vector<Point> made(1000);
        for (Point &point : made)
            point = {latitude(random), longitude(random), height(random)};
        return made;
    }();
    return list;
}

QString gridFile()
{
    return AppConfig::getInstance().homeDir().absoluteFilePath(
        QStringLiteral("geoid_model_list/egm96_15.gtx"));
}

void separation(benchmark::State &state)
{
    const QString grid = gridFile();
    const bool inverse = state.range(0) != 0;
    std::size_t next = 0;
    for (auto _ : state) {
        const Point &point = points()[next++ % points().size()];
        double diff = 0.0;
        const bool found = inverse ? ProjLib::Calc_geoid_diff_inverse(
                               point.latitude, point.longitude, point.height, grid, diff)
                                   : ProjLib::Calc_geoid_diff(point.latitude, point.longitude,
                                                              point.height, grid, diff);
        if (!found)
            state.SkipWithError("there is no separation");
        benchmark::DoNotOptimize(diff);
    }
}

void separationBare(benchmark::State &state)
{
    std::array<char, 520> definition{};
    std::snprintf(definition.data(), definition.size(), "+proj=vgridshift +grids=\"%s\"%s",
                  gridFile().toUtf8().constData(), state.range(0) != 0 ? " +inv" : "");
    std::size_t next = 0;
    for (auto _ : state) {
        const Point &point = points()[next++ % points().size()];
        PJ *shift = bareProj().createOperation(bareProj().context, definition.data());
        const PJ_COORD in{{bareProj().toRadians(point.longitude),
                           bareProj().toRadians(point.latitude), point.height,
                           std::numeric_limits<double>::infinity()}};
        double diff = bareProj().trans(shift, PJ_FWD, in).v[2] - point.height;
        bareProj().destroy(shift);
        benchmark::DoNotOptimize(diff);
    }
}

BENCHMARK(separation)->ArgName("inverse")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(separationBare)->ArgName("inverse")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

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
