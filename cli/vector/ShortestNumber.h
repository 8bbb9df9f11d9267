#pragma once

#include <QtCore/QByteArray>

namespace KelStd::cli::vector {

/// The fewest digits that give the number again, without an exponent: "1000000", "0.0000125".
QByteArray shortestDecimal(double number);

/// The same, with an exponent where the number is so large or so small that it is no measure.
QByteArray shortestNumber(double number);

} // namespace KelStd::cli::vector
