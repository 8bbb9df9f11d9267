#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/coord/Enumerations.h>

#include <QtCore/QByteArray>

#include <optional>
#include <vector>

/// Where the axes of a projected system point to.
namespace KelStd::catalogue {

/// The directions in which easting and northing count, as PROJ computes them: by the "axis" of its
/// projection where that has one (the south-orientated Transverse Mercator, Krovak), else by the
/// axes of the system. Axes along meridians, both to the north or both to the south about a pole,
/// have none of their own: easting and northing stay as the projection has them. Nothing where the
/// axes point elsewhere.
std::optional<EEllipsoidDirection> planeDirection(const QByteArray &projAxis,
                                                  const std::vector<Axis> &axes);

/// Why there is no direction, for people.
QString directionRefusal(const QByteArray &projAxis, const std::vector<Axis> &axes);

/// What PROJ's own operation to a projected system does to the signs of easting and northing behind
/// the projection: a step "axisswap", or nothing where it leaves them.
std::vector<ProjStep> signSteps(const ProjSession &session, const PJ *projected);

} // namespace KelStd::catalogue
