// Headings are found wherever they stand, and no other line decides the order in their place.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using positions::InputHeight;
using test::Mentions;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

/// Headings with latitude first, among the first lines; the data line means 5.25, 52.5, 40.
struct Found
{
    const char *testName;
    QByteArray lines; ///< before "A,52.5,5.25,40"
};

void PrintTo(const Found &row, std::ostream *out)
{
    *out << row.testName;
}

class FoundHeadings : public testing::TestWithParam<Found>
{};

TEST_P(FoundHeadings, GiveTheOrder)
{
    for (const Frame frame : {Frame::Wgs84Geographic, Frame::LocalGeographic}) {
        const ParsedInput all = parsed(parserFor(frame), GetParam().lines + "\nA,52.5,5.25,40\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Places, FoundHeadings,
    testing::Values(
        Found{"First", "name,lat,lon,h"},
        Found{"BelowATitle", "Survey 2024 site B\nname,lat,lon,h"},
        Found{"BelowATitleWithoutNumbers", "Survey of the northern site\nname,lat,lon,h"},
        Found{"BelowATitleInLatin1", "Vermessung M\xFCller\nname,lat,lon,h"},
        Found{"BelowATitleWithAQuote", "\"Survey 2024\nname,lat,lon,h"},
        Found{"BelowALongTitle", QByteArray(5000, '=') + "\nname,lat,lon,h"},
        Found{"BelowASentence", "The lat and lon of the points\nname,lat,lon,h"},
        Found{"BelowASentenceOfAll", "lat lon and h of the points\nname,lat,lon,h"},
        Found{"BelowATitleOfOneNumber", "2024\nname,lat,lon,h"},
        Found{"BelowATitleInOtherHeadings", "Punt;Breedte;Lengte\nname,lat,lon,h"},
        Found{"BelowTwentyLines", QByteArray("Job 7 of ten\n").repeated(20) + "name,lat,lon,h"},
        Found{"BelowBlankLines", "\n  \n\t\r\nname,lat,lon,h"},
        Found{"BelowRemarks", "# a\n# measured with care\n#\n# 4 points\n#! x\nname,lat,lon,h"},
        Found{"BehindASign", "# name,lat,lon,h"}, Found{"BehindSigns", "## name, lat, lon, h"},
        Found{"BehindASignAndBlanks", "   #name lat lon h"},
        Found{"BehindASignBelowATitle", "Survey 2024 site B\n# name,lat,lon,h"},
        Found{"BehindASignBelowRemarks", "# today\n# by hand\n#name;lat;lon;h\n# in Leeds"},
        Found{"BehindASignAndAgain", "# name,lat,lon,h\nname,lat,lon,h\n# name,lat,lon,h"},
        Found{"Quoted", "\"name\",\"lat\",\"lon\",\"h\""},
        Found{"ByteOrderMark", "\xEF\xBB\xBFname,lat,lon,h"},
        Found{"ByteOrderMarkAndSign", "\xEF\xBB\xBF# name,lat,lon,h"},
        Found{"ByteOrderMarkOfASecondFile", "# today\n\xEF\xBB\xBFname,lat,lon,h"},
        Found{"FormFeed", "\x0Cname,lat,lon,h"},
        Found{"ZeroByte", QByteArray("name,lat\0,lon,h", 15)},
        Found{"Latin1InAnotherColumn", "n\xFAmero,lat,lon,h"},
        Found{"ZeroByteBehindASign", QByteArray("# name,lat\0,lon,h", 17)},
        Found{"Capitals", "NAME,LAT,LON,H"},
        Found{"Units", "Name,Latitude (deg),Longitude (deg),Height [m]"},
        Found{"DecimalDegrees", "name,lat_dd,Longitude (decimal degrees),height in m"},
        Found{"Points", "Name.,Lat.,Lon.,H."}, Found{"ANumberAmongThem", "2024,lat,lon,h"},
        Found{"BelowAPositionThatIsRefused", "Lat. 1\nname,lat,lon,h"}),
    [](const auto &row) { return row.param.testName; });

TEST(HeadingSearch, KnowsTheFramesOfHeadings)
{
    const ParsedInput wgs84 = parsed(parserFor(Frame::Wgs84Geographic),
                                     "name,lat_wgs84,WGS84 lon,WGS 84 height\nA,52.5,5.25,40\n");
    EXPECT_EQ(wgs84.end, QString());
    ASSERT_EQ(wgs84.positions.size(), 1U);
    EXPECT_EQ(wgs84.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    const ParsedInput local =
        parsed(parserFor(Frame::LocalGeographic), "name,lat_wgs84,lon_wgs84,h\nA,52.5,5.25,40\n");
    EXPECT_THAT(local.end, Mentions("names no longitude"));
    EXPECT_TRUE(local.positions.empty());
}

TEST(HeadingSearch, FindsEastBeforeNorthBehindASign)
{
    for (const char *headings : {"# name,E [m],N [m],H [m]\n", "#Point Easting Northing Height\n",
                                 "Job 12\n# name;e;n;h\n"}) {
        const ParsedInput all =
            parsed(parserFor(Frame::LocalProjected), QByteArray(headings) + "A;155000;463000;40\n");
        EXPECT_EQ(all.end, QString()) << headings;
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), Pos::fromENU(155000, 463000, 40));
    }
}

/// Inputs in which something says that the order may not be the usual one: nothing is read.
struct Ended
{
    const char *testName;
    QByteArray input;
    const char *end;
    std::size_t positions = 0; ///< before the end
};

void PrintTo(const Ended &row, std::ostream *out)
{
    *out << row.testName;
}

class EndedRuns : public testing::TestWithParam<Ended>
{};

TEST_P(EndedRuns, SayWhichLineAndWhy)
{
    const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic), GetParam().input);
    EXPECT_TRUE(all.end.startsWith(QString::fromUtf8(GetParam().end))) << all.end;
    EXPECT_EQ(all.positions.size(), GetParam().positions);
    EXPECT_TRUE(all.failures.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, EndedRuns,
    testing::Values(
        Ended{"Title", "Survey 2024 site B\nA,5.25,52.5,40\n",
              "1: the line is neither headings nor a position: "},
        Ended{"TitleAndNothingElse", "Survey 2024 site B\n",
              "1: the line is neither headings nor a position: "},
        Ended{"TitleWithoutNumbers", "positions\nA,5.25,52.5,40\n",
              "1: the line holds no number, so it is a header; it names no longitude"},
        Ended{"TitleAndADoubtfulLine", "positions\n5 30 52 10\n", "1: the line holds no number"},
        Ended{"TitleOfOneNumber", "2024\n5.25,52.5,40\n",
              "1: the line is neither headings nor a position: 1 field found"},
        Ended{"TitleOfTwoLines", "Survey\nof 2024 in B\nA,5.25,52.5,40\n",
              "1: the line holds no number, so it is a header; it names no longitude; --columns "
              "picks "
              "columns with other headings. Accepted for --from wgs84-llh: longitude (longitude, "
              "lon, long, lng, wgs84_longitude); latitude (latitude, lat, wgs84_latitude); height "
              "(height, h, ellipsoidal_height, wgs84_height); --skip 2 passes over the first 2 "
              "lines"},
        Ended{"FiveFields", "P1,5.682,52.88,47.5,CODE\n",
              "1: the line is neither headings nor a position: 5 fields found; expected are "
              "longitude, latitude, height, after a point name if there is one; where 5.682, 52.88 "
              "and 47.5 are these, --columns 1,2,3,4 picks them"},
        Ended{"FiveFieldsWithoutAName", "5.682 52.88 47.5 T 7\n",
              "1: the line is neither headings nor a position: 5 fields found; expected are "
              "longitude, latitude, height, after a point name if there is one; where 5.682, 52.88 "
              "and 47.5 are these, --columns 1,2,3 picks them"},
        Ended{"SixFieldsOfDegreesAndMinutes", "P1,52,30,5,15,40\n",
              "1: the line is neither headings nor a position: 6 fields found; expected are "
              "longitude, latitude, height, after a point name if there is one"},
        Ended{"Bars", "5.25|52.5|40\n",
              "1: the line is neither headings nor a position: fields are separated by commas, "
              "semicolons, tabulators or blanks, not by |"},
        Ended{"BarsAndBlanks", "P1 | 5.25 | 52.5 | 40\n",
              "1: the line is neither headings nor a position: fields are separated by commas"},
        Ended{"BarsBetweenHeadings", "lon|lat|h\n5.25|52.5|40\n",
              "1: the line is neither headings nor a position: fields are separated by commas"},
        Ended{"NumbersWithUnits", "5.25E 52.5N 40m\n",
              "1: the line is neither headings nor a position: \"5.25E\" is not a number"},
        Ended{"LettersForMinutes", "5d15m00s,52d30m00s,40\n",
              "1: the line is neither headings nor a position: longitude \"5d15m00s\" has the "
              "letter m in it; write ' for minutes and \" for seconds"},
        Ended{"TooManyLinesOfATitle",
              QByteArray("Job 7 of ten\n").repeated(21) + "name,lat,lon,h\nA,52.5,5.25,40\n",
              "1: the line is neither headings nor a position: "},
        Ended{"UnknownHeadings", "Punt,Breedte,Lengte,Hoogte\nA,52.5,5.25,40\n",
              "1: the line holds no number, so it is a header; it names no longitude"},
        Ended{"Latin1AndUnknown", "Punkt,lat,lon,Norm\xF6he\nA,52.5,5.25,40\n",
              "1: the line holds no number, so it is a header; it names no height"},
        Ended{"BehindASignWithoutHeight", "# name,lat,lon,alt\nA,52.5,5.25,40\n",
              "1: this remark names other columns or units than longitude, latitude, height"},
        Ended{"BehindASignInMinutes", "# name,lon_min,lat_min,h\nA,315,3150,40\n",
              "1: this remark names other columns or units"},
        Ended{"TwoBehindASignInRadians", "# lon_rad, lat_rad\n0.09,0.91,40\n",
              "1: this remark names other columns or units"},
        Ended{"BehindASignWithAnotherColumnBetween", "# lon,code,lat,alt\n5,7.5,52.5,40\n",
              "1: this remark names other columns or units"},
        Ended{"BehindASignWithMoreColumns", "# id,date,lon,lat,alt\nA,5.25,52.5,40\n",
              "1: this remark names other columns or units"},
        Ended{"BehindASignOfThePlane", "# name,easting,northing,height\nA,52.5,5.25,40\n",
              "1: this remark names other columns or units"},
        Ended{"RemarkOfTheOrder",
              "# latitude and longitude in degrees, heights above the "
              "ellipsoid\nA,52.5,5.25,40\n",
              "1: this remark names other columns or units"},
        Ended{"RemarkOfAnOrderOfThree", "# order: lat lon h\n52.5 5.25 40 1\n",
              "2: 4 fields found; line 1 has 3 headings"},
        Ended{"RemarkOfFieldsWithoutAColon", "# fields lat lon h\n52.5 5.25 40 1\n",
              "2: 4 fields found; line 1 has 3 headings"},
        Ended{"UnknownWordBehindASignBeforeANumberWithDecimals",
              "# given lat lon h\n52.5 5.25 40 1\n",
              "2: \"52.5\" stands where line 1 has \"given\""},
        Ended{"BehindASignWithAnotherNumber", "# id,name,lat,lon,h\nA,52.5,5.25,40\n",
              "2: 4 fields found; line 1 has 5 headings"},
        Ended{"TwoOrdersBehindSigns", "# lat,lon,h\n# lon,lat,h\n5.25,52.5,40\n",
              "2: these headings give another order than those of line 1"},
        Ended{"TwoOrders", "# lat,lon,h\nlon,lat,h\n5.25,52.5,40\n",
              "2: these headings give another order than those of line 1"},
        Ended{"FurtherDown", "lon,lat,h\n5.25,52.5,40\nlat,lon,h\n52.5,5.25,40\n",
              "3: these headings give another order than line 1", 1},
        Ended{"FurtherDownBehindASign", "5.25,52.5,40\n# lat,lon,h\n52.5,5.25,40\n",
              "2: these headings give another order than line 1", 1},
        Ended{"FurtherDownWithAColumnMore", "lon,lat,h\n5.25,52.5,40\nname,lon,lat,h\n",
              "3: these headings give another order than line 1", 1},
        Ended{"FurtherDownOfAnotherFrame", "lon,lat,h\n5.25,52.5,40\neasting,northing,h\n",
              "3: the line holds no number, so it is a header", 1},
        Ended{"FurtherDownInAnotherUnit", "lon,lat,h\n5.25,52.5,40\nlon,lat,h_ft\n",
              "3: these headings give another order than line 1", 1},
        Ended{"FurtherDownIncompleteBehindASign", "5.25,52.5,40\n# lat,lon,alt\n52.5,5.25,40\n",
              "2: these headings do not give the order of line 1", 1},
        Ended{"FurtherDownWithAZeroByte",
              QByteArray("5.25,52.5,40\nlat,lon\0,h\n52.5,5.25,40\n", 37),
              "2: these headings give another order than line 1", 1},
        Ended{"FurtherDownWithoutAQuote", "5.25,52.5,40\n\"lat,lon,h\n52.5,5.25,40\n",
              "2: the header cannot be read: a quotation mark is not closed", 1},
        Ended{"MinutesInColumnsOfTheirOwn", "lat_deg,lat_min,lon_deg,lon_min,h\n52,30,5,15,40\n",
              "1: \"lon_min\" is the heading of minutes or seconds"}),
    [](const auto &row) { return row.param.testName; });

