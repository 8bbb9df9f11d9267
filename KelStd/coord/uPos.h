#pragma once

namespace KelStd {

/// Earth-centred cartesian components [m].
struct stXYZ
{
    double x; ///< towards longitude 0 on the equator [m]
    double y; ///< towards longitude 90 degrees east on the equator [m]
    double z; ///< towards the north pole [m]
};

/// Geographic components: longitude, then latitude [deg], then ellipsoidal height [m].
struct stLongLatH
{
    double longitude; ///< [deg], east positive
    double latitude;  ///< [deg], north positive
    double height;    ///< above the ellipsoid [m]
};

/// Plane components: east, north, up or height [m].
struct stENU
{
    double e; ///< easting [m]
    double n; ///< northing [m]
    double u; ///< height [m]
};

/// The same three doubles under three readings.
///
/// The readings share their layout (checked where `Pos` is implemented), and the supported
/// compilers define reading a union through another of its members.
union uPos
{
    stXYZ xyz;      ///< as X, Y, Z
    stLongLatH llh; ///< as longitude, latitude and height
    stENU enu;      ///< as east, north and up
};

} // namespace KelStd
