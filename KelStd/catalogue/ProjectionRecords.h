#pragma once

#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>

#include <optional>

namespace KelStd::catalogue {

/// The ellipsoid of a system with its axis, its flattening and, where PROJ has one, its name.
std::optional<Ellipsoid> ellipsoidOf(const ProjSession &session, const PJ *crs);

/// The prime meridian [deg] of a geodetic system.
double primeMeridianOf(const ProjSession &session, const PJ *geodetic);

/// What a projected system is to a `Coord`, but for its datum shift.
struct ProjectionRecords
{
    Ellipsoid ellipsoid;
    Projection projection;
    QString axisUnit;
    double metresPerUnit = 1.0;
};

/// The records of a projected system, whose longitudes `turn` [deg] is added to. Nothing, with the
/// reason in `failure` (when given), where PROJ cannot write the projection.
std::optional<ProjectionRecords> projectionRecords(const ProjSession &session, const PJ *projected,
                                                   double turn, CatalogueFailure *failure);

} // namespace KelStd::catalogue
