// Columns that are picked, and those that are carried through.

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

ProgramResult convert(const char *columns, const QByteArray &input, const QStringList &more = {})
{
    return ProgramRun().convert(
        system, input, QStringList{QStringLiteral("--columns"), QString::fromUtf8(columns)} + more);
}

/// A line of input that means 5.25, 52.5, -4.125.
struct Picked
{
    const char *testName;
    const char *columns;
    const char *input;
    const char *name;
    const char *headings; ///< of the carried fields
    const char *carried;
};

void PrintTo(const Picked &row, std::ostream *out)
{
    *out << row.testName;
}

class PickedColumns : public testing::TestWithParam<Picked>
{};

TEST_P(PickedColumns, GiveThePosition)
{
    const auto result = convert(GetParam().columns, GetParam().input);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 2) << result.out;
    const QString reference = QStringLiteral(",local_height_reference");
    EXPECT_EQ(lines.first().mid(lines.first().indexOf(reference) + reference.size()),
              QString::fromUtf8(GetParam().headings));
    const QString start = QStringLiteral("%1,5.25000000000,52.50000000000,-4.12500,")
                              .arg(QString::fromUtf8(GetParam().name));
    EXPECT_TRUE(lines.last().startsWith(start)) << lines.last();
    const QString end = QStringLiteral(",ellipsoid") + QString::fromUtf8(GetParam().carried);
    EXPECT_TRUE(lines.last().endsWith(end)) << lines.last();
}

