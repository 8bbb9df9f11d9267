#pragma once

namespace KelStd {

/// The smallest scale factor that a projection of this earth has, with room: a number below is one
/// of a millionth, or a slip.
inline constexpr double lowestScale = 0.9;

/// The largest one: a number above is one of percent, of ppm, or a slip.
inline constexpr double highestScale = 1.1;

} // namespace KelStd
