#pragma once

#include <KelStd/Export.h>
#include <KelStd/text/TypedValueFailure.h>

#include <QtCore/QString>

#include <optional>

/// Numbers as people type them. Everything here may be called on any thread and raises nothing.
namespace KelStd {

/// What stands before the decimals of a number.
enum class DecimalMark
{
    Point, ///< 1.5
    Comma  ///< 1,5
};

/// A quotation of a text for a message: in quotation marks, and of a long text its first 40
/// characters and "...".
KELSTD_EXPORT QString quoted(const QString &field);

/// The text with a decimal point, where `mark` is a comma and the text has one comma and no point;
/// otherwise the text as it is.
KELSTD_EXPORT QString withDecimalPoint(const QString &text, DecimalMark mark);

/// Reads a finite decimal number with Latin digits, with an exponent or without, whatever the
/// locale. Blanks around it are passed over.
///
/// \param mark where it is a comma, "5,25" is read, and so is "5.25"; "1.234,5" is neither
/// \param failure becomes why there is no number, or no failure: `Missing`, `NotANumber` or
///        `NotFinite`
/// \return nothing for a text that is no finite number
KELSTD_EXPORT std::optional<double> readNumber(const QString &field, DecimalMark mark,
                                               TypedValueFailure &failure);

/// The same with a decimal point.
inline std::optional<double> readNumber(const QString &field, TypedValueFailure &failure)
{
    return readNumber(field, DecimalMark::Point, failure);
}

} // namespace KelStd