INSTANTIATE_TEST_SUITE_P(
    Picks, PickedColumns,
    testing::Values(
        Picked{"Numbers", "2,3,4", "A,5.25,52.5,-4.125\n", "", ",column_1", ",A"},
        Picked{"NumbersAndName", "1,2,3,4", "A,5.25,52.5,-4.125\n", "A", "", ""},
        Picked{"NumbersInAnotherOrder", "5,4,1,2", "52.5;-4.125;x;5.25;A;y\n", "A",
               ",column_3,column_6", ",x,y"},
        Picked{"NumbersWithBlanksAround", " 2 , 3,4 ", "A,5.25,52.5,-4.125\n", "", ",column_1",
               ",A"},
        Picked{"OnlyThreeColumns", "3,1,2", "52.5 -4.125 5.25\n", "", "", ""},
        Picked{"Headings", "id,lon,lat,h", "h;lat;lon;id\n-4.125;52.5;5.25;A\n", "A", "", ""},
        Picked{"HeadingsTheProgramDoesNotKnow", "wo,rechts,hoch,oben",
               "oben;hoch;rechts;wo\n-4.125;52.5;5.25;A\n", "A", "", ""},
        Picked{"HeadingsAndNumbers", "4,lon,2,h", "h;lat;lon;id\n-4.125;52.5;5.25;A\n", "A", "",
               ""},
        Picked{"NumbersBelowAHeader", "3,2,1", "h;lat;lon;id\n-4.125;52.5;5.25;A\n", "", ",id",
               ",A"},
        Picked{"HeadingsWithUnits", "Longitude [deg],latitude (deg),H [m]",
               "Longitude [deg];latitude (deg);H [m]\n5.25;52.5;-4.125\n", "", "", ""},
        Picked{"HeadingsButForCaseAndSigns", "POINT-NO,longitude_deg,LATITUDE,height",
               "point no,Longitude [deg],Latitude,Height\nA,5.25,52.5,-4.125\n", "A", "", ""},
        Picked{"UnitsThatBlanksSeparate", "lon [deg],lat [deg],h [m]",
               "id lon [deg] lat [deg] h [m]\nA 5.25 52.5 -4.125\n", "", ",id", ",A"},
        Picked{"TheExactHeadingGoesBeforeOneLikeIt", "lon,Lat,h",
               "lon;Lat;lat;h\n5.25;52.5;99;-4.125\n", "", ",lat", ",99"},
        Picked{"CarriedAsTheyStand", "1,2,3",
               "5.25,52.5,-4.125,007,1e5,\"a, b\",\"6\"\" pipe\",#,\xC3\xA9,,  x y  \n", "",
               ",column_4,column_5,column_6,column_7,column_8,column_9,column_10,column_11",
               ",007,1e5,\"a, b\",\"6\"\" pipe\",\"#\",\xC3\xA9,,x y"},
        Picked{"HeadingsThatNeedQuotes", "lon,lat,h",
               "lon,lat,h,\"a, b\",\"q\"\"q\"\n5.25,52.5,-4.125,1,2\n", "", ",\"a, b\",\"q\"\"q\"",
               ",1,2"},
        Picked{"HeadingsWithCommasAreQuoted",
               "\"Name, code\", \"lon, E\" ,\"lat\",\"the \"\"h\"\" m\"",
               "\"Name, code\",\"lon, E\",lat,\"the \"\"h\"\" m\"\nA,5.25,52.5,-4.125\n", "A", "",
               ""},
        Picked{"AMarkInsideAHeadingNeedsNone", "lon,lat,5\" rod",
               "lon;lat;5\" rod\n5.25;52.5;-4.125\n", "", "", ""},
        Picked{"HeadingsOfOurOwnGetANumber", "lon,lat,h",
               "lon,lat,h,point,wgs84_x_m,point,local_height_reference\n"
               "5.25,52.5,-4.125,1,2,3,4\n",
               "", ",point_2,wgs84_x_m_2,point_3,local_height_reference_2", ",1,2,3,4"},
        Picked{"ANumberedHeadingIsNotTakenTwice", "lon,lat,h",
               "lon,lat,h,a,a,a_2,a_2\n5.25,52.5,-4.125,1,2,3,4\n", "", ",a,a_2,a_2_2,a_2_3",
               ",1,2,3,4"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertColumns, AFirstLineWithNumbersIsAHeaderForPickedHeadings)
{
    const auto result = convert("lon,lat 2021,h", "lon;2020;lat 2021;h\n5.25;7;52.5;-4.125\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(result.outLines().value(1).startsWith(
        QLatin1String(",5.25000000000,52.50000000000,-4.12500,")))
        << result.out;
}

TEST(ConvertColumns, HaveTheOrderOfTheFrame)
{
    const auto result = convert("4,3,2", "A,-41.7,145683.14313,501375.71087\n",
                                {QStringLiteral("--from"), QStringLiteral("local-neh")});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = csvRows(result.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("local_northing_m")), QStringLiteral("501375.71087"));
    EXPECT_EQ(row.value(QStringLiteral("local_easting_m")), QStringLiteral("145683.14313"));
    EXPECT_EQ(row.value(QStringLiteral("column_1")), QStringLiteral("A"));
}

/// Column lists and inputs with which nothing can be converted.
struct Refused
{
    const char *testName;
    const char *columns;
    const char *input;
    int status;
    const char *report;
};

void PrintTo(const Refused &row, std::ostream *out)
{
    *out << row.testName;
}

class RefusedColumns : public testing::TestWithParam<Refused>
{};

TEST_P(RefusedColumns, AreAMistakeWithItsReason)
{
    const auto result = convert(GetParam().columns, GetParam().input);
    EXPECT_EQ(result.status, GetParam().status) << result.err;
    EXPECT_LE(result.outLines().size(), 1) << result.out; // the heading at most
    EXPECT_THAT(result.err, Mentions(GetParam().report));
}

