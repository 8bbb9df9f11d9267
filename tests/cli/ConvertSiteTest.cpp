// Systems with a site: its coordinates behind the frames, and read back.

#include "cli/ProgramRun.h"
#include "cli/SiteEdits.h"
#include "support/Printers.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd {
namespace {

using test::csvRows;
using test::edits;
using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::quarterTurn;
using test::text;

const QString rdNew = QStringLiteral("rd_new.xml");

class ConvertSite : public testing::Test
{
protected:
    ProgramResult convert(const QMap<QString, QString> &changes, const QByteArray &input,
                          std::initializer_list<const char *> options,
                          const QString &document = rdNew) const
    {
        QStringList arguments = {
            text("convert"), text("--system"),
            m_program.file(text("system.xml"), test::editedSystem(document, changes))};
        for (const char *option : options)
            arguments += text(option);
        return m_program.run(arguments, input);
    }

    ProgramRun m_program;
};

TEST_F(ConvertSite, CoordinatesStandBehindTheFrames)
{
    const auto result =
        convert(quarterTurn(), "A,463000,155000,10\nB,463100,155020,11\n", {"--from=local-neh"});
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList header = result.outLines().value(0).split(QLatin1Char(','));
    EXPECT_EQ(
        header.mid(header.indexOf(text("local_height_m"))),
        (QStringList{text("local_height_m"), text("local_height_reference"),
                     text("site_northing_m"), text("site_easting_m"), text("site_height_m")}));
    const QStringList a = result.outLines().value(1).split(QLatin1Char(','));
    EXPECT_EQ(a.mid(10), (QStringList{text("463000.00000"), text("155000.00000"), text("10.00000"),
                                      text("ellipsoid"), text("2000.00000"), text("1000.00000"),
                                      text("10.50000")}));
    const QStringList b = result.outLines().value(2).split(QLatin1Char(','));
    EXPECT_EQ(b.mid(14), (QStringList{text("1980.00000"), text("1100.00000"), text("11.50000")}));
}

TEST_F(ConvertSite, OnlySystemsWithRecordsHaveThem)
{
    const auto without = convert({}, "5,52,1\n", {});
    EXPECT_FALSE(without.out.contains(text("site")));
    const auto plane =
        convert(edits("Plane_Transform", "fuction", "Four", {{text("ratio"), text("1")}}),
                "463000,155000,10\n", {"--from=local-neh"});
    const auto row = csvRows(plane.out).value(0);
    EXPECT_EQ(row.value(text("site_northing_m")), text("463000.00000"));
    EXPECT_EQ(row.value(text("site_height_m")), text("10.00000"));
    const auto height = convert(edits("Elevation_Fitting", "function", "Plane",
                                      {{text("a"), text("-1")}, {text("b"), text("1e-05")}}),
                                "463000,155000,10\n", {"--from=local-neh"});
    EXPECT_EQ(csvRows(height.out).value(0).value(text("site_height_m")), text("13.63000"));
}

TEST_F(ConvertSite, AllFormsHaveThem)
{
    const QByteArray input = "A,463000,155000,10\n";
    const auto json = convert(quarterTurn(), input, {"--from=local-neh", "--json"});
    const QJsonObject object = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(object.value(text("site_northing_m")).toDouble(-1.0), 2000.0);
    EXPECT_EQ(object.value(text("site_easting_m")).toDouble(-1.0), 1000.0);
    EXPECT_EQ(object.value(text("site_height_m")).toDouble(-1.0), 10.5);
    const auto geoJson = convert(quarterTurn(), input, {"--from=local-neh", "--geojson"});
    EXPECT_THAT(geoJson.out,
                Mentions("\"site_northing_m\":2000.00000,\"site_easting_m\":1000.00000,"
                         "\"site_height_m\":10.50000}"));
    const auto table = convert(quarterTurn(), input, {"--from=local-neh", "--table"});
    for (const char *words : {"---- at the site ----", "2000 ", "1000 ", "10.5"})
        EXPECT_THAT(table.out, Mentions(words));
    const auto noHeader = convert(quarterTurn(), input, {"--from=local-neh", "--no-header"});
    EXPECT_TRUE(noHeader.out.endsWith(text(",ellipsoid,2000.00000,1000.00000,10.50000\n")));
}

TEST_F(ConvertSite, UnitsAndDecimalsAreThoseOfTheFrames)
{
    const auto printed = convert(quarterTurn(), "1519028.8714,508530.1837,32.8084\n",
                                 {"--from=local-neh", "--length-unit=ft"});
    ASSERT_EQ(printed.status, 0) << printed.err;
    // 2000 m, 1000 m and 10.5 m over 0.3048.
    const auto row = csvRows(printed.out).value(0);
    constexpr double rest = 0.002; // of the four decimals that are given
    EXPECT_NEAR(numberIn(row, text("site_northing_ft")), 6561.680, rest);
    EXPECT_NEAR(numberIn(row, text("site_easting_ft")), 3280.840, rest);
    EXPECT_NEAR(numberIn(row, text("site_height_ft")), 34.449, rest);
}

TEST_F(ConvertSite, SiteIsReadBack)
{
    const QByteArray site = "name,site_easting_m,site_northing_m,site_height_m\n"
                            "A,1000,2000,10.5\nB,1100,1980,11.5\n";
    const auto result = convert(quarterTurn(), site, {"--from=site-neh"});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = csvRows(result.out);
    EXPECT_EQ(rows.value(0).value(text("local_northing_m")), text("463000.00000"));
    EXPECT_EQ(rows.value(1).value(text("local_northing_m")), text("463100.00000"));
    EXPECT_EQ(rows.value(1).value(text("local_easting_m")), text("155020.00000"));
    EXPECT_EQ(rows.value(1).value(text("local_height_m")), text("11.00000"));
    EXPECT_EQ(rows.value(1).value(text("site_northing_m")), text("1980.00000"));
    // Without headings, or with short ones, in the order of the plane.
    EXPECT_EQ(
        convert(quarterTurn(), "A,2000,1000,10.5\nB,1980,1100,11.5\n", {"--from=site-neh"}).out,
        result.out);
    EXPECT_EQ(convert(quarterTurn(), "point;E;N;h\nA;1000;2000;10,5\nB;1100;1980;11,5\n",
                      {"--from=site-neh"})
                  .out,
              result.out);
    // The program's own output, in each of its frames.
    for (const char *frame : {"--from=site-neh", "--from=local-neh"})
        EXPECT_EQ(convert(quarterTurn(), result.out.toUtf8(), {frame}).out, result.out);
}

TEST_F(ConvertSite, SiteIsReadInTheUnitThatIsPrinted)
{
    const auto result = convert(quarterTurn(),
                                "site_northing_ft,site_easting_ft,site_height_ft\n"
                                "6561.6798,3280.8399,34.4488\n",
                                {"--from=site-neh", "--length-unit=ft"});
    ASSERT_EQ(result.status, 0) << result.err;
    constexpr double rest = 0.001;
    const auto row = csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(row, text("local_easting_ft")) * 0.3048, 155000.0, rest);
    EXPECT_NEAR(numberIn(row, text("site_height_ft")) * 0.3048, 10.5, rest);
    const auto metres = convert(quarterTurn(),
                                "site_northing_ft,site_easting_ft,site_height_ft\n"
                                "6561.6798,3280.8399,34.4488\n",
                                {"--from=site-neh"});
    ASSERT_EQ(metres.status, 0) << metres.err;
    EXPECT_THAT(metres.err, Mentions("read with northing in ft, easting in ft, height in ft"));
    EXPECT_NEAR(numberIn(csvRows(metres.out).value(0), text("local_easting_m")), 155000.0, rest);
    const auto mixed = convert(quarterTurn(),
                               "site_northing_ft,site_easting,site_height_ft\n"
                               "6561.6798,3280.8399,34.4488\n",
                               {"--from=site-neh"});
    EXPECT_EQ(mixed.status, 2);
    EXPECT_THAT(mixed.err, Mentions("\"site_easting\" names no unit"));
}

