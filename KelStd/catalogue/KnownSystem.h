#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

/// Systems that are found to be those of the database, by numbers.
namespace KelStd::catalogue {

/// The database's projected system of a code, where `coord` is that system; else null.
proj::ProjObject verified(const ProjSession &session, const Coord &coord, const QString &code);

/// Whether a system is on the database's WGS 84.
bool isWgs84(const ProjSession &session, const PJ *projected);

/// The database's operation about a point of rotation that the seven parameters of a system were
/// fitted to; null where they are published ones, or of another origin.
proj::ProjObject fittedOperation(ProjSession &session, ShiftMemory &memory, const Coord &coord,
                                 const PJ *known);

} // namespace KelStd::catalogue
