#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/proj/ConversionFailure.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::location {

/// The four PROJ definitions between which the positions of a system are converted.
struct SystemDefinitions
{
    QString wgs84Geographic; ///< longitude, latitude [deg], ellipsoidal height [m]
    QString wgs84Cartesian;  ///< X, Y, Z [m]
    /// Longitude, latitude, height on the local ellipsoid, with the datum shift.
    QString localGeographic;
    QString localProjected; ///< easting, northing, height [m], with the datum shift
};

/// The definitions that `Coord::MakeLocation_by...` use, by the display configuration as it is now.
/// PROJ need not be loaded. Nothing, and `BadSystem` in `failure` (when given), where one has more
/// than 511 bytes or cannot be written. Raises what `Coord::__MakeCoordStrings` raises.
KELSTD_EXPORT std::optional<SystemDefinitions> definitionsOf(const Coord &coord,
                                                             ConversionFailure *failure = nullptr);

/// Whether the loaded PROJ makes transformations of the definitions; otherwise `RefusedDefinition`
/// with the definition in `failure` (when given). So it is where the axes do not point east and
/// north, and PROJ has no operation for what it reads the definition as. It may still refuse every
/// position, which is known only by trying one. On the thread of the conversions (`ProjLib::ConvertPosList`).
KELSTD_EXPORT bool acceptedByProj(const SystemDefinitions &definitions,
                                  ConversionFailure *failure = nullptr);

} // namespace KelStd::location