struct Headings
{
    const char *line;
    const char *from;
    const char *reason;
};

TEST_F(ConvertSite, HeadingsOfTheSiteAndThePlaneAreNotMixedUp)
{
    const Headings rows[] = {
        {"site_northing,site_easting,site_height", "--from=local-neh",
         "these headings fit --from site-neh"},
        {"local_northing,local_easting,local_height", "--from=site-neh",
         "these headings fit --from local-neh"},
        {"site_northing_m,site_easting_m,site_height_m", "--from=wgs84-llh",
         "these headings fit --from site-neh"},
        {"site_id,local_northing,easting,height", "--from=site-neh", "it names no northing"},
    };
    for (const Headings &row : rows) {
        const auto result = convert(quarterTurn(), QByteArray(row.line) + "\n1,2,3\n", {row.from});
        EXPECT_EQ(result.status, 2) << row.line;
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.reason));
    }
    const auto picked = convert(quarterTurn(), "local_northing,b,c\n1,2,3\n",
                                {"--from=site-neh", "--columns=1,2,3"});
    EXPECT_EQ(picked.status, 2);
    EXPECT_THAT(picked.err, Mentions("picks the column \"local_northing\" as the northing of "
                                     "site-neh; its heading names the northing of local-neh"));
    const auto other = convert(quarterTurn(), "site_northing,b,c\n1,2,3\n",
                               {"--from=local-neh", "--columns=1,2,3"});
    EXPECT_THAT(other.err, Mentions("its heading names the northing of site-neh"));
    // What else may be called after a site is a name.
    const auto named = convert(quarterTurn(), "site_name,northing,easting,height\nA,2000,1000,1\n",
                               {"--from=site-neh", "--columns=site_name,2,3,4"});
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_EQ(csvRows(named.out).value(0).value(text("point")), text("A"));
}

