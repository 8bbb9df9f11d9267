#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace KelStd {
namespace {

using test::text;

constexpr double untouched = -777.0;

/// What reading an angle did: its result and what the output holds afterwards.
struct Read
{
    bool success;
    double degrees;
};

Read read(const QString &typed, EFormat format)
{
    Read result{false, untouched};
    result.success = CoordStringHelper::GetAngleValue(typed, format, result.degrees);
    return result;
}

Read read(const char *typed, EFormat format)
{
    return read(text(typed), format);
}

void expectRefused(const char *typed, EFormat format)
{
    const Read result = read(typed, format);
    EXPECT_FALSE(result.success) << typed;
    EXPECT_EQ(result.degrees, untouched) << typed;
}

TEST(StyledAngle, APlainNumberIsInTheUnitOfTheFormat)
{
    struct Row
    {
        const char *typed;
        EFormat format;
        double degrees;
    };
    const Row rows[] = {
        {"30.5", Format_DegreeMinuteSecond, 30.5},
        {"-30.5", Format_DegreeMinuteSecond, -30.5},
        {"30.5", Format_Degree, 30.5},
        {" -400 ", Format_Degree, -400.0},
        {"5400", Format_Second, 1.5},
        {"-36", Format_Second, -0.01},
        {"1", Format_Radian, 57.29577951308232},
        {"-0.5", Format_Radian, -28.64788975654116},
        {"0", Format_Radian, 0.0},
    };
    for (const Row &row : rows) {
        const Read result = read(row.typed, row.format);
        EXPECT_TRUE(result.success) << row.typed;
        EXPECT_EQ(result.degrees, row.degrees) << row.typed;
    }
}

TEST(StyledAngle, OfEveryOtherFormatIsRefused)
{
    for (int number = -2; number <= 40; ++number) {
        if (number == 20 || (number >= 22 && number <= 24))
            continue;
        SCOPED_TRACE(number);
        for (const char *typed : {"30.5", "30°", "30°15′36″", "36″", "", "x"})
            expectRefused(typed, static_cast<EFormat>(number));
    }
}

TEST(StyledAngle, InDegreesMinutesSecondsNeedsAllThreeSymbols)
{
    struct Row
    {
        const char *typed;
        double degrees;
    };
    const Row rows[] = {
        {"30°15′36″", 30.26},
        {"0°0′0″", 0.0},
        {"116°06′00.0000″E", 116.1},
        {" 30 ° 15 ′ 36 ″ N", 30.26},
        {"30.5°30.5′30″", 30.5 + 30.5 / 60.0 + 30.0 / 3600.0},
        {"10°59.999′59.999″", 10.0 + 59.999 / 60.0 + 59.999 / 3600.0},
        {"10°-0′0″", 10.0}, // a negative zero is a zero
        {"720°0′0″", 720.0},
        // The minus reaches the degrees alone, deliberately.
        {"-30°15′0″", -29.75},
        {"-10°30′0″", -9.5},
        {"-30°0′0″", -30.0},
        {"10°20′30″40″", 10.0 + 20.0 / 60.0 + 30.0 / 3600.0},
    };
    for (const Row &row : rows) {
        const Read result = read(row.typed, Format_DegreeMinuteSecond);
        EXPECT_TRUE(result.success) << row.typed;
        EXPECT_NEAR(result.degrees, row.degrees, 4e-16 * std::abs(row.degrees)) << row.typed;
    }
    for (const char *typed :
         {"30°15′",    "30°",        "15′36″",     "30°36″",      "36″",        "15′",
          "",          "x",          "30d15'36\"", "30 15 36",    "x°15′36″",   "30°x′36″",
          "30°15′x″",  "°15′36″",    "30°′36″",    "30°15′″",     "36″15′30°",  "30°36″15′",
          "15′30°36″", "N30°15′36″", "30°15°0′0″", "30,5°15′36″", "３０°15′36″"})
        expectRefused(typed, Format_DegreeMinuteSecond);
}

TEST(StyledAngle, MinutesAndSecondsGoFromZeroToBelowSixty)
{
    for (const char *typed :
         {"10°61′0″", "10°60′0″", "10°0′60″", "10°0′61″", "10°-1′0″", "10°0′-0.001″", "0°-30′0″",
          "10°60.0000001′0″", "10°0′1e9″", "10°nan′0″", "10°0′nan″", "10°inf′0″", "10°0′inf″",
          "10°-inf′0″", "10°0′-inf″", "-10°-30′0″"})
        expectRefused(typed, Format_DegreeMinuteSecond);
    EXPECT_TRUE(read("10°59′0″", Format_DegreeMinuteSecond).success);
    EXPECT_TRUE(read("10°0′59.9999999999″", Format_DegreeMinuteSecond).success);
    EXPECT_TRUE(read("10°0′0″", Format_DegreeMinuteSecond).success);
}

TEST(StyledAngle, InDegreesIsTheNumberBeforeTheDegreeSign)
{
    const auto expectDegrees = [](const char *typed, double degrees) {
        const Read result = read(typed, Format_Degree);
        EXPECT_TRUE(result.success) << typed;
        EXPECT_EQ(result.degrees, degrees) << typed;
    };
    expectDegrees("30.5°", 30.5);
    expectDegrees("-30.5°W", -30.5);
    expectDegrees("000.50° east", 0.5);
    expectDegrees("30°15′36″", 30.0); // what follows the sign is not looked at
    expectDegrees("30°x", 30.0);
    for (const char *typed : {"30.5 deg", "36″", "15′", "", "x"})
        expectRefused(typed, Format_Degree);
}

TEST(StyledAngle, InDegreesIsWrittenEvenWhenTheNumberCannotBeRead)
{
    for (const char *typed : {"x°", "°", " °", "1,5°", "15′30°", "N30°"}) {
        const Read result = read(typed, Format_Degree);
        EXPECT_FALSE(result.success) << typed;
        EXPECT_EQ(result.degrees, 0.0) << typed;
    }
}

/// `QString::toDouble` is documented to return 0.0 for what cannot be converted and an infinity for
/// what overflows; both are failures.
TEST(StyledAngle, InDegreesIsWrittenAsTheConversionGaveItWhereItOverflows)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Row
    {
        const char *typed;
        double degrees;
    };
    const Row rows[] = {
        {"1e999°", infinity}, {"-1e999°W", -infinity}, {"-1e999°15′36″", -infinity}};
    for (const Row &row : rows) {
        const Read result = read(row.typed, Format_Degree);
        EXPECT_FALSE(result.success) << row.typed;
        EXPECT_EQ(result.degrees, row.degrees) << row.typed;
    }
    // The other styles write nothing.
    expectRefused("1e999″", Format_Second);
    expectRefused("1e999°0′0″", Format_DegreeMinuteSecond);
}

