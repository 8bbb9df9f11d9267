#pragma once

#include <KelStd/calibration/SiteTransform.h>

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace KelStd::catalogue {

/// The PROJJSON of the system that a site's plane transformation derives from a projected one,
/// bound to WGS 84 or not: `crs` with a derived projected system in place of the projected one.
///
/// The transformation stands there as EPSG's method 9624 (affine parametric): PROJ 9.1 reads the
/// similarity's method 9621, but computes nothing by it.
///
/// \param crs of a system with two axes, whose order is east, north
QJsonObject derivedSystem(QJsonObject crs, const QString &name,
                          const calibration::PlaneSimilarity &plane);

} // namespace KelStd::catalogue
