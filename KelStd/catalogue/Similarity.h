#pragma once

#include <array>
#include <utility>
#include <vector>

/// Datum shifts between earth-centred coordinates, as the conversions of a `Coord` carry them out.
namespace KelStd::catalogue {

using Vector = std::array<double, 3>;

/// A seven-parameter shift from the local frame to WGS 84 in the position-vector convention, with
/// the full rotation matrix: what "+towgs84" says.
struct Similarity
{
    Vector translation{}; ///< [m]
    Vector rotation{};    ///< [arc seconds]
    double scale = 0.0;   ///< [ppm]

    bool hasRotation() const;
    bool isNull() const;
    Vector apply(const Vector &point) const;
};

/// A pair of places: in the local frame, in WGS 84 [m].
using Pair = std::pair<Vector, Vector>;

/// The similarity that fits the pairs best, by least squares. Needs three or more places that are
/// not on one line.
Similarity fitted(const std::vector<Pair> &pairs);

/// Earth-centred coordinates [m] of longitude and latitude [rad], height [m].
Vector cartesian(double longitude, double latitude, double height, double semiMajorAxis,
                 double inverseFlattening);

} // namespace KelStd::catalogue
