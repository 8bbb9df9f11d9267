#pragma once

#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stEllipsoinTransform.h>
#include <KelStd/coord/stPlaneTransform.h>

/// The parameters of the transformation records, by the names of their elements in documents, which
/// are those of the members. One row for each, in document order, for whoever goes through them
/// all.
namespace KelStd::io {

/// A parameter of a record by its name.
template <typename Record>
struct NamedParam
{
    const char *name;      ///< of the element, and of the member
    Param Record::*member; ///< where the record has it
};

/// The parameters of a datum shift.
inline constexpr NamedParam<stEllipsoinTransform> ellipsoidTransformParams[] = {
    {"x_translate", &stEllipsoinTransform::x_translate},
    {"y_translate", &stEllipsoinTransform::y_translate},
    {"z_translate", &stEllipsoinTransform::z_translate},
    {"x_rotate", &stEllipsoinTransform::x_rotate},
    {"y_rotate", &stEllipsoinTransform::y_rotate},
    {"z_rotate", &stEllipsoinTransform::z_rotate},
    {"ratio_ppm", &stEllipsoinTransform::ratio_ppm},
};

/// Those of a plane transformation.
inline constexpr NamedParam<stPlaneTransform> planeTransformParams[] = {
    {"north_translate", &stPlaneTransform::north_translate},
    {"east_translate", &stPlaneTransform::east_translate},
    {"rotate_angle", &stPlaneTransform::rotate_angle},
    {"ratio", &stPlaneTransform::ratio},
};

/// Those of a height fitting.
inline constexpr NamedParam<stElevationFitting> elevationFittingParams[] = {
    {"a", &stElevationFitting::a},
    {"b", &stElevationFitting::b},
    {"c", &stElevationFitting::c},
    {"d", &stElevationFitting::d},
    {"e", &stElevationFitting::e},
    {"f", &stElevationFitting::f},
    {"north_zero_x0", &stElevationFitting::north_zero_x0},
    {"east_zero_y0", &stElevationFitting::east_zero_y0},
};

/// The version that every element carries, and the only one that is read.
inline constexpr int documentVersion = 1;

} // namespace KelStd::io
