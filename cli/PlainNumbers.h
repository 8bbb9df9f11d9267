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

} // namespace KelStd::cli
