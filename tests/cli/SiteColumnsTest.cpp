// The coordinates at a site among the columns that are chosen, between two systems, in files, and
// where their heights are not known.

#include "cli/ProgramRun.h"
#include "cli/SiteEdits.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>

namespace KelStd {
namespace {

using test::csvRows;
using test::edits;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::quarterTurn;
using test::readFile;
using test::text;

using Edits = QMap<QString, QString>;

const QByteArray amersfoort = "A,463000,155000,10\n";

class SiteColumns : public testing::Test
{
protected:
    QString system(const char *name, const Edits &changes) const
    {
        return m_program.file(text(name), test::editedSystem(text("rd_new.xml"), changes));
    }

    ProgramResult convert(const QString &system, const QByteArray &input,
                          std::initializer_list<const char *> options) const
    {
        QStringList arguments = {text("convert"), text("--system"), system};
        for (const char *option : options)
            arguments += text(option);
        return m_program.run(arguments, input);
    }

    ProgramResult atSite(const QByteArray &input, std::initializer_list<const char *> options) const
    {
        return convert(system("turn.xml", quarterTurn()), input, options);
    }

    ProgramRun m_program;
};

struct Chosen
{
    const char *option;
    const char *out;
};

// A quarter turn: E' = N - 462000, N' = 157000 - E, H' = H + 0.5.
TEST_F(SiteColumns, AreNamedAmongFramesAndFields)
{
    const Chosen rows[] = {
        {"--frames=site-neh", "point,site_northing_m,site_easting_m,site_height_m\n"
                              "A,2000.00000,1000.00000,10.50000\n"},
        {"--frames=site-neh,local-neh",
         "point,site_northing_m,site_easting_m,site_height_m,local_northing_m,local_easting_m,"
         "local_height_m,local_height_reference\n"
         "A,2000.00000,1000.00000,10.50000,463000.00000,155000.00000,10.00000,ellipsoid\n"},
        {"--frames=local-neh", "point,local_northing_m,local_easting_m,local_height_m,"
                               "local_height_reference\n"
                               "A,463000.00000,155000.00000,10.00000,ellipsoid\n"},
        {"--fields=site_easting,point,site_northing_m,point_scale",
         "site_easting_m,point,site_northing_m,point_scale\n"
         "1000.00000,A,2000.00000,0.999907900\n"},
        {"--fields=local_height", "local_height_m\n10.00000\n"},
    };
    for (const Chosen &row : rows)
        EXPECT_EQ(atSite(amersfoort, {"--from=local-neh", row.option}).out, text(row.out));
}

TEST_F(SiteColumns, StandInFrontOfFactorsAndCarriedColumns)
{
    const auto result =
        atSite("name,n,e,h,code\nA,463000,155000,10,TREE\n",
               {"--from=local-neh", "--factors", "--frames=site-neh", "--columns=name,n,e,h"});
    EXPECT_EQ(result.outLines().value(0),
              text("point,site_northing_m,site_easting_m,site_height_m,point_scale,"
                   "elevation_factor,combined_factor,convergence_deg,code"));
    const auto whole = atSite(amersfoort, {"--from=local-neh", "--factors"});
    EXPECT_THAT(whole.out, Mentions("local_height_reference,site_northing_m,site_easting_m,"
                                    "site_height_m,point_scale,"));
}

TEST_F(SiteColumns, OfASystemWithoutSiteAreRefused)
{
    const QString plain = system("plain.xml", {});
    const auto frames = convert(plain, amersfoort, {"--from=local-neh", "--frames=site-neh"});
    EXPECT_EQ(frames.status, 3);
    EXPECT_EQ(frames.out, QString());
    EXPECT_THAT(frames.err, Mentions("it has no site, neither a planar transformation nor a "
                                     "height fitting, for --frames site-neh"));
    const auto fields = convert(plain, amersfoort, {"--from=local-neh", "--fields=site_northing"});
    EXPECT_EQ(fields.status, 2);
    EXPECT_THAT(fields.err, Mentions("'site_northing' is no column"));
}

TEST_F(SiteColumns, BelongToTheSystemThatIsPrinted)
{
    const QString plain = system("plain.xml", {});
    const QString turn = system("turn.xml", quarterTurn());
    const QByteArray printed = "point,site_northing_m,site_easting_m,site_height_m\n"
                               "A,2000.00000,1000.00000,10.50000\n";
    EXPECT_EQ(convert(plain, amersfoort,
                      {"--from=local-neh", "--frames=site-neh", "--to", qPrintable(turn)})
                  .out,
              QString::fromLatin1(printed));
    const auto away = convert(turn, "A,2000.0,1000.0,10.5\n",
                              {"--from=site-neh", "--frames=local-neh", "--to", qPrintable(plain)});
    EXPECT_THAT(away.out, Mentions("A,463000.00000,155000.00000,10.00000,ellipsoid\n"));
    const auto none = convert(turn, amersfoort,
                              {"--from=local-neh", "--frames=site-neh", "--to", qPrintable(plain)});
    EXPECT_EQ(none.status, 3);
    EXPECT_THAT(none.err, Mentions("plain.xml: it has no site"));
    EXPECT_FALSE(convert(turn, amersfoort, {"--from=local-neh", "--to", qPrintable(plain)})
                     .out.contains(text("site_")));
}

TEST_F(SiteColumns, PositionsWithoutHeightsSayWhatTheirsIsAbove)
{
    const QByteArray input = "name,northing,easting\nA,2000,1000\n";
    const auto given =
        atSite(input, {"--from=site-neh", "--height=10.5", "--fields=local_height,site_height"});
    EXPECT_EQ(given.out, text("local_height_m,site_height_m\n10.00000,10.50000\n"));
    EXPECT_THAT(given.err, Mentions("the height of --height is taken as it is, above the zero of "
                                    "the site's heights"));
    const auto missing = atSite(input, {"--from=site-neh", "--fields=local_height,site_height"});
    EXPECT_EQ(missing.out, text("local_height_m,site_height_m\n-0.50000,0.00000\n"));
    EXPECT_THAT(missing.err, Mentions("0 is taken, above the zero of the site's heights"));
}

TEST_F(SiteColumns, GoIntoEveryFile)
{
    for (const char *extension : {"csv", "json", "geojson", "gpkg", "shp", "kml", "gpx", "dxf"}) {
        const QString file = m_program.home().path(text("out.") + text(extension));
        const auto written = atSite(amersfoort, {"--from=local-neh", "-o", qPrintable(file)});
        ASSERT_EQ(written.status, 0) << written.err;
        const QString data =
            text(extension) == text("shp") ? m_program.home().path(text("out.dbf")) : file;
        EXPECT_TRUE(readFile(data).contains("site_north")) << extension;
    }
}

// The geometry of a layer is easting and northing of the projection, whose reference system is that
// of the database.
TEST_F(SiteColumns, ALayerBesideThemIsInTheReferenceSystemOfTheProjection)
{
    const QString file = m_program.home().path(text("out.gpkg"));
    const auto written = atSite(amersfoort, {"--from=local-neh", "-o", qPrintable(file)});
    EXPECT_FALSE(written.err.contains(text("reference system"))) << written.err;
    const auto read = atSite({}, {"--frames=site-neh", qPrintable(file)});
    EXPECT_EQ(read.status, 0) << read.err;
    EXPECT_THAT(read.out, Mentions("A,2000.00000,1000.00000,10.50000"));
    const auto refused = atSite({}, {"--from=site-neh", qPrintable(file)});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, Mentions("and positions at a site have no reference system"));
}

// What another site, or an earlier fit, made of the points must not stand beside what this one
// does.
TEST_F(SiteColumns, OfAnEarlierRunAreNotCarried)
{
    for (const char *name : {"out.gpkg", "out.shp", "out.geojson"}) {
        SCOPED_TRACE(name);
        const QString file = m_program.home().path(text(name));
        ASSERT_EQ(atSite(amersfoort, {"--from=local-neh", "-o", qPrintable(file)}).status, 0);
        const QString other = system("other.xml", edits("Elevation_Fitting", "function", "Fixed",
                                                        {{text("a"), text("7.5")}}));
        const auto read = convert(other, {}, {qPrintable(file)});
        EXPECT_EQ(read.status, 0) << read.err;
        const auto rows = csvRows(read.out);
        ASSERT_EQ(rows.size(), 1);
        EXPECT_THAT(rows.first().keys().join(QLatin1Char(' ')), testing::Not(Mentions("_2")));
        EXPECT_FALSE(rows.first().contains(text("site_h")));
        EXPECT_NEAR(test::numberIn(rows.first(), text("site_height_m")), 17.5, 2e-5);
    }
}

// A plan of the building in site coordinates, which no reference system knows.
TEST_F(SiteColumns, AreReadFromLayersWithoutAReferenceSystem)
{
    const QByteArray plan = "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  8\nPLAN\n"
                            " 10\n1000.0\n 20\n2000.0\n 30\n10.5\n  0\nENDSEC\n  0\nEOF\n";
    const QString drawing = m_program.file(text("plan.dxf"), plan);
    const auto read =
        atSite({}, {"--from=site-neh", "--frames=local-neh,site-neh", qPrintable(drawing)});
    EXPECT_EQ(read.status, 0) << read.err;
    EXPECT_THAT(read.out, Mentions(",463000.00000,155000.00000,10.00000,2000.00000,1000.00000,"
                                   "10.50000,ellipsoid"));

    // In feet: 304.8 m and 609.6 m east and north, and 3.048 m up, by hand.
    const auto feet = atSite(
        {}, {"--from=site-neh", "--frames=local-neh", "--length-unit=ft", qPrintable(drawing)});
    EXPECT_EQ(feet.status, 0) << feet.err;
    const auto row = csvRows(feet.out).value(0);
    EXPECT_NEAR(test::numberIn(row, text("local_northing_ft")), (304.8 + 462000.0) / 0.3048, 1e-4);
    EXPECT_NEAR(test::numberIn(row, text("local_easting_ft")), (157000.0 - 609.6) / 0.3048, 1e-4);

    // A shapefile in a plane of its own, in feet, as its .prj says.
    ASSERT_EQ(
        QProcess::execute(text("ogr2ogr"), {text("-f"), text("ESRI Shapefile"), text("-a_srs"),
                                            text("LOCAL_CS[\"Site 7\",UNIT[\"foot\",0.3048]]"),
                                            m_program.home().path(text("plan.shp")), drawing}),
        0);
    const auto local = atSite({}, {"--from=site-neh", "--frames=local-neh",
                                   qPrintable(m_program.home().path(text("plan.shp")))});
    EXPECT_EQ(local.status, 0) << local.err;
    EXPECT_THAT(local.err, Mentions("\"Site 7\" is taken as the coordinates of the site"));
    const auto place = csvRows(local.out).value(0);
    EXPECT_NEAR(test::numberIn(place, text("local_northing_m")), 304.8 + 462000.0, 2e-5);
    EXPECT_NEAR(test::numberIn(place, text("local_easting_m")), 157000.0 - 609.6, 2e-5);

    // What the program drew lies in the plane of the projection.
    const QString own = m_program.home().path(text("own.dxf"));
    const auto drawn = atSite(amersfoort, {"--from=local-neh", "-o", qPrintable(own)});
    EXPECT_THAT(drawn.err, Mentions("own.dxf"));
    EXPECT_THAT(drawn.err, Mentions("lie at easting and northing of the projection"));
    const auto refused = atSite({}, {"--from=site-neh", qPrintable(own)});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, Mentions("own.dxf"));
}

