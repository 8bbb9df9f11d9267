#pragma once

#include <cstddef>

/// Which notices of a conversion have which numbers.
namespace KelStd::cli {

/// Of the area of a system: a location outside, and a mistake each.
inline constexpr std::size_t areaNoticeCount = 5;

inline constexpr std::size_t firstAreaNotice = 0;       ///< of the system of the input
inline constexpr std::size_t firstTargetAreaNotice = 5; ///< of another one that is printed
inline constexpr std::size_t firstFactorNotice = 10;
/// Of a site: what of its fit does not hold, as the bits of `SiteExtent`.
inline constexpr std::size_t extentNoticeCount = 2;
inline constexpr std::size_t firstExtentNotice = 15;       ///< of the system of the input
inline constexpr std::size_t firstTargetExtentNotice = 17; ///< of another one that is printed

static_assert(firstTargetAreaNotice >= firstAreaNotice + areaNoticeCount
              && firstFactorNotice >= firstTargetAreaNotice + areaNoticeCount
              && firstTargetExtentNotice >= firstExtentNotice + extentNoticeCount);

} // namespace KelStd::cli
