// Fields in quotation marks that go over several lines.

#include "support/Printers.h"

#include <KelStd/positions/ControlList.h>
#include <KelStd/positions/PositionParser.h>
#include <KelStd/positions/QuotedBreaks.h>

#include <gtest/gtest.h>

#include <string>

namespace KelStd {
namespace {

using positions::ControlListReader;
using positions::Frame;
using positions::ListShape;
using positions::PositionParser;
using positions::quotationMarksOf;
using Result = PositionParser::Result;

struct Marks
{
    std::string line;
    char separator = '\0'; ///< of the list; none where it is not known
    int fields = 0;
    bool areOpen = false;
    bool areBroken = false;
    bool holdFields = false;
};

TEST(QuotedBreaks, OnlyAFieldThatBeginsWithAMarkIsOpen)
{
    const Marks rows[] = {
        {"1,2,3"},
        {"1,2,3,\"a", '\0', 0, true, false, true},
        {"1,2,3,\"a\"", '\0', 0, false, false, true},
        {"1,2,3,\"a\"\"", '\0', 0, true, false, true},
        {"1,2,3,\"a\nb", '\0', 0, true, false, true},
        {"1,2,3,\"a\nb\"", '\0', 0, false, false, true},
        {"1,2,3,\"a\r\nb\"", '\0', 0, false, false, true},
        {"1,2,3,\"a\nb\" c", '\0', 0, false, true, true},
        {"1,2,3\n4", '\0', 0, false, true, false},
        {"1,2,3,2\" pipe"},
        {"1,2,3,2 \" pipe"},
        {"1 2 3 \"pipe", '\0', 0, true, false, true},
        {"# 1,2,3,\"a"},
        {"  # \"a"},
        // What the list has shown goes before what the line shows.
        {"1,2,3,oak; \"a", ',', 4},
        {"1,2,3,oak; \"a", '\0', 0, true, false, true},
        {"1\t2\t3\t4,5\t\"a", '\t', 5, true, false, true},
        {"1\t2\t3,25\t\"a", '\t', 4, true, false, true},
        {"1;2;3;\"a", ',', 4, true, false, true},
        {"1;2;3;\"a\"", ',', 4, false, false, true},
        {"\"1\",\"2\",\"3\",\"\"", ',', 4, false, false, true},
        {"\"1\" , \"2\" ,3, \"a\"\"b\" ", ',', 4, false, false, true},
        {"\"1\",\"2\",\"3\",\"\"\"", ',', 4, true, false, true},
        {"1,2,3,=\"4\"", ',', 4},
    };
    for (const Marks &row : rows) {
        const ListShape shape{row.separator == '\0' ? QChar() : QLatin1Char(row.separator),
                              row.fields};
        const auto marks = quotationMarksOf(row.line, shape);
        EXPECT_EQ(marks.areOpen, row.areOpen) << row.line;
        EXPECT_EQ(marks.areBroken, row.areBroken) << row.line;
        EXPECT_EQ(marks.holdFields, row.holdFields) << row.line;
    }
}

PositionParser parserBelowHeadings()
{
    PositionParser parser(Frame::LocalProjected);
    EXPECT_EQ(parser.parse("point,northing,easting,height,remark", 1), Result::Nothing);
    EXPECT_EQ(parser.parse("1,463000,155000,1,x", 2), Result::Position);
    return parser;
}

TEST(QuotedBreaks, StandInWhatIsCarriedAndInNames)
{
    PositionParser parser = parserBelowHeadings();
    EXPECT_EQ(parser.parse("\"A\nB\",463000,155000,1,\"a\r\nb\n\"", 3), Result::Position)
        << parser.reason().toStdString();
    EXPECT_EQ(parser.name(), "A\nB");
    ASSERT_EQ(parser.carried().size(), 1U);
    EXPECT_EQ(parser.carried().front(), "a\r\nb\n");
    EXPECT_EQ(parser.enclosedLine(), 0);
}

TEST(QuotedBreaks, StandInHeadings)
{
    PositionParser parser(Frame::LocalProjected);
    EXPECT_EQ(parser.parse("\"point\nno\",\"northing\n[m]\",\"easting\r\n[m]\",height", 1),
              Result::Nothing);
    EXPECT_EQ(parser.parse("1,463000,155000,1", 4), Result::Position)
        << parser.reason().toStdString();
    EXPECT_EQ(parser.position().getENU().n, 463000.0);
}

TEST(QuotedBreaks, OutsideQuotationMarksAreRefused)
{
    PositionParser parser = parserBelowHeadings();
    for (const char *line : {"2,463000,155000,1,a\nb", "2,463000,155000,1,x\n",
                             "2,463000\n,155000,1,x", "2,463000,155000,1\n3,463000,155000,1,x"}) {
        EXPECT_EQ(parser.parse(line, 3), Result::BadLine) << line;
        EXPECT_EQ(parser.reason(), QStringLiteral("a line break stands outside quotation marks"));
    }
}

TEST(QuotedBreaks, APositionInsideIsToldOf)
{
    PositionParser parser = parserBelowHeadings();
    EXPECT_EQ(parser.parse("1,463000,155000,1,\"moved, was:\n1,463010,155010,9,old\"", 3),
              Result::Position);
    EXPECT_EQ(parser.position().getENU().n, 463000.0);
    EXPECT_EQ(parser.enclosedLine(), 4);
    EXPECT_EQ(parser.parse("2,463000,155000,1,x", 5), Result::Position);
    EXPECT_EQ(parser.enclosedLine(), 0);
}

/// Two positions with a mark for "the same as above" would be one with the other in its remark.
TEST(QuotedBreaks, AMarkThatMayOpenAFieldOfAPositionClosesNone)
{
    PositionParser parser = parserBelowHeadings();
    for (const char *line :
         {"3,463001,155001,2,\"\n4,463002,155002,3,\"",
          "3,463001,155001,2,\"\n4,463002,155002,3, \"",
          "3,463001,155001,2,\"oak\nx\n4,463002,155002,3,\"", "\"\n4,463002,155002,3,\",5,6,7,8"}) {
        EXPECT_EQ(parser.parse(line, 3), Result::BadLine) << line;
        EXPECT_TRUE(parser.reason().contains(QLatin1String("may be a position of its own")))
            << parser.reason().toStdString();
    }
    EXPECT_EQ(parser.parse("3,463001,155001,2,\"a,\nb,\"", 3), Result::Position);
    EXPECT_EQ(parser.parse("3,463001,155001,2,\"a\n\"", 3), Result::Position);
}

TEST(QuotedBreaks, StandInListsOfControlPoints)
{
    ControlListReader reader;
    QString mistake;
    EXPECT_TRUE(
        reader.read("name,longitude,latitude,height,northing,easting,\"re\nmark\"", mistake));
    EXPECT_EQ(reader.shape().separator, QLatin1Char(','));
    EXPECT_EQ(reader.shape().fields, 7);
    EXPECT_FALSE(reader.hasRows());
    EXPECT_TRUE(reader.read("A,5,52,1,2,3,\"moved:\nA,5,52,1,7,8,old\"", mistake))
        << mistake.toStdString();
    EXPECT_TRUE(reader.hasRows());
    ASSERT_EQ(reader.points().size(), 1);
    EXPECT_EQ(reader.points().first().north, 2.0);
    EXPECT_FALSE(reader.read("B,5,52,1,2,3,\"\nC,5,52,1,2,3,\"", mistake));
    EXPECT_TRUE(mistake.contains(QLatin1String("may be a position of its own")));
}

} // namespace
} // namespace KelStd
