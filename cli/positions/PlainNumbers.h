#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

/// Plain decimals of the C locale, as other programs write and read them.
namespace KelStd::cli {

/// The number with so many decimals; a zero has no sign.
QString numberText(double value, int decimals);

/// A number's text without its minus when all its digits are zeros.
QString withoutSignOfZero(QString text);

/// Appends `numberText`, in a fraction of its time.
void appendNumber(QByteArray &bytes, double value, int decimals);

/// Reads digits with at most one decimal point between them and a minus before them, the nearest
/// double as ever. False for anything else, which may be a number all the same.
bool readPlainNumber(std::string_view text, double &value);

/// Whether a plain number has zeros before four digits or more: of angles they may be the degrees
/// of degrees and minutes in one.
inline bool hasDoubtfulZeros(std::string_view number)
{
    constexpr std::size_t mostDigits = 3;
    const std::string_view digits = number.substr(!number.empty() && number.front() == '-' ? 1 : 0);
    return digits.size() > mostDigits && digits.front() == '0'
           && digits.substr(0, mostDigits + 1).find('.') == std::string_view::npos;
}

} // namespace KelStd::cli
