#pragma once

#include <KelStd/Export.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd {

/// Which hemisphere letters an angle may have.
enum class AngleSense
{
    Plain,     ///< none
    Longitude, ///< E and W
    Latitude   ///< N and S
};

/// Reads an angle [deg] as people type it.
///
/// The forms are a plain number, degrees with their sign, degrees and minutes, and degrees, minutes
/// and seconds: 52.5, 52.5°, 52°30.25′, 52°30′15.5″, 52d30'15.5", 52:30, 52:30:15.5. The signs are
/// those of AngleSigns.h, with two equal minute signs for seconds. Blanks may stand around the
/// signs. Only the last part may have decimals; minutes and seconds are below 60. The result is the
/// double nearest to the angle.
///
/// A leading minus or plus counts for the whole angle: -0°30′ is -0.5, unlike in
/// `CoordStringHelper::GetValueFromString`. A hemisphere letter, in either case, stands before or
/// behind; W and S make the angle negative. A letter and a sign exclude each other.
///
/// Nothing is guessed: a part without its sign, minutes without degrees and seconds without minutes
/// are refused, because they can be pieces of an angle that was torn apart at its blanks. So are
/// 5E1, which has an exponent or an E for east, where hemisphere letters may stand, and 00030.25,
/// which may be degrees and minutes in one. The size of the degrees is not checked.
///
/// May be called on any thread, and raises nothing.
///
/// \param failure becomes why there is no angle, or no failure
/// \return nothing for a text that is no such angle
KELSTD_EXPORT std::optional<double> readTypedAngle(const QString &text, AngleSense sense,
                                                   DecimalMark mark, TypedValueFailure &failure);

/// Whether the text has digits and one of the signs or colons of those forms; the letter d alone is
/// no sign here. May be called on any thread.
KELSTD_EXPORT bool hasAngleSigns(const QString &text);

} // namespace KelStd
