#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QChar>
#include <QtCore/QString>

#include <optional>
#include <string>

namespace KelStd::test {

/// A decimal number as it stands in a text, with no digit lost.
struct ShownNumber
{
    bool negative = false;
    quint64 whole = 0;
    quint64 fraction = 0; ///< in units of the last decimal
    int decimals = 0;

    bool isZero() const { return whole == 0 && fraction == 0; }
    /// With its sign; good to the last bit of a long double.
    long double value() const;
    /// Its size less `expected`, which loses nothing where the two are near.
    long double sizeMinus(long double expected) const;
};

/// Digits with at most one point between them and at most one minus in front; at most 18 decimals.
std::optional<ShownNumber> readNumber(const QString &text);

/// An angle's text: numbers before their symbols, in the order of the symbols, and a letter.
struct ShownAngle
{
    std::optional<ShownNumber> degrees;
    std::optional<ShownNumber> minutes;
    std::optional<ShownNumber> seconds;
    std::optional<ShownNumber> plain; ///< a number without a symbol
    QChar letter;

    /// The sum of the parts with their own signs [deg], as the library's readers form it.
    long double ownSignSum() const;
    /// Whether at most one part is not zero, so that the sum above is the angle, whatever its sign.
    bool hasOnePart() const;
    /// The part that is not zero with the largest unit; null when every part is.
    const ShownNumber *leadingPart() const;
};

/// Nothing for a text that is no angle's.
std::optional<ShownAngle> readAngle(const QString &text);

/// Half of the last of `precision` decimals.
long double halfUnit(int precision);

/// Half the distance from `value` to the next double towards zero: what is nearer denotes `value`.
double halfSpacing(double value);

/// What `value` may be off when it is the result of one operation on doubles.
double roundingOf(double value);

/// How the numbers of a text must end.
enum class Zeros
{
    Kept,  ///< as many decimals as the precision
    Erased ///< at most as many, and no zero behind the last
};

/// Empty when `number` has decimals by the rule and its size is that of `expected`, rounded to
/// them; `noise` is what `expected` itself may be off. Otherwise what is wrong.
std::string wrongNumber(const ShownNumber &number, long double expected, int precision, Zeros zeros,
                        long double noise);

/// Empty when degrees, minutes and seconds are whole numbers, minutes and seconds below 60, and
/// together the size of `arcSeconds`, rounded to the decimals of the seconds. Seconds are doubles
/// of their own: half their spacing is allowed where it is more than `noise`.
std::string wrongSexagesimal(const ShownAngle &angle, long double arcSeconds, int precision,
                             long double noise);

/// Empty when the minus stands on the leading part, and only where `negative`.
std::string wrongMinus(const ShownAngle &angle, bool negative);

/// Empty when both of the library's readers read `shown`, which is in degrees, minutes and seconds,
/// as the sum of its parts with their own signs, and `degrees` [deg] within `allowed` is that sum
/// where the signs let it be.
std::string wrongSexagesimalReading(const QString &shown, const ShownAngle &angle,
                                    long double degrees, long double allowed);

/// The same for a text of one number in the style `format`.
std::string wrongDecimalReading(const QString &shown, EFormat format, long double degrees,
                                long double allowed);

} // namespace KelStd::test
