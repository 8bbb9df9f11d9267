#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/ProjSession.h>

#include <map>
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

/// What PROJ says of the operations of a geodetic system, kept: hundreds of systems share one.
class ShiftMemory
{
public:
    /// The operations of a system of the database, whatever their areas, in PROJ's order. They are
    /// asked for once, so that a grid which is added later is not seen.
    const std::vector<ShiftCandidate> &operationsOf(ProjSession &session, const PJ *geodetic);

private:
    std::map<QString, std::vector<ShiftCandidate>> m_known;
    std::vector<ShiftCandidate> m_unnamed; ///< of the last system without a code
    int m_session = 0;                     ///< PROJ's, whose answers these are
};

/// The operations from a geodetic system to WGS 84, in the order of preference at a place: those
/// that contain it, then by accuracy, then by how much of `area` they cover. The candidates'
/// numbers count from 1.
std::vector<ShiftCandidate> shiftCandidates(ProjSession &session, ShiftMemory &memory,
                                            const PJ *geodetic, const SystemArea &area,
                                            const std::optional<GroundPoint> &at);

/// Whether PROJ knows operations from a geodetic system to a global frame that depend on the time.
bool hasShiftsOfTime(ProjSession &session, const PJ *geodetic);

} // namespace KelStd::catalogue
