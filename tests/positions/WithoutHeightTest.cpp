// Positions of two numbers, and what two or three numbers may be besides.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using positions::MissingHeight;
using test::Mentions;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

constexpr Frame llh = Frame::Wgs84Geographic;
constexpr Frame localLlh = Frame::LocalGeographic;
constexpr Frame xyz = Frame::Wgs84Cartesian;
constexpr Frame neh = Frame::LocalProjected;

/// As of a program that takes 0, or the height that its user has given.
InputForm formOf(Frame frame, bool isGiven = false, double height = 0.0)
{
    InputForm form(frame);
    form.missingHeight = MissingHeight{height, isGiven, QString()};
    return form;
}

struct Read
{
    const char *testName;
    Frame frame;
    QByteArray input;
    const char *columns = "";
    const char *name = "";
};

void PrintTo(const Read &row, std::ostream *out)
{
    *out << row.testName;
}

class PositionsWithoutHeight : public testing::TestWithParam<Read>
{};

/// 5.25 and 52.5, or northing 463000.5 and easting 155000.25.
TEST_P(PositionsWithoutHeight, HaveTheOneThatIsTaken)
{
    const Read &row = GetParam();
    for (const bool isGiven : {false, true}) {
        const double height = isGiven ? 43.5 : 0.0;
        const ParsedInput all =
            parsed(parserFor(formOf(row.frame, isGiven, height), row.columns), row.input);
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), row.frame == neh
                                             ? Pos::fromENU(155000.25, 463000.5, height)
                                             : Pos::fromLongLatH(5.25, 52.5, height));
        EXPECT_EQ(all.names.front(), row.name);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PositionsWithoutHeight,
    testing::Values(
        Read{"Commas", llh, "5.25,52.5\n"}, Read{"Blanks", llh, "5.25 52.5\n"},
        Read{"Semicolons", llh, "5.25;52.5\n"}, Read{"DecimalCommas", llh, "5,25;52,5\n"},
        Read{"QuotedDecimalCommas", llh, "\"5,25\",\"52,5\"\n"},
        Read{"Typed", llh, "5\u00B015'E,52\u00B030'N\n"}, Read{"Letters", llh, "E5.25 N52.5\n"},
        Read{"Colons", llh, "5:15:00,52:30:00\n"}, Read{"Plane", neh, "463000.5,155000.25\n"},
        Read{"LocalAngles", localLlh, "5.25,52.5\n"}, Read{"Name", llh, "P1,5.25,52.5\n", "", "P1"},
        Read{"QuotedNumber", llh, "\"101\",5.25,52.5\n", "", "101"},
        Read{"QuotedLongitude", llh, "\"E12\",5.25,52.5\n", "", "E12"},
        Read{"QuotedTime", llh, "\"10:00:00\";5.25;52.5\n", "", "10:00:00"},
        Read{"NameAndBlanks", llh, "P1 5.25 52.5\n", "", "P1"},
        Read{"NameInThePlane", neh, "P1;463000,5;155000,25\n", "", "P1"},
        Read{"Headings", llh, "lat,lon\n52.5,5.25\n"},
        Read{"HeadingsWithName", llh, "name;lon;lat\n7;5.25;52.5\n", "", "7"},
        Read{"HeadingsAndText", llh, "lat,lon,code\n52.5,5.25,tree\n"},
        Read{"HeadingsAndEmptyField", llh, "lat,lon,code\n52.5,5.25,\n"},
        Read{"HeadingsOfThePlane", neh, "e,n,name\n155000.25,463000.5,A\n", "", "A"},
        Read{"Feet", neh, "e_km,n_km\n155.00025,463.0005\n"},
        Read{"RemarkOfHeadings", llh, "# lat,lon\n52.5,5.25\n"},
        Read{"RemarkOfHeadingsWithName", llh, "# name,lat,lon\nA,52.5,5.25\n", "", "A"},
        Read{"RemarkOfHeadingsWithAZeroByte", llh,
             QByteArray("# name,\0lat,lon\nA,52.5,5.25\n", 28), "", "A"},
        Read{"PickedColumns", llh, "x,52.5,7,5.25\n", "4,2"},
        Read{"PickedHeadings", llh, "a,b,c\n52.5,40,5.25\n", "c,a"}),
    [](const auto &row) { return row.param.testName; });

struct Doubtful
{
    const char *testName;
    Frame frame;
    QByteArray input; ///< its last line fails, alone or with the run
    const char *reason;
    const char *columns = "";
};

