#pragma once

namespace KelStd {

/// Raises a `std::exception *` to a new object whose `what()` is `message`, a literal. The catcher
/// owns the object: that is how the contract has it.
[[noreturn]] void raiseByPointer(const char *message);

/// Raises a `std::exception` by value whose `what()` is empty.
[[noreturn]] void raiseByValue();

/// What formatting and describing a time raise.
inline constexpr const char *noTimeInCoordinate = "No Time Value In Coordinate";

} // namespace KelStd
