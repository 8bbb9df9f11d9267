#pragma once

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/DefinedSystem.h>

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace KelStd::catalogue {

/// The PROJJSON of the system that a site's plane transformation derives from a projected one,
/// bound to WGS 84 or not: `crs` with a derived projected system in place of the projected one.
///
/// The transformation stands there as EPSG's method 9624 (affine parametric): PROJ 9.1 reads the
/// similarity's method 9621, but computes nothing by it. It leads from metres to the east and
/// north, whatever the plane of the site counts in: WKT 2 has no axes of the system that another
/// one is derived from, and PROJ takes these.
///
/// \param crs the plain system (`DefinitionParts::isPlain`), with its axes in the order east, north
/// \param coordinates PROJJSON of the coordinate system of the site, easting first
/// \param directions of the records' plane
/// \param metres that one number of the site's measures
QJsonObject derivedSystem(QJsonObject crs, const QJsonObject &coordinates, const QString &name,
                          const calibration::PlaneSimilarity &plane,
                          const PlaneDirections &directions, double metres);

} // namespace KelStd::catalogue
