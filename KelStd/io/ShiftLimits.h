#pragma once

/// What no datum of this earth is shifted, turned and scaled further than, either way. A document
/// with more is refused as one that cannot be meant.
namespace KelStd::io {

inline constexpr double maxTranslation = 1e4;     ///< [m]
inline constexpr double maxRotation = 600.0;      ///< [arc seconds]
inline constexpr double maxScaleDifference = 1e3; ///< [ppm]

} // namespace KelStd::io
