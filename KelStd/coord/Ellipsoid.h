#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

#include <QtCore/QString>

namespace KelStd {

/// A reference ellipsoid: a PROJ ellipsoid name, or else its axis and inverse flattening.
class KELSTD_EXPORT Ellipsoid
{
public:
    /// No names, an axis of 0 m, an inverse flattening of 0, axes east, north, up.
    Ellipsoid();

    /// Resets the display name, the axis, the inverse flattening and the axis directions.
    /// `proj4EllpsName` and the dictionary members of `biggerHalfAxle` survive: a deliberately
    /// partial reset.
    void clear();

    /// Equality of all that enters a computation; `ellipsoid_name` is not compared.
    bool operator==(const Ellipsoid &other) const;
    bool operator!=(const Ellipsoid &other) const;

    QString ellipsoid_name;
    QString proj4EllpsName; ///< PROJ's name (`+ellps=`), empty when given by its numbers
    Param biggerHalfAxle;   ///< semi-major axis, in its own length unit
    double reciprocal;      ///< inverse flattening 1/f, without unit
    EEllipsoidDirection positiveDir;
};

} // namespace KelStd
