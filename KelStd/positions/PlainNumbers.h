#pragma once

#include <KelStd/Export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

/// Plain decimals of the C locale, as other programs write and read them. Everything here may be
/// called on any thread.
namespace KelStd::positions {

/// The number with so many decimals, 0 to 255: with none for less, with 255 for more. A zero has no
/// sign.
KELSTD_EXPORT QString numberText(double value, int decimals);

/// A number's text without its minus when all its digits are zeros.
KELSTD_EXPORT QString withoutSignOfZero(QString text);

/// Appends `numberText`, of as many decimals, in a fraction of its time.
KELSTD_EXPORT void appendNumber(QByteArray &bytes, double value, int decimals);

/// Reads digits with at most one decimal point between them, and a minus before them, as the
/// nearest double. False for anything else, also for other forms of numbers: what `value` is then
/// is not defined.
KELSTD_EXPORT bool readPlainNumber(std::string_view text, double &value);

} // namespace KelStd::positions
