#include <KelStd/positions/FixedDecimals.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>

namespace KelStd::positions {

#if defined(__SIZEOF_INT128__)

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t powersOfTen[] = {1U,
                                         10U,
                                         100U,
                                         1'000U,
                                         10'000U,
                                         100'000U,
                                         1'000'000U,
                                         10'000'000U,
                                         100'000'000U,
                                         1'000'000'000U,
                                         10'000'000'000U,
                                         100'000'000'000U,
                                         1'000'000'000'000U,
                                         10'000'000'000'000U,
                                         100'000'000'000'000U,
                                         1'000'000'000'000'000U,
                                         10'000'000'000'000'000U,
                                         100'000'000'000'000'000U,
                                         1'000'000'000'000'000'000U,
                                         10'000'000'000'000'000'000U};

constexpr int maxDecimals = static_cast<int>(std::size(powersOfTen)) - 1;
constexpr std::uint64_t limit = powersOfTen[18];

// Of an IEEE 754 double.
constexpr int fractionBits = 52;
constexpr int exponentBias = 1023;
constexpr std::uint64_t implicitBit = std::uint64_t{1} << fractionBits;

/// The magnitude of the double of these bits, times ten to the `decimals`, rounded.
std::optional<std::uint64_t> scaled(std::uint64_t magnitudeBits, int decimals)
{
    const int exponent = static_cast<int>(magnitudeBits >> fractionBits);
    const std::uint64_t whole = (magnitudeBits & (implicitBit - 1)) | implicitBit;
    const int shift = exponentBias + fractionBits - exponent;
    if (shift <= 0)
        return std::nullopt; // 2^53 or more, or no number
    constexpr int productBits = fractionBits + 1 + 64;
    if (shift > productBits + 1)
        return 0; // less than half a unit, subnormal numbers and zero among them
    const Wide half = Wide{1} << (shift - 1);
    const Wide rounded = (Wide{whole} * powersOfTen[decimals] + half) >> shift;
    if (rounded >= limit)
        return std::nullopt;
    return static_cast<std::uint64_t>(rounded);
}

/// "00" to "99", one after the other.
constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Writes the digits of `number` in front of `end`, at least `count`, and says where they begin.
char *writeDigits(std::uint64_t number, int count, char *end)
{
    char *begin = end;
    while (number >= 10) {
        begin -= 2;
        std::memcpy(begin, &digitPairs[2 * (number % 100)], 2);
        number /= 100;
    }
    if (number > 0)
        *--begin = static_cast<char>('0' + number);
    while (end - begin < count)
        *--begin = '0';
    return begin;
}

} // namespace

std::size_t writeFixedDecimals(double value, int decimals, char (&text)[maxFixedCharacters])
{
    if (decimals < 0 || decimals > maxDecimals)
        return 0;
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    constexpr std::uint64_t signBit = std::uint64_t{1} << 63;
    const auto number = scaled(bits & ~signBit, decimals);
    if (!number)
        return 0;
    char digits[maxFixedCharacters];
    char *const end = std::end(digits);
    const char *const begin = writeDigits(*number, decimals + 1, end);
    const char *const point = end - decimals;

    char *next = text;
    if ((bits & signBit) != 0 && *number != 0)
        *next++ = '-';
    next = std::copy(begin, point, next);
    if (decimals > 0)
        *next++ = '.';
    next = std::copy(point, static_cast<const char *>(end), next);
    return static_cast<std::size_t>(next - text);
}

#else

std::size_t writeFixedDecimals(double /*value*/, int /*decimals*/,
                               char (&/*text*/)[maxFixedCharacters])
{
    return 0;
}

#endif

} // namespace KelStd::positions
