#pragma once

#include <QtCore/QtGlobal>

namespace KelStd {

/// Where the nodes of a grid lie, by its header. Angles are in decimal degrees.
struct GridNodes
{
    double latitude = 0.0;         ///< of the southernmost row [deg]
    double longitude = 0.0;        ///< of the westernmost column [deg]
    double latitudeSpacing = 0.0;  ///< from row to row [deg]
    double longitudeSpacing = 0.0; ///< from column to column [deg]
    qint64 rows = 0;               ///< from south to north
    qint64 columns = 0;            ///< from west to east

    /// How many nodes there are.
    qint64 count() const { return rows * columns; }

    /// Of a node [deg]; row 0 is the southernmost and column 0 the westernmost.
    double latitudeOf(qint64 row) const
    {
        return latitude + static_cast<double>(row) * latitudeSpacing;
    }
    /// The same of a column [deg].
    double longitudeOf(qint64 column) const
    {
        return longitude + static_cast<double>(column) * longitudeSpacing;
    }

    /// Equality of all members, exactly.
    bool operator==(const GridNodes &other) const
    {
        return latitude == other.latitude && longitude == other.longitude
               && latitudeSpacing == other.latitudeSpacing
               && longitudeSpacing == other.longitudeSpacing && rows == other.rows
               && columns == other.columns;
    }
    /// The negation of `operator==`.
    bool operator!=(const GridNodes &other) const { return !(*this == other); }
};

} // namespace KelStd
