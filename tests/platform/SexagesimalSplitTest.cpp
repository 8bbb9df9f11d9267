#include <KelStd/platform/Toolkits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace KelStd {
namespace {

struct Split
{
    double degree;
    double minute;
    double second;
};

/// The outputs start as numbers that no split gives, so that a forgotten one shows.
Split split(double value, unsigned char decimals = 2)
{
    Split parts{-777.0, -777.0, -777.0};
    tk::Toolkits::GetDegreeMinuteSecond(value, &parts.degree, &parts.minute, &parts.second,
                                        decimals);
    return parts;
}

std::string described(double value, const Split &parts)
{
    std::ostringstream out;
    out << std::setprecision(std::numeric_limits<double>::max_digits10) << value << " is "
        << parts.degree << " / " << parts.minute << " / " << parts.second;
    return out.str();
}

/// Empty when the split of `value` keeps every promise, otherwise the broken one.
std::string brokenPromise(double value, const Split &p)
{
    if (std::trunc(p.degree) != p.degree || std::trunc(p.minute) != p.minute)
        return "degrees and minutes are whole";
    if (!(std::abs(p.minute) < 60.0) || !(std::abs(p.second) < 60.0))
        return "minutes and seconds stay below 60";
    for (const double part : {p.degree, p.minute, p.second}) {
        if (value >= 0.0 ? std::signbit(part) : part > 0.0)
            return "every component has the sign of the value";
    }
    return {};
}

/// Whether the three components together denote `value`: no other double lies nearer to them.
///
/// The seconds that degrees and minutes leave over are exact in a long double (a double's 53 bits
/// times 3600 are 61), so that the comparison itself rounds nothing.
bool recombine(double value, const Split &p)
{
    const long double rest =
        (static_cast<long double>(value) - p.degree) * 3600.0L - 60.0L * p.minute;
    const double size = std::abs(value);
    const double spacing = size - std::nextafter(size, 0.0);
    return std::abs(p.second - rest) <= 3600.0L * spacing / 2.0L;
}

/// Below this angle [degrees] a double of seconds is coarser than the angle's own.
constexpr double finest = 1.0 / 64.0;

TEST(DegreeMinuteSecond, SplitsExactlyWithBinaryNoiseSnapped)
{
    struct Row
    {
        double value;
        Split expected;
    };
    const Row rows[] = {
        {116.1, {116, 6, 0}}, // 116 05 59.99999999 by plain arithmetic
        {0.0, {0, 0, 0}},
        {30.5, {30, 30, 0}},
        {30.25, {30, 15, 0}},
        {180.0, {180, 0, 0}},
        {0.1, {0, 6, 0}},
        {0.01, {0, 0, 36}},
        {1.0 / 3600.0, {0, 0, 1}},
        {59.0 / 60.0, {0, 59, 0}},
        {12.582438888888889, {12, 34, 56.78}}, // 12 34 56.78, to the last digit of a double
        {-116.1, {-116, -6, 0}},
        {-0.5, {0, -30, 0}},
        {-1.0 / 3600.0, {0, 0, -1}},
        {359.99999999999994, {359, 59, 59.9999999998}},
        {2251799813685249.5, {2251799813685249.0, 30, 0}},
        {1e18, {1e18, 0, 0}},
        {-1e18, {-1e18, 0, 0}},
    };
    for (const Row &row : rows) {
        const Split parts = split(row.value);
        SCOPED_TRACE(described(row.value, parts));
        EXPECT_EQ(parts.degree, row.expected.degree);
        EXPECT_EQ(parts.minute, row.expected.minute);
        EXPECT_EQ(parts.second, row.expected.second);
        EXPECT_EQ(brokenPromise(row.value, parts), "");
    }
}

TEST(DegreeMinuteSecond, EveryTenthOfADegreeIsWholeMinutes)
{
    for (int tenths = 0; tenths <= 3600; ++tenths) {
        const double value = tenths / 10.0;
        const Split parts = split(value);
        ASSERT_EQ(parts.degree, tenths / 10) << described(value, parts);
        ASSERT_EQ(parts.minute, tenths % 10 * 6) << described(value, parts);
        ASSERT_EQ(parts.second, 0.0) << described(value, parts);
    }
}

TEST(DegreeMinuteSecond, TheHintNeverCostsADigit)
{
    for (const int decimals : {0, 1, 2, 4, 15, 255}) {
        SCOPED_TRACE(decimals);
        const Split parts = split(12.582438888888889, static_cast<unsigned char>(decimals));
        EXPECT_EQ(parts.degree, 12.0);
        EXPECT_EQ(parts.minute, 34.0);
        EXPECT_EQ(parts.second, 56.78);
        // One double below 116.1: 5.1e-11 seconds less, which is more than noise.
        const Split below = split(std::nextafter(116.1, 0.0), static_cast<unsigned char>(decimals));
        EXPECT_EQ(below.minute, 5.0);
        EXPECT_LT(below.second, 60.0);
        EXPECT_GT(below.second, 59.9999999999);
    }
}

TEST(DegreeMinuteSecond, AZeroNeverCarriesAMinus)
{
    for (const double value : {-30.0, -0.5, -1.0 / 3600.0, -116.1, -0.0}) {
        const Split parts = split(value);
        for (const double part : {parts.degree, parts.minute, parts.second})
            EXPECT_FALSE(part == 0.0 && std::signbit(part)) << described(value, parts);
    }
}

TEST(DegreeMinuteSecond, AValueThatIsNotFiniteIsNoAngle)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {infinity, -infinity}) {
        const Split parts = split(value);
        EXPECT_EQ(parts.degree, value);
        EXPECT_EQ(parts.minute, 0.0);
        EXPECT_EQ(parts.second, 0.0);
    }
    const Split parts = split(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(parts.degree));
    EXPECT_EQ(parts.minute, 0.0);
    EXPECT_EQ(parts.second, 0.0);
}

