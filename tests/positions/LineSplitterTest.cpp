#include "support/Printers.h"

#include <KelStd/positions/LineSplitter.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::splitLine;

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

TEST(LineSplitter, ASecondsSignInsideAFieldIsNoQuotation)
{
    const QStringList fields = list({"5d12'13\"", "52d30'15\"", "7"});
    for (const char *line :
         {"5d12'13\",52d30'15\",7", "5d12'13\" 52d30'15\" 7", "5d12'13\";52d30'15\";7",
          "5d12'13\"\t52d30'15\"\t7", "\"5d12'13\"\"\",\"52d30'15\"\"\",7"}) {
        EXPECT_EQ(splitLine(QString::fromUtf8(line)).mistake, QString()) << line;
        EXPECT_EQ(splitLine(QString::fromUtf8(line)).fields, fields) << line;
    }
    EXPECT_EQ(splitLine(QStringLiteral("5\u00B0 12' 13\" E,52\u00B0 30' 15\" N,7")).fields,
              list({"5\u00B0 12' 13\" E", "52\u00B0 30' 15\" N", "7"}));
}

TEST(LineSplitter, CommasThatCanOnlyBeDecimalDoNotSeparateBetweenTabulators)
{
    const Row rows[] = {
        {"5,25\t52,5\t7,125", list({"5,25", "52,5", "7,125"})},
        {"P1\t5,25\t52\t7", list({"P1", "5,25", "52", "7"})},
        {"\t5,25\t52,5\t", list({"", "5,25", "52,5", ""})},
        {"5,25 \t 52,5", list({"5,25", "52,5"})},
        // A comma beside anything but digits, two commas in a field, or no tabulator inside.
        {"5,\t52,\t7", list({"5", "52", "7"})},
        {"A\tB,5,52,7", list({"A\tB", "5", "52", "7"})},
        {"1\t2,5,52,7", list({"1\t2", "5", "52", "7"})},
        {"5,52,7\t", list({"5", "52", "7"})},
        {"\t5,52,7", list({"5", "52", "7"})},
        {"5,52\tx,7", list({"5", "52\tx", "7"})},
    };
    for (const Row &row : rows)
        EXPECT_EQ(splitLine(QString::fromUtf8(row.line)).fields, row.fields) << row.line;
}

TEST(LineSplitter, SaysWhichFieldsStoodInQuotationMarks)
{
    const auto line = splitLine(QStringLiteral("\"N\" 5 5\" \"\""));
    EXPECT_EQ(line.fields, list({"N", "5", "5\"", ""}));
    EXPECT_EQ(line.isQuoted, (QVector<bool>{true, false, false, true}));
    EXPECT_EQ(line.separator, QLatin1Char(' '));
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
