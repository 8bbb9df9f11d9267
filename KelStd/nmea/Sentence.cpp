#include <KelStd/nmea/Sentence.h>

#include <algorithm>

namespace KelStd::nmea {

namespace {

bool isAddressCharacter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

/// Noise may hold any sign, an address is rarely part of it.
bool beginsAsSentence(std::string_view text)
{
    return text.size() >= 3 && (text[0] == '$' || text[0] == '!') && isAddressCharacter(text[1])
           && isAddressCharacter(text[2]);
}

/// The value of two hexadecimal digits.
std::optional<unsigned> hexadecimal(std::string_view digits)
{
    if (digits.size() != 2)
        return std::nullopt;
    unsigned value = 0;
    for (const char c : digits) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                                 : -1;
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + static_cast<unsigned>(digit);
    }
    return value;
}

std::string_view withoutBlanksBehind(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(" \t");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::vector<std::string_view> fieldsOf(std::string_view body)
{
    std::vector<std::string_view> fields;
    fields.reserve(20);
    for (std::size_t begin = 0;;) {
        const std::size_t end = body.find(',', begin);
        fields.push_back(body.substr(begin, end - begin));
        if (end == std::string_view::npos)
            return fields;
        begin = end + 1;
    }
}

} // namespace

unsigned char checksumOf(std::string_view characters)
{
    unsigned char sum = 0;
    for (const char c : characters)
        sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(c));
    return sum;
}

std::optional<Sentence> readSentence(std::string_view text, SentenceFailure &failure)
{
    const auto fail = [&failure](SentenceFault fault, const QString &reason) {
        failure = {fault, reason};
        return std::nullopt;
    };
    failure = {};
    text = withoutBlanksBehind(text);
    if (!beginsAsSentence(text))
        return fail(SentenceFault::NotASentence, QStringLiteral("it does not begin as a sentence"));
    if (text.size() > maxSentenceBytes) {
        return fail(SentenceFault::Malformed,
                    QStringLiteral("it is longer than %1 bytes").arg(maxSentenceBytes));
    }
    const std::size_t star = text.find('*');
    if (star == std::string_view::npos)
        return fail(SentenceFault::NoChecksum, QStringLiteral("it has no checksum"));
    constexpr std::size_t checksumSize = 2;
    const auto said = hexadecimal(text.substr(star + 1, checksumSize));
    std::string_view body = text.substr(1, star - 1);
    if (!said || *said != checksumOf(body)) {
        return fail(SentenceFault::BadChecksum,
                    QStringLiteral("its checksum is not that of its characters"));
    }
    if (text.size() > star + 1 + checksumSize)
        return fail(SentenceFault::TextBehind, QStringLiteral("text follows its checksum"));
    if (!std::all_of(body.begin(), body.end(), isPrintable))
        return fail(SentenceFault::Malformed, QStringLiteral("it holds control characters"));

    const std::string_view address = body.substr(0, body.find(','));
    if (!std::all_of(address.begin(), address.end(), isAddressCharacter))
        return fail(SentenceFault::Malformed, QStringLiteral("its address is none"));
    Sentence sentence;
    // A proprietary address is P and what its maker likes.
    constexpr std::size_t talkerSize = 2;
    constexpr std::size_t addressSize = 5;
    const bool hasTalker = address.size() == addressSize && address[0] != 'P';
    sentence.talker = hasTalker ? address.substr(0, talkerSize) : std::string_view();
    sentence.type = hasTalker ? address.substr(talkerSize) : address;
    if (body.size() > address.size())
        sentence.fields = fieldsOf(body.substr(address.size() + 1));
    return sentence;
}

} // namespace KelStd::nmea