/// Signs of remarks other than # head no column.
TEST(HeadingSearch, SignsAndWordsBeforeHeadingsHeadNoColumn)
{
    for (const char *before :
         {"%",        "!",        "*",       "@",   "--",       "//",        "order:",
          "Format:",  "Columns:", "fields:", "%\t", "# order:", "# Format:", "# %",
          "# fields", "units:",   "%,",      "!;",  "# %,",     "//;",       "*,"}) {
        SCOPED_TRACE(before);
        const char last = QByteArray(before).back();
        const QByteArray headings = before
                                    + QByteArray(last == '\t'  ? "lat\tlon\th\n"
                                                 : last == ',' ? "lat,lon,h\n"
                                                 : last == ';' ? "lat;lon;h\n"
                                                               : " lat lon h\n");
        const ParsedInput plain =
            parsed(parserFor(Frame::Wgs84Geographic), headings + "52.5 5.25 40\n");
        EXPECT_EQ(plain.end, QString());
        EXPECT_EQ(plain.positions, (std::vector<Pos>{Pos::fromLongLatH(5.25, 52.5, 40)}));
        const ParsedInput longer =
            parsed(parserFor(Frame::Wgs84Geographic), headings + "52.5 5.25 40 0.02\n");
        EXPECT_TRUE(longer.positions.empty());
        EXPECT_TRUE(!longer.failures.empty() || !longer.end.isEmpty());
    }
    EXPECT_TRUE(
        parsed(parserFor(Frame::Wgs84Geographic), "; lat lon h\n52.5 5.25 40\n").positions.empty());
    for (const char *input : {"Format: N E H\n465682.96 183928.88 47.5 12\n",
                              "* name N E H\nP1 465682.96 183928.88 47.5 12\n"}) {
        const ParsedInput all = parsed(parserFor(Frame::LocalProjected), input);
        EXPECT_TRUE(all.positions.empty()) << input;
    }
    EXPECT_TRUE(
        parsed(parserFor(Frame::Wgs84Cartesian), "@ X Y Z\n3899209.1 396765.2 5015080.6 1\n")
            .positions.empty());
}