constexpr char headed[] = "id;lon;lat;h;Lon\nA;5.25;52.5;1;7\nB;5.5;52.5;1;7\n";
constexpr char bare[] = "A;5.25;52.5;1\nB;5.5;52.5;1\n";

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedColumns,
    testing::Values(
        Refused{"One", "lon", headed, 2,
                "--columns 'lon' has 1 columns; there are three, or four with that of the "
                "point name first, or two without a height"},
        Refused{"Five", "1,2,3,4,5", headed, 2, "--columns '1,2,3,4,5' has 5 columns"},
        Refused{"None", "", headed, 2, "--columns '' has 1 columns"},
        Refused{"Zero", "0,2,3", headed, 2, "--columns '0,2,3': '0' is no column"},
        Refused{"Negative", "1,-2,3", headed, 2, "--columns '1,-2,3': '-2' is no column"},
        Refused{"Empty", "1,,3", headed, 2, "--columns '1,,3': '' is no column"},
        Refused{"TooLarge", "2,3,9", headed, 2,
                "<stdin>:1: --columns: there is no column 9; the line has 5"},
        Refused{"TooLargeWithoutHeader", "2,3,9", bare, 1,
                "<stdin>:1: --columns: there is no column 9; the line has 4"},
        Refused{"PickedTwice", "2,3,2", headed, 2, "<stdin>:1: --columns picks column 2 twice"},
        Refused{"PickedTwiceByHeadingAndNumber", "lon,lat,2", headed, 2,
                "<stdin>:1: --columns picks column 2 twice"},
        Refused{"PickedTwiceWithoutHeader", "2,3,2", bare, 1,
                "<stdin>:1: --columns picks column 2 twice"},
        Refused{"UnknownHeading", "lon,lat,up", headed, 2,
                "<stdin>:1: --columns: no column is headed \"up\"; there are id, lon, lat, h, "
                "Lon"},
        Refused{"HeadingsWithCommasAreProposedAsTheyArePicked", "a,b,c",
                "\"a,b\";c;d;\"\"\"e\"\"\"\n5;52;1;2\n", 2,
                "no column is headed \"a\"; did you mean \"a,b\"? There are \"a,b\", c, d, "
                "\"\"\"e\"\"\""},
        Refused{
            "QuotationMarkNotClosed", "\"a,2,3", headed, 2,
            "--columns '\"a,2,3': a quotation mark is not closed; a heading with a comma stands "
            "in quotation marks, and a mark in it is doubled"},
        Refused{"TextBehindAQuotationMark", "\"a\"b,2,3", headed, 2,
                "text follows a closing quotation mark"},
        Refused{"AmbiguousHeading", "LON,lat,h", headed, 2,
                "<stdin>:1: --columns: \"LON\" is the heading of 2 columns; pick one by its "
                "number"},
        Refused{"TheSameHeadingTwice", "a,b,c", "a;b;c;a\n5;52;1;5\n", 2,
                "<stdin>:1: --columns: \"a\" is the heading of 2 columns; pick one by its number"},
        Refused{"LatitudeForLongitude", "lat,lon,h", headed, 2,
                "<stdin>:1: --columns picks the column \"lat\" as longitude; the order is "
                "longitude, latitude, height"},
        Refused{"HeightForLatitudeByNumber", "2,4,3", headed, 2,
                "<stdin>:1: --columns picks the column \"h\" as latitude"},
        Refused{"HeaderMissing", "lon,lat,h", bare, 2,
                "<stdin>:1: --columns: no column is headed \"lon\"; there are A, 5.25, 52.5, 1"},
        Refused{"HeaderThatCannotBeRead", "lon,lat,h", "lon;lat;\"h\n5;52;1\n", 2,
                "<stdin>:1: the header cannot be read: a quotation mark is not closed"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertColumns, EveryLineHasAsManyFieldsAsTheFirst)
{
    for (const char *first : {"id;lon;lat;h;code\n", "A;5;52;1;x\n"}) {
        SCOPED_TRACE(first);
        const auto result = convert(
            "1,2,3,4", QByteArray(first) + "B;5;52;1;y\nC;5;52;1\nD;5;52;1;x;z\nE;5;52;1;\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions("<stdin>:3: 4 fields found; line 1 has 5"));
        EXPECT_THAT(result.err, Mentions("<stdin>:4: 6 fields found; line 1 has 5"));
        EXPECT_TRUE(result.out.contains(QLatin1String("\nB,")));
        EXPECT_TRUE(result.out.contains(QLatin1String("\nE,")));
        EXPECT_FALSE(result.out.contains(QLatin1String("\nC,")));
        EXPECT_FALSE(result.out.contains(QLatin1String("\nD,")));
    }
}

const char *const carryingInput = "id;lon;lat;h;code;a remark\n"
                                  "A;5.25;52.5;1;T1;\"say \"\"so\"\"\"\n"
                                  "B;5.5;52.5;2;T2;caf\xC3\xA9\n";

TEST(CarriedFields, StandAtTheEndOfAWideTable)
{
    const auto result = convert("id,lon,lat,h", carryingInput, {QStringLiteral("--table")});
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines.at(1).endsWith(QLatin1String("  code      a remark"))) << lines.at(1);
    const int code = lines.at(1).indexOf(QLatin1String("code"));
    const int remark = lines.at(1).indexOf(QLatin1String("a remark"));
    EXPECT_EQ(lines.at(3).mid(code), QStringLiteral("T1        say \"so\""));
    EXPECT_EQ(lines.at(4).mid(code), QString::fromUtf8("T2        caf\xC3\xA9"));
    EXPECT_EQ(lines.at(4).mid(remark), QString::fromUtf8("caf\xC3\xA9"));
}

TEST(CarriedFields, HaveALineEachInANarrowTable)
{
    const ProgramRun program;
    test::Terminal terminal(80);
    const auto result = terminal.run(program,
                                     {QStringLiteral("convert"), QStringLiteral("--system"),
                                      test::systemPath(system), QStringLiteral("--columns"),
                                      QStringLiteral("id,lon,lat,h")},
                                     carryingInput);
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 2 * 11 + 1);
    EXPECT_EQ(lines.at(0), QStringLiteral("A"));
    EXPECT_EQ(lines.at(9), QStringLiteral("  code: T1"));
    EXPECT_EQ(lines.at(10), QStringLiteral("  a remark: say \"so\""));
    EXPECT_EQ(lines.at(11), QString());
    EXPECT_EQ(lines.at(12), QStringLiteral("B"));
    EXPECT_EQ(lines.at(22), QString::fromUtf8("  a remark: caf\xC3\xA9"));
}

