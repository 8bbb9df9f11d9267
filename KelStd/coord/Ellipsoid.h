#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

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
    /// The negation of `operator==`.
    bool operator!=(const Ellipsoid &other) const;

    /// Writes the block of version 1: the version [int32], then every member in declaration order,
    /// `biggerHalfAxle` as a block of its own.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1 or the axis' block fails: what
    /// was read so far stays, the rest is as `clear` leaves it; so `proj4EllpsName` survives
    /// another version. The stream's status is neither inspected nor reset (see `Param::load`).
    bool load(QDataStream &stream);

    QString ellipsoid_name;          ///< for people; not compared
    QString proj4EllpsName;          ///< PROJ's name (`+ellps=`), empty when given by its numbers
    Param biggerHalfAxle;            ///< semi-major axis, in its own length unit
    double reciprocal;               ///< inverse flattening 1/f, without unit
    EEllipsoidDirection positiveDir; ///< the directions of the axes of its frame
};

} // namespace KelStd
