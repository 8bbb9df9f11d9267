#include "support/AngleSamples.h"
#include "support/Printers.h"

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/text/TypedNumber.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>
#include <random>

namespace KelStd {
namespace {

constexpr int maxDecimals = 20;

/// What Qt prints, without the sign of a zero.
std::string printed(double value, int decimals)
{
    std::string text = QString::number(value, 'f', decimals).toStdString();
    if (text.front() == '-' && text.find_first_of("123456789") == std::string::npos)
        text.erase(0, 1);
    return text;
}

std::string appended(double value, int decimals)
{
    QByteArray bytes;
    positions::appendNumber(bytes, value, decimals);
    return bytes.toStdString();
}

bool isSame(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

/// The nearest double by the C library, whatever the locale of the process.
double nearest(const std::string &text)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text.c_str(), nullptr, plain);
}

TEST(NumberText, TakesTheNearestNumberOfDecimalsFrom0To255)
{
    const struct
    {
        int decimals;
        int zeros; ///< behind the point of 1
    } rows[] = {{-300, 0}, {-1, 0}, {0, 0}, {1, 1}, {254, 254}, {255, 255}, {256, 255}, {300, 255}};
    for (const auto &row : rows) {
        const std::string expected =
            row.zeros == 0 ? "1" : "1." + std::string(static_cast<std::size_t>(row.zeros), '0');
        EXPECT_EQ(positions::numberText(1.0, row.decimals).toStdString(), expected);
        EXPECT_EQ(appended(1.0, row.decimals), expected) << row.decimals;
    }
}

TEST(NumberText, HasTheDecimalsAndNoExponent)
{
    EXPECT_EQ(positions::numberText(5.25, 4), QStringLiteral("5.2500"));
    EXPECT_EQ(positions::numberText(-5.26, 1), QStringLiteral("-5.3"));
    EXPECT_EQ(positions::numberText(1e15, 2), QStringLiteral("1000000000000000.00"));
    EXPECT_EQ(positions::numberText(1e-9, 4), QStringLiteral("0.0000"));
}

TEST(NumberText, AZeroHasNoSign)
{
    EXPECT_EQ(positions::numberText(-0.0, 4), QStringLiteral("0.0000"));
    EXPECT_EQ(positions::numberText(-0.00004, 4), QStringLiteral("0.0000"));
    EXPECT_EQ(positions::numberText(-0.00006, 4), QStringLiteral("-0.0001"));
    EXPECT_EQ(positions::numberText(-0.4, 0), QStringLiteral("0"));
}

struct PrintedNumber
{
    double value;
    int decimals;
    const char *text;
};

// A tie goes away from zero. Every one of these numbers is a double as it stands, but for the tens.
constexpr PrintedNumber printedNumbers[] = {
    {100.015625, 5, "100.01563"},
    {-100.015625, 5, "-100.01563"},
    {100.046875, 5, "100.04688"},
    {0.5, 0, "1"},
    {1.5, 0, "2"},
    {2.5, 0, "3"},
    {-0.5, 0, "-1"},
    {-2.5, 0, "-3"},
    {0.25, 1, "0.3"},
    {0.125, 2, "0.13"},
    {0.375, 2, "0.38"},
    {-0.125, 2, "-0.13"},
    {0.0078125, 6, "0.007813"},
    {999999999999999.5, 0, "1000000000000000"},
    {0.15, 1, "0.1"},   // 0.1499999999999999944...
    {1.005, 2, "1.00"}, // 1.00499999999999989...
    {2.675, 2, "2.67"}, // 2.67499999999999982...
    {0.49999999999999994, 0, "0"},
    {0.50000000000000011, 0, "1"},
    {0.0, 0, "0"},
    {-0.0, 0, "0"},
    {-0.0, 3, "0.000"},
    {-0.0004, 3, "0.000"},
    {-0.0006, 3, "-0.001"},
    {-0.25, 0, "0"},
    {DBL_MIN, 5, "0.00000"},
    {-DBL_MIN, 20, "0.00000000000000000000"},
    {1e15, 2, "1000000000000000.00"},
    {999999999999999.0, 5, "999999999999999.00000"},
    {123456789.987654321, 5, "123456789.98765"},
    {0.1, 20, "0.10000000000000000555"},
};

TEST(AppendNumber, PrintsAsIsKnownByHand)
{
    for (const PrintedNumber &row : printedNumbers) {
        EXPECT_EQ(appended(row.value, row.decimals), row.text) << row.value;
        EXPECT_EQ(positions::numberText(row.value, row.decimals), QString::fromLatin1(row.text));
    }
}

TEST(AppendNumber, StandsBehindWhatIsThere)
{
    QByteArray bytes = "x,";
    positions::appendNumber(bytes, -5.25, 1);
    EXPECT_EQ(bytes, QByteArray("x,-5.3"));
}

TEST(AppendNumber, IsWhatQtPrintsForNumbersOfEveryMagnitude)
{
    std::mt19937_64 random(20260101);
    std::uniform_real_distribution<double> exponent(-25.0, 18.0);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    for (int i = 0; i < 15 * test::anglesPerTest; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random));
        const int decimals = i % (maxDecimals + 1);
        const std::string expected = printed(value, decimals);
        ASSERT_EQ(appended(value, decimals), expected) << value;
        if (i % 16 == 0) {
            ASSERT_EQ(positions::numberText(value, decimals).toStdString(), expected) << value;
        }
    }
}

