#include <cli/CsvWriter.h>
#include <cli/PlainNumbers.h>
#include <cli/TypedNumber.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(NumberText, HasTheDecimalsAndNoExponent)
{
    EXPECT_EQ(cli::numberText(5.25, 4), QStringLiteral("5.2500"));
    EXPECT_EQ(cli::numberText(-5.26, 1), QStringLiteral("-5.3"));
    EXPECT_EQ(cli::numberText(1e15, 2), QStringLiteral("1000000000000000.00"));
    EXPECT_EQ(cli::numberText(1e-9, 4), QStringLiteral("0.0000"));
}

TEST(NumberText, AZeroHasNoSign)
{
    EXPECT_EQ(cli::numberText(-0.0, 4), QStringLiteral("0.0000"));
    EXPECT_EQ(cli::numberText(-0.00004, 4), QStringLiteral("0.0000"));
    EXPECT_EQ(cli::numberText(-0.00006, 4), QStringLiteral("-0.0001"));
    EXPECT_EQ(cli::numberText(-0.4, 0), QStringLiteral("0"));
}

TEST(ReadNumber, SaysWhyATextIsNone)
{
    QString reason;
    EXPECT_EQ(cli::readNumber(QStringLiteral("-5.25"), reason), -5.25);
    for (const char *text : {"", " ", "5.25m", "1 2", "0x10", "1,5", "--1", "1e", "e5", "nan",
                             "inf", "-infinity", "1e400"}) {
        reason.clear();
        EXPECT_EQ(cli::readNumber(QString::fromLatin1(text), reason), std::nullopt) << text;
        EXPECT_FALSE(reason.isEmpty()) << text;
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
        cli::appendCsvField(bytes, row.text);
        EXPECT_EQ(bytes, QByteArray("x,") + row.field);
    }
}

} // namespace
} // namespace KelStd