TEST(DegreeMinuteSecond, AHundredThousandAnglesRecombineToTheSameDouble)
{
    std::mt19937_64 random(19840601);
    std::uniform_real_distribution<double> anyAngle(-360.0, 360.0);
    for (int i = 0; i < 100000; ++i) {
        const double value = anyAngle(random);
        const Split parts = split(value);
        ASSERT_EQ(brokenPromise(value, parts), "") << described(value, parts);
        ASSERT_TRUE(std::abs(value) < finest || recombine(value, parts)) << described(value, parts);
    }
}

TEST(DegreeMinuteSecond, AnglesAroundEveryCarryRecombineToTheSameDouble)
{
    // Every whole second of a few degrees, and the doubles beside it.
    for (const int degree : {0, 1, 7, 59, 90, 116, 179}) {
        for (int second = 0; second <= 3600; ++second) {
            const double at = degree + second / 3600.0;
            for (const double value :
                 {at, std::nextafter(at, 1000.0), std::nextafter(at, -1000.0), -at}) {
                const Split parts = split(value);
                ASSERT_EQ(brokenPromise(value, parts), "") << described(value, parts);
                ASSERT_TRUE(std::abs(value) < finest || recombine(value, parts))
                    << described(value, parts);
            }
        }
    }
}

TEST(DegreeMinuteSecond, SmallAnglesKeepFifteenDigits)
{
    std::mt19937_64 random(2718281828);
    std::uniform_real_distribution<double> exponent(-15.0, 0.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::pow(10.0, exponent(random));
        const Split parts = split(value);
        ASSERT_EQ(brokenPromise(value, parts), "") << described(value, parts);
        // Five roundings of half a last bit (1.1e-16) each: the snapping, the seconds' own, and
        // three in the arithmetic of this line and the next.
        const double seconds = (parts.degree * 60.0 + parts.minute) * 60.0 + parts.second;
        ASSERT_NEAR(seconds, value * 3600.0, value * 3600.0 * 5.6e-16) << described(value, parts);
    }
}

TEST(DegreeMinuteSecond, TheCheckOfThisTestSeesAnotherDouble)
{
    EXPECT_TRUE(recombine(116.1, {116, 6, 0}));
    EXPECT_FALSE(recombine(std::nextafter(116.1, 0.0), {116, 6, 0}));
    EXPECT_FALSE(recombine(std::nextafter(116.1, 200.0), {116, 6, 0}));
    EXPECT_FALSE(recombine(116.1, {116, 5, 59.9999999999}));
    EXPECT_TRUE(recombine(-0.5, {0, -30, 0}));
}

} // namespace
} // namespace KelStd
