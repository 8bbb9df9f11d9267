#pragma once

#include <KelStd/Failure.h>

namespace KelStd {

/// Why a text that somebody typed is no number, or no angle.
enum class TypedValueFault
{
    None = 0,    ///< no failure
    Missing,     ///< the text is empty
    NotANumber,  ///< no decimal number with Latin digits
    NotFinite,   ///< an infinity, no number by name ("nan"), or too large for a double
    Doubtful,    ///< it can be read in two ways, such as 5E1 and 00030.25
    WrongLetter, ///< a hemisphere letter where none may be, of the other coordinate, twice, or with
                 ///< a plus or minus
    MissingSign, ///< a number without its sign, or a sign without its number
    WrongOrder,  ///< not degrees, minutes and seconds, each once and none left out
    TooLarge,    ///< minutes or seconds of 60 or more
    NotAnAngle,  ///< anything else that is in no form of an angle
};

/// The text follows the name of a value: "is missing", or it begins with a quotation of what was
/// typed: "\"5,25\" is not a number". It is English and has no line.
using TypedValueFailure = Failure<TypedValueFault>;

} // namespace KelStd