void PrintTo(const Doubtful &row, std::ostream *out)
{
    *out << row.testName;
}

class DoubtfulLines : public testing::TestWithParam<Doubtful>
{};

TEST_P(DoubtfulLines, AreNotTakenForPositionsWithoutHeight)
{
    const Doubtful &row = GetParam();
    const ParsedInput all = parsed(parserFor(formOf(row.frame), row.columns), row.input);
    EXPECT_LT(all.positions.size(), static_cast<std::size_t>(row.input.count('\n')));
    const QString why = all.failures.empty() ? all.end : all.failures.back();
    EXPECT_THAT(why, Mentions(row.reason));
}

INSTANTIATE_TEST_SUITE_P(
    Readings, DoubtfulLines,
    testing::Values(
        Doubtful{"NumberAndNorthing", neh, "101,465682.96\n", "may be a number in two pieces"},
        Doubtful{"NumberAndTwo", llh, "101,5.25,52.5\n", "101 may be a point's number before"},
        Doubtful{"NumberAndTwoOfThePlane", neh, "101,465682.96,183928.88\n",
                 "it may be an easting"},
        Doubtful{"AllQuotedAndTwo", llh, "\"101\",\"5.25\",\"52.5\"\n",
                 "101 may be a point's number"},
        Doubtful{"QuotedNumberAndWhole", llh, "\"101\",5,52\n", "may be a number in two pieces"},
        Doubtful{"NameOrAngle", llh, "E12,5.25,52.5\n", "E12 may be a point's number"},
        Doubtful{"DecimalComma", llh, "5,52\n", "may be a number in two pieces"},
        Doubtful{"NegativeDecimalComma", llh, "-5,52\n", "may be a number in two pieces"},
        Doubtful{"DegreesAndMinutes", llh, "5 30\n", "may be a number in two pieces"},
        Doubtful{"DegreesAndDecimalMinutes", llh, "5 30.25\n", "may be a number in two pieces"},
        Doubtful{"NameDegreesAndMinutes", llh, "P1 5 30.25\n", "may be a number in two pieces"},
        Doubtful{"TornAngle", llh, "5\u00B0 30'\n", "has no degrees"},
        Doubtful{"Thousands", neh, "465 682.96\n", "may be a number in two pieces"},
        Doubtful{"NameAndThousands", neh, "P1,465,682.96\n", "may be a number in two pieces"},
        Doubtful{"TimeAndAngle", llh, "10:00:00,5.25\n", "may be a number in two pieces"},
        Doubtful{"LatitudeFirst", llh, "52.5N 5.25E\n", "stands before the longitude"},
        Doubtful{"EmptyHeight", llh, "5.25;52.5;\n", "height is missing"},
        Doubtful{"CartesianOfTwo", xyz, "3899209.1,396765.2\n", "2 fields found"},
        Doubtful{"CartesianHeadings", xyz, "x,y\n3899209.1,396765.2\n", "names no Z"},
        Doubtful{"CartesianColumns", xyz, "1,2,3\n", "picks two columns", "1,2"},
        Doubtful{"LaterNumber", llh, "P1,5.25,52.5\n101,5.25,52.5\n", "\"101\" may be a point's"},
        Doubtful{"LaterWithHeight", llh, "P1,5.25,52.5\n5.25,52.5,40\n", "\"5.25\" may be the"},
        Doubtful{"LaterLineThatLostItsHeight", llh, "P1,5.25,52.5,40\nP2,5.25,52.5\n",
                 "3 fields found; line 1 has 4"},
        Doubtful{"FirstOfMoreFieldsFailed", llh, "P1,5.25,95,40\nP2,5.25,52.5\n",
                 "3 fields found; line 1, which cannot be read, has 4"},
        Doubtful{"FirstOfThreeFailed", llh, "5.25,95,40\n5.25,52.5\n",
                 "2 fields found; line 1, which cannot be read, has 3"},
        Doubtful{"HeadingOfAnotherHeight", llh, "lat,lon,orthometric_height\n52.5,5.25,40\n",
                 "names no height"},
        Doubtful{"HeadingOfAltitude", llh, "lat,lon,alt\n52.5,5.25,40\n", "names no height"},
        Doubtful{"HeadingInAnotherUnit", llh, "lat,lon,h_yd\n52.5,5.25,40\n", "names no height"},
        Doubtful{"HeadingOfAnotherFrame", llh, "lat,lon,local_height_m\n52.5,5.25,40\n",
                 "names no height"},
        Doubtful{"GermanHeight", neh, "Ostwert;Nordwert;NHN-H\u00F6he\n1,5;2,5;3\n",
                 "names no height"},
        Doubtful{"TurkishHeight", llh, "Enlem;Boylam;Ortometrik Y\u00FCkseklik\n1,5;2,5;3\n",
                 "names no height"},
        Doubtful{"NumberBehind", llh, "lat,lon,HAE\n52.5,5.25,40\n",
                 "the headings name no height, and \"40\" behind \"5.25\" may be one"},
        Doubtful{"NumberBehindLater", llh, "lat,lon,HAE\n52.5,5.25,\n52.5,5.25,\n52.5,5.25,40\n",
                 "4: the headings name no height, and \"40\" behind \"5.25\" may be one"},
        Doubtful{"QuotedNumberBehindLater", llh, "lat;lon;HAE\n52,5;5,25;\n52,5;5,25;\"40,5\"\n",
                 "3: the headings name no height, and \"40,5\""},
        Doubtful{"NumberBehindARemarkLater", llh, "# lat,lon,HAE\n52.5,5.25,\n52.5,5.25,40\n",
                 "may be one"},
        Doubtful{"NumberBehindInBlanks", llh, "Lat Lon list\n52.5 5.25 40\n", "may be one"},
        Doubtful{"NumberBehindARemark", llh, "# lat,lon,HAE\n52.5,5.25,40\n", "may be one"},
        Doubtful{"RemarkOfOtherLength", llh, "# lat,lon\n52.5,5.25,40\n",
                 "this remark names other"},
        Doubtful{"TitleOfTwoWords", llh, "lat lon\n52.5 5.25 40\n",
                 "3 fields found; line 1 has 2"}),
    [](const auto &row) { return row.param.testName; });

