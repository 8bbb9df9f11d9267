#pragma once

#include <KelStd/text/TypedAngle.h>

namespace KelStd::typed {

/// A digit that numbers are read with: a Latin one.
inline bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// What a plain number is made of, apart from its sign and exponent.
inline bool isNumberCharacter(QChar c)
{
    return isDigit(c) || c == QLatin1Char('.');
}

/// Whether an angle is what the text was meant to be, so that an angle's reasons fit it.
///
/// \param text not empty
bool looksLikeAngle(const QString &text);

/// `Doubtful` when minutes may stand in the digits of what seems to be degrees: "00030.25".
///
/// \param number without a sign
TypedValueFailure zerosDoubt(const QString &number);

/// Takes an angle with signs or a hemisphere letter apart.
///
/// \param text trimmed, with a decimal point, not empty
/// \param degrees becomes the double nearest to the angle [deg]; untouched where there is none
/// \return why the text is no angle: what is to be said behind its quotation
TypedValueFailure scanAngle(const QString &text, AngleSense sense, double &degrees);

} // namespace KelStd::typed
