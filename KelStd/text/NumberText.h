#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>

/// Texts of plain numbers and angles, without units or hemispheres.
namespace KelStd::text {

/// How a number is printed.
struct NumberStyle
{
    unsigned char precision; ///< decimals
    bool eraseTailZero;
};

/// `value` rounded to the style's decimals, in the C locale, never with an exponent.
QString number(double value, NumberStyle style);

/// `value`, in decimal degrees for the degree-minute-second style and in whatever unit it stands
/// otherwise, in an angle style. With `signInHemisphere` the degrees lose their minus, which the
/// caller shows as a letter.
QString angle(double value, EFormat format, NumberStyle style, bool signInHemisphere);

} // namespace KelStd::text
