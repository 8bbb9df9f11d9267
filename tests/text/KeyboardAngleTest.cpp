#include <KelStd/text/TypedAngle.h>

#include "support/Printers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace KelStd {
namespace {

/// The angle of a text; NaN when there is none.
double angleOf(const QString &text, AngleSense sense = AngleSense::Plain,
               DecimalMark mark = DecimalMark::Point)
{
    TypedValueFailure failure = {TypedValueFault::NotANumber, QStringLiteral("an old one")};
    const auto angle = readTypedAngle(text, sense, mark, failure);
    EXPECT_EQ(angle.has_value(), !failure) << failure.text;
    EXPECT_EQ(angle.has_value(), failure.text.isEmpty()) << failure.text;
    return angle.value_or(std::nan(""));
}

double angleOf(const char *text, AngleSense sense = AngleSense::Plain)
{
    return angleOf(QString::fromUtf8(text), sense);
}

TypedValueFailure failureOf(const char *text, AngleSense sense,
                            DecimalMark mark = DecimalMark::Point)
{
    TypedValueFailure failure;
    EXPECT_EQ(readTypedAngle(QString::fromUtf8(text), sense, mark, failure), std::nullopt) << text;
    return failure;
}

QString reasonAgainst(const char *text, AngleSense sense, DecimalMark mark = DecimalMark::Point)
{
    return failureOf(text, sense, mark).text;
}

struct Form
{
    const char *text;
    double degrees;
};

// 52 + 30/60 + 15.5/3600 and the others, computed as fractions of whole numbers and rounded once.
TEST(KeyboardAngle, HasTheFormsOfPaperAndKeyboard)
{
    const Form rows[] = {
        {"52.5", 52.5},
        {"+52.5", 52.5},
        {"-52.5", -52.5},
        {"525e-1", 52.5},
        {"52.5\u00B0", 52.5},
        {"52d", 52.0},
        {"52\u00B030\u2032", 52.5},
        {"52\u00B030.25\u2032", 52.50416666666667},
        {"52\u00B030\u203215.5\u2033", 52.504305555555554},
        {"52\u00B030'15.5\"", 52.504305555555554},
        {"52d30'15.5\"", 52.504305555555554},
        {"52D30'15.5''", 52.504305555555554},
        {"52\u00BA30\u201915.5\u201D", 52.504305555555554},
        {"52\u02DA30\u203215.5\u2032\u2032", 52.504305555555554},
        {"52:30:15.5", 52.504305555555554},
        {"52:30.25", 52.50416666666667},
        {"52:30", 52.5},
        {" 52\u00B0 30\u2032 15.5 \u2033 ", 52.504305555555554},
        {"052\u00B003\u203200\u2033", 52.05},
        {"0\u00B00\u20320.0001\u2033", 2.7777777777777777e-08},
        {"5\u00B048\u203238.3390\u2033", 5.810649722222222},
        {"179\u00B059\u203259.999999\u2033", 179.99999999972223},
        {"89:59:59.9999999999", 89.99999999999997},
        {"1\u00B043\u20324.5177\u2033", 1.7179215833333332},
        {"52\u00B010.7711666\u2032", 52.179519443333334},
        {"116:6:0", 116.1},
    };
    for (const Form &row : rows)
        EXPECT_EQ(angleOf(row.text), row.degrees) << row.text;
}

TEST(KeyboardAngle, ASignCountsForTheWholeAngle)
{
    const Form rows[] = {
        {"-0\u00B030\u2032", -0.5},   {"-30\u00B015\u2032", -30.25},
        {"-0:0:36", -0.01},           {"-52d30'15.5\"", -52.504305555555554},
        {"+30\u00B015\u2032", 30.25},
    };
    for (const Form &row : rows)
        EXPECT_EQ(angleOf(row.text), row.degrees) << row.text;
}

TEST(KeyboardAngle, AHemisphereLetterIsItsSign)
{
    const Form latitudes[] = {
        {"52.5N", 52.5},   {"52.5 n", 52.5},          {"N52.5", 52.5},
        {"S 52.5", -52.5}, {"52.5s", -52.5},          {"52\u00B030\u2032S", -52.5},
        {"s52:30", -52.5}, {"0\u00B030'0\" S", -0.5}, {"52d30'S", -52.5},
        {"N52d30'", 52.5},
    };
    for (const Form &row : latitudes)
        EXPECT_EQ(angleOf(row.text, AngleSense::Latitude), row.degrees) << row.text;
    const Form longitudes[] = {
        {"5.25E", 5.25},
        {"5.25e", 5.25},
        {"E5.25", 5.25},
        {"w 5.25", -5.25},
        {"5.25 W", -5.25},
        {"5:15W", -5.25},
        {"5\u00B015\u2032W", -5.25},
        {"W005\u00B015'00\"", -5.25},
    };
    for (const Form &row : longitudes)
        EXPECT_EQ(angleOf(row.text, AngleSense::Longitude), row.degrees) << row.text;
}

TEST(KeyboardAngle, ADecimalCommaIsReadWhereItIsOne)
{
    const auto withComma = [](const char *text) {
        return angleOf(QString::fromUtf8(text), AngleSense::Latitude, DecimalMark::Comma);
    };
    EXPECT_EQ(withComma("52,5"), 52.5);
    EXPECT_EQ(withComma("52,5S"), -52.5);
    EXPECT_EQ(withComma("52:30,25"), 52.50416666666667);
    EXPECT_EQ(withComma("52\u00B030\u203215,5\u2033"), 52.504305555555554);
}

struct Refusal
{
    const char *text;
    AngleSense sense;
    TypedValueFault kind;
    const char *reason; ///< behind the quoted text
};

TEST(KeyboardAngle, WhatIsNoneIsRefusedWithItsReason)
{
    using Fault = TypedValueFault;
    constexpr auto plain = AngleSense::Plain;
    constexpr auto longitude = AngleSense::Longitude;
    constexpr auto latitude = AngleSense::Latitude;
    const char *torn = "; write \u00B0 or d for degrees, ' for minutes, \" for seconds";
    const auto tornAt = [torn](const char *number) {
        return QByteArray("lacks a sign behind ") + number + torn;
    };
    const QByteArray tornAt15 = tornAt("15");
    const QByteArray tornAt15s = tornAt("15.5");
    const QByteArray tornAt5 = tornAt("5");
    const Refusal rows[] = {
        {"52.5E", latitude, Fault::WrongLetter,
         "has the letter E of a longitude; a latitude has N or S"},
        {"w5", latitude, Fault::WrongLetter,
         "has the letter W of a longitude; a latitude has N or S"},
        {"5.25n", longitude, Fault::WrongLetter,
         "has the letter N of a latitude; a longitude has E or W"},
        {"S5:15", longitude, Fault::WrongLetter,
         "has the letter S of a latitude; a longitude has E or W"},
        {"52.5N", plain, Fault::WrongLetter,
         "has a hemisphere letter, which only longitudes and latitudes have"},
        {"-52.5S", latitude, Fault::WrongLetter,
         "has a sign and a hemisphere letter; write one of them"},
        {"S-52.5", latitude, Fault::WrongLetter,
         "has a sign and a hemisphere letter; write one of them"},
        {"N+52.5", latitude, Fault::WrongLetter,
         "has a sign and a hemisphere letter; write one of them"},
        {"N52.5S", latitude, Fault::WrongLetter, "has two hemisphere letters"},
        {"N52.5N", latitude, Fault::WrongLetter, "has two hemisphere letters"},
        {"52d30m15.5s", latitude, Fault::NotAnAngle,
         "has the letter m in it; write ' for minutes and \" for seconds"},
        {"52d30'15.5s", longitude, Fault::WrongLetter,
         "has the letter S of a latitude; a longitude has E or W"},
        // South, or a second?
        {"52d30'15.5s", latitude, Fault::MissingSign, tornAt15s.constData()},
        {"52\u00B015", latitude, Fault::MissingSign, tornAt15.constData()},
        {"5 52:30", latitude, Fault::MissingSign, tornAt5.constData()},
        {"5 52\u00B030'", latitude, Fault::MissingSign, tornAt5.constData()},
        {"30'", latitude, Fault::WrongOrder, "has no degrees"},
        {"30'15\"", latitude, Fault::WrongOrder, "has no degrees"},
        {"15\u2033", latitude, Fault::WrongOrder, "has no degrees"},
        {"52\u00B015\"", latitude, Fault::WrongOrder, "has no minutes"},
        {"30'52\u00B0", latitude, Fault::WrongOrder, "has no degrees"},
        {"52\u00B030'15'", latitude, Fault::WrongOrder,
         "is not an angle: the order is degrees, minutes, seconds, each once"},
        {"52\u00B030\u00B0", latitude, Fault::WrongOrder,
         "is not an angle: the order is degrees, minutes, seconds, each once"},
        {"52\u00B030'15\"3\"", latitude, Fault::WrongOrder,
         "is not an angle: the order is degrees, minutes, seconds, each once"},
        {"52:30:15:3", latitude, Fault::WrongOrder, "has more than degrees:minutes:seconds"},
        {"52:30:", latitude, Fault::MissingSign, "lacks a number behind its last colon"},
        {"52:", latitude, Fault::MissingSign, "lacks a number behind its last colon"},
        {":30", latitude, Fault::MissingSign, "lacks a number before :"},
        {"52::30", latitude, Fault::MissingSign, "lacks a number before :"},
        {"52\u00B0'15\"", latitude, Fault::MissingSign, "lacks a number before '"},
        {"52\u00B030:15", latitude, Fault::NotAnAngle, "mixes colons with other signs"},
        {"52:30'", latitude, Fault::NotAnAngle, "mixes colons with other signs"},
        {"52\u00B060'", latitude, Fault::TooLarge, "has 60 minutes; they are below 60"},
        {"52:59:60", latitude, Fault::TooLarge, "has 60 seconds; they are below 60"},
        {"52\u00B061'0\"", latitude, Fault::TooLarge, "has 61 minutes; they are below 60"},
        {"52:0:60.0000001", latitude, Fault::TooLarge, "has 60.0000001 seconds; they are below 60"},
        {"52.5\u00B030'", latitude, Fault::NotAnAngle,
         "has decimals in a part that is not its last"},
        {"52\u00B030.5'15\"", latitude, Fault::NotAnAngle,
         "has decimals in a part that is not its last"},
        {"52.:30", latitude, Fault::NotAnAngle, "has decimals in a part that is not its last"},
        {"52\u00B0.5'", latitude, Fault::NotAnAngle, "is not an angle: \".5\" is not a number"},
        {"52.\u00B0", latitude, Fault::NotAnAngle, "is not an angle: \"52.\" is not a number"},
        {"52\u00B01.2.3'", latitude, Fault::NotAnAngle,
         "is not an angle: \"1.2.3\" is not a number"},
        {"52\u00B0-30'", latitude, Fault::NotAnAngle, "is not an angle: - has no place in it"},
        {"--52\u00B0", latitude, Fault::NotAnAngle, "is not an angle: - has no place in it"},
        {"5e1\u00B0", latitude, Fault::NotAnAngle, "is not an angle: e has no place in it"},
        {"52:3e1", latitude, Fault::NotAnAngle, "is not an angle: e has no place in it"},
        {"52:nan", latitude, Fault::NotAnAngle, "is not an angle: n has no place in it"},
        {"52:0x1", latitude, Fault::NotAnAngle, "is not an angle: x has no place in it"},
        {"0x5E", longitude, Fault::NotAnAngle, "is not an angle: x has no place in it"},
        {"52\u00B030,5'", latitude, Fault::NotAnAngle,
         "is not an angle: , has no place in it (write a decimal point, not a comma)"},
        {"52,5N", latitude, Fault::NotAnAngle,
         "is not an angle: , has no place in it (write a decimal point, not a comma)"},
        {"52\u00B0\u0663\u0660'", latitude, Fault::NotAnAngle,
         "is not an angle: \u0663 has no place in it"},
        {"nan", latitude, Fault::NotFinite, "is not a finite number"},
        {"inf", latitude, Fault::NotFinite, "is not a finite number"},
        {"1e999", latitude, Fault::NotFinite, "is not a finite number"},
        {"N", latitude, Fault::NotANumber, "is not a number"},
        {"\u00B0'\"", latitude, Fault::NotANumber, "is not a number"},
        {"lat", latitude, Fault::NotANumber, "is not a number"},
        {"0x5", latitude, Fault::NotANumber, "is not a number"},
        {"5 12 13", latitude, Fault::NotANumber,
         "is not a number (write an angle as 5\u00B012'13\" or 5:12:13)"},
    };
    for (const Refusal &row : rows) {
        const TypedValueFailure failure = failureOf(row.text, row.sense);
        EXPECT_EQ(failure.kind, row.kind) << row.text;
        EXPECT_EQ(failure.text,
                  QStringLiteral("\"%1\" %2")
                      .arg(QString::fromUtf8(row.text), QString::fromUtf8(row.reason)));
    }
    EXPECT_EQ(failureOf("", latitude).kind, Fault::Missing);
    EXPECT_EQ(reasonAgainst("", latitude), QStringLiteral("is missing"));
    EXPECT_EQ(reasonAgainst("1.234,5", latitude, DecimalMark::Comma),
              QStringLiteral("\"1.234,5\" is not a number"));
}

TEST(KeyboardAngle, DegreesWithoutEndAreRefused)
{
    const QByteArray digits(2000, '9');
    for (const QByteArray &text : {digits + "\u00B0", digits + ":0:0"}) {
        EXPECT_TRUE(reasonAgainst(text.constData(), AngleSense::Plain)
                        .endsWith(QLatin1String("is not a finite number")))
            << text.constData();
    }
    EXPECT_TRUE(reasonAgainst(QByteArray(1 << 20, '\'').prepend("1").constData(), AngleSense::Plain)
                    .contains(QLatin1String("...\"")));
}

/// Whole thousandths of a second: the nearest double is a quotient of two whole numbers, which a
/// division of doubles rounds once.
TEST(KeyboardAngle, IsTheNearestDoubleOfAnyAngle)
{
    std::mt19937_64 random(20240229);
    std::uniform_int_distribution<qint64> thousandths(0, 180LL * 3600 * 1000);
    for (int i = 0; i < 100000; ++i) {
        const qint64 whole = thousandths(random);
        const double expected = static_cast<double>(whole) / 3600000.0;
        const QString seconds = QStringLiteral("%1.%2")
                                    .arg(whole / 1000 % 60, 2, 10, QLatin1Char('0'))
                                    .arg(whole % 1000, 3, 10, QLatin1Char('0'));
        const qint64 degrees = whole / 3600000;
        const qint64 minutes = whole / 60000 % 60;
        const bool usesColons = i % 2 == 0;
        const QString text =
            (usesColons ? QStringLiteral("-%1:%2:%3") : QStringLiteral("-%1d%2'%3\""))
                .arg(degrees)
                .arg(minutes)
                .arg(seconds);
        ASSERT_EQ(angleOf(text), -expected) << text;
    }
}

/// 5E1 is 50, or 5 degrees east; 00030.25 is 30.25, or 0 degrees and 30.25 minutes.
TEST(KeyboardAngle, TwoReadingsAreNone)
{
    for (const char *text : {"5E1", "5e1", "-5E1", "5.25E0", "5.E1", "52E1"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(failureOf(text, AngleSense::Longitude).kind, TypedValueFault::Doubtful);
        EXPECT_THAT(reasonAgainst(text, AngleSense::Longitude).toStdString(),
                    testing::HasSubstr("may have an exponent or an E for east"));
        EXPECT_NE(reasonAgainst(text, AngleSense::Latitude), QString());
        EXPECT_FALSE(std::isnan(angleOf(text))); // of an angle that has no hemisphere
    }
    EXPECT_EQ(angleOf("5E+1", AngleSense::Longitude), 50.0);
    EXPECT_EQ(angleOf("525e-2", AngleSense::Longitude), 5.25);
    EXPECT_EQ(angleOf("5E", AngleSense::Longitude), 5.0);
    EXPECT_EQ(angleOf("E5", AngleSense::Longitude), 5.0);
    for (const char *text : {"00030.25", "-00030.25", "+00030.25", "0030.25", "00130", "00030.25E",
                             "E00030.25", "W 00030.25"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(failureOf(text, AngleSense::Longitude).kind, TypedValueFault::Doubtful);
        EXPECT_THAT(reasonAgainst(text, AngleSense::Longitude).toStdString(),
                    testing::HasSubstr("may be degrees, or degrees and minutes in one"));
    }
    EXPECT_EQ(angleOf("005.25", AngleSense::Longitude), 5.25);
    EXPECT_EQ(angleOf("-005.25", AngleSense::Longitude), -5.25);
    EXPECT_EQ(angleOf("0.00030", AngleSense::Longitude), 0.0003);
    EXPECT_EQ(angleOf("00030.25\u00B0", AngleSense::Longitude), 30.25);
    EXPECT_EQ(angleOf("000:30.25", AngleSense::Longitude), 30.25 / 60);
}

} // namespace
} // namespace KelStd