/// Multiples of powers of 1/2, many of them in the middle between two numbers of some decimals.
TEST(AppendNumber, IsWhatQtPrintsInTheMiddleBetweenTwoNumbers)
{
    std::mt19937_64 random(20260102);
    for (int i = 0; i < test::anglesPerTest; ++i) {
        const int decimals = i % (maxDecimals + 1);
        const auto odd = static_cast<double>(2 * (random() % 50000000) + 1);
        const double middle = std::ldexp(i % 2 == 0 ? odd : -odd, -(decimals + 1));
        for (const double value : {middle, std::nextafter(middle, 1e9),
                                   std::nextafter(middle, -1e9), 2.0 * middle, middle / 2.0})
            ASSERT_EQ(appended(value, decimals), printed(value, decimals)) << value;
    }
}

TEST(AppendNumber, IsWhatQtPrintsAtTheEndsOfTheScale)
{
    for (const double magnitude :
         {0.0, DBL_MIN, DBL_TRUE_MIN, 1e-300, 1e-20, 9.5e-21, 0.5e-20, 1e14, 99999999999999.9,
          999999999999999.9, std::nextafter(1e15, 0.0), 1e15, std::nextafter(1e15, 1e16), 1e16,
          1e21, 1e22, 1e300, DBL_MAX}) {
        for (const double value : {magnitude, -magnitude}) {
            for (int decimals = 0; decimals <= maxDecimals; ++decimals)
                EXPECT_EQ(appended(value, decimals), printed(value, decimals)) << value;
        }
    }
}

TEST(ReadPlainNumber, GivesTheNearestDouble)
{
    std::mt19937_64 random(20260103);
    for (int i = 0; i < 5 * test::anglesPerTest; ++i) {
        const std::size_t length = 1 + random() % 40;
        std::string text;
        while (text.size() < length)
            text += static_cast<char>('0' + random() % (i % 5 == 0 ? 2 : 10));
        if (length > 1 && random() % 3 == 0)
            text.front() = '-';
        const std::size_t first = text.front() == '-' ? 2 : 1;
        if (length > first + 1 && random() % 4 != 0)
            text[first + random() % (length - first - 1)] = '.';
        double value = 0.0;
        ASSERT_TRUE(positions::readPlainNumber(text, value)) << text;
        ASSERT_TRUE(isSame(value, nearest(text))) << text;
    }
}

