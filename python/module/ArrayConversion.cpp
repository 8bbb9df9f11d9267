#include "ArrayConversion.h"

#include "ArrayRun.h"
#include "Host.h"
#include "ResultMemory.h"
#include "Text.h"

#include <KelStd/positions/Columns.h>
#include <KelStd/proj/GeoidModels.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>

#include <unistd.h>

namespace KelStd::python {

namespace py = pybind11;

namespace {

using Frame = LocationBuilder::Frame;

constexpr std::size_t pointsOfAThread = 10000; ///< fewer are not worth starting one
constexpr std::size_t columnsOfLocation = 12;
constexpr std::size_t columnsOfSite = 3;

static_assert(sizeof(Location) == columnsOfLocation * sizeof(double)
                  && sizeof(Pos) == columnsOfSite * sizeof(double),
              "arrays of locations and positions are arrays of their numbers");

/// The frame in which positions are; those at a site are in its plane.
Frame frameOf(ArrayFrame frame)
{
    return frame == ArrayFrame::Site ? Frame::LocalProjected : static_cast<Frame>(frame);
}

Column columnOf(const py::array_t<double> &array)
{
    return {reinterpret_cast<const char *>(array.data()), array.strides(0)};
}

QString degrees(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

ArrayConversion::ArrayConversion(std::shared_ptr<const UsedSystem> system)
    : m_system(std::move(system)), m_process(::getpid())
{
    requireProj();
    requireUsable(*m_system);
    const Coord &coord = m_system->coord;
    const auto site = calibration::SiteTransform::of(coord);
    m_hasSite = site->hasSite();
    m_extent = calibration::SiteExtent(*site, m_system->origin.control);
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

std::unique_ptr<ArrayWorker> ArrayConversion::takeWorker()
{
    if (m_process != ::getpid()) {
        m_idle.clear(); // their open files are the parent's, too, and so is the place in them
        m_process = ::getpid();
    }
    if (m_idle.empty()) {
        std::unique_ptr<ArrayWorker> worker;
        raisingRefused(m_system->source,
                       [&] { worker = std::make_unique<ArrayWorker>(*m_system); });
        return worker;
    }
    auto worker = std::move(m_idle.back());
    m_idle.pop_back();
    return worker;
}

void ArrayConversion::giveBack(std::vector<std::unique_ptr<ArrayWorker>> workers)
{
    for (auto &worker : workers)
        m_idle.push_back(std::move(worker));
}

void ArrayConversion::work(ArrayRun &run, int threads, std::size_t count)
{
    const std::size_t useful = std::max<std::size_t>(1, count / pointsOfAThread);
    const std::size_t used = std::min<std::size_t>(static_cast<std::size_t>(threads), useful);
    std::vector<std::unique_ptr<ArrayWorker>> workers;
    for (std::size_t i = 0; i < used; ++i)
        workers.push_back(takeWorker());

    std::exception_ptr raised;
    bool isInterrupted = false;
    {
        const py::gil_scoped_release unlocked;
        std::mutex raisedLock;
        const auto takePieces = [&](ArrayWorker &worker, auto afterPiece) {
            try {
                for (;;) {
                    const std::size_t begin = run.next.fetch_add(pointsTogether);
                    if (begin >= count || run.isStopped)
                        return;
                    run.takePiece(begin, std::min(pointsTogether, count - begin), worker);
                    afterPiece();
                }
            } catch (...) {
                const std::lock_guard<std::mutex> lock(raisedLock);
                raised = std::current_exception();
                run.isStopped = true;
            }
        };
        std::vector<std::thread> others;
        try {
            for (std::size_t i = 1; i < used; ++i)
                others.emplace_back([&, i] { takePieces(*workers[i], [] {}); });
        } catch (const std::system_error &) {
            // The system has no more threads: those that there are do it.
        }
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
    ArrayRun run;
    if (m_hasSite) {
        auto array = newResult(count, columnsOfSite);
        run.atSite = reinterpret_cast<Pos *>(array.mutable_data());
        site = array;
    }
    run.frame = frameOf(frame);
    run.isFromSite = frame == ArrayFrame::Site;
    run.isSimple = !m_hasSite && m_geoidModel.isEmpty();
    run.hasHeightsOfGeoid = !m_system->coord.geoidModel.modelFileName.isEmpty();
    run.extent = &m_extent;
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

QString ArrayConversion::areaOfFirstOutside(const ArrayRun &run) const
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
    ArrayRun run;
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
