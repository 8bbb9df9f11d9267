#pragma once

#include <KelStd/coord/Enumerations.h>

#include <optional>

namespace KelStd::display {

/// How the display configuration of the moment shows the numbers of a kind of value.
struct ConfiguredStyle
{
    std::optional<EUnit> unit; ///< nothing: each value in its own
    unsigned char precision;   ///< decimals
};

/// Nothing for a kind whose decimals are not configured.
std::optional<ConfiguredStyle> configuredStyle(EValueType type);

} // namespace KelStd::display
