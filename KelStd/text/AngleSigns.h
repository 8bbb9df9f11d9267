#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

namespace KelStd {

/// What a sign behind a number makes of it.
enum class AngleSign
{
    None,   ///< no sign of angles
    Degree, ///< degrees
    Minute, ///< minutes
    Second, ///< seconds
    Colon   ///< degrees, minutes or seconds, by its place
};

/// A character that people type for a sign of angles.
struct AngleSignRow
{
    char16_t character; ///< as it is typed
    AngleSign sign;     ///< what it says
};

/// Every sign that a reader of typed angles knows. The first of its kind is the one that this
/// library prints. Two equal minute signs are a second sign, too.
inline constexpr AngleSignRow angleSignRows[] = {
    {u'\u00B0', AngleSign::Degree}, // degree sign
    {u'\u00BA', AngleSign::Degree}, // masculine ordinal indicator, a key of some keyboards
    {u'\u02DA', AngleSign::Degree}, // ring above
    {u'd', AngleSign::Degree},      //
    {u'D', AngleSign::Degree},      //
    {u'\u2032', AngleSign::Minute}, // prime
    {u'\'', AngleSign::Minute},     //
    {u'\u2019', AngleSign::Minute}, // what word processors make of an apostrophe
    {u'\u2033', AngleSign::Second}, // double prime
    {u'"', AngleSign::Second},      //
    {u'\u201D', AngleSign::Second}, // what word processors make of a quotation mark
    {u':', AngleSign::Colon},
};

/// What a character is a sign of.
constexpr AngleSign angleSignOf(char16_t character)
{
    for (const AngleSignRow &row : angleSignRows) {
        if (row.character == character)
            return row.sign;
    }
    return AngleSign::None;
}

/// The sign of a kind that is printed; 0 for `AngleSign::None`.
constexpr char16_t printedAngleSign(AngleSign sign)
{
    for (const AngleSignRow &row : angleSignRows) {
        if (row.sign == sign)
            return row.character;
    }
    return 0;
}

/// The characters of a kind, one behind the other: with brackets around them a class of a
/// `QRegularExpression`, for which none of them has a meaning of its own. May be called on any
/// thread.
KELSTD_EXPORT QString angleSigns(AngleSign sign);

/// The characters of every kind. May be called on any thread.
KELSTD_EXPORT QString angleSigns();

} // namespace KelStd
