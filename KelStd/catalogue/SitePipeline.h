#pragma once

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/DefinedSystem.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::catalogue {

/// All that a system does to a position, as one pipeline of PROJ: from WGS84 longitude, latitude
/// [deg] and ellipsoidal height [m] to easting, northing and height at its site: northing and
/// easting in `unit` where there is one and the definition counts in metres, heights in metres.
/// Backwards it has the same approximation of heights above the geoid as
/// `Coord::MakeLocation_byLocalNEH`.
///
/// WGS84 stands there by its numbers: beside its name PROJ 9.1 takes a system on GRS 80 for one on
/// the same ellipsoid and leaves out both. Files of grids are named by their paths where they are
/// the program's own.
///
/// Nothing, with the `reason`, where PROJ has no step for a part of the system: a curved surface of
/// heights, a geoid model without a file. Nor where the steps are not known to give what the
/// conversions give.
std::optional<QByteArray> sitePipeline(const ProjSession &session, const Coord &coord,
                                       const calibration::SiteTransform &site,
                                       const PlaneUnit &unit, QString &reason);

} // namespace KelStd::catalogue
