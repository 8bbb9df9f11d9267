#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>

#include <QtCore/QString>

namespace KelStd::catalogue {

/// Why the catalogue has no answer.
enum class CatalogueFailureKind
{
    None,          ///< no failure
    NotLoaded,     ///< PROJ is not loaded
    NoDatabase,    ///< the loaded PROJ has no database, or lacks a function that asks it
    NotUnderstood, ///< the source is no system: no such code or name, or not what it seems to be
    NotProjected,  ///< a geographic, geocentric, vertical or other system without a projection
    NoProjection,  ///< PROJ can neither write nor compute its projection
    NoShift,       ///< PROJ knows no operation to WGS 84, or only a ballpark one
    GridOnly,      ///< every operation to WGS 84 needs a grid that is not there
    TimeSpecific,  ///< every operation to WGS 84 depends on the time
    OwnCheck,      ///< the result misses PROJ's own
    NoSuchShift,   ///< the shift that was asked for is none of the system's
    NotExportable  ///< the system cannot be written in that form without changing it
};

/// The text says what to do about it.
using CatalogueFailure = Failure<CatalogueFailureKind>;

/// The word of a refusal for programs to read, such as "no-shift" or "own-check". A shift that the
/// system does not have is "not-understood". Empty of what is no refusal of a system: `None`,
/// `NotLoaded`, `NoDatabase`.
KELSTD_EXPORT QString refusalWord(CatalogueFailureKind kind);

} // namespace KelStd::catalogue