TEST(HeadingSearch, OtherFirstWordsHeadTheirColumn)
{
    for (const char *headings :
         {"name lat lon h\n", "name: lat: lon: h:\n", "site lat lon h\n", "# site lat lon h\n",
          "# nr lat lon h\n", "\xE2\x84\x96 lat lon h\n", "point: lat lon h\n",
          "\"\" \"lat\" \"lon\" \"h\"\n", "% name lat lon h\n", "%,name,lat,lon,h\n",
          "-,lat,lon,h\n", "#,lat,lon,h\n"}) {
        SCOPED_TRACE(headings);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic), QByteArray(headings) + "7 52.5 5.25 40\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.positions, (std::vector<Pos>{Pos::fromLongLatH(5.25, 52.5, 40)}));
    }
}

/// As where files are put together: behind such a line longitude and latitude may be exchanged.
TEST(HeadingSearch, HeadingsInUnknownWordsFurtherDownEndTheRun)
{
    for (const char *words :
         {"Name;L\xC3\xA4nge;Breite;H\xC3\xB6he\n", "Name;L\xE4nge;Breite;H\xF6he\n",
          "Name;Rechts;Hoch;H\xC3\xB6he\n", "name,lon (deg E),lat (deg N),h\n", "x,b,a,c\n"}) {
        SCOPED_TRACE(words);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic),
                   QByteArray("name;lat;lon;h\nA;52.5;5.25;40\n") + words + "B;5.25;52.5;40\n");
        EXPECT_TRUE(all.end.startsWith(QLatin1String("3: "))) << all.end;
        EXPECT_EQ(all.names, (std::vector<std::string>{"A"}));
        EXPECT_TRUE(all.failures.empty());
    }
    for (const char *words : {"b,a,c\n", "hoch,rechts,oben\n"}) {
        const ParsedInput all = parsed(parserFor(Frame::LocalProjected),
                                       QByteArray("463000,155000,40\n") + words + "1,2,3\n");
        EXPECT_THAT(all.end, Mentions("2: words stand in place of northing, easting, height"));
        EXPECT_EQ(all.positions.size(), 1U);
    }
}

