// The short way of reading a line says nothing that the careful way does not say.

#include "support/AngleSamples.h"
#include "support/Printers.h"

#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PickedColumns.h>
#include <KelStd/positions/PlainLine.h>
#include <KelStd/positions/PositionParser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>

namespace KelStd {
namespace {

using positions::ColumnChoice;
using positions::FieldOrder;
using positions::Frame;
using positions::PlainLine;
using positions::PositionParser;
using Result = PositionParser::Result;

constexpr Frame frames[] = {Frame::Wgs84Geographic, Frame::Wgs84Cartesian, Frame::LocalGeographic,
                            Frame::LocalProjected};

/// How an input begins, which decides where the fields of its lines stand.
struct Beginning
{
    const char *testName;
    const char *columns;                  ///< as for --columns; empty for none
    std::map<Frame, const char *> header; ///< the first line, of each frame
    int fields;
    EUnit lengthUnit = Unit_Meter;
};

const std::map<Frame, const char *> threeNumbers = {{Frame::Wgs84Geographic, "5,52,1"},
                                                    {Frame::Wgs84Cartesian, "5,52,1"},
                                                    {Frame::LocalGeographic, "5,52,1"},
                                                    {Frame::LocalProjected, "5,52,1"}};
const std::map<Frame, const char *> nameAndNumbers = {{Frame::Wgs84Geographic, "P,5,52,1"},
                                                      {Frame::Wgs84Cartesian, "P,5,52,1"},
                                                      {Frame::LocalGeographic, "P,5,52,1"},
                                                      {Frame::LocalProjected, "P,5,52,1"}};
const std::map<Frame, const char *> fiveFields = {{Frame::Wgs84Geographic, "a,5,b,52,1"},
                                                  {Frame::Wgs84Cartesian, "a,5,b,52,1"},
                                                  {Frame::LocalGeographic, "a,5,b,52,1"},
                                                  {Frame::LocalProjected, "a,5,b,52,1"}};

const Beginning beginnings[] = {
    {"ThreeFields", "", threeNumbers, 3},
    {"ThreeFieldsInFeet", "", threeNumbers, 3, Unit_USFoot},
    {"NameAndThreeFields", "", nameAndNumbers, 4},
    {"NameAndThreeFieldsInFeet", "", nameAndNumbers, 4, Unit_Foot},
    {"Header",
     "",
     {{Frame::Wgs84Geographic, "h;note;lat;id;lon"},
      {Frame::Wgs84Cartesian, "z;note;y;id;x"},
      {Frame::LocalGeographic, "h;note;lat;id;lon"},
      {Frame::LocalProjected, "h;note;e;id;n"}},
     5},
    {"HeaderWithoutNames",
     "",
     {{Frame::Wgs84Geographic, "lat;lon;code;h"},
      {Frame::Wgs84Cartesian, "y;x;code;z"},
      {Frame::LocalGeographic, "lat;lon;code;h"},
      {Frame::LocalProjected, "e;n;code;h"}},
     4},
    {"HeaderWithUnits",
     "",
     {{Frame::Wgs84Geographic, "h;unit;lat;id;lon"},
      {Frame::Wgs84Cartesian, "z;unit;y;id;x"},
      {Frame::LocalGeographic, "h;unit;lat;id;lon"},
      {Frame::LocalProjected, "h;unit;e;id;n"}},
     5},
    {"ColumnsByNumber", "2,4,5", fiveFields, 5},
    {"ColumnsAndNameByNumber", "3,2,5,4", fiveFields, 5},
    {"ColumnsByHeading",
     "p,a,b,c",
     {{Frame::Wgs84Geographic, "c;first;a;p;b;last"},
      {Frame::Wgs84Cartesian, "c;first;a;p;b;last"},
      {Frame::LocalGeographic, "c;first;a;p;b;last"},
      {Frame::LocalProjected, "c;first;a;p;b;last"}},
     6},
};

void PrintTo(const Beginning &beginning, std::ostream *out)
{
    *out << beginning.testName;
}

/// The order that a beginning decides, as the parser finds it.
FieldOrder orderOf(const Beginning &beginning, Frame frame)
{
    const positions::SplitLine line =
        positions::splitLine(QString::fromLatin1(beginning.header.at(frame)));
    const bool isHeader = line.separator == QLatin1Char(';');
    FieldOrder order;
    QString mistake;
    if (*beginning.columns != '\0') {
        const auto choice = ColumnChoice::from(QString::fromLatin1(beginning.columns), mistake);
        EXPECT_TRUE(choice
                    && positions::orderPicked(*choice, isHeader ? line.fields : QStringList(),
                                              line.fields.size(), frame, order, mistake))
            << mistake;
    } else if (isHeader) {
        EXPECT_TRUE(positions::readHeader(line.fields, frame, order, mistake)) << mistake;
    } else {
        order = positions::plainOrder(line.fields.size());
    }
    return order;
}

/// A parser that has read the first line.
PositionParser parserOf(const Beginning &beginning, Frame frame)
{
    QString mistake;
    std::optional<ColumnChoice> choice;
    if (*beginning.columns != '\0')
        choice = ColumnChoice::from(QString::fromLatin1(beginning.columns), mistake);
    PositionParser parser(
        positions::InputForm(frame, positions::InputHeight::OfFrame, beginning.lengthUnit), choice);
    const Result result = parser.parse(beginning.header.at(frame), 1);
    EXPECT_TRUE(result == Result::Nothing || result == Result::Position) << parser.reason();
    EXPECT_EQ(parser.knowsOrder(), result == Result::Position);
    return parser;
}

/// Seeded lines, most of them nearly right.
class Lines
{
public:
    explicit Lines(unsigned seed) : m_random(seed) {}

