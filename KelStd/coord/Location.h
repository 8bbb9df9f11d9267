#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Pos.h>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// One measured point in four frames at once.
///
/// The `MakeLocation_by...` operations of `Coord` fill it; a fresh or cleared one is twelve zeros.
class KELSTD_EXPORT Location
{
public:
    /// Twelve zeros.
    void clear();

    double get_WGS84_LLH_Long() const;   ///< [deg]
    double get_WGS84_LLH_Lat() const;    ///< [deg]
    double get_WGS84_LLH_Height() const; ///< [m], ellipsoidal

    double get_WGS84_XYZ_X() const; ///< [m]
    double get_WGS84_XYZ_Y() const; ///< [m]
    double get_WGS84_XYZ_Z() const; ///< [m]

    double get_Local_LLH_Long() const;   ///< [deg]
    double get_Local_LLH_Lat() const;    ///< [deg]
    double get_Local_LLH_Height() const; ///< [m], above the local ellipsoid

    double get_NEH_E() const; ///< [m]
    double get_NEH_N() const; ///< [m]
    double get_NEH_H() const; ///< [m]

    /// Exact equality of the twelve components.
    bool operator==(const Location &other) const;
    /// The negation of `operator==`.
    bool operator!=(const Location &other) const;

    /// True when each of the twelve components differs by at most 0.0001.
    bool equals(const Location &other) const;

    /// Writes the block of version 1: the version [int32] and the four positions, each a block of
    /// its own, in declaration order.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1 or a position's block fails: the
    /// positions read so far stay, the rest are zero. The stream's status is neither inspected nor
    /// reset.
    bool load(QDataStream &stream);

    Pos wgs84LLH; ///< WGS84 longitude, latitude [deg], ellipsoidal height [m]
    Pos wgs84XYZ; ///< WGS84 earth-centred cartesian [m]
    Pos localLLH; ///< longitude, latitude [deg], height [m] on the local ellipsoid
    Pos localNEH; ///< projected east, north, height [m], in this order
};

} // namespace KelStd
