#include <cli/LineSplitter.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using cli::splitLine;

struct Row
{
    const char *line;
    QStringList fields;
};

QStringList list(std::initializer_list<const char *> fields)
{
    QStringList texts;
    for (const char *field : fields)
        texts += QString::fromUtf8(field);
    return texts;
}

TEST(LineSplitter, TheStrongestSeparatorOfALineIsItsOnlyOne)
{
    const Row rows[] = {
        {"a b c", list({"a", "b", "c"})},
        {"a\tb c\td", list({"a", "b c", "d"})},
        {"a b,c\td,e", list({"a b", "c\td", "e"})},
        {"a,b;c d;e", list({"a,b", "c d", "e"})},
    };
    for (const Row &row : rows)
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).fields, row.fields) << row.line;
}

TEST(LineSplitter, BlanksAroundFieldsDoNotCount)
{
    const Row rows[] = {
        {"  a   b  ", list({"a", "b"})},
        {" a ,  b ", list({"a", "b"})},
        {" a \t b\t", list({"a", "b", ""})},
        {"\t a;b \t", list({"a", "b"})},
    };
    for (const Row &row : rows)
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).fields, row.fields) << row.line;
}

TEST(LineSplitter, BetweenSeparatorsThatAreNoBlanksAFieldMayBeEmpty)
{
    const Row rows[] = {
        {",", list({"", ""})},
        {"a,,b", list({"a", "", "b"})},
        {"a;b;", list({"a", "b", ""})},
        {"a\t\tb", list({"a", "", "b"})},
    };
    for (const Row &row : rows)
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).fields, row.fields) << row.line;
}

TEST(LineSplitter, QuotedFieldsMayHoldSeparatorsAndQuotationMarks)
{
    const Row rows[] = {
        {"\"a, b\",c", list({"a, b", "c"})},  {"\"a; b\",c", list({"a; b", "c"})},
        {"\"a b\" c", list({"a b", "c"})},    {"\"say \"\"a\"\"\",c", list({"say \"a\"", "c"})},
        {" \" a \" , c", list({" a ", "c"})}, {"\"\",c", list({"", "c"})},
        {"c,\"a\"", list({"c", "a"})},        {"\"a\"\t\"b\"", list({"a", "b"})},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).mistake, QString()) << row.line;
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).fields, row.fields) << row.line;
    }
}

TEST(LineSplitter, AQuotationMarkInsideAFieldIsACharacter)
{
    EXPECT_EQ(splitLine(QStringLiteral("6\" pipe,5'4\"")).fields, list({"6\" pipe", "5'4\""}));
}

TEST(LineSplitter, BrokenQuotationsAreMistakes)
{
    for (const char *line : {"\"a,b", "a,\"b", "\"a\"\"", "\"", "a \"b c"}) {
        EXPECT_EQ(splitLine(QString::fromUtf8(line)).mistake,
                  QStringLiteral("a quotation mark is not closed"))
            << line;
    }
    for (const char *line : {"\"a\"b,c", "\"a\" b,c", "\"a\"b c", "c;\"a\"b"}) {
        EXPECT_EQ(splitLine(QString::fromUtf8(line)).mistake,
                  QStringLiteral("text follows a closing quotation mark"))
            << line;
    }
}

TEST(LineSplitter, SaysWhetherBlanksSeparate)
{
    EXPECT_TRUE(splitLine(QStringLiteral("a b")).byBlanks);
    EXPECT_TRUE(splitLine(QStringLiteral("\"a,b\" c")).byBlanks);
    EXPECT_FALSE(splitLine(QStringLiteral("a, b")).byBlanks);
    EXPECT_FALSE(splitLine(QStringLiteral("a\tb")).byBlanks);
}

} // namespace
} // namespace KelStd
