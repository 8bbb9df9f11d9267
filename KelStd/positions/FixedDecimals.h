#pragma once

#include <cstddef>

namespace KelStd::positions {

/// Characters that hold every number that `writeFixedDecimals` writes.
inline constexpr std::size_t maxFixedCharacters = 24;

/// Writes a number with so many decimals: correctly rounded, half a unit of the last decimal away
/// from zero, and a zero without a sign.
///
/// A double is a whole number of 53 binary digits times a power of two. That number times the power
/// of ten is computed whole, in 128 bits, so that the one division by a power of two, which is a
/// shift, rounds the exact value and nothing else does.
///
/// \return how many characters, or 0 for what is to be written otherwise: numbers of 2^53 and more
///         or with more than 18 digits, more than 19 decimals, infinities and what is no number;
///         everything, where the compiler has no integers of 128 bits
std::size_t writeFixedDecimals(double value, int decimals, char (&text)[maxFixedCharacters]);

} // namespace KelStd::positions