TEST(StyledAngle, InSecondsIsTheNumberBeforeTheSecondSign)
{
    const auto expectDegrees = [](const char *typed, double degrees) {
        const Read result = read(typed, Format_Second);
        EXPECT_TRUE(result.success) << typed;
        EXPECT_EQ(result.degrees, degrees) << typed;
    };
    expectDegrees("5400″", 1.5);
    expectDegrees("-36.0″S", -0.01);
    expectDegrees("648000.00″ 経度", 180.0);
    for (const char *typed : {"30°", "15′", "x″", "″", "1°5400″", "1′36″", "", "x", "1,5″"})
        expectRefused(typed, Format_Second);
}

TEST(StyledAngle, InRadiansHasNoSymbols)
{
    for (const char *typed : {"1°", "1′", "1″", "0.5N", "1 rad", ""})
        expectRefused(typed, Format_Radian);
}

TEST(StyledAngle, APlainNumberMayBeUndefinedOrInfinite)
{
    for (const EFormat format :
         {Format_DegreeMinuteSecond, Format_Degree, Format_Second, Format_Radian}) {
        const Read undefined = read("nan", format);
        EXPECT_TRUE(undefined.success);
        EXPECT_TRUE(std::isnan(undefined.degrees));
        const Read infinite = read("-inf", format);
        EXPECT_TRUE(infinite.success);
        EXPECT_EQ(infinite.degrees, -std::numeric_limits<double>::infinity());
    }
    // Degrees have no range to be tested.
    const Read undefined = read("nan°1′1″", Format_DegreeMinuteSecond);
    EXPECT_TRUE(undefined.success);
    EXPECT_TRUE(std::isnan(undefined.degrees));
}

TEST(StyledAngle, OfAMegabyteIsReadOrRefusedAtOnce)
{
    QElapsedTimer clock;
    clock.start();
    constexpr int million = 1000000;
    const QString nines(million, QLatin1Char('9'));
    const QString script(million, QChar(0x0639));
    for (const EFormat format :
         {Format_DegreeMinuteSecond, Format_Degree, Format_Second, Format_Radian, Format_None}) {
        for (const QString &typed : {nines, script, QString(million, QChar(0x00B0)),
                                     QString(million, QChar(0x2033)), nines + text("°")})
            EXPECT_FALSE(read(typed, format).success);
    }
    EXPECT_EQ(read(text("30°15′36″") + script, Format_DegreeMinuteSecond).degrees, 30.26);
    EXPECT_LT(clock.elapsed(), 20000) << "milliseconds"; // under the sanitizers, too
}

} // namespace
} // namespace KelStd