void expectCarried(const QJsonObject &object)
{
    EXPECT_EQ(object.value(QStringLiteral("point")), QJsonValue(QStringLiteral("A")));
    EXPECT_EQ(object.value(QStringLiteral("code")), QJsonValue(QStringLiteral("T1")));
    EXPECT_EQ(object.value(QStringLiteral("a remark")), QJsonValue(QStringLiteral("say \"so\"")));
    EXPECT_EQ(object.size(), 14 + 2);
}

TEST(CarriedFields, AreTextsInJson)
{
    const auto result = convert("id,lon,lat,h", carryingInput, {QStringLiteral("--json")});
    ASSERT_EQ(result.status, 0) << result.err;
    expectCarried(QJsonDocument::fromJson(result.outLines().value(0).toUtf8()).object());
}

TEST(CarriedFields, ArePropertiesInGeoJson)
{
    const auto result = convert("id,lon,lat,h", carryingInput, {QStringLiteral("--geojson")});
    ASSERT_EQ(result.status, 0) << result.err;
    const QJsonArray features = QJsonDocument::fromJson(result.out.toUtf8())
                                    .object()
                                    .value(QStringLiteral("features"))
                                    .toArray();
    ASSERT_EQ(features.size(), 2);
    expectCarried(features.at(0).toObject().value(QStringLiteral("properties")).toObject());
}

TEST(CarriedFields, AreThoseOfHeadingsWithoutPickedColumns)
{
    const auto picked = convert("1,2,3,4", carryingInput);
    const auto byHeadings = ProgramRun().convert(system, carryingInput);
    ASSERT_EQ(byHeadings.status, 0) << byHeadings.err;
    EXPECT_EQ(byHeadings.err, QString());
    EXPECT_EQ(byHeadings.out, picked.out);
    EXPECT_TRUE(byHeadings.outLines().value(1).endsWith(QLatin1String(",T1,\"say \"\"so\"\"\"")));
}

