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

/// A number's text without the zeros at the end of its fraction.
QString withoutTailZero(QString number);

/// An angle in degrees, minutes and seconds.
struct Sexagesimal
{
    double degrees;
    double minutes;
    double seconds;
};

/// The components of `value` [decimal degrees] as they are printed with `precision` decimals:
/// seconds that round to 60 are carried into the minutes and these into the degrees. Only the
/// leading component that is not zero has the minus of `value`. `hint` is the number of decimals
/// that the toolkit library is told.
Sexagesimal splitForPrinting(double value, unsigned char precision, unsigned char hint);

/// `value`, in decimal degrees for the degree-minute-second style and in whatever unit it stands
/// otherwise, in an angle style. With `signInHemisphere` the degrees lose their minus, which the
/// caller shows as a letter.
QString angle(double value, EFormat format, NumberStyle style, bool signInHemisphere);

} // namespace KelStd::text