TEST(HeadingSearch, OtherLinesWithoutNumbersFailAlone)
{
    for (const char *line :
         {"B,n/a,n/a,n/a\n", "B,,,\n", "B,nan,inf,x\n", "B,-,-,-\n", "B,x,52.5,y\n", "B,p,q,\n",
          "end,of,it\n", "B,P1,a,b\n", "no position\n", "B,\xE4,5,6\n"}) {
        SCOPED_TRACE(line);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic),
                   QByteArray("name,lat,lon,h\nA,52.5,5.25,40\n") + line + "C,52.5,5.25,40\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.failures.size(), 1U);
        EXPECT_EQ(all.names, (std::vector<std::string>{"A", "C"}));
    }
    // The same headings again.
    const ParsedInput again = parsed(parserFor(Frame::Wgs84Geographic, "2,1,3"),
                                     "hoch,rechts,oben\n52.5,5.25,40\nhoch,rechts,oben\n"
                                     "52.5,5.25,40\n");
    EXPECT_EQ(again.end, QString());
    EXPECT_EQ(again.positions.size(), 2U);
}

/// As where a file in another language, whose headings are remarks, stands behind one.
TEST(HeadingSearch, RemarksInWordsOfHeadingsOfAnyLanguageEndTheRun)
{
    for (const char *words : {"# rechts,hoch,oben\n", "# Punkt;Rechts;Hoch;H\xC3\xB6he;Code\n",
                              "# Pkt Ost Nord H\xC3\xB6he\n", "#Punt\tBreedte [m]\tLengte [m]\n",
                              "Pkt;Rechts;Hoch;H\xC3\xB6he;Code\n", "# nom,est,nord,altitude\n"}) {
        SCOPED_TRACE(words);
        const QByteArray line = "A,463000,155000,40\n";
        const ParsedInput later = parsed(parserFor(Frame::LocalProjected), line + words + line);
        EXPECT_TRUE(later.end.startsWith(QLatin1String("2: words stand in place of northing")))
            << later.end;
        EXPECT_EQ(later.positions.size(), 1U);
        EXPECT_TRUE(later.failures.empty());
        const ParsedInput first = parsed(parserFor(Frame::LocalProjected), words + line);
        EXPECT_TRUE(first.end.startsWith(QLatin1String("1: "))) << first.end;
        EXPECT_TRUE(first.positions.empty());
    }
    // In as many words as there are fields, whatever they are.
    EXPECT_THAT(
        parsed(parserFor(Frame::LocalProjected), "463000,155000,40\n#b,a,c\n155000,463000,40\n")
            .end,
        Mentions("2: words stand in place of northing, easting, height"));
    // Known from the first lines, or from --columns.
    for (const char *columns : {"2,3,4", "1,2,3,4"}) {
        const ParsedInput again =
            parsed(parserFor(Frame::LocalProjected, columns),
                   "# Pkt,Hoch,Rechts,Z\nA,463000,155000,40\n# Pkt,Hoch,Rechts,Z\n"
                   "B,463000,155000,41\n");
        EXPECT_EQ(again.end, QString());
        EXPECT_EQ(again.positions.size(), 2U);
    }
    const ParsedInput picked = parsed(parserFor(Frame::LocalProjected, "1,2,3"),
                                      "hoch,rechts,oben\n463000,155000,40\n# hoch,rechts,oben\n"
                                      "463000,155000,41\n");
    EXPECT_EQ(picked.end, QString());
    EXPECT_EQ(picked.positions.size(), 2U);
}

