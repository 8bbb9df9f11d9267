#pragma once

#include <KelStd/coord/Location.h>

/// How a position given in one frame becomes a location: the stages, in their order, whoever
/// carries them out.
///
/// Geographic and projected frames always meet through the cartesian one. Going from WGS84
/// geographic to local geographic directly is not the same: the local definition is two-dimensional
/// to PROJ, and the height would pass unshifted.
///
/// `Stages` has six conversions between neighbouring frames, `bool cartesianToLocal(const Pos
/// &from, Pos &to)` and so on; `bool toGeoid(const Pos &wgs84, double &diff)`, what to add to the
/// WGS84 ellipsoidal height to get the one above the geoid [m]; and `toEllipsoid`, the same for the
/// opposite way. A conversion's failure is the location's. One of the geoid is not: there is no
/// model, or it has nothing for the point.
///
/// It also has three checks, which are true where there are none: `bool isPosition(const Pos
/// &wgs84)` of a geographic position; and of the two frames that the projection lies between,
/// whether it leads back from the one to the other, `bool leadsBackToLocal(const Pos &local, const
/// Pos &plane)` and `leadsBackToPlane(plane, local)`.
namespace KelStd::steps {

/// Makes the projected height one above the geoid. Where the geoid is not known it stays the local
/// ellipsoidal height.
template <typename Stages>
void referToGeoid(Stages &stages, Location &location)
{
    double diff = 0.0;
    if (stages.toGeoid(location.wgs84LLH, diff))
        location.localNEH.setENU_U(location.wgs84LLH.getLongLatH().height + diff);
}

template <typename Stages>
bool fromWgs84Cartesian(Stages &stages, const Pos &pos, Location &result)
{
    result.wgs84XYZ = pos;
    if (!stages.cartesianToGeographic(pos, result.wgs84LLH) || !stages.isPosition(result.wgs84LLH)
        || !stages.cartesianToLocal(pos, result.localLLH)
        || !stages.localToProjected(result.localLLH, result.localNEH)
        || !stages.leadsBackToLocal(result.localLLH, result.localNEH))
        return false;
    referToGeoid(stages, result);
    return true;
}

template <typename Stages>
bool fromWgs84Geographic(Stages &stages, const Pos &pos, Location &result)
{
    result.wgs84LLH = pos;
    if (!stages.isPosition(pos) || !stages.geographicToCartesian(pos, result.wgs84XYZ)
        || !stages.cartesianToLocal(result.wgs84XYZ, result.localLLH)
        || !stages.localToProjected(result.localLLH, result.localNEH)
        || !stages.leadsBackToLocal(result.localLLH, result.localNEH))
        return false;
    referToGeoid(stages, result);
    return true;
}

template <typename Stages>
bool fromLocalGeographic(Stages &stages, const Pos &pos, Location &result)
{
    result.localLLH = pos;
    if (!stages.localToCartesian(pos, result.wgs84XYZ)
        || !stages.cartesianToGeographic(result.wgs84XYZ, result.wgs84LLH)
        || !stages.isPosition(result.wgs84LLH) || !stages.localToProjected(pos, result.localNEH)
        || !stages.leadsBackToLocal(pos, result.localNEH))
        return false;
    referToGeoid(stages, result);
    return true;
}

template <typename Stages>
bool fromLocalProjected(Stages &stages, const Pos &pos, Location &result)
{
    result.localNEH = pos;
    if (!stages.projectedToLocal(pos, result.localLLH)
        || !stages.localToCartesian(result.localLLH, result.wgs84XYZ)
        || !stages.cartesianToGeographic(result.wgs84XYZ, result.wgs84LLH)
        || !stages.isPosition(result.wgs84LLH) || !stages.leadsBackToPlane(pos, result.localLLH))
        return false;

    // So far the given height was taken as ellipsoidal. That moves the point by some millimetres
    // at most, along which the geoid does not change: its separation there is the right one.
    double diff = 0.0;
    if (!stages.toEllipsoid(result.wgs84LLH, diff))
        return true;
    result.wgs84LLH.setLLH_H(pos.getENU().u + diff);
    Pos projected; // converted to see that it can be; the one that was given stays
    return stages.geographicToCartesian(result.wgs84LLH, result.wgs84XYZ)
           && stages.cartesianToLocal(result.wgs84XYZ, result.localLLH)
           && stages.localToProjected(result.localLLH, projected);
}

} // namespace KelStd::steps
