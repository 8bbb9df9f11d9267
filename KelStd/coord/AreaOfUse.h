#pragma once

#include <KelStd/Export.h>

namespace KelStd {

/// The area in which a coordinate system is meant to be used: a box of WGS84 longitudes and
/// latitudes. One whose `west` is greater than its `east` crosses the meridian of 180 degrees.
///
///     AreaOfUse fiji{176.81, -20.81, -178.15, -12.42};
///     const bool isIn = fiji.contains(179.5, -17.0) && fiji.contains(-179.5, -17.0); // true
struct KELSTD_EXPORT AreaOfUse
{
    double west = 0.0;  ///< longitude [deg], -180 to 180
    double south = 0.0; ///< latitude [deg], -90 to 90
    double east = 0.0;  ///< longitude [deg], -180 to 180
    double north = 0.0; ///< latitude [deg], -90 to 90

    /// Whether the numbers make a box: all of them within their ranges, and `south` not above
    /// `north`.
    bool isValid() const;

    /// Whether a position lies in the box or on its border. Longitudes that differ by 360 degrees
    /// are the same one. False for what is not finite.
    /// \param longitude WGS84 [deg]
    /// \param latitude WGS84 [deg]
    bool contains(double longitude, double latitude) const;

    /// How far the box reaches from `west` to `east` [deg], 0 to 360.
    double width() const;

    /// Equality of all members.
    bool operator==(const AreaOfUse &other) const;
    /// The negation of `operator==`.
    bool operator!=(const AreaOfUse &other) const { return !(*this == other); }
};

} // namespace KelStd