TEST(HeadingSearch, SentencesFurtherDownArePassedOver)
{
    for (const char *remark :
         {"# second session, after lunch\n", "# cloudy, windy, cold\n", "# north\n",
          "# north, then east\n", "# from the north wall to the east wall\n", "# b a c\n",
          "# h\xC3\xB6her als sonst\n", "# est il tard\n", "# a,b\n", "# Leica,TPS,1200\n",
          "# n/a,n/a,n/a\n", "#------\n", "#\n", "# P2 was moved, y is old, x is new\n",
          "# checked; Miller; Monday\n", "# nord ost, von der Mauer\n"}) {
        SCOPED_TRACE(remark);
        const ParsedInput all =
            parsed(parserFor(Frame::LocalProjected),
                   QByteArray("463000,155000,40\n") + remark + "463000,155000,41\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.positions.size(), 2U);
        const ParsedInput first =
            parsed(parserFor(Frame::LocalProjected), QByteArray(remark) + "463000,155000,41\n");
        EXPECT_EQ(first.end, QString());
        EXPECT_EQ(first.positions.size(), 1U);
    }
}

/// What must not be taken for headings, and headings that say the same again.
TEST(HeadingSearch, RemarksAndRepetitionsArePassedOver)
{
    for (const char *input :
         {"# Survey by E. N. Smith\n5.25,52.5,40\n", "# lon, lat\n5.25,52.5,40\n",
          "# WGS84 longitude and latitude in degrees, ellipsoidal height in metres.\n5.25,52.5,40",
          "# lon,lat,h\n5.25,52.5,40\n", "# lon,lat,alt\n5.25,52.5,40\n",
          "lon,lat,h\n# latitude and longitude\n5.25,52.5,40\n",
          "# x y z of the antenna are in the other file\n5.25,52.5,40\n",
          "# the lat of it, \"so\n5.25,52.5,40\n", "# h\xF6her als sonst\n5.25,52.5,40\n"}) {
        SCOPED_TRACE(input);
        const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic), input);
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty());
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    }
    const ParsedInput again = parsed(parserFor(Frame::Wgs84Geographic),
                                     "name,lat,lon,h\nA,52.5,5.25,40\n# name,lat,lon,h\n"
                                     "B,52.5,5.25,40\nNAME;Lat;Lon;H [m]\nC,52.5,5.25,40\n");
    EXPECT_EQ(again.end, QString());
    EXPECT_EQ(again.names, (std::vector<std::string>{"A", "B", "C"}));
}

