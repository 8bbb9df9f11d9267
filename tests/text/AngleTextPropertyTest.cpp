// Printed angles are the value, rounded to the decimals shown, and come back when they are read.

#include "support/AngleSamples.h"
#include "support/ShownAngle.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace KelStd {
namespace {

using test::AngleSample;
using test::AngleSamples;
using test::halfSpacing;
using test::halfUnit;
using test::readAngle;
using test::ShownAngle;
using test::text;
using test::Zeros;
using Helper = CoordStringHelper;

QString printed(EValueType type, double value, EUnit from, EUnit to, EFormat format,
                const AngleSample &sample, Zeros zeros)
{
    return Helper::GetFormatString(type, value, from, to, format,
                                   static_cast<unsigned char>(sample.precision),
                                   zeros == Zeros::Erased);
}

std::string at(const QString &shown, const std::string &wrong)
{
    return shown.toStdString() + ": " + wrong;
}

/// An angle in degrees, minutes and seconds, whose value is in degrees or in arc seconds.
std::string wrongSexagesimal(const AngleSample &sample, EUnit unit, Zeros zeros)
{
    const bool inDegrees = unit == Unit_Degree;
    const double value = inDegrees ? sample.degrees : sample.degrees * 3600.0;
    const long double arcSeconds = inDegrees ? 3600.0L * value : value;
    // Within half a spacing a short decimal is meant; a conversion rounds by as much again.
    const long double noise =
        (inDegrees ? 3600.0L : 7200.0L) * halfSpacing(inDegrees ? value : value / 3600.0);
    const QString shown = printed(ValueType_Angle, value, unit, Unit_Degree,
                                  Format_DegreeMinuteSecond, sample, zeros);
    const auto angle = readAngle(shown);
    if (!angle)
        return at(shown, "not readable");
    std::string wrong = test::wrongSexagesimal(*angle, arcSeconds, sample.precision, noise)
                        + wrongMinus(*angle, value < 0.0);
    for (const auto *part : {&angle->degrees, &angle->minutes, &angle->seconds}) {
        // Degrees and minutes have the decimals of the seconds.
        if (*part && zeros == Zeros::Kept && (*part)->decimals != sample.precision)
            wrong += "other decimals than asked for";
        if (*part && zeros == Zeros::Erased && (*part)->decimals > 0 && (*part)->fraction % 10 == 0)
            wrong += "a zero at the end";
    }
    if (!angle->letter.isNull())
        wrong += "a letter";
    if (!wrong.empty())
        return at(shown, wrong);
    wrong = test::wrongSexagesimalReading(shown, *angle, arcSeconds / 3600.0L,
                                          (halfUnit(sample.precision) + noise) / 3600.0L);
    return wrong.empty() ? wrong : at(shown, wrong);
}

/// A longitude or latitude in degrees, minutes and seconds: the angle's text without the minus of
/// the degrees, and a letter.
std::string wrongHemisphere(const AngleSample &sample, EValueType type, Zeros zeros)
{
    QString expected = printed(ValueType_Angle, sample.degrees, Unit_Degree, Unit_Degree,
                               Format_DegreeMinuteSecond, sample, zeros);
    if (expected.contains(QChar(0x00B0)) && expected.startsWith(QLatin1Char('-')))
        expected.remove(0, 1);
    const char *letters = type == ValueType_Longitude ? "EW" : "NS";
    expected += QLatin1Char(letters[sample.degrees < 0.0 ? 1 : 0]);
    const QString shown = printed(type, sample.degrees, Unit_Degree, Unit_Degree,
                                  Format_DegreeMinuteSecond, sample, zeros);
    if (shown != expected)
        return at(shown, "not " + expected.toStdString());
    QVariant value;
    const auto angle = readAngle(shown);
    return angle && Helper::GetValueFromString(type, Unit_Degree, shown, value)
                   && std::abs(value.toDouble() - angle->ownSignSum()) < 1e-12L
               ? ""
               : at(shown, "not read without its letter");
}

/// An angle in a style of one number, printed in the unit in which it stands.
std::string wrongDecimal(const AngleSample &sample, EValueType type, EFormat format, Zeros zeros)
{
    const EUnit unit = format == Format_Second ? Unit_Second : Unit_Degree;
    const QString shown = printed(type, sample.degrees, unit, unit, format, sample, zeros);
    const auto angle = readAngle(shown);
    if (!angle)
        return at(shown, "not readable");
    const auto &number = format == Format_Degree   ? angle->degrees
                         : format == Format_Second ? angle->seconds
                                                   : angle->plain;
    if (!number || !angle->hasOnePart())
        return at(shown, "another style");
    // A style's own reader gives the number back, in degrees.
    const long double scale = format == Format_Second   ? 1.0L / 3600.0L
                              : format == Format_Radian ? 57.29577951308232L
                                                        : 1.0L;
    std::string wrong = test::wrongNumber(*number, sample.degrees, sample.precision, zeros, 0.0L)
                        + test::wrongMinus(*angle, sample.degrees < 0.0)
                        + test::wrongDecimalReading(shown, format, scale * sample.degrees,
                                                    scale * halfUnit(sample.precision));
    if ((type != ValueType_Angle) == angle->letter.isNull())
        wrong += "the wrong letter";
    return wrong.empty() ? wrong : at(shown, wrong);
}

/// Everything about one angle; the least frequent questions take turns.
std::string whatIsWrong(const AngleSample &sample, int turn)
{
    const Zeros zeros = turn % 2 == 0 ? Zeros::Kept : Zeros::Erased;
    std::string wrong = wrongSexagesimal(sample, Unit_Degree, zeros);
    if (!wrong.empty())
        return wrong;
    const EValueType types[] = {ValueType_Angle, ValueType_Longitude, ValueType_Latitude};
    const EFormat formats[] = {Format_Degree, Format_Second, Format_Radian};
    switch (turn % 7) {
    case 0: return wrongSexagesimal(sample, Unit_Second, zeros);
    case 1: return wrongHemisphere(sample, ValueType_Longitude, zeros);
    case 2: return wrongHemisphere(sample, ValueType_Latitude, zeros);
    case 3:
    case 4: return wrongDecimal(sample, types[turn / 7 % 3], formats[turn / 21 % 3], zeros);
    default: return "";
    }
}

std::string where(const AngleSample &sample, const std::string &wrong)
{
    return wrong.empty() ? wrong
                         : QString::number(sample.degrees, 'g', 17).toStdString() + " at "
                               + std::to_string(sample.precision) + " decimals, " + wrong;
}

class AngleTextProperty : public testing::TestWithParam<int>
{};

TEST_P(AngleTextProperty, ARandomAngleIsPrintedRoundedAndReadBack)
{
    AngleSamples samples(1837U + static_cast<unsigned>(GetParam()));
    for (int i = 0; i < test::anglesPerTest; ++i) {
        const AngleSample sample = samples.next();
        ASSERT_EQ(where(sample, whatIsWrong(sample, samples.turn())), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Part, AngleTextProperty, testing::Range(0, 10));

class AngleTextCarry : public testing::TestWithParam<int>
{};

TEST_P(AngleTextCarry, IsMadeWhereTheSecondsRoundTo60)
{
    const int first = GetParam();
    test::AngleSamples turns(static_cast<unsigned>(first));
    std::string wrong;
    test::forEveryCarry(first, first + 45, [&](const AngleSample &sample) {
        if (wrong.empty())
            wrong = where(sample, whatIsWrong(sample, turns.turn()));
    });
    EXPECT_EQ(wrong, "");
}

INSTANTIATE_TEST_SUITE_P(From, AngleTextCarry, testing::Range(0, 360, 45));

/// The whole text of an angle whose seconds are short: no digit of it is left to the rounding.
QString sexagesimalText(int degrees, int minutes, int seconds, int fraction, int decimals,
                        int precision)
{
    const auto number = [precision](int whole, const QString &digits) {
        return QString::number(whole)
               + (precision > 0
                      ? QLatin1Char('.') + digits.leftJustified(precision, QLatin1Char('0'))
                      : QString());
    };
    const QString digits =
        decimals > 0 ? QString::number(fraction).rightJustified(decimals, QLatin1Char('0'))
                     : QString();
    return number(degrees, QString()) + text("°") + number(minutes, QString()) + text("′")
           + number(seconds, digits) + text("″");
}

TEST(AngleTextShortDecimals, AreWhatTheNearestDoubleMeans)
{
    std::mt19937 random(1955);
    const auto oneOf = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    for (int i = 0; i < test::anglesPerTest; ++i) {
        // A double of 360 degrees resolves 1e-10 seconds, one of seconds 13 decimals.
        const int decimals = oneOf(9);
        const int precision = decimals + oneOf(14 - decimals);
        const int degrees = 1 + oneOf(359);
        const int minutes = oneOf(60);
        const int seconds = oneOf(60);
        const int fraction = oneOf(static_cast<int>(std::pow(10.0, decimals)));
        const long double exact =
            degrees + minutes / 60.0L + (seconds + fraction / std::pow(10.0L, decimals)) / 3600.0L;
        const AngleSample sample{static_cast<double>(exact), precision};
        // At the very edge the seconds' own rounding decides.
        if (std::abs(sample.degrees - exact) > 0.999L * halfSpacing(sample.degrees))
            continue;
        const QString shown = printed(ValueType_Angle, sample.degrees, Unit_Degree, Unit_Degree,
                                      Format_DegreeMinuteSecond, sample, Zeros::Kept);
        ASSERT_EQ(shown.toStdString(),
                  sexagesimalText(degrees, minutes, seconds, fraction, decimals, precision)
                      .toStdString());
    }
}

ShownAngle shown(const char *utf8)
{
    const auto angle = readAngle(text(utf8));
    EXPECT_TRUE(angle) << utf8;
    return angle.value_or(ShownAngle{});
}

TEST(AngleTextChecks, SeeATextThatIsNoAngle)
{
    for (const char *typed : {"", "°", "30°30′x", "30°x′0″", "30′30°", "30.°", ".5°", "--1°",
                              "1e3°", "+1°", "3 0°", "30°30", "NaN", "1.1234567890123456789″"})
        EXPECT_FALSE(readAngle(text(typed))) << typed;
    EXPECT_EQ(shown("-30°30′15″").ownSignSum(), -30.0L + 0.5L + 15.0L / 3600.0L);
    EXPECT_EQ(shown("30.25°W").letter, QLatin1Char('W'));
    EXPECT_EQ(shown("1.50").plain->fraction, 50U);
}

TEST(AngleTextChecks, SeeAnAngleThatIsNotTheValueRounded)
{
    const auto wrong = [](const char *utf8, long double arcSeconds, int precision) {
        return !test::wrongSexagesimal(shown(utf8), arcSeconds, precision, 0.0L).empty();
    };
    EXPECT_FALSE(wrong("30°30′15.25″", 109815.25L, 2));
    EXPECT_FALSE(wrong("30°30′15.25″", 109815.2549L, 2));
    EXPECT_FALSE(wrong("30°30′15.25″", -109815.2451L, 2));
    EXPECT_TRUE(wrong("30°30′15.25″", 109815.2551L, 2));
    EXPECT_TRUE(wrong("30°30′15.25″", 109815.2449L, 2));
    EXPECT_TRUE(wrong("30°30′15.250000000000002″", 109815.25L, 15));
    EXPECT_TRUE(wrong("30°29′60″", 109800.0L, 0));
    EXPECT_TRUE(wrong("29°60′0″", 108000.0L, 0));
    EXPECT_TRUE(wrong("29.5°30′0″", 108000.0L, 1));
    EXPECT_TRUE(wrong("30°", 108000.0L, 0));
}

TEST(AngleTextChecks, SeeANumberThatIsNotTheValueRounded)
{
    const auto wrong = [](const char *utf8, long double value, int precision, Zeros zeros) {
        return !test::wrongNumber(*test::readNumber(text(utf8)), value, precision, zeros, 0.0L)
                    .empty();
    };
    EXPECT_FALSE(wrong("1.50", 1.5L, 2, Zeros::Kept));
    EXPECT_FALSE(wrong("1.5", 1.5L, 2, Zeros::Erased));
    EXPECT_TRUE(wrong("1.5", 1.5L, 2, Zeros::Kept));
    EXPECT_TRUE(wrong("1.50", 1.5L, 2, Zeros::Erased));
    EXPECT_TRUE(wrong("1.500", 1.5L, 2, Zeros::Erased));
    EXPECT_TRUE(wrong("1.50", 1.5051L, 2, Zeros::Kept));
    EXPECT_TRUE(wrong("1.50", 1.4949L, 2, Zeros::Kept));
}

TEST(AngleTextChecks, SeeAMinusInTheWrongPlace)
{
    EXPECT_EQ(test::wrongMinus(shown("-30°30′0″"), true), "");
    EXPECT_EQ(test::wrongMinus(shown("0°-30′0″"), true), "");
    EXPECT_EQ(test::wrongMinus(shown("-0″"), true), "");
    EXPECT_NE(test::wrongMinus(shown("-30°30′0″"), false), "");
    EXPECT_NE(test::wrongMinus(shown("30°30′0″"), true), "");
    EXPECT_NE(test::wrongMinus(shown("-30°-30′0″"), true), "");
    EXPECT_NE(test::wrongMinus(shown("-0°30′0″"), true), "");
}

} // namespace
} // namespace KelStd
