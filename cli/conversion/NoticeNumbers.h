#pragma once

#include <cstddef>

/// Which notices of a conversion have which numbers.
namespace KelStd::cli {

/// Of the area of a system: a location outside, and a mistake each.
inline constexpr std::size_t areaNoticeCount = 5;

inline constexpr std::size_t firstAreaNotice = 0;       ///< of the system of the input
inline constexpr std::size_t firstTargetAreaNotice = 5; ///< of another one that is printed
inline constexpr std::size_t firstFactorNotice = 10;

static_assert(firstTargetAreaNotice >= firstAreaNotice + areaNoticeCount
              && firstFactorNotice >= firstTargetAreaNotice + areaNoticeCount);

} // namespace KelStd::cli