TEST(HeadingSearch, ALineThatFailsFixesNoOrder)
{
    for (const char *first : {"A,5.25,95,40\n", "5.25,95,40\n", "5 30 52 10\n", "5,52\n"}) {
        SCOPED_TRACE(first);
        const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic),
                                       QByteArray(first) + "name,lat,lon,h\nB,52.5,5.25,40\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.failures.size(), 1U);
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    }
    const ParsedInput plain =
        parsed(parserFor(Frame::Wgs84Geographic), "A,5.25,95,40\n5.25,52.5,40\nB,5.25,52.5,40\n");
    EXPECT_EQ(plain.positions.size(), 1U);
    EXPECT_EQ(plain.failures.size(), 2U);
}

/// The second line may be the point 102, which lost its height.
TEST(HeadingSearch, BehindANumberedLineThatFailsAFieldLessIsNoPosition)
{
    const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic),
                                   "101,5.25,95,40\n102.5,5.25,52.5\n103,5.5,52.5,40\n");
    ASSERT_EQ(all.failures.size(), 2U);
    EXPECT_EQ(all.failures.at(1),
              QStringLiteral("2: 3 fields found; line 1, which cannot be read, has 4"));
    EXPECT_EQ(all.names, (std::vector<std::string>{"103"}));
}

TEST(HeadingSearch, ALineOfAnglesWithoutItsHeightIsNoHeadings)
{
    const ParsedInput all =
        parsed(parserFor(Frame::Wgs84Geographic), "5.25 52.5 7\n5:15 E 52:30 N\n5.5 52.5 8\n");
    EXPECT_EQ(all.end, QString());
    EXPECT_EQ(all.failures.size(), 1U);
    EXPECT_EQ(all.positions.size(), 2U);
}

TEST(HeadingSearch, SkippedLinesSayNothing)
{
    const QByteArray input = "lat,lon,h\n\xFF\x01 2024\n5.25,52.5,40\n";
    const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic, "", 2), input);
    EXPECT_EQ(all.end, QString());
    ASSERT_EQ(all.positions.size(), 1U);
    EXPECT_EQ(all.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    EXPECT_TRUE(parsed(parserFor(Frame::Wgs84Geographic, "", 1), input).positions.empty());
    EXPECT_TRUE(parsed(parserFor(Frame::Wgs84Geographic, "", 100), input).positions.empty());
    EXPECT_EQ(parsed(parserFor(Frame::Wgs84Geographic, "", 1),
                     "\xEF\xBB\xBFtitle\nlat,lon,h\n52.5,5.25,40\n")
                  .positions,
              (std::vector<Pos>{Pos::fromLongLatH(5.25, 52.5, 40)}));
}

