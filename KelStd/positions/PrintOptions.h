#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/UnitWords.h>

#include <optional>

namespace KelStd::positions {

/// How the numbers of locations are to be printed.
struct PrintOptions
{
    /// How many digits a number has.
    enum class Form
    {
        Configured, ///< as the library's display configuration shows values in tables
        Exact       ///< decimal degrees and metres with all the digits of a double
    };

    /// At most so many decimals are printed.
    static constexpr int maxDecimals = 17;

    /// What is not set is what the output has for a default.
    std::optional<Form> form;
    std::optional<int> lengthDecimals; ///< 0 to `maxDecimals`
    /// 0 to `maxDecimals`; where only those of lengths are set, `angleDecimalsFor` gives these.
    std::optional<int> angleDecimals;
    const AngleStyle *angleStyle = nullptr; ///< as `findAngleStyle` gives it
    const LengthUnit *lengthUnit = nullptr; ///< as `findLengthUnit` gives it

    /// Which way local longitudes and latitudes count. Their letters name the side of the earth, so
    /// that a longitude of -30 is 30 degrees E where it counts westwards; plain numbers are what
    /// the system has.
    EEllipsoidDirection localAxes = EllipsoidDirection_ENU;

    /// What a configured output has where nothing else is set, instead of the default style and
    /// unit.
    std::optional<stShowConfig> configured;
};

/// The style of an output for which none is set: degrees, minutes and seconds. May be called on any
/// thread.
KELSTD_EXPORT const AngleStyle &defaultAngleStyle();

/// The unit of an output for which none is set: metres. May be called on any thread.
KELSTD_EXPORT const LengthUnit &defaultLengthUnit();

/// The decimals with which an angle in a style shows as much of the ground as a length does.
///
/// A degree of a great circle of the mean sphere (6371008.8 m, IUGG) is 111.195 km, so that 8
/// decimals of a degree stand beside millimetres: their last digit is 1.1 mm. It is at most an
/// eighth more than the length's in every style.
///
/// \param lengthDecimals those of the length
/// \param metresPerUnit what 1 of the length's unit is [m], greater than 0
/// \return 0 to `PrintOptions::maxDecimals`. May be called on any thread.
KELSTD_EXPORT int angleDecimalsFor(const AngleStyle &style, int lengthDecimals,
                                   double metresPerUnit);

} // namespace KelStd::positions
