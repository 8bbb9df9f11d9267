#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/ProjSession.h>

#include <optional>
#include <vector>

namespace KelStd::catalogue {

/// An operation from a system's frame to WGS 84.
struct ShiftCandidate
{
    DatumShift row;
    std::optional<CarriedShift> carried; ///< nothing where the records cannot carry it
    QString frame;                       ///< what a grid leads to, such as "ETRS89"
};

/// The operations from a geodetic system to WGS 84, in the order of preference at a place: those
/// that contain it, then by accuracy, then by how much of `area` they cover. The candidates'
/// numbers count from 1.
std::vector<ShiftCandidate> shiftCandidates(ProjSession &session, const PJ *geodetic,
                                            const SystemArea &area,
                                            const std::optional<GroundPoint> &at);

/// Whether PROJ knows operations from a geodetic system to a global frame that depend on the time.
bool hasShiftsOfTime(ProjSession &session, const PJ *geodetic);

} // namespace KelStd::catalogue
