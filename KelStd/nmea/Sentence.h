#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>

#include <QtCore/QString>

#include <optional>
#include <string_view>
#include <vector>

/// What GNSS receivers say in sentences of NMEA 0183. Everything here but the classes may be called
/// on any thread; an object is used by one thread at a time.
namespace KelStd::nmea {

/// A sentence has 82 characters at most, by the standard; receivers that give more decimals than it
/// foresaw go beyond that.
inline constexpr int maxSentenceBytes = 255;

/// Why a text is no sentence that can be used.
enum class SentenceFault
{
    None,         ///< no failure
    NotASentence, ///< it does not begin as one: "$" or "!" and an address
    NoChecksum,   ///< its end is missing, and with it the checksum
    BadChecksum,  ///< the checksum is another one
    TextBehind,   ///< the checksum is right, and more than blanks stand behind it
    Malformed     ///< it is too long, or a field holds what the field cannot hold
};

/// A failure of one of the kinds of `SentenceFault`.
using SentenceFailure = Failure<SentenceFault>;

/// A sentence, cut into its fields. Everything looks into the text that was read.
struct Sentence
{
    std::string_view talker;              ///< "GP", "GN"; empty of a proprietary sentence
    std::string_view type;                ///< "GGA"; the whole address of a proprietary sentence
    std::vector<std::string_view> fields; ///< behind the address; an empty field is not given

    /// The field of that place, from 1 as the standard counts them; empty where there is none.
    std::string_view field(std::size_t place) const
    {
        return place >= 1 && place <= fields.size() ? fields[place - 1] : std::string_view();
    }
};

/// Reads a sentence: "$", an address, fields, "*" and the checksum, which has to be right.
///
/// \param text from the first character to the last, without the line's end; blanks may follow
/// \param failure becomes why there is no sentence, or no failure
/// \return nothing for a text that is no sentence
KELSTD_EXPORT std::optional<Sentence> readSentence(std::string_view text, SentenceFailure &failure);

/// The exclusive or of all characters between "$" and "*", as NMEA 0183 has it.
KELSTD_EXPORT unsigned char checksumOf(std::string_view characters);

} // namespace KelStd::nmea
