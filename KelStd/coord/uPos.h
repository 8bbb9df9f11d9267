#pragma once

namespace KelStd {

/// Earth-centred cartesian components [m].
struct stXYZ
{
    double x;
    double y;
    double z;
};

/// Geographic components: longitude, then latitude [deg], then ellipsoidal height [m].
struct stLongLatH
{
    double longitude;
    double latitude;
    double height;
};

/// Plane components: east, north, up or height [m].
struct stENU
{
    double e;
    double n;
    double u;
};

/// The same three doubles under three readings.
///
/// The readings share their layout (checked where `Pos` is implemented), and the supported
/// compilers define reading a union through another of its members.
union uPos
{
    stXYZ xyz;
    stLongLatH llh;
    stENU enu;
};

} // namespace KelStd