TEST(GivenHeight, MakesNumbersNamesOfPoints)
{
    const ParsedInput all =
        parsed(parserFor(formOf(llh, true, 7)), "101,5.25,52.5\n102,5.5,52.5\n\"103\",5,52\n");
    EXPECT_EQ(all.end, QString());
    EXPECT_TRUE(all.failures.empty());
    EXPECT_EQ(all.names, (std::vector<std::string>{"101", "102", "103"}));
    EXPECT_EQ(all.positions.at(1), Pos::fromLongLatH(5.5, 52.5, 7));
}

/// Beside a height nothing is taken for a name, nor is one of the heights passed over.
TEST(GivenHeight, IsRefusedBesideAHeight)
{
    const struct
    {
        QByteArray input;
        const char *columns;
        const char *reason;
    } rows[] = {
        {"P1,5.25,52.5,40\n", "", "4 fields found; with --height expected are longitude and lat"},
        {"5.25,52.5,40\n", "", "\"5.25\" may be a point's number before 52.5 and 40"},
        {"5,52,40\n", "", "\"52\" and \"40\" may be a number in two pieces"},
        {"101,5.25,52.5\n5,52,40\n", "", "\"5\" may be a point's number before 52 and 40"},
        {"P1,5.25,52.5,40\n", "1,2,3,4", "--columns picks a height beside --height"},
        {"lat,lon,alt\n52.5,5.25,40\n", "", "names no height"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input.toStdString());
        const ParsedInput all = parsed(parserFor(formOf(llh, true), row.columns), row.input);
        const QString why = all.failures.empty() ? all.end : all.failures.back();
        EXPECT_THAT(why, Mentions(row.reason));
    }
    // Three picked columns are a name and two components.
    const ParsedInput picked =
        parsed(parserFor(formOf(llh, true, 7), "1,2,3"), "101,5.25,52.5,x\n");
    ASSERT_EQ(picked.positions.size(), 1U);
    EXPECT_EQ(picked.positions.front(), Pos::fromLongLatH(5.25, 52.5, 7));
    EXPECT_EQ(picked.names.front(), "101");
}

/// The caller of a library who has said nothing of heights gets none.
TEST(MissingHeights, AreRefusedUnlessTheFormHasOne)
{
    EXPECT_THAT(parsed(parserFor(llh), "5.25,52.5\n").failures.at(0), Mentions("2 fields found"));
    EXPECT_THAT(parsed(parserFor(llh), "lat,lon\n52.5,5.25\n").end, Mentions("names no height"));
}

} // namespace
} // namespace KelStd
