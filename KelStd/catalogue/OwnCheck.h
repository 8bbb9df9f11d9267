#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace KelStd::catalogue {

/// How far the conversions of a `Coord` are from PROJ's own by the same operation.
struct OwnCheck
{
    double difference = 0.0; ///< largest [m], of both directions
    int compared = 0;        ///< positions at which both have a result
    int missing = 0;         ///< positions at which PROJ has one and the `Coord` has none
    QString place;           ///< of the largest difference, for people
    bool isReady = false;    ///< false where PROJ makes nothing of a definition
};

/// Places spread over an area [deg], none on its edge.
std::vector<GroundPoint> placesIn(const SystemArea &area, int perSide);

/// PROJ's text of a projected system's projection, from longitude and latitude [rad] to easting and
/// northing [m] in the directions of the system's axes.
std::vector<ProjStep> projectionSteps(const ProjSession &session, const PJ *projected);

/// What a `Coord` is held to on the way back from the plane.
enum class WayBack
{
    OfProj, ///< PROJ's own
    OfWay ///< the place itself where that is nearer: PROJ's linear shifts do not lead back exactly
};

/// Takes each place through the conversions of `coord` and through PROJ's operations, from WGS 84
/// to the plane and, from there, back: each way by itself, since PROJ's own way there and back can
/// miss by millimetres.
OwnCheck ownCheck(const ProjSession &session, const Coord &coord,
                  const std::vector<ProjStep> &shift, const std::vector<ProjStep> &projection,
                  const std::vector<GroundPoint> &places, WayBack wayBack = WayBack::OfProj);

} // namespace KelStd::catalogue
