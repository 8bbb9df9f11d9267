#include "ArrayConversion.h"

#include "Host.h"
#include "ReasonTexts.h"
#include "ResultMemory.h"
#include "Text.h"

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/proj/GeoidModels.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <exception>
#include <limits>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace KelStd::python {

namespace py = pybind11;

namespace {

using Frame = LocationBuilder::Frame;
using Outcome = LocationBuilder::Outcome;

constexpr std::size_t pointsTogether = 256;    ///< whose locations stay near the processor
constexpr std::size_t pointsOfAThread = 10000; ///< fewer are not worth starting one
constexpr std::size_t columnsOfLocation = 12;
constexpr std::size_t columnsOfSite = 3;

static_assert(sizeof(Location) == columnsOfLocation * sizeof(double)
                  && sizeof(Pos) == columnsOfSite * sizeof(double),
              "arrays of locations and positions are arrays of their numbers");

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

/// The frame in which positions are; those at a site are in its plane.
Frame frameOf(ArrayFrame frame)
{
    return frame == ArrayFrame::Site ? Frame::LocalProjected : static_cast<Frame>(frame);
}

Column columnOf(const py::array_t<double> &array)
{
    return {reinterpret_cast<const char *>(array.data()), array.strides(0)};
}

/// Why a position is none, or null.
const QString *mistakeIn(const std::array<ReasonTexts::Component, 3> &components, double first,
                         double second, double third)
{
    const double values[] = {first, second, third};
    for (std::size_t i = 0; i < components.size(); ++i) {
        if (!std::isfinite(values[i]))
            return &components[i].notFinite;
        if (std::abs(values[i]) > components[i].limit)
            return &components[i].outOfRange;
    }
    return nullptr;
}

void markFailed(Location &location)
{
    constexpr double row[] = {noNumber, noNumber, noNumber};
    for (Pos *position :
         {&location.wgs84LLH, &location.wgs84XYZ, &location.localLLH, &location.localNEH})
        position->setXYZ(row[0], row[1], row[2]);
}

QString degrees(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

/// What one thread works with.
struct ArrayConversion::Worker
{
    explicit Worker(const UsedSystem &system)
        : builder(calibration::SiteBuilder::of(system.coord).value())
    {
        builder.locations().requireOneToOne();
        if (system.origin.area)
            area.emplace(system.coord, *system.origin.area);
    }

    calibration::SiteBuilder builder;
    std::optional<AreaCheck> area;
    std::vector<Pos> positions = std::vector<Pos>(pointsTogether);
    std::vector<Outcome> outcomes = std::vector<Outcome>(pointsTogether);
    bool expectsFailures = false; ///< some of the last piece failed
};

/// One call.
struct ArrayConversion::Run
{
    Frame frame = Frame::Wgs84Geographic;
    bool isFromSite = false;
    bool wantsSeparations = false;
    std::array<ReasonTexts::Component, 3> components;
    std::array<Column, 3> columns;
    std::size_t count = 0;
    Location *locations = nullptr;
    Pos *atSite = nullptr;
    double *separations = nullptr;
    unsigned char *status = nullptr;
    ReasonTexts reasons;
    std::atomic<std::size_t> next{0};
    std::atomic<bool> isStopped{false};

    void takePiece(std::size_t begin, std::size_t size, Worker &worker,
                   const ArrayConversion &conversion);
    bool readPiece(std::size_t begin, std::size_t size, Worker &worker);
    bool areAllMade(std::size_t begin, std::size_t size, Worker &worker);
    void markOutside(std::size_t begin, std::size_t size, const Worker &worker);
    void fail(std::size_t at, const QString &reason);
    void takeLocations(std::size_t begin, std::size_t size, Worker &worker,
                       const ArrayConversion &conversion);
    void takeSeparations(std::size_t begin, std::size_t size, Worker &worker);
};

/// Copies a piece of the columns, and says whether all of its numbers are fit for positions.
/// Nothing that is not finite is below a limit.
bool ArrayConversion::Run::readPiece(std::size_t begin, std::size_t size, Worker &worker)
{
    unsigned char any = 0;
    const std::array<Column, 3> read = columns;
    const double limits[] = {components[0].limit, components[1].limit, components[2].limit};
    const bool isNorthFirst = frame == Frame::LocalProjected;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t at = begin + i;
        const double first = read[0].at(at);
        const double second = read[1].at(at);
        const double third = read[2].at(at);
        if (isNorthFirst)
            worker.positions[i].setENU(second, first, third);
        else
            worker.positions[i].setXYZ(first, second, third);
        const bool isFit = std::abs(first) <= limits[0] && std::abs(second) <= limits[1]
                           && std::abs(third) <= limits[2];
        status[at] = isFit ? 0 : status::failed;
        any |= status[at];
    }
    return any == 0;
}

void ArrayConversion::Run::takePiece(std::size_t begin, std::size_t size, Worker &worker,
                                     const ArrayConversion &conversion)
{
    const bool isFit = readPiece(begin, size, worker);
    // Nearly always all of a piece are made, and without a geoid model nothing is to be said of
    // them.
    if (isFit && conversion.isSimple() && !wantsSeparations && !worker.expectsFailures
        && areAllMade(begin, size, worker))
        return;
    if (wantsSeparations)
        takeSeparations(begin, size, worker);
    else
        takeLocations(begin, size, worker, conversion);
    worker.expectsFailures = std::any_of(
        worker.outcomes.begin(), worker.outcomes.begin() + static_cast<std::ptrdiff_t>(size),
        [](const Outcome &outcome) { return !outcome.isMade; });
    for (std::size_t i = 0; i < size; ++i) {
        const Outcome &outcome = worker.outcomes[i];
        const std::size_t at = begin + i;
        if (!outcome.isMade || (status[at] & status::failed) != 0)
            fail(at, outcome.reason);
        else if (!outcome.reason.isEmpty())
            reasons.keep(at, outcome.reason);
    }
}

/// Makes a piece of a system without site and geoid model, where none of it fails.
bool ArrayConversion::Run::areAllMade(std::size_t begin, std::size_t size, Worker &worker)
{
    Location *const made = locations + begin;
    std::fill(made, made + size, Location());
    if (worker.builder.locations().make(frame, worker.positions.data(), size, made) != size)
        return false;
    markOutside(begin, size, worker);
    return true;
}

void ArrayConversion::Run::markOutside(std::size_t begin, std::size_t size, const Worker &worker)
{
    if (!worker.area)
        return;
    for (std::size_t at = begin; at < begin + size; ++at) {
        if (!worker.area->isInside(locations[at]))
            status[at] |= status::outsideArea;
    }
}

/// Keeps why there is no result, and that there is none.
void ArrayConversion::Run::fail(std::size_t at, const QString &reason)
{
    status[at] = status::failed;
    const QString *mistake =
        mistakeIn(components, columns[0].at(at), columns[1].at(at), columns[2].at(at));
    reasons.keep(at, mistake != nullptr ? *mistake
                     : reason.isEmpty()
                         ? QStringLiteral("the geoid model has no value for the point")
                         : reason);
    if (wantsSeparations)
        separations[at] = noNumber;
    else
        markFailed(locations[at]);
    if (atSite != nullptr)
        atSite[at].setENU(noNumber, noNumber, noNumber);
}

void ArrayConversion::Run::takeLocations(std::size_t begin, std::size_t size, Worker &worker,
                                         const ArrayConversion &conversion)
{
    Location *const made = locations + begin;
    Pos *const site = atSite != nullptr ? atSite + begin : nullptr;
    std::fill(made, made + size, Location());
    if (isFromSite) {
        std::copy_n(worker.positions.begin(), size, site);
        worker.builder.makeFromSite(worker.positions.data(), size, made, worker.outcomes.data());
    } else if (site != nullptr) {
        std::fill(site, site + size, Pos());
        worker.builder.make(frame, worker.positions.data(), size, made, site,
                            worker.outcomes.data());
    } else {
        worker.builder.locations().make(frame, worker.positions.data(), size, made,
                                        worker.outcomes.data());
    }
    const bool hasFittedHeights = !isFromSite && site != nullptr
                                  && worker.builder.site().hasSurface()
                                  && !conversion.m_system->coord.geoidModel.modelFileName.isEmpty();
    markOutside(begin, size, worker);
    for (std::size_t i = 0; i < size; ++i) {
        unsigned char &bits = status[begin + i];
        if (worker.outcomes[i].projectedHeight == LocationBuilder::Height::AboveGeoid)
            bits |= status::aboveGeoid;
        else if (hasFittedHeights) {
            // The surface was fitted to heights above the geoid.
            const stENU place = site[i].getENU();
            site[i].setENU(place.e, place.n, noNumber);
        }
        if (site != nullptr && conversion.m_hull.hasArea()
            && !conversion.m_hull.contains(site[i].getENU().n, site[i].getENU().e))
            bits |= status::outsideHull;
    }
}

void ArrayConversion::Run::takeSeparations(std::size_t begin, std::size_t size, Worker &worker)
{
    double *const diffs = separations + begin;
    std::fill(diffs, diffs + size, noNumber);
    worker.builder.locations().geoidSeparations(LocationBuilder::Height::Ellipsoidal,
                                                worker.positions.data(), size, diffs,
                                                worker.outcomes.data());
    for (std::size_t i = 0; i < size; ++i)
        diffs[i] = -diffs[i]; // what is added to get a height above the geoid
}

ArrayConversion::ArrayConversion(std::shared_ptr<const UsedSystem> system)
    : m_system(std::move(system)), m_hull(m_system->origin.control), m_process(::getpid())
{
    requireProj();
    requireUsable(*m_system);
    const Coord &coord = m_system->coord;
    m_hasSite = calibration::SiteTransform::of(coord)->hasSite();
    const QString model = coord.geoidModel.modelFileName;
    if (model.isEmpty())
        return;
    GeoidModelFailure failure;
    const auto path = GeoidModels::find(model, &failure);
    if (path && !failure)
        failure = GeoidModels::tryInProj(*path);
    if (path && !failure)
        m_geoidModel = model;
    else
        m_warnings += QStringLiteral("the geoid model \"%1\" cannot be used: %2. All heights are "
                                     "ellipsoidal.")
                          .arg(model, failure.text);
}

ArrayConversion::~ArrayConversion() = default;

std::unique_ptr<ArrayConversion::Worker> ArrayConversion::takeWorker()
{
    if (m_process != ::getpid()) {
        m_idle.clear(); // their open files are the parent's, too, and so is the place in them
        m_process = ::getpid();
    }
    if (m_idle.empty()) {
        std::unique_ptr<Worker> worker;
        raisingRefused(m_system->source, [&] { worker = std::make_unique<Worker>(*m_system); });
        return worker;
    }
    auto worker = std::move(m_idle.back());
    m_idle.pop_back();
    return worker;
}

void ArrayConversion::giveBack(std::vector<std::unique_ptr<Worker>> workers)
{
    for (auto &worker : workers)
        m_idle.push_back(std::move(worker));
}

void ArrayConversion::work(Run &run, int threads, std::size_t count)
{
    const std::size_t useful = std::max<std::size_t>(1, count / pointsOfAThread);
    const std::size_t used = std::min<std::size_t>(static_cast<std::size_t>(threads), useful);
    std::vector<std::unique_ptr<Worker>> workers;
    for (std::size_t i = 0; i < used; ++i)
        workers.push_back(takeWorker());

    std::exception_ptr raised;
    bool isInterrupted = false;
    {
        const py::gil_scoped_release unlocked;
        std::mutex raisedLock;
        const auto takePieces = [&](Worker &worker, auto afterPiece) {
            try {
                for (;;) {
                    const std::size_t begin = run.next.fetch_add(pointsTogether);
                    if (begin >= count || run.isStopped)
                        return;
                    run.takePiece(begin, std::min(pointsTogether, count - begin), worker, *this);
                    afterPiece();
                }
            } catch (...) {
                const std::lock_guard<std::mutex> lock(raisedLock);
                raised = std::current_exception();
                run.isStopped = true;
            }
        };
        std::vector<std::thread> others;
        for (std::size_t i = 1; i < used; ++i)
            others.emplace_back([&, i] { takePieces(*workers[i], [] {}); });
        // The interrupt key has to wait for the interpreter, which this thread is in.
        constexpr int piecesBetweenLooks = 1000;
        int pieces = 0;
        takePieces(*workers[0], [&] {
            if (++pieces % piecesBetweenLooks != 0)
                return;
            const py::gil_scoped_acquire locked;
            if (PyErr_CheckSignals() != 0) {
                isInterrupted = true;
                run.isStopped = true;
            }
        });
        for (std::thread &other : others)
            other.join();
    }
    giveBack(std::move(workers));
    if (isInterrupted)
        throw py::error_already_set();
    if (raised)
        std::rethrow_exception(raised);
}

py::dict ArrayConversion::convert(ArrayFrame frame, const py::array_t<double> &first,
                                  const py::array_t<double> &second,
                                  const py::array_t<double> &third, int threads)
{
    const auto count = static_cast<std::size_t>(first.shape(0));
    auto locations = newResult(count, columnsOfLocation);
    py::array_t<unsigned char> statuses(static_cast<py::ssize_t>(count));
    py::object site = py::none();
    Run run;
    if (m_hasSite) {
        auto array = newResult(count, columnsOfSite);
        run.atSite = reinterpret_cast<Pos *>(array.mutable_data());
        site = array;
    }
    run.frame = frameOf(frame);
    run.isFromSite = frame == ArrayFrame::Site;
    run.components = ReasonTexts::componentsOf(run.frame);
    run.columns = {columnOf(first), columnOf(second), columnOf(third)};
    run.count = count;
    run.locations = reinterpret_cast<Location *>(locations.mutable_data());
    run.status = statuses.mutable_data();
    work(run, threads, count);

    py::dict result;
    result["locations"] = locations;
    result["site"] = site;
    result["status"] = statuses;
    result["reason"] = run.reasons.numbers(count);
    result["reasons"] = run.reasons.texts();
    result["area"] = toPython(areaOfFirstOutside(run));
    return result;
}

QString ArrayConversion::areaOfFirstOutside(const Run &run) const
{
    const auto isOutside = [](unsigned char bits) { return (bits & status::outsideArea) != 0; };
    const unsigned char *const begin = run.status;
    const unsigned char *const end = begin + run.count;
    const unsigned char *const outside = std::find_if(begin, end, isOutside);
    if (outside == end)
        return {};
    const SystemOrigin &origin = m_system->origin;
    const auto at = static_cast<std::size_t>(outside - begin);
    QString text = QStringLiteral("longitudes %1 to %2, latitudes %3 to %4")
                       .arg(degrees(origin.area->west), degrees(origin.area->east),
                            degrees(origin.area->south), degrees(origin.area->north));
    if (!origin.areaName.isEmpty())
        text += QStringLiteral(" (%1)").arg(origin.areaName.left(100));
    if (run.isFromSite)
        return text;
    AreaCheck check(m_system->coord, *origin.area);
    const Pos given = positions::rowOf(run.frame).position(
        run.columns[0].at(at), run.columns[1].at(at), run.columns[2].at(at));
    const PositionMistake mistake = check.mistakeIn(run.frame, given);
    if (mistake != PositionMistake::None) {
        text += QStringLiteral("; the first of them would lie inside with %1")
                    .arg(describedMistake(mistake, run.frame));
    }
    return text;
}

py::dict ArrayConversion::separations(const py::array_t<double> &longitude,
                                      const py::array_t<double> &latitude,
                                      const py::array_t<double> &height, int threads)
{
    const auto count = static_cast<std::size_t>(longitude.shape(0));
    py::array_t<double> separations(static_cast<py::ssize_t>(count));
    py::array_t<unsigned char> statuses(static_cast<py::ssize_t>(count));
    Run run;
    run.wantsSeparations = true;
    run.components = ReasonTexts::componentsOf(run.frame);
    run.columns = {columnOf(longitude), columnOf(latitude), columnOf(height)};
    run.count = count;
    run.separations = separations.mutable_data();
    run.status = statuses.mutable_data();
    work(run, threads, count);

    py::dict result;
    result["separations"] = separations;
    result["status"] = statuses;
    result["reason"] = run.reasons.numbers(count);
    result["reasons"] = run.reasons.texts();
    return result;
}

} // namespace KelStd::python
