// Many locations of one system, and many separations of its geoid, beside bare loops of proj_trans
// over the same transformations of the same loaded library file.

#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <utility>
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

/// The array call with coordinates at a site, which is turned, scaled and inclined.
void buildLocationsOfSite(benchmark::State &state)
{
    const auto points = static_cast<std::size_t>(state.range(0));
    Coord system = benchmarkSystem();
    stPlaneTransform &plane = system.planeTransform;
    plane.fuction = PlaneTransformFunction_Four;
    plane.north_translate.value = -5'000'000.0;
    plane.east_translate.value = -400'000.0;
    plane.rotate_angle.value = 7200.0;
    plane.ratio.value = 1.0004;
    stElevationFitting &fitting = system.elevationFitting;
    fitting.function = ElevationFittingFunction_Plane;
    fitting.a.value = 0.5;
    fitting.b.value = 1e-5;
    fitting.c.value = -1e-5;
    auto builder = calibration::SiteBuilder::of(system);
    static std::vector<Pos> atSite(maxPoints); // for all repetitions, as `locations`
    builder->make(LocationBuilder::Frame::Wgs84Geographic, positions().data(), 1,
                  locations().data(), atSite.data());
    for (auto _ : state) {
        if (builder->make(LocationBuilder::Frame::Wgs84Geographic, positions().data(), points,
                          locations().data(), atSite.data())
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

// --- Systems with other shifts and projections, from both ends of the chain ----------------------

constexpr std::size_t pointsOfSystem = 1'000'000;

/// Krassowsky's ellipsoid, seven parameters and a transverse Mercator projection.
Coord krassowskySystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.ellipsoid.proj4EllpsName = QStringLiteral("krass");
    stEllipsoinTransform &shift = coord.ellipsoidTransform;
    shift.fuction = EllipsoinTransformFunction_Seven;
    shift.x_translate = Param(ValueType_Double, Unit_Meter, 100.0);
    shift.y_translate = Param(ValueType_Double, Unit_Meter, -20.0);
    shift.z_translate = Param(ValueType_Double, Unit_Meter, 5.0);
    shift.x_rotate = Param(ValueType_Double, Unit_Second, 1.1);
    shift.y_rotate = Param(ValueType_Double, Unit_Second, 2.2);
    shift.z_rotate = Param(ValueType_Double, Unit_Second, 3.3);
    shift.ratio_ppm = Param(ValueType_Double, Unit_None, -1.5);
    return coord;
}

/// A system and where it is used [deg].
struct UsedSystem
{
    Coord coord;
    double west, east, south, north;
};

const UsedSystem &usedSystem(std::int64_t number)
{
    static const std::array<UsedSystem, 3> systems = {
        UsedSystem{benchmarkSystem(), 0.0, 6.0, 40.0, 60.0},
        UsedSystem{krassowskySystem(), -3.0, 3.0, 40.0, 60.0},
        UsedSystem{bench::publishedSystem("rd_new.xml"), 3.4, 7.2, 50.75, 53.6}};
    return systems.at(static_cast<std::size_t>(number));
}

/// Locations of random positions up to 3,000 m high.
std::vector<Location> locationsOf(const UsedSystem &system)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> longitude(system.west, system.east);
    std::uniform_real_distribution<double> latitude(system.south, system.north);
    std::uniform_real_distribution<double> height(0.0, 3000.0);
    LocationBuilder builder(system.coord);
    std::vector<Location> made(pointsOfSystem);
    for (Location &location : made) {
        const Pos start = Pos::fromLongLatH(longitude(random), latitude(random), height(random));
        builder.make(LocationBuilder::Frame::Wgs84Geographic, start, location);
    }
    return made;
}

/// Made once for all repetitions.
const std::vector<Pos> &startsOf(std::int64_t system, bool areProjected)
{
    static std::map<std::pair<std::int64_t, bool>, std::vector<Pos>> made;
    std::vector<Pos> &starts = made[{system, areProjected}];
    if (starts.empty()) {
        for (const Location &location : locationsOf(usedSystem(system)))
            starts.push_back(areProjected ? location.localNEH : location.wgs84LLH);
    }
    return starts;
}

void buildOfSystem(benchmark::State &state)
{
    const UsedSystem &system = usedSystem(state.range(0));
    const bool areProjected = state.range(1) != 0;
    const std::vector<Pos> &starts = startsOf(state.range(0), areProjected);
    const auto frame = areProjected ? LocationBuilder::Frame::LocalProjected
                                    : LocationBuilder::Frame::Wgs84Geographic;
    LocationBuilder builder(system.coord);
    if (builder.way() != LocationBuilder::Way::Short)
        state.SkipWithError("the system does not take the short way");
    for (auto _ : state) {
        if (builder.make(frame, starts.data(), starts.size(), locations().data()) != starts.size())
            state.SkipWithError("some positions cannot be converted");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(starts.size()));
}

/// The three transformations of the definitions.
void buildOfSystemBare(benchmark::State &state)
{
    const UsedSystem &system = usedSystem(state.range(0));
    const bool areProjected = state.range(1) != 0;
    const std::vector<Pos> &starts = startsOf(state.range(0), areProjected);
    const bench::Definitions d(system.coord);
    const char *const forth[] = {d.wgs84Geographic, d.wgs84Cartesian, d.localGeographic,
                                 d.localProjected};
    const char *const back[] = {d.localProjected, d.localGeographic, d.wgs84Cartesian,
                                d.wgs84Geographic};
    const auto &frames = areProjected ? back : forth;
    const BareStage first(frames[0], frames[1]);
    const BareStage second(frames[1], frames[2]);
    const BareStage third(frames[2], frames[3]);
    static std::vector<std::array<PJ_COORD, 4>> results(pointsOfSystem);
    const auto trans = bareProj().trans;
    for (auto _ : state) {
        for (std::size_t i = 0; i < starts.size(); ++i) {
            const stXYZ &start = starts[i].getXYZ();
            std::array<PJ_COORD, 4> &result = results[i];
            result[0] = PJ_COORD{{start.x, start.y, start.z, 0.0}};
            result[1] = trans(first.object(), PJ_FWD, result[0]);
            result[2] = trans(second.object(), PJ_FWD, result[1]);
            result[3] = trans(third.object(), PJ_FWD, result[2]);
        }
        benchmark::DoNotOptimize(results.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(starts.size()));
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
    PJ *const shift = bareProj().createOperation(bareProj().context, definition.c_str());
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

BENCHMARK(buildOfSystem)
    ->ArgNames({"system", "projected"})
    ->ArgsProduct({{0, 1, 2}, {0, 1}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildOfSystemBare)
    ->ArgNames({"system", "projected"})
    ->ArgsProduct({{0, 1, 2}, {0, 1}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
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
BENCHMARK(buildLocationsOfSite)
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