TEST(CarriedFields, AreAllThatHeadingsNameBesides)
{
    struct Row
    {
        const char *input;
        const char *headings; ///< behind the frames
        const char *fields;
    };
    const Row rows[] = {
        {"lat;Nr.;lon;h;code\n52.5;A;5.25;1;T1\n", ",code", ",T1"},
        {"# code lat lon h\nT1 52.5 5.25 1\n", ",code", ",T1"},
        {"code,a,b,lat,lon,h\nT1,7,,52.5,5.25,1\n", ",code,a,b", ",T1,7,"},
        {"lat;lon;h;\n52.5;5.25;1;x\n", ",column_4", ",x"},
        {"lat,lon,h,code,code\n52.5,5.25,1,x,y\n", ",code,code_2", ",x,y"},
        {"name,id,lat,lon,h\nA,7,52.5,5.25,1\n", ",id", ",7"},
        {"lat,lon,h,h_ft\n52.5,5.25,1,3.28\n", ",h_ft", ",3.28"},
        {"lat,lon,h,unit\n52.5,5.25,1,m\n", "", ""},
        {"A,5.25,52.5,1\n", "", ""},
        {"point,longitude,latitude,height\nA,5.25,52.5,1\n", "", ""},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.input);
        const auto result = ProgramRun().convert(system, row.input);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, QString());
        const QString reference = QStringLiteral(",local_height_reference");
        const QString headings = result.outLines().value(0);
        EXPECT_EQ(headings.mid(headings.indexOf(reference) + reference.size()),
                  QString::fromUtf8(row.headings));
        EXPECT_TRUE(result.outLines().value(1).endsWith(QLatin1String(",ellipsoid")
                                                        + QString::fromUtf8(row.fields)))
            << result.out;
        // Read again, the columns of the other frames are computed anew, as a note says, and those
        // besides are carried on.
        const auto again = ProgramRun().convert(system, result.out.toUtf8());
        EXPECT_EQ(again.err,
                  "kelstd: note: not carried through, since they are named as what is computed: "
                  "\"wgs84_x_m\", \"wgs84_y_m\", \"wgs84_z_m\", "
                  "\"local_longitude_deg\", \"local_latitude_deg\", "
                  "\"local_ellipsoidal_height_m\", \"local_northing_m\", \"local_easting_m\", "
                  "2 more\n");
        EXPECT_EQ(again.outLines().value(0), headings);
    }
}

// They may be another surveyor's, of another system.
TEST(CarriedFields, OfNamesThatTheOutputHasANoteTells)
{
    const auto result = ProgramRun().convert(
        system, "name,lon,lat,h,local_northing_m,code\n1,5.25,52.5,1,222,T1\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "kelstd: note: not carried through, since they are named as what is "
                          "computed: \"local_northing_m\"\n");
    EXPECT_TRUE(result.out.contains(QLatin1String(",local_height_reference,code\n")));
    EXPECT_TRUE(result.out.endsWith(QLatin1String(",T1\n")));
}

TEST(CarriedFields, NamesAreFoundUnderTheirHeadings)
{
    for (const char *heading :
         {"Station Name", "Nr", "Nr.", "Punkt", "Punktnummer", "Pkt", "Pt", "Station", "Number",
          "Nummer", "Bezeichnung", "Label", "Point_No", "PtID"}) {
        const auto result =
            ProgramRun().convert(system, heading + QByteArray(";lat;lon;h\nA;52.5;5.25;1\n"));
        EXPECT_EQ(result.err, QString()) << heading;
        EXPECT_EQ(csvRows(result.out).value(0).value(QStringLiteral("point")), QStringLiteral("A"))
            << heading;
    }
}

} // namespace
} // namespace KelStd
