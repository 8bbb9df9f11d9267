#pragma once

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// What stands before the decimals of the numbers of a line.
enum class DecimalMark
{
    Point,
    Comma
};

/// A short quotation of what the input holds, for a message.
QString quoted(const QString &field);

/// The number with a decimal point, when `mark` is a comma and the text has one.
QString withDecimalPoint(const QString &text, DecimalMark mark);

/// The number of a field, decimal, in the C locale; without one, `reason` says why.
std::optional<double> readNumber(const QString &field, DecimalMark mark, QString &reason);

inline std::optional<double> readNumber(const QString &field, QString &reason)
{
    return readNumber(field, DecimalMark::Point, reason);
}

} // namespace KelStd::cli
