// What messages about an input call the settings that remove a mistake.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::ColumnChoice;
using positions::Frame;
using positions::InputForm;
using positions::InputWords;
using positions::PositionParser;
using test::Mentions;
using test::parsed;
using test::ParsedInput;

/// An input that is refused with advice, and the advice in the library's words and in others.
struct Advice
{
    const char *testName;
    Frame frame;
    const char *columns;
    const char *input;
    const char *usual;
    const char *other;
};

void PrintTo(const Advice &advice, std::ostream *out)
{
    *out << advice.testName;
}

QString messageOf(const Advice &advice, const InputWords &words)
{
    InputForm form(advice.frame);
    form.words = words;
    QString mistake;
    std::optional<ColumnChoice> choice;
    if (*advice.columns != '\0') {
        choice = ColumnChoice::from(QString::fromLatin1(advice.columns), mistake, words);
        if (!choice)
            return mistake;
    }
    const ParsedInput all = parsed(PositionParser(form, choice), advice.input);
    return all.failures.empty() ? all.end : all.failures.front();
}

class InputWordsOf : public testing::TestWithParam<Advice>
{};

TEST_P(InputWordsOf, StandInItsAdvice)
{
    const QString usual = messageOf(GetParam(), {});
    EXPECT_THAT(usual, Mentions(GetParam().usual));
    EXPECT_FALSE(usual.contains(QLatin1String("--"))) << usual;
    InputWords words;
    words.columns = QStringLiteral("Columns");
    words.skip = QStringLiteral("Skip");
    words.frame = QStringLiteral("Frame");
    words.lengthUnit = QStringLiteral("Unit");
    EXPECT_THAT(messageOf(GetParam(), words), Mentions(GetParam().other));
}

constexpr Frame llh = Frame::Wgs84Geographic;
constexpr Frame neh = Frame::LocalProjected;

INSTANTIATE_TEST_SUITE_P(
    All, InputWordsOf,
    testing::Values(
        Advice{"Title", llh, "", "Site 4\n\n5.25,52.5,40\n", "; skipping 1 passes over the line",
               "; Skip 1 passes over the line"},
        Advice{"TwoTitles", llh, "", "Site 4\nNorth field\n5.25,52.5,40\n",
               "; skipping 2 passes over the first 2 lines", "; Skip 2 passes over the first 2"},
        Advice{"OtherFrame", llh, "", "easting,northing,h\n155000,463000,40\n",
               "these headings fit the frame local-neh", "these headings fit Frame local-neh"},
        Advice{"AcceptedWords", llh, "", "easting,northing,h\n155000,463000,40\n",
               "Accepted for the frame wgs84-llh: ", "Accepted for Frame wgs84-llh: "},
        Advice{"OtherHeadings", llh, "", "easting,northing,h\n155000,463000,40\n",
               "; a choice of columns picks columns with other headings",
               "; Columns picks columns with other headings"},
        Advice{"Feet", neh, "", "# All lengths in feet\n1,2,3\n",
               "; the unit ft reads and prints lengths in it", "; Unit ft reads and prints"},
        Advice{"Doubt", llh, "", "5 30 52 10\n",
               "; say it with a line of headings or a choice of columns",
               "; say it with a line of headings or Columns"},
        Advice{"OtherFields", llh, "", "A,5.25,52.5,40.5,x\n",
               "are these, a choice of columns 1,2,3,4 picks them",
               "are these, Columns 1,2,3,4 picks them"},
        Advice{"OneColumn", llh, "1", "", "a choice of columns '1' has 1 columns; there are",
               "Columns '1' has 1 columns; there are"},
        Advice{"TwoColumns", llh, "1,2", "5.25,52.5,40\n",
               "a choice of columns picks two columns; there are longitude, latitude, height",
               "Columns picks two columns; there are"},
        Advice{"ColumnNumber", llh, "0,1,2", "", "a choice of columns '0,1,2': '0' is no column",
               "Columns '0,1,2': '0' is no column"},
        Advice{"NoColumn", llh, "1,2,4", "5.25,52.5,40\n",
               "a choice of columns: there is no column 4; the line has 3",
               "Columns: there is no column 4; the line has 3"},
        Advice{"WrongColumn", llh, "1,2,3", "lat,lon,h\n52.5,5.25,40\n",
               "a choice of columns picks the column \"lat\" as longitude; the order is longitude, "
               "latitude, height",
               "Columns picks the column \"lat\" as longitude; the order is longitude"},
        Advice{"WrongDirection", neh, "1,2,3", "UTM_E,UTM_N,H\n155000,463000,40\n",
               "; skipping passes over headings that are wrong",
               "; Skip passes over headings that are wrong"},
        Advice{"Twice", llh, "1,1,2", "5.25,52.5,40\n", "a choice of columns picks column 1 twice",
               "Columns picks column 1 twice"}),
    [](const auto &row) { return row.param.testName; });

QStringList notesOn(positions::InputForm form, const char *headings, const char *line)
{
    PositionParser parser(form);
    parser.parse(headings, 1);
    EXPECT_TRUE(parser.notes().isEmpty()); // a line of units may follow
    parser.parse(line, 2);
    return parser.notes();
}

TEST(InputWords, ColumnsThatGoNowhereAreNoted)
{
    const positions::InputForm heights(Frame::Wgs84Geographic,
                                       positions::InputHeight::AboveEllipsoid);
    EXPECT_EQ(notesOn(heights, "name,code,lat,lon,h", "A,T,52,5,40"),
              QStringList(QStringLiteral("columns that are not in the output: \"code\"")));
    EXPECT_EQ(notesOn(Frame::Wgs84Geographic, "name,code,lat,lon,h", "A,T,52,5,40"), QStringList());
}

TEST(InputWords, StandInTheNoteOnHeights)
{
    positions::InputForm form(Frame::Wgs84Geographic);
    form.missingHeight = positions::MissingHeight{0.0, false, QStringLiteral("the ellipsoid")};
    EXPECT_EQ(notesOn(form, "lat,lon", "52.5,5.25"),
              QStringList(QStringLiteral("no height given: 0 is taken, above the ellipsoid; the "
                                         "height says another")));
    form.words.height = QStringLiteral("--height");
    form.missingHeight->isGiven = true;
    EXPECT_EQ(notesOn(form, "lat,lon", "52.5,5.25"),
              QStringList(QStringLiteral("the height of --height is taken as it is, above the "
                                         "ellipsoid")));
}

} // namespace
} // namespace KelStd
