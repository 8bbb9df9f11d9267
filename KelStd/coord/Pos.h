#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/uPos.h>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// One point of three doubles: cartesian X/Y/Z, longitude/latitude/height or east/north/up.
///
/// Nothing marks which reading applies: the caller knows. The setters of the three readings are
/// one operation under three names, and so are the getters. Units are the caller's; conversions
/// take longitude and latitude in decimal degrees and everything else in metres.
///
///     Pos::fromXYZ(1, 2, 3).getLongLatH().latitude == 2
class KELSTD_EXPORT Pos
{
public:
    /// Three zeros.
    Pos() : m_pos{{0.0, 0.0, 0.0}} {}

    /// Three zeros.
    void clear() { setXYZ(0.0, 0.0, 0.0); }

    /// All three components, as X, Y, Z.
    void setXYZ(double x, double y, double z) { m_pos.xyz = {x, y, z}; }
    /// All three components, as longitude, latitude and height, in this order.
    void setLongLatH(double longitude, double latitude, double height)
    {
        m_pos.llh = {longitude, latitude, height};
    }
    /// All three components, as east, north and up, in this order.
    void setENU(double e, double n, double u) { m_pos.enu = {e, n, u}; }

    /// The first component.
    void setXYZ_X(double x) { m_pos.xyz.x = x; }
    /// The first component.
    void setLLH_Longitude(double longitude) { m_pos.llh.longitude = longitude; }
    /// The first component.
    void setENU_E(double e) { m_pos.enu.e = e; }

    /// The second component.
    void setXYZ_Y(double y) { m_pos.xyz.y = y; }
    /// The second component.
    void setLLH_Latitude(double latitude) { m_pos.llh.latitude = latitude; }
    /// The second component.
    void setENU_N(double n) { m_pos.enu.n = n; }

    /// The third component.
    void setXYZ_Z(double z) { m_pos.xyz.z = z; }
    /// The third component.
    void setLLH_H(double height) { m_pos.llh.height = height; }
    /// The third component.
    void setENU_U(double u) { m_pos.enu.u = u; }

    /// The components as X, Y, Z. The reference is valid as long as the position, as those below
    /// are.
    const stXYZ &getXYZ() const { return m_pos.xyz; }
    /// The components as longitude, latitude and height.
    const stLongLatH &getLongLatH() const { return m_pos.llh; }
    /// The components as east, north and up.
    const stENU &getENU() const { return m_pos.enu; }
    /// The components under all three readings.
    const uPos &getUPos() const { return m_pos; }

    /// A position of X, Y, Z.
    static Pos fromXYZ(double x, double y, double z);
    /// A position of longitude, latitude and height, in this order.
    static Pos fromLongLatH(double longitude, double latitude, double height);
    /// A position of east, north and up, in this order.
    static Pos fromENU(double e, double n, double u);

    /// Exact (IEEE) equality of the three components: a position that holds a NaN does not equal
    /// anything, itself included.
    bool operator==(const Pos &other) const;
    /// The negation of `operator==`.
    bool operator!=(const Pos &other) const;

    /// True when each component differs by at most 0.0001, metres and degrees alike.
    bool equals(const Pos &other) const;

    /// Component by component.
    Pos operator-(const Pos &other) const;

    /// Writes the block of version 1: the version [int32] and the three components.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1: the components are then zero.
    /// The stream's status is neither inspected nor reset; components that the stream lacks are
    /// zero.
    bool load(QDataStream &stream);

private:
    uPos m_pos;
};

} // namespace KelStd
