#pragma once

#include <cstddef>

/// Which notices of a conversion have which numbers.
namespace KelStd::cli {

/// Of the area of a system: a location outside, and a mistake each.
inline constexpr std::size_t areaNoticeCount = 5;

inline constexpr std::size_t firstAreaNotice = 0;       ///< of the system of the input
inline constexpr std::size_t firstTargetAreaNotice = 5; ///< of another one that is printed
inline constexpr std::size_t firstFactorNotice = 10;
inline constexpr std::size_t hullNotice = 15;       ///< of the site of the input's system
inline constexpr std::size_t targetHullNotice = 16; ///< of that of another one that is printed

static_assert(firstTargetAreaNotice >= firstAreaNotice + areaNoticeCount
              && firstFactorNotice >= firstTargetAreaNotice + areaNoticeCount);

} // namespace KelStd::cli
