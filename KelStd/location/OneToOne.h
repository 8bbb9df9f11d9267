#pragma once

#include <KelStd/coord/PlaneLimit.h>
#include <KelStd/coord/Pos.h>

#include <cmath>
#include <functional>

/// Where a projection leads back to the position that it came from.
///
/// Far outside the area that it is made for a projection folds over itself, or its series run away:
/// both directions still give numbers, but of different places. How far the way back misses is
/// measured on the ground, whatever the scale and the unit of the plane.
namespace KelStd::one_to_one {

/// What the way back may miss by [m]. PROJ's own inverses are approximate to some tenths of a
/// millimetre (Lambert's equal-area projection 0.3 mm, the New Zealand Map Grid 0.1 mm).
inline constexpr double tolerance = 0.001;

/// Of a degree of latitude [m], to a hundredth: enough for a tolerance.
inline constexpr double metresPerDegree = 111'320.0;

/// How deep [m] below the ellipsoid there are positions: the deepest of the sea is at 11 km, the
/// deepest borehole ends at 12 km. Towards the middle of the Earth longitude and latitude lose
/// their meaning, and PROJ gives some all the same.
inline constexpr double maxDepth = 20'000.0;

/// How high [m] above the ellipsoid there are positions: geostationary satellites are at 35,786 km,
/// those of satellite navigation at most a little higher. Cartesian coordinates in centimetres or
/// millimetres lie beyond.
inline constexpr double maxHeight = 50'000'000.0;

inline bool isPosition(const stLongLatH &wgs84)
{
    return wgs84.height >= -maxDepth && wgs84.height <= maxHeight;
}

/// Whether a plane has places there, in its units (metres, unless a parameter says otherwise). A
/// pole that a projection has at infinity gets a number, too, and the way back from it leads there.
inline bool isInPlane(const Pos &plane)
{
    return std::abs(plane.getENU().e) <= maxPlane && std::abs(plane.getENU().n) <= maxPlane;
}

/// Whether the way back [deg] from a plane leads to the given place. Longitudes a whole turn apart
/// are the same, and at a pole all of them are.
bool isSamePlaceRoundTheEarth(const stLongLatH &given, const stLongLatH &back);

inline bool isSamePlace(const stLongLatH &given, const stLongLatH &back)
{
    // Nearly every one is: this needs no cosine.
    constexpr double negligible = 0.5 * tolerance / metresPerDegree;
    return (std::abs(given.longitude - back.longitude) <= negligible
            && std::abs(given.latitude - back.latitude) <= negligible)
           || isSamePlaceRoundTheEarth(given, back);
}

/// The forward direction of a projection; false where it has no result.
using Project = std::function<bool(const Pos &local, Pos &plane)>;

/// Whether the way back to the plane, `back` from `local`, leads to the point that was given there.
bool isSamePointOfPlane(const Pos &given, const Pos &back, const Pos &local,
                        const Project &project);

} // namespace KelStd::one_to_one
