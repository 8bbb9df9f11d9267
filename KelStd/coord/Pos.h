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

    void clear() { setXYZ(0.0, 0.0, 0.0); }

    void setXYZ(double x, double y, double z) { m_pos.xyz = {x, y, z}; }
    void setLongLatH(double longitude, double latitude, double height)
    {
        m_pos.llh = {longitude, latitude, height};
    }
    void setENU(double e, double n, double u) { m_pos.enu = {e, n, u}; }

    void setXYZ_X(double x) { m_pos.xyz.x = x; }
    void setLLH_Longitude(double longitude) { m_pos.llh.longitude = longitude; }
    void setENU_E(double e) { m_pos.enu.e = e; }

    void setXYZ_Y(double y) { m_pos.xyz.y = y; }
    void setLLH_Latitude(double latitude) { m_pos.llh.latitude = latitude; }
    void setENU_N(double n) { m_pos.enu.n = n; }

    void setXYZ_Z(double z) { m_pos.xyz.z = z; }
    void setLLH_H(double height) { m_pos.llh.height = height; }
    void setENU_U(double u) { m_pos.enu.u = u; }

    const stXYZ &getXYZ() const { return m_pos.xyz; }
    const stLongLatH &getLongLatH() const { return m_pos.llh; }
    const stENU &getENU() const { return m_pos.enu; }
    const uPos &getUPos() const { return m_pos; }

    static Pos fromXYZ(double x, double y, double z);
    static Pos fromLongLatH(double longitude, double latitude, double height);
    static Pos fromENU(double e, double n, double u);

    /// Exact (IEEE) equality of the three components: a position that holds a NaN does not equal
    /// anything, itself included.
    bool operator==(const Pos &other) const;
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
