#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

namespace KelStd::catalogue {

/// A point on the ground in WGS 84 [deg].
struct GroundPoint
{
    double longitude = 0.0; ///< [deg], east positive
    double latitude = 0.0;  ///< [deg], north positive
};

/// The area of use of a system or an operation: a box of longitudes and latitudes [deg], and what
/// it is called. `west` is greater than `east` where it lies across 180 degrees.
struct KELSTD_EXPORT SystemArea
{
    bool isKnown = false; ///< a system of a text may have none
    double west = -180.0; ///< [deg]
    double south = -90.0; ///< [deg]
    double east = 180.0;  ///< [deg]
    double north = 90.0;  ///< [deg]
    QString name;         ///< a description, such as "Fiji - onshore and offshore"

    /// How many degrees of longitude it spans, 0 to 360.
    double width() const;

    /// The middle of the box.
    GroundPoint centre() const;

    /// False where the area is not known. Longitudes a whole turn apart are the same.
    bool contains(const GroundPoint &point) const;
    /// Whether the two have something in common; false where one of them is not known.
    bool intersects(const SystemArea &other) const;

    /// The share of this area that `other` covers, 0 to 1, as boxes on the sphere; 1 where either
    /// is not known.
    double coveredBy(const SystemArea &other) const;
};

} // namespace KelStd::catalogue
