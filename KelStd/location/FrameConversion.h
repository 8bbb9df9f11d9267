#pragma once

#include <cstddef>

namespace KelStd {

/// The conversions between neighbouring frames: WGS84 geographic, WGS84 cartesian, local
/// geographic, local projected. Each way between the frames has all six.
enum class FrameConversion : std::size_t
{
    GeographicToCartesian,
    CartesianToGeographic,
    CartesianToLocal,
    LocalToCartesian,
    LocalToProjected,
    ProjectedToLocal
};

inline constexpr std::size_t frameConversions = 6;

} // namespace KelStd
