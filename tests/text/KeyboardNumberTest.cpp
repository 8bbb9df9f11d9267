#include <KelStd/text/TypedNumber.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Number
{
    const char *text;
    DecimalMark mark;
    double value;
};

TEST(KeyboardNumber, IsReadWithItsDecimalMark)
{
    const Number rows[] = {
        {"5", DecimalMark::Point, 5.0},         {"-5.25", DecimalMark::Point, -5.25},
        {"+5.25", DecimalMark::Point, 5.25},    {" 5.25 ", DecimalMark::Point, 5.25},
        {"525e-2", DecimalMark::Point, 5.25},   {".5", DecimalMark::Point, 0.5},
        {"5.", DecimalMark::Point, 5.0},        {"5,25", DecimalMark::Comma, 5.25},
        {"5.25", DecimalMark::Comma, 5.25},     {"-0,5", DecimalMark::Comma, -0.5},
        {"12,345", DecimalMark::Comma, 12.345},
    };
    for (const Number &row : rows) {
        TypedValueFailure failure = {TypedValueFault::NotAnAngle, QStringLiteral("an old one")};
        EXPECT_EQ(readNumber(QString::fromLatin1(row.text), row.mark, failure), row.value)
            << row.text;
        EXPECT_FALSE(failure);
        EXPECT_EQ(failure.text, QString());
    }
}

struct Refusal
{
    const char *text;
    DecimalMark mark;
    TypedValueFault kind;
    const char *reason;
};

TEST(KeyboardNumber, WhatIsNoneIsRefusedWithItsReason)
{
    const Refusal rows[] = {
        {"", DecimalMark::Point, TypedValueFault::Missing, "is missing"},
        {"5,25", DecimalMark::Point, TypedValueFault::NotANumber,
         "\"5,25\" is not a number (write a decimal point, not a comma)"},
        {"1.234,5", DecimalMark::Comma, TypedValueFault::NotANumber, "\"1.234,5\" is not a number"},
        {"1,234,5", DecimalMark::Comma, TypedValueFault::NotANumber, "\"1,234,5\" is not a number"},
        {"0x5", DecimalMark::Point, TypedValueFault::NotANumber, "\"0x5\" is not a number"},
        {"\xD9\xA5", DecimalMark::Point, TypedValueFault::NotANumber,
         "\"\xD9\xA5\" is not a number"},
        {"nan", DecimalMark::Point, TypedValueFault::NotFinite, "\"nan\" is not a finite number"},
        {"1e999", DecimalMark::Point, TypedValueFault::NotFinite,
         "\"1e999\" is not a finite number"},
    };
    for (const Refusal &row : rows) {
        TypedValueFailure failure;
        EXPECT_EQ(readNumber(QString::fromUtf8(row.text), row.mark, failure), std::nullopt);
        EXPECT_EQ(failure.kind, row.kind) << row.text;
        EXPECT_EQ(failure.text, QString::fromUtf8(row.reason));
    }
}

TEST(Quotation, IsShortenedBehind40Characters)
{
    EXPECT_EQ(quoted(QString(40, QLatin1Char('x'))),
              QLatin1Char('"') + QString(40, QLatin1Char('x')) + QLatin1Char('"'));
    EXPECT_EQ(quoted(QString(41, QLatin1Char('x'))),
              QLatin1Char('"') + QString(40, QLatin1Char('x')) + QLatin1String("...\""));
}

} // namespace
} // namespace KelStd