TEST_F(ConvertSite, RecordsThatCannotBeAppliedEndTheRun)
{
    for (const char *ratio : {"0", "-1"}) {
        auto changes = quarterTurn(ratio);
        if (*ratio == '0') // is there already
            changes = edits("Plane_Transform", "fuction", "Four", {});
        const auto result = convert(changes, "5,52,1\n", {});
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("cannot use the coordinate system"));
        EXPECT_THAT(result.err, Mentions("the ratio of the planar transformation is "));
    }
}

TEST_F(ConvertSite, SystemWithoutSiteHasNoneToReadFrom)
{
    const auto result = convert({}, "1,2,3\n", {"--from=site-neh"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("neither a planar transformation nor a height fitting"));
}

TEST_F(ConvertSite, ALineThatFailsCostsTheOthersNothing)
{
    const auto result =
        convert(quarterTurn(), "2000,1000,1\n1e300,1,1\nx,1,1\n2000,1000,1\n", {"--from=site-neh"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.outLines().size(), 3);
    EXPECT_THAT(result.err, Mentions("<stdin>:2: "));
    EXPECT_THAT(result.err, Mentions("<stdin>:3: "));
}

TEST_F(ConvertSite, PositionsOutsideTheAreaAreCounted)
{
    auto changes = quarterTurn();
    changes.insert(text("</Coord>"),
                   text("<Origin ver=\"1\"><Area west=\"3.2\" south=\"50.75\" east=\"7.24\" "
                        "north=\"53.7\" name=\"Netherlands\"/></Origin></Coord>"));
    // The second lies 500 km further along the site's northing, which is westwards.
    const auto result =
        convert(changes, "2000,1000,1\n502000,1000,1\n1000,2000,1\n", {"--from=site-neh"});
    EXPECT_THAT(result.err, Mentions("1 of 3 positions lie outside the area of use of the "
                                     "system, longitudes 3.2 to 7.24"));
    EXPECT_FALSE(result.err.contains(text("WARNING")));
}

TEST_F(ConvertSite, ManyLinesOnSeveralThreadsStandInTheirOrder)
{
    QByteArray input;
    QByteArray expected;
    for (int i = 0; i < 40000; ++i) {
        input += QByteArray::number(100000 + i) + ",155000,1\n";
        expected += ",2000.00000," + QByteArray::number(100000 + i - 462000) + ".00000,1.50000\n";
    }
    const auto result = convert(quarterTurn(), "300000,155000,1\n" + input,
                                {"--from=local-neh", "--threads=4", "--no-header"});
    ASSERT_EQ(result.status, 0) << result.err.left(500);
    QByteArray printed;
    for (const QString &line : result.outLines().mid(1))
        printed += line.mid(line.indexOf(text(",ellipsoid,")) + 10).toUtf8() + '\n';
    EXPECT_TRUE(printed == expected);
}

} // namespace
} // namespace KelStd