/// Digits that lie next to the middle between two doubles.
TEST(ReadPlainNumber, RoundsAsItShouldNextToTheMiddleOfTwoDoubles)
{
    std::mt19937_64 random(20260104);
    for (int i = 0; i < test::anglesPerTest; ++i) {
        const double value = std::ldexp(static_cast<double>((1ULL << 52) + random() % (1ULL << 52)),
                                        -static_cast<int>(random() % 30) - 30);
        const int decimals = 10 + static_cast<int>(random() % 20);
        for (const double shown : {value, std::nextafter(value, 0.0)}) {
            const std::string text = QString::number(shown, 'f', decimals).toStdString();
            double read = 0.0;
            ASSERT_EQ(positions::readPlainNumber(text, read), text.size() <= 40) << text;
            ASSERT_TRUE(text.size() > 40 || isSame(read, nearest(text))) << text;
        }
    }
    double value = 0.0;
    ASSERT_TRUE(positions::readPlainNumber("9007199254740993", value)); // 2^53 + 1: to the even one
    EXPECT_EQ(value, 9007199254740992.0);
    ASSERT_TRUE(positions::readPlainNumber("9007199254740993.0000000000000000000001", value));
    EXPECT_EQ(value, 9007199254740994.0);
}

TEST(ReadPlainNumber, AZeroKeepsItsSign)
{
    double value = 1.0;
    ASSERT_TRUE(positions::readPlainNumber("-0", value));
    EXPECT_TRUE(isSame(value, -0.0));
    ASSERT_TRUE(positions::readPlainNumber("0.000", value));
    EXPECT_TRUE(isSame(value, 0.0));
}

TEST(ReadPlainNumber, LeavesEverythingElseToMoreCare)
{
    const std::string tooLong(41, '1');
    for (const std::string &text : {std::string(),
                                    std::string("-"),
                                    std::string("."),
                                    std::string("1."),
                                    std::string(".5"),
                                    std::string("-.5"),
                                    std::string("-1."),
                                    std::string("+1"),
                                    std::string("1e5"),
                                    std::string("1E5"),
                                    std::string("1.2.3"),
                                    std::string("1..2"),
                                    std::string(" 1"),
                                    std::string("1 "),
                                    std::string("1 2"),
                                    std::string("--1"),
                                    std::string("1-"),
                                    std::string("nan"),
                                    std::string("inf"),
                                    std::string("-inf"),
                                    std::string("0x10"),
                                    std::string("1,5"),
                                    std::string("1'000"),
                                    std::string("1_0"),
                                    std::string("1\0"
                                                "2",
                                                3),
                                    std::string("\xD9\xA1"),
                                    tooLong,
                                    "-" + tooLong.substr(1) + "1"}) {
        double value = 0.0;
        EXPECT_FALSE(positions::readPlainNumber(text, value)) << text;
    }
    double value = 0.0;
    EXPECT_TRUE(positions::readPlainNumber(tooLong.substr(1), value));
}

TEST(ReadNumber, SaysWhyATextIsNone)
{
    TypedValueFailure failure;
    EXPECT_EQ(readNumber(QStringLiteral("-5.25"), failure), -5.25);
    for (const char *text : {"", " ", "5.25m", "1 2", "0x10", "1,5", "--1", "1e", "e5", "nan",
                             "inf", "-infinity", "1e400"}) {
        failure = {};
        EXPECT_EQ(readNumber(QString::fromLatin1(text), failure), std::nullopt) << text;
        EXPECT_TRUE(failure) << text;
        EXPECT_FALSE(failure.text.isEmpty()) << text;
    }
}

TEST(CsvField, IsQuotedWhenItHasToBe)
{
    struct Row
    {
        const char *text;
        const char *field;
    };
    const Row rows[] = {
        {"", ""},
        {"P1", "P1"},
        {"Point 1", "Point 1"},
        {"6\" pipe", "\"6\"\" pipe\""},
        {"a,b", "\"a,b\""},
        {"a;b", "\"a;b\""},
        {"#1", "\"#1\""},
        {"1#", "1#"},
        {" a", "\" a\""},
    };
    for (const Row &row : rows) {
        QByteArray bytes = "x,";
        positions::appendCsvField(bytes, row.text);
        EXPECT_EQ(bytes, QByteArray("x,") + row.field);
    }
}

} // namespace
} // namespace KelStd
