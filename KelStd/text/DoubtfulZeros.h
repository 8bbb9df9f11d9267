#pragma once

#include <string_view>

namespace KelStd {

/// "00030.25": whether a plain number has zeros before four digits or more. Degrees have three
/// digits at most, so that the zeros may be the first digits of degrees and minutes in one,
/// dddmm.mm. A minus may stand in front.
inline bool hasDoubtfulZeros(std::string_view number)
{
    constexpr std::size_t maxDigits = 3;
    const std::string_view digits = number.substr(!number.empty() && number.front() == '-' ? 1 : 0);
    return digits.size() > maxDigits && digits.front() == '0'
           && digits.substr(0, maxDigits + 1).find_first_not_of("0123456789")
                  == std::string_view::npos;
}

} // namespace KelStd
