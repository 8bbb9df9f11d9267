#pragma once

#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stEllipsoinTransform.h>
#include <KelStd/coord/stPlaneTransform.h>

/// The parameter elements of the transformation records: each carries the name of its member. One
/// row for each, in document order, which the reader and the writer share.
namespace KelStd::io {

template <typename Record>
struct NamedParam
{
    const char *name;
    Param Record::*member;
};

#define KELSTD_NAMED(Record, member) NamedParam<Record>{#member, &Record::member}

inline constexpr NamedParam<stEllipsoinTransform> ellipsoidTransformParams[] = {
    KELSTD_NAMED(stEllipsoinTransform, x_translate),
    KELSTD_NAMED(stEllipsoinTransform, y_translate),
    KELSTD_NAMED(stEllipsoinTransform, z_translate),
    KELSTD_NAMED(stEllipsoinTransform, x_rotate),
    KELSTD_NAMED(stEllipsoinTransform, y_rotate),
    KELSTD_NAMED(stEllipsoinTransform, z_rotate),
    KELSTD_NAMED(stEllipsoinTransform, ratio_ppm),
};

inline constexpr NamedParam<stPlaneTransform> planeTransformParams[] = {
    KELSTD_NAMED(stPlaneTransform, north_translate),
    KELSTD_NAMED(stPlaneTransform, east_translate),
    KELSTD_NAMED(stPlaneTransform, rotate_angle),
    KELSTD_NAMED(stPlaneTransform, ratio),
};

inline constexpr NamedParam<stElevationFitting> elevationFittingParams[] = {
    KELSTD_NAMED(stElevationFitting, a),
    KELSTD_NAMED(stElevationFitting, b),
    KELSTD_NAMED(stElevationFitting, c),
    KELSTD_NAMED(stElevationFitting, d),
    KELSTD_NAMED(stElevationFitting, e),
    KELSTD_NAMED(stElevationFitting, f),
    KELSTD_NAMED(stElevationFitting, north_zero_x0),
    KELSTD_NAMED(stElevationFitting, east_zero_y0),
};

#undef KELSTD_NAMED

/// The version that every element carries, and the only one that is read.
inline constexpr int documentVersion = 1;

} // namespace KelStd::io
