#pragma once

#include <cli/TypedNumber.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// Which hemisphere letters an angle may have.
enum class AngleSense
{
    Plain,     ///< none
    Longitude, ///< E and W
    Latitude   ///< N and S
};

/// An angle [deg] as people type it; without one, `reason` says why, beginning with the text.
///
/// The forms are a plain number, degrees with their sign, degrees and minutes, and degrees, minutes
/// and seconds: 52.5, 52.5°, 52°30.25′, 52°30′15.5″, 52d30'15.5", 52:30, 52:30:15.5. A degree sign
/// is ° º ˚ or d, a minute sign ′ ' or ’, a second sign ″ " ” or two equal minute signs. Blanks may
/// stand around the signs. Only the last part may have decimals; minutes and seconds are below 60.
///
/// A leading minus or plus counts for the whole angle: -0°30′ is -0.5, unlike in
/// `CoordStringHelper::GetValueFromString`. A hemisphere letter, in either case, stands before or
/// behind; W and S make the angle negative. A letter and a sign exclude each other.
///
/// Nothing is guessed: a part without its sign, minutes without degrees and seconds without minutes
/// are refused, because they can be pieces of an angle that was torn apart at its blanks. So are
/// 5E1, which has an exponent or an E for east, where hemisphere letters may stand, and 00030.25,
/// which may be degrees and minutes in one.
std::optional<double> readTypedAngle(const QString &text, AngleSense sense, DecimalMark mark,
                                     QString &reason);

/// Whether the text has digits and one of the signs or colons of the forms above.
bool hasAngleSigns(const QString &text);

} // namespace KelStd::cli
