#include "ArrayRun.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KelStd::python {

namespace {

using Frame = LocationBuilder::Frame;
using Outcome = LocationBuilder::Outcome;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

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
    for (Pos *position :
         {&location.wgs84LLH, &location.wgs84XYZ, &location.localLLH, &location.localNEH})
        position->setXYZ(noNumber, noNumber, noNumber);
}

/// Of the parts of a fit that do not hold.
unsigned char bitsOf(unsigned parts)
{
    using calibration::SiteExtent;
    static_assert(SiteExtent::plan * status::outsideHull == status::outsideHull
                  && SiteExtent::heights * status::outsideHull == status::outsideHeightHull);
    return static_cast<unsigned char>(parts * status::outsideHull);
}

} // namespace

ArrayWorker::ArrayWorker(const UsedSystem &system)
    : builder(calibration::SiteBuilder::of(system.coord).value())
{
    builder.locations().requireOneToOne();
    if (system.origin.area)
        area.emplace(system.coord, *system.origin.area);
}

/// Copies a piece of the columns, and says whether all of its numbers are fit for positions.
/// Nothing that is not finite is below a limit.
bool ArrayRun::readPiece(std::size_t begin, std::size_t size, ArrayWorker &worker)
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

void ArrayRun::takePiece(std::size_t begin, std::size_t size, ArrayWorker &worker)
{
    const bool isFit = readPiece(begin, size, worker);
    // Nearly always all of a piece are made, and without a geoid model nothing is to be said of
    // them.
    if (isFit && isSimple && !wantsSeparations && !worker.expectsFailures
        && areAllMade(begin, size, worker))
        return;
    if (wantsSeparations)
        takeSeparations(begin, size, worker);
    else
        takeLocations(begin, size, worker);
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
bool ArrayRun::areAllMade(std::size_t begin, std::size_t size, ArrayWorker &worker)
{
    Location *const made = locations + begin;
    std::fill(made, made + size, Location());
    if (worker.builder.locations().make(frame, worker.positions.data(), size, made) != size)
        return false;
    markOutside(begin, size, worker);
    return true;
}

void ArrayRun::markOutside(std::size_t begin, std::size_t size, const ArrayWorker &worker)
{
    if (!worker.area)
        return;
    for (std::size_t at = begin; at < begin + size; ++at) {
        if (!worker.area->isInside(locations[at]))
            status[at] |= status::outsideArea;
    }
}

/// Keeps why there is no result, and that there is none.
void ArrayRun::fail(std::size_t at, const QString &reason)
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

void ArrayRun::takeLocations(std::size_t begin, std::size_t size, ArrayWorker &worker)
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
    const bool hasFittedHeights =
        !isFromSite && site != nullptr && worker.builder.site().hasSurface() && hasHeightsOfGeoid;
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
        if (site != nullptr)
            bits |= bitsOf(extent->outside(site[i].getENU().n, site[i].getENU().e));
    }
}

void ArrayRun::takeSeparations(std::size_t begin, std::size_t size, ArrayWorker &worker)
{
    double *const diffs = separations + begin;
    std::fill(diffs, diffs + size, noNumber);
    worker.builder.locations().geoidSeparations(LocationBuilder::Height::Ellipsoidal,
                                                worker.positions.data(), size, diffs,
                                                worker.outcomes.data());
    for (std::size_t i = 0; i < size; ++i)
        diffs[i] = -diffs[i]; // what is added to get a height above the geoid
}

} // namespace KelStd::python