    std::string next(const FieldOrder &order)
    {
        const char *const separators[] = {",", ";", "\t", " ", ", ", " ; ", "   ", " \t", ",\t"};
        const char *const separator = separators[oneOf(once(6) ? 9 : 4)];
        int fields = order.fields;
        if (once(15))
            fields += oneOf(3) - 1;
        std::string line = once(25) ? blanks() : std::string();
        for (int i = 0; i < fields; ++i) {
            if (i > 0)
                line += once(60) ? separators[oneOf(4)] : separator;
            const auto &components = order.components;
            const bool isComponent =
                std::find(components.begin(), components.end(), i) != components.end();
            line += isComponent ? component() : text();
        }
        if (once(25))
            line += once(3) ? std::string(separator) : blanks();
        if (once(20))
            damage(line);
        return line;
    }

private:
    bool once(int in) { return oneOf(in) == 0; }
    int oneOf(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    std::string blanks()
    {
        const char *const rows[] = {" ", "  ", "\t", " \t "};
        return rows[oneOf(4)];
    }

    std::string digits(int most)
    {
        std::string text;
        for (int i = 1 + oneOf(most); i > 0; --i)
            text += static_cast<char>('0' + oneOf(10));
        return text;
    }

    std::string number()
    {
        std::string text = once(4) ? "-" : "";
        text += once(30) ? digits(30) : std::to_string(oneOf(once(20) ? 400 : 91));
        if (!once(5))
            text += '.' + digits(once(30) ? 40 : 12);
        return text;
    }

    std::string component()
    {
        if (!once(25))
            return number();
        const char *const rows[] = {"",
                                    "-",
                                    "+5.25",
                                    "5.",
                                    ".5",
                                    "5e1",
                                    "525E-2",
                                    "nan",
                                    "inf",
                                    "0x10",
                                    "5,25",
                                    "12,345",
                                    "1,234,567",
                                    "360",
                                    "360.0001",
                                    "-360",
                                    "90",
                                    "90.00001",
                                    "-90.5",
                                    "5d",
                                    "5d30'",
                                    "52:30:15",
                                    "N5",
                                    "5W",
                                    "5 W",
                                    ("52\xC2\xB0"
                                     "30\xE2\x80\xB2"),
                                    "5\xC2\xB0",
                                    "\"5.25\"",
                                    "\"5.25",
                                    "1.2.3",
                                    "--5",
                                    "-0",
                                    "-0.000",
                                    "00005.5",
                                    "00030.25",
                                    "-0030.25",
                                    "000.25",
                                    "5E1",
                                    "5e+1",
                                    "19999.5",
                                    "20000.5",
                                    "-65618",
                                    "5 30",
                                    "5'",
                                    "abc",
                                    "#5",
                                    "1e400",
                                    "179.99999999999999999",
                                    "\xD9\xA5",
                                    "5_0",
                                    "5;25",
                                    "0",
                                    "1'000"};
        return rows[oneOf(static_cast<int>(std::size(rows)))];
    }

    std::string text()
    {
        if (!once(3))
            return "P" + digits(5);
        const char *const rows[] = {"",
                                    "N",
                                    "5d",
                                    "-",
                                    "+",
                                    "s",
                                    "E",
                                    "D",
                                    "Point 1",
                                    "a:b",
                                    "d",
                                    "\"Point 1\"",
                                    "\"a;b, c\"",
                                    "\"q\"\"q\"",
                                    "6\"",
                                    "#1",
                                    "'",
                                    "5'",
                                    "N5",
                                    "101",
                                    "-3.25",
                                    ("Gr\xC3\xB6\xC3\x9F"
                                     "e"),
                                    "\xF0\x9F\x93\x8D",
                                    "\xC2\xB0",
                                    "52\xC2\xB0",
                                    "\xFF",
                                    "\x01",
                                    "\x7F",
                                    "a\\b",
                                    "~",
                                    "a/b",
                                    "lon",
                                    "w",
                                    "\"",
                                    "\xC2\x85",
                                    "x,y",
                                    "m",
                                    "ft",
                                    "5",
                                    "x;y"};
        return rows[oneOf(static_cast<int>(std::size(rows)))];
    }

    /// One character more, less or another.
    void damage(std::string &line)
    {
        const std::string characters("\0\x01\r\x0B\x7F\xFF\xC3\"'#,;:\t -+.0NSEWd\xA0", 24);
        const auto place = static_cast<std::size_t>(oneOf(static_cast<int>(line.size()) + 1));
        const char c = characters[static_cast<std::size_t>(oneOf(24))];
        switch (oneOf(4)) {
        case 0: line.insert(place, 1, c); break;
        case 1: line.erase(std::min(place, line.size()), 1); break;
        case 2: line.replace(std::min(place, line.size()), 1, 1, c); break;
        default: line.insert(0, once(2) ? "#" : once(2) ? "\xEF\xBB\xBF" : std::string(1, c));
        }
        if (once(20))
            line.insert(place, std::string(static_cast<std::size_t>(4000 + oneOf(200)), ' '));
    }

    std::mt19937 m_random;
};

std::string shown(const std::string &line)
{
    return testing::PrintToString(line.size() > 300 ? line.substr(0, 300) + "..." : line);
}

bool isSame(const Pos &one, const Pos &other)
{
    return std::memcmp(&one.getXYZ(), &other.getXYZ(), sizeof(stXYZ)) == 0;
}

std::vector<std::string> carriedBy(const PositionParser &parser)
{
    return {parser.carried().begin(), parser.carried().end()};
}

class PlainLines : public testing::TestWithParam<Beginning>
{};

TEST_P(PlainLines, AreReadAsWithCare)
{
    constexpr int linesPerFrame = std::max(test::anglesPerTest / 8, 2000);
    const Beginning &beginning = GetParam();
    for (const Frame frame : frames) {
        const PositionParser parser = parserOf(beginning, frame);
        const FieldOrder order = orderOf(beginning, frame);
        PositionParser quick = parser;
        PositionParser careful = parser;
        PlainLine plain;
        Lines lines(20260200U + static_cast<unsigned>(frame));
        std::map<Result, int> results;
        int plainLines = 0;
        int carefulPositions = 0;
        for (int i = 0; i < linesPerFrame; ++i) {
            const std::string line = lines.next(order);
            const bool isPlain = plain.read(line, order);
            plainLines += isPlain;
            const Result result = quick.parse(line, i + 2);
            ASSERT_EQ(result, careful.parseWithCare(line, i + 2)) << shown(line);
            ++results[result];
            ASSERT_EQ(quick.reason(), careful.reason()) << shown(line);
            ASSERT_EQ(quick.reasonLine(), careful.reasonLine()) << shown(line);
            if (result != Result::Position)
                continue;
            carefulPositions += !isPlain;
            ASSERT_TRUE(isSame(quick.position(), careful.position()))
                << shown(line) << testing::PrintToString(quick.position())
                << testing::PrintToString(careful.position());
            ASSERT_EQ(quick.name(), careful.name()) << shown(line);
            ASSERT_EQ(carriedBy(quick), carriedBy(careful)) << shown(line);
        }
        // Otherwise the one or the other is not tested.
        EXPECT_GT(plainLines, linesPerFrame / 4);
        EXPECT_GT(results[Result::Position] - carefulPositions, plainLines / 2);
        EXPECT_GT(carefulPositions, linesPerFrame / 50);
        EXPECT_GT(results[Result::BadLine], linesPerFrame / 10);
        EXPECT_GT(results[Result::Nothing], linesPerFrame / 1000);
    }
}

INSTANTIATE_TEST_SUITE_P(Beginnings, PlainLines, testing::ValuesIn(beginnings),
                         [](const auto &row) { return row.param.testName; });

struct PlainRow
{
    const char *line;
    bool isPlain;
};

FieldOrder fourFields()
{
    return positions::plainOrder(4);
}

TEST(PlainLine, IsALineThatCanBeReadInOneWay)
{
    const PlainRow rows[] = {
        {"P1,5.25,52.5,-4.125", true},
        {"P1;5.25;52.5;-4.125", true},
        {"P1\t5.25\t52.5\t-4.125", true},
        {"P1 5.25 52.5 -4.125", true},
        {"  P1   5.25 52.5   -4.125 ", true},
        {" P1 , 5.25,\x20 52.5 ,-4.125", true},
        {"Point 1,5.25,52.5,1", true},
        {",5.25,52.5,1", true},
        {"N,5.25,52.5,1", true},
        {"101 5.25 52.5 1", true},
        // The piece of an angle beside an angle.
        {"N 5.25 52.5 1", false},
        {"- 5.25 52.5 1", false},
        {"5d 5.25 52.5 1", false},
        {"5:12 5.25 52.5 1", false},
        {"5' 5.25 52.5 1", false},
        // Two separators.
        {"P1,5.25;52.5;1", false},
        {"P1\t5,25\t52.5\t1", false},
        // No plain number.
        {"P1,+5.25,52.5,1", false},
        {"P1,525e-2,52.5,1", false},
        {"P1,5d,52.5,1", false},
        {"P1,5.25,52.5,", false},
        // Too few and too many fields.
        {"5.25,52.5,1", false},
        {"P1,5.25,52.5,1,", false},
        {"P1,5.25,52.5,1,2", false},
        // No printable ASCII, quotation marks, comments, nothing.
        {"\xC3\xA9,5.25,52.5,1", false},
        {"P1\x01,5.25,52.5,1", false},
        {"P1,5.25,52.5,1\r", false},
        {"P1\x7F,5.25,52.5,1", false},
        {"\"P1\",5.25,52.5,1", false},
        {"6\",5.25,52.5,1", false},
        {"#1,5.25,52.5,1", false},
        {"  #1,5.25,52.5,1", false},
        {"", false},
        {"   ", false},
        {",,,", false},
    };
    PlainLine plain;
    for (const PlainRow &row : rows)
        EXPECT_EQ(plain.read(row.line, fourFields()), row.isPlain) << row.line;
}

TEST(PlainLine, GivesItsFieldsAndNumbers)
{
    PlainLine plain;
    for (const char *line : {"Point 1,5.25,-52.5,4.125", " Point 1 ; 5.25;-52.5 ;4.125 ",
                             "Point 1\t5.25\t -52.5\t4.125"}) {
        SCOPED_TRACE(line);
        ASSERT_TRUE(plain.read(line, fourFields()));
        EXPECT_EQ(plain.field(0), "Point 1");
        EXPECT_EQ(plain.field(2), "-52.5");
        EXPECT_EQ(plain.component(0), 5.25);
        EXPECT_EQ(plain.component(1), -52.5);
        EXPECT_EQ(plain.component(2), 4.125);
    }
}

/// A number beyond what its component may be goes the careful way, which says so.
TEST(PlainLine, ComponentsHaveTheirLimits)
{
    PositionParser parser(Frame::Wgs84Geographic);
    ASSERT_EQ(parser.parse("5,52,1", 1), Result::Position);
    EXPECT_EQ(parser.parse("-360,90,1", 2), Result::Position);
    EXPECT_EQ(parser.parse("5,90.000001,1", 3), Result::BadLine);
    EXPECT_EQ(parser.reason(), QStringLiteral("latitude 90.000001 is not between -90 and 90"));
    EXPECT_EQ(parser.parse("360.5,52,1", 4), Result::BadLine);
    EXPECT_EQ(parser.reason(), QStringLiteral("longitude 360.5 is not between -360 and 360"));
}

/// A name of one line is not that of the next.
TEST(PlainLine, NothingStaysOfTheLineBefore)
{
    PositionParser parser(Frame::Wgs84Geographic);
    ASSERT_EQ(parser.parse("\"P, 1\",5,52,1", 1), Result::Position);
    EXPECT_EQ(parser.name(), "P, 1");
    ASSERT_EQ(parser.parse(",6,53,2", 2), Result::Position);
    EXPECT_EQ(parser.name(), "");
    EXPECT_EQ(parser.position(), Pos::fromLongLatH(6, 53, 2));
}

} // namespace
} // namespace KelStd
