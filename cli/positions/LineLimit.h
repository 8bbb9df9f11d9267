#pragma once

namespace KelStd::cli {

/// Longer than any position; a file without line ends is not read into memory.
inline constexpr int maxLineBytes = 4096;

} // namespace KelStd::cli
