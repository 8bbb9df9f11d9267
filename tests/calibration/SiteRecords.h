#pragma once

#include <KelStd/coord/Coord.h>

/// Records of sites as documents have them.
namespace KelStd::test {

inline stPlaneTransform similarity(double east, double north, double rotation, double ratio)
{
    stPlaneTransform plane;
    plane.fuction = PlaneTransformFunction_Four;
    plane.east_translate.value = east;
    plane.north_translate.value = north;
    plane.rotate_angle.value = rotation;
    plane.ratio.value = ratio;
    return plane;
}

inline stElevationFitting fixedHeight(double a)
{
    stElevationFitting fitting;
    fitting.function = ElevationFittingFunction_Fixed;
    fitting.a.value = a;
    return fitting;
}

inline stElevationFitting inclinedPlane(double a, double b, double c)
{
    stElevationFitting fitting = fixedHeight(a);
    fitting.function = ElevationFittingFunction_Plane;
    fitting.b.value = b;
    fitting.c.value = c;
    return fitting;
}

inline stElevationFitting curvedSurface(double a, double b, double c, double d, double e, double f,
                                        double originNorth, double originEast)
{
    stElevationFitting fitting = inclinedPlane(a, b, c);
    fitting.function = ElevationFittingFunction_Curve;
    fitting.d.value = d;
    fitting.e.value = e;
    fitting.f.value = f;
    fitting.north_zero_x0.value = originNorth;
    fitting.east_zero_y0.value = originEast;
    return fitting;
}

} // namespace KelStd::test
