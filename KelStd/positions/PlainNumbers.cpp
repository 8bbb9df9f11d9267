#include <KelStd/positions/PlainNumbers.h>

#include <KelStd/coord/Enumerations.h>
#include <KelStd/positions/FixedDecimals.h>
#include <KelStd/text/CoordStringHelper.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace KelStd::positions {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Whether the value lies in the middle between two numbers of so many decimals. There the two ways
/// of printing part: one rounds to even, the other away from zero.
bool isTie(double value, int decimals)
{
    // Such a middle is an odd multiple of half of 10^-decimals, which is 1 / (2^(decimals + 1) *
    // 5^decimals). A double can be one only where the fives cancel: then 2^(decimals + 1) times the
    // value is an odd whole number.
    const double doubled = std::ldexp(value, decimals + 1);
    return doubled == std::floor(doubled) && std::fmod(doubled, 2.0) != 0.0;
}

/// The formatter takes the decimals in a byte.
unsigned char withinByte(int decimals)
{
    constexpr int maxByte = std::numeric_limits<unsigned char>::max();
    return static_cast<unsigned char>(std::clamp(decimals, 0, maxByte));
}

} // namespace

QString numberText(double value, int decimals)
{
    return withoutSignOfZero(CoordStringHelper::GetFormatString(
        ValueType_Double, value, Unit_None, Unit_None, Format_None, withinByte(decimals), false));
}

QString withoutSignOfZero(QString text)
{
    const auto isNonZeroDigit = [](QChar c) {
        return c >= QLatin1Char('1') && c <= QLatin1Char('9');
    };
    if (text.startsWith(QLatin1Char('-'))
        && std::none_of(text.cbegin(), text.cend(), isNonZeroDigit))
        text.remove(0, 1);
    return text;
}

void appendNumber(QByteArray &bytes, double value, int decimals)
{
    char fixed[maxFixedCharacters];
    if (const std::size_t size = writeFixedDecimals(value, decimals, fixed); size > 0) {
        bytes.append(fixed, static_cast<int>(size));
        return;
    }
    constexpr double maxValue = 1e15;
    constexpr int maxDecimals = 20;
    constexpr std::size_t maxCharacters = 64;
    if (!(std::abs(value) < maxValue) || decimals < 0 || decimals > maxDecimals
        || isTie(value, decimals)) {
        bytes += numberText(value, decimals).toLatin1();
        return;
    }
    char text[maxCharacters];
    const char *const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
    const char *begin = text;
    if (*begin == '-' && std::none_of(begin, end, [](char c) { return isDigit(c) && c != '0'; }))
        ++begin;
    bytes.append(begin, static_cast<int>(end - begin));
}

bool readPlainNumber(std::string_view text, double &value)
{
    constexpr std::size_t maxCharacters = 40;
    const std::string_view digits = text.substr(!text.empty() && text.front() == '-' ? 1 : 0);
    const bool isPlain =
        text.size() <= maxCharacters && !digits.empty() && isDigit(digits.front())
        && isDigit(digits.back())
        && std::all_of(digits.begin(), digits.end(), [](char c) { return isDigit(c) || c == '.'; });
    if (!isPlain)
        return false;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    return error == std::errc() && stop == end; // a second point stops it
}

} // namespace KelStd::positions