TEST(HeadingSearch, PickedHeadingsAreFoundBelowTitlesAndBehindSigns)
{
    for (const char *before :
         {"Survey 2024 site B\nwo,hoch,rechts,oben\n", "# wo,hoch,rechts,oben\n",
          "# heute\n\nVermessung\nwo,hoch,rechts,oben\n", "an oben 7\n# wo;hoch;rechts;oben\n"}) {
        SCOPED_TRACE(before);
        const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic, "wo,rechts,hoch,oben"),
                                       QByteArray(before) + "A,52.5,5.25,40\n");
        EXPECT_EQ(all.end, QString());
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), Pos::fromLongLatH(5.25, 52.5, 40));
    }
    // Picked by number, but the headings behind the sign say otherwise.
    EXPECT_THAT(
        parsed(parserFor(Frame::Wgs84Geographic, "2,3,4"), "# id,lat,lon,h\nA,52.5,5.25,40\n").end,
        Mentions("1: --columns picks the column \"lat\" as longitude"));
    EXPECT_THAT(parsed(parserFor(Frame::Wgs84Geographic, "2,3,4"),
                       "A,5.25,52.5,40\nid,lat,lon,h\nB,5,52,1\n")
                    .end,
                Mentions("2: --columns picks the column \"lat\" as longitude"));
    const ParsedInput same = parsed(parserFor(Frame::Wgs84Geographic, "2,3,4"),
                                    "A,5.25,52.5,40\nid,lon,lat,h\nB,5,52,1\n");
    EXPECT_EQ(same.end, QString());
    EXPECT_EQ(same.positions.size(), 2U);
    // The words nearest to the positions are their headings.
    EXPECT_EQ(parsed(parserFor(Frame::Wgs84Geographic, "1,3,2"),
                     "Vermessung im alten Ort\nhoch rechts oben\n5.25,40,52.5\n")
                  .positions,
              (std::vector<Pos>{Pos::fromLongLatH(5.25, 52.5, 40)}));
}

TEST(HeadingSearch, HeadingsOfOtherColumnsFurtherDownEndARunThatCarriesThem)
{
    const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic, "lon,lat,h"),
                                   "lon,lat,h,code\n5,52,1,T1\nlon,lat,h,date\n5,52,1,2024\n");
    EXPECT_EQ(all.positions.size(), 1U);
    EXPECT_THAT(all.end, Mentions("3: these headings give another order than line 1"));
}

/// As other programs save "Unicode".
TEST(HeadingSearch, NothingIsReadOfTextInSixteenBits)
{
    QByteArray input;
    for (const char c : QByteArray("lat,lon,h\n52.5,5.25,40\n"))
        input += QByteArray(1, c) + QByteArray(1, '\0');
    const ParsedInput all = parsed(parserFor(Frame::Wgs84Geographic), "\xFF\xFE" + input);
    EXPECT_TRUE(all.positions.empty());
    EXPECT_TRUE(!all.failures.empty() || !all.end.isEmpty());
    // The other order of bytes, without a mark, and behind lines that are passed over.
    const QByteArray other = '\0' + input.chopped(1);
    for (const QByteArray &bytes : {"\xFF\xFE" + input, "\xFE\xFF" + other, input, other}) {
        for (const int skipped : {0, 1}) {
            const ParsedInput any = parsed(parserFor(Frame::Wgs84Geographic, "", skipped), bytes);
            EXPECT_EQ(any.end, QStringLiteral("%1: the input is UTF-16 text; convert it to UTF-8")
                                   .arg(1 + skipped));
            EXPECT_TRUE(any.failures.empty());
        }
    }
}

/// Data whose texts happen to be words of headings.
TEST(HeadingSearch, PositionsWithWordsAreNoHeadings)
{
    const ParsedInput all =
        parsed(parserFor(Frame::LocalProjected),
               "n;e;h;code;note\n463000;155000;40;n;e\n\"463000\";155000;40;n;h\n");
    EXPECT_EQ(all.end, QString());
    EXPECT_EQ(all.positions.size(), 2U);
}

} // namespace
} // namespace KelStd