TEST_F(SiteColumns, ReceiversGiveThem)
{
    const QByteArray epoch =
        "$GPGGA,120000.00,5209.31033,N,00523.23212,E,1,08,1.0,41.2,M,43.3,M,,*5D\r\n";
    const auto result = atSite(epoch, {"--nmea", "--frames=site-neh"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.outLines().value(0), Mentions("point,site_northing_m,site_easting_m,"
                                                     "site_height_m,utc,"));
    const auto refused = atSite(epoch, {"--nmea", "--from=site-neh"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, Mentions("--from 'site-neh' does not go with --nmea"));
}

/// A site whose heights are fitted to those above a geoid.
Edits aboveGeoid(const char *model)
{
    Edits changes = quarterTurn();
    changes.insert(text("modelFileName=\"\""), text("modelFileName=\"%1\"").arg(text(model)));
    return changes;
}

// A number that was fitted above the geoid would be off by the separation, tens of metres, where
// it was computed from an ellipsoidal height.
TEST_F(SiteColumns, AHeightThatWasFittedAboveTheGeoidIsMissingWithoutIt)
{
    test::Grid grid = test::slopingGrid();
    grid.latitude = 20.0; // far from Amersfoort
    m_program.file(text("geoid_model_list/small.gtx"), test::gtxBytes(grid));
    const QString small = system("small.xml", aboveGeoid("small.gtx"));
    const auto csv = convert(small, amersfoort, {"--from=local-neh", "--frames=site-neh"});
    EXPECT_EQ(csv.outLines().value(1), text("A,2000.00000,1000.00000,"));
    EXPECT_THAT(csv.err, Mentions("its projected height is ellipsoidal, and there is none at the "
                                  "site"));
    const auto json =
        convert(small, amersfoort, {"--from=local-neh", "--frames=site-neh", "--json"});
    EXPECT_THAT(json.out, Mentions("\"site_easting_m\":1000.00000,\"site_height_m\":null}"));
    for (const char *table : {"--table", "--geojson"}) {
        const auto other = convert(small, amersfoort, {"--from=local-neh", table});
        EXPECT_EQ(other.status, 0) << other.err;
        EXPECT_FALSE(other.out.contains(text("10.5"))) << table;
    }

    const QString lost = system("lost.xml", aboveGeoid("lost.gtx"));
    const auto missing = convert(lost, amersfoort, {"--from=local-neh", "--frames=site-neh"});
    EXPECT_EQ(missing.outLines().value(1), text("A,2000.00000,1000.00000,"));
    EXPECT_THAT(missing.err, Mentions("All heights are ellipsoidal, and there are none at the "
                                      "site."));
}

// The way back is as wrong: heights in WGS84 would be off.
TEST_F(SiteColumns, AHeightThatWasFittedAboveTheGeoidLeadsNowhereWithoutIt)
{
    test::Grid grid = test::slopingGrid();
    grid.latitude = 20.0; // far from Amersfoort
    m_program.file(text("geoid_model_list/small.gtx"), test::gtxBytes(grid));
    const QString small = system("small.xml", aboveGeoid("small.gtx"));
    const QString lost = system("lost.xml", aboveGeoid("lost.gtx"));
    const QByteArray toPlain = "--to=" + system("plain.xml", {}).toLocal8Bit();
    for (const QString &site : {small, lost}) {
        for (const char *option : {"--csv", "--frames=site-neh", toPlain.constData()}) {
            const auto result =
                convert(site, "A,2000.0,1000.0,10.5\n", {"--from=site-neh", "--no-header", option});
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.out, QString());
            EXPECT_THAT(result.err, Mentions("<stdin>:1: "));
            EXPECT_THAT(result.err, Mentions("heights at the site are above the geoid of"));
            EXPECT_THAT(result.err, Mentions("1 of 1 positions failed"));
        }
    }
    // Where the plane alone is fitted the height is the projected one.
    Edits plane = edits("Plane_Transform", "fuction", "Four", {{text("ratio"), text("1")}});
    plane.insert(text("modelFileName=\"\""), text("modelFileName=\"lost.gtx\""));
    const auto projected = convert(system("plane.xml", plane), "A,463000,155000,10\n",
                                   {"--from=site-neh", "--frames=local-neh"});
    EXPECT_EQ(projected.status, 0);
    EXPECT_EQ(projected.outLines().value(1),
              text("A,463000.00000,155000.00000,10.00000,ellipsoid"));
}

TEST_F(SiteColumns, AHeightThatIsNotFittedSaysWhatItIsAbove)
{
    const QString plane = system(
        "plane.xml", edits("Plane_Transform", "fuction", "Four", {{text("ratio"), text("1")}}));
    EXPECT_EQ(convert(plane, amersfoort, {"--from=local-neh", "--frames=site-neh"}).out,
              text("point,site_northing_m,site_easting_m,site_height_m,local_height_reference\n"
                   "A,463000.00000,155000.00000,10.00000,ellipsoid\n"));
    const auto table =
        convert(plane, amersfoort, {"--from=local-neh", "--frames=site-neh", "--table"});
    EXPECT_THAT(table.outLines().value(2), Mentions("m (ell.)"));
    const auto fitted = atSite(amersfoort, {"--from=local-neh", "--frames=site-neh", "--table"});
    EXPECT_FALSE(fitted.out.contains(text("(ell.)")));
}

} // namespace
} // namespace KelStd
