#pragma once

#include <KelStd/Export.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/UnitWords.h>

#include <optional>

namespace KelStd::positions {

/// How the numbers of locations are to be printed.
struct PrintOptions
{
    enum class Form
    {
        Configured, ///< as the library's display configuration shows values in tables
        Exact       ///< decimal degrees and metres with all the digits of a double
    };

    static constexpr int maxDecimals = 17;

    /// What is not set is what the output has for a default.
    std::optional<Form> form;
    std::optional<int> lengthDecimals;      ///< 0 to `maxDecimals`
    std::optional<int> angleDecimals;       ///< 0 to `maxDecimals`
    const AngleStyle *angleStyle = nullptr; ///< as `findAngleStyle` gives it
    const LengthUnit *lengthUnit = nullptr; ///< as `findLengthUnit` gives it

    /// What a configured output has where nothing else is set, instead of the default style and
    /// unit.
    std::optional<stShowConfig> configured;
};

/// The style of an output for which none is set: degrees, minutes and seconds. May be called on any
/// thread.
KELSTD_EXPORT const AngleStyle &defaultAngleStyle();

/// The unit of an output for which none is set: metres. May be called on any thread.
KELSTD_EXPORT const LengthUnit &defaultLengthUnit();

} // namespace KelStd::positions
