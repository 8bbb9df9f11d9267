// Layers of vector files, made by ogr2ogr, converted by the program; the plane is that of cs2cs.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <ostream>

namespace KelStd {
namespace {

using test::cs2csEastNorth;
using test::csvRows;
using test::mentionsAll;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::toolOutput;
using test::words;

constexpr double printed = 1.1e-5; ///< the last digit of CSV [m]

class VectorInputs : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_program.home().path(name); }

    /// A file that ogr2ogr makes of the three points.
    QString layer(const QString &name, const QString &options = {},
                  const QByteArray &points = test::somePoints()) const
    {
        const QString in = m_program.file(QStringLiteral("in.geojson"), points);
        toolOutput(QStringLiteral("ogr2ogr"), words(options) + QStringList{path(name), in});
        return path(name);
    }

    ProgramResult convert(const QString &file, const QString &options = {}) const
    {
        QStringList arguments = words(QStringLiteral("convert --csv ") + options);
        if (!arguments.contains(QStringLiteral("--system")))
            arguments += {QStringLiteral("--system"), QStringLiteral("EPSG:32631")};
        return m_program.run(arguments + QStringList{file});
    }

    ProgramRun m_program;
};

struct Format
{
    const char *file;
    const char *options; ///< of ogr2ogr
    bool hasHeights;
};

void PrintTo(const Format &row, std::ostream *out)
{
    *out << row.file << ' ' << row.options;
}

class VectorFormats : public VectorInputs, public testing::WithParamInterface<Format>
{};

TEST_P(VectorFormats, GivePositionsNamesAndAttributes)
{
    const QString file =
        layer(QString::fromLatin1(GetParam().file), QString::fromLatin1(GetParam().options));
    const ProgramResult result = convert(file);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err.contains(QLatin1String("3 features have no height: 0 is taken")),
              !GetParam().hasHeights)
        << result.err;
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 3);
    const double longitudes[] = {5.387, 3.25, 2.0};
    const double latitudes[] = {52.155, 51.5, 50.0};
    const double heights[] = {43.1, -2.5, 0.25};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const auto [easting, northing] =
            cs2csEastNorth(QStringLiteral("EPSG:32631"), longitudes[i], latitudes[i]);
        EXPECT_NEAR(numberIn(rows[i], QStringLiteral("local_easting_m")), easting, printed);
        EXPECT_NEAR(numberIn(rows[i], QStringLiteral("local_northing_m")), northing, printed);
        EXPECT_NEAR(numberIn(rows[i], QStringLiteral("wgs84_height_m")),
                    GetParam().hasHeights ? heights[i] : 0.0, printed);
    }
    EXPECT_EQ(rows[0].value(QStringLiteral("point")), "Mast");
    EXPECT_EQ(rows[1].value(QStringLiteral("point")), QString::fromUtf8("\u00c7e\u015fme"));
    EXPECT_EQ(rows[2].value(QStringLiteral("point")), "");
    EXPECT_EQ(rows[0].value(QStringLiteral("code")), "TREE");
    EXPECT_EQ(rows[1].value(QStringLiteral("code")), "WELL");
    EXPECT_EQ(rows[0].value(QStringLiteral("girth")), "1.25");
    EXPECT_EQ(rows[1].value(QStringLiteral("count")), "8");
}

INSTANTIATE_TEST_SUITE_P(
    Made, VectorFormats,
    testing::Values(Format{"p.gpkg", "", true}, Format{"p.gpkg", "-t_srs EPSG:32631", true},
                    Format{"p.gpkg", "-t_srs EPSG:4978", true},
                    Format{"p.shp", "-lco ENCODING=UTF-8", true},
                    Format{"p.shp", "-lco ENCODING=UTF-8 -t_srs EPSG:32631", true},
                    Format{"p.geojson", "", true}, Format{"p.kml", "", true},
                    Format{"p.gml", "", true}, Format{"p.fgb", "-lco SPATIAL_INDEX=NO", true},
                    Format{"p.tab", "-lco ENCODING=UTF-8", false}, Format{"p.sqlite", "", true}));

TEST_F(VectorInputs, OfGpxHaveTheirHeightsAndExtensions)
{
    const QString file = m_program.file(
        QStringLiteral("p.gpx"),
        "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "
        "xmlns=\"http://www.topografix.com/GPX/1/1\"><wpt lat=\"52.155\" lon=\"5.387\"><ele>43.1"
        "</ele><time>2024-05-01T10:20:30Z</time><name>Mast</name></wpt></gpx>");
    const ProgramResult result = convert(file);
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = csvRows(result.out);
    EXPECT_EQ(rows[0].value(QStringLiteral("point")), "Mast");
    EXPECT_EQ(rows[0].value(QStringLiteral("wgs84_height_m")), "43.10000");
    EXPECT_EQ(rows[0].value(QStringLiteral("time")), "2024-05-01T10:20:30Z");
    EXPECT_TRUE(mentionsAll(result.err, {"above mean sea level"})) << result.err;
}

// Of another program: points with labels, in feet where the option says so.
TEST_F(VectorInputs, OfDrawingsAreTheirPoints)
{
    const QString file =
        m_program.file(QStringLiteral("p.dxf"),
                       "0\nSECTION\n2\nENTITIES\n"
                       "0\nPOINT\n8\nTREES\n10\n663290.5\n20\n5780964.25\n30\n43.5\n"
                       "0\nTEXT\n8\nTREES\n10\n663290.5\n20\n5780964.25\n40\n1.0\n1\nOak\n"
                       "0\nLINE\n8\nROADS\n10\n0.0\n20\n0.0\n11\n1.0\n21\n1.0\n"
                       "0\nENDSEC\n0\nEOF\n");
    const ProgramResult without = convert(file);
    EXPECT_EQ(without.status, 2);
    EXPECT_TRUE(mentionsAll(without.err, {"--from"})) << without.err;
    const ProgramResult result = convert(file, QStringLiteral("--from local-neh"));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(mentionsAll(result.err, {"no point but a Line String", "1 text of the drawing"}))
        << result.err;
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].value(QStringLiteral("local_easting_m")), "663290.50000");
    EXPECT_EQ(rows[0].value(QStringLiteral("local_northing_m")), "5780964.25000");
    EXPECT_EQ(rows[0].value(QStringLiteral("local_height_m")), "43.50000");
    EXPECT_EQ(rows[0].value(QStringLiteral("Layer")), "TREES");
    const ProgramResult feet =
        convert(file, QStringLiteral("--from local-neh --length-unit ft --system EPSG:32631"));
    // 0.3048 m exactly; all lengths are printed in feet again.
    EXPECT_EQ(csvRows(feet.out).value(0).value(QStringLiteral("local_height_ft")), "43.50000");
}

// What the program drew says its system, and is held against it as any other layer.
TEST_F(VectorInputs, OfOurDrawingsAreOfTheSystemThatTheySay)
{
    const QString list =
        m_program.file(QStringLiteral("list.csv"),
                       "point,northing_usft,easting_usft,height_m,code\nA,196850,984250,10,TREE\n");
    const QString file = path(QStringLiteral("ny.dxf"));
    const ProgramResult drawn = m_program.run(words(
        QStringLiteral("convert --from local-neh --system EPSG:2263 -o %1 %2").arg(file, list)));
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    for (const char *const options : {"", "--from local-neh ", "--length-unit us-ft "}) {
        SCOPED_TRACE(options);
        const ProgramResult result =
            convert(file, QString::fromLatin1(options) + QStringLiteral("--system EPSG:2263"));
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_FALSE(result.err.contains(QLatin1String("names no coordinate"))) << result.err;
        const auto row = csvRows(result.out).value(0);
        EXPECT_NEAR(numberIn(row, QStringLiteral("local_easting_us_ft")), 984250.0, printed);
        EXPECT_NEAR(numberIn(row, QStringLiteral("local_northing_us_ft")), 196850.0, printed);
        EXPECT_EQ(row.value(QStringLiteral("code")), "TREE");
    }
    const ProgramResult other =
        convert(file, QStringLiteral("--from local-neh --system EPSG:32618"));
    EXPECT_EQ(other.status, 2);
    EXPECT_EQ(other.out, QString());
    EXPECT_TRUE(mentionsAll(other.err, {"EPSG:2263"})) << other.err;
}

// --length-unit is for what is printed where the layer says what it holds.
TEST_F(VectorInputs, InMetresStayInMetres)
{
    for (const char *const options : {"", "-t_srs EPSG:32631"}) {
        SCOPED_TRACE(options);
        const QString file =
            layer(QStringLiteral("p%1.gpkg").arg(qstrlen(options)), QString::fromLatin1(options));
        const ProgramResult result = convert(file, QStringLiteral("--length-unit ft"));
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_NEAR(numberIn(csvRows(result.out).value(0), QStringLiteral("wgs84_height_ft")),
                    43.1 / 0.3048, 2 * printed);
    }
}

TEST_F(VectorInputs, AreKnownByTheirContent)
{
    const QString file = layer(QStringLiteral("p.gpkg"));
    ASSERT_TRUE(QFile::rename(file, path(QStringLiteral("points.dat"))));
    const ProgramResult result = convert(path(QStringLiteral("points.dat")));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(csvRows(result.out).size(), 3);
}

// EPSG:2263 counts in US survey feet; from NAD83 to NAD83 nothing is shifted.
// Written with an option and read with it, or read as the file says it.
TEST_F(VectorInputs, OfFeetComeBackInFeet)
{
    for (const char *const name : {"nf.gpkg", "nf.dxf"}) {
        SCOPED_TRACE(name);
        const QString file = path(QString::fromLatin1(name));
        const QStringList option = words(QStringLiteral("--length-unit us-ft"));
        const QStringList begin =
            words(QStringLiteral("convert --csv --system EPSG:2263 --from local-neh"));
        const ProgramResult written =
            m_program.run(words(QStringLiteral("convert --system EPSG:2263 --from local-neh"))
                              + option + QStringList{QStringLiteral("-o"), file},
                          "name,easting,northing,height\nP,1000000,200000,100\n");
        ASSERT_EQ(written.status, 0) << written.err;
        const auto row = test::ogrRows(file).value(0);
        EXPECT_NEAR(numberIn(row, QStringLiteral("X")), 1000000.0, 1e-4);
        EXPECT_NEAR(numberIn(row, QStringLiteral("Z")), 100.0, 1e-4);
        const ProgramResult back = m_program.run(begin + option + QStringList{file});
        EXPECT_NEAR(numberIn(csvRows(back.out).value(0), QStringLiteral("local_height_us_ft")),
                    100.0, 2 * printed)
            << back.err;
        if (file.endsWith(QLatin1String("dxf"))) {
            const ProgramResult own = m_program.run(begin + QStringList{file});
            EXPECT_NEAR(numberIn(csvRows(own.out).value(0), QStringLiteral("local_height_m")),
                        100.0 * 1200.0 / 3937.0, printed)
                << own.err;
        }
    }
}

TEST_F(VectorInputs, WithAnUndefinedSystemNeedTheirFrame)
{
    const QString file = layer(QStringLiteral("p.gpkg"), QStringLiteral("-a_srs EPSG:32631"),
                               "{\"type\":\"Point\",\"coordinates\":[663290.5,5780964.25,43.5]}");
    for (const char *const id : {"-1", "0"}) {
        SCOPED_TRACE(id);
        for (const char *const table : {"gpkg_contents", "gpkg_geometry_columns"}) {
            toolOutput(QStringLiteral("ogrinfo"),
                       {file, QStringLiteral("-sql"),
                        QStringLiteral("UPDATE %1 SET srs_id = %2")
                            .arg(QLatin1String(table), QLatin1String(id))});
        }
        EXPECT_TRUE(mentionsAll(convert(file).err, {"--from says what"}));
        const ProgramResult result = convert(file, QStringLiteral("--from local-neh"));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(csvRows(result.out).value(0).value(QStringLiteral("local_easting_m")),
                  "663290.50000");
    }
}

TEST_F(VectorInputs, InFeetTakeAHeightInTheUnitOfLengths)
{
    const QByteArray point = "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\","
                             "\"properties\":{},\"geometry\":{\"type\":\"Point\",\"coordinates\":"
                             "[984250.0,196850.0]}}]}";
    const QString file =
        layer(QStringLiteral("ny.gpkg"), QStringLiteral("-a_srs EPSG:2263"), point);
    const ProgramResult result =
        convert(file, QStringLiteral("--system EPSG:2263 --length-unit us-ft --height 100 "
                                     "--fields local_height"));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.toStdString(), "local_height_us_ft\n100.00000\n");
    const ProgramResult needless =
        convert(layer(QStringLiteral("p.gpkg")), QStringLiteral("--height 100"));
    EXPECT_TRUE(mentionsAll(needless.err, {"--height is that of no feature"})) << needless.err;
}

TEST_F(VectorInputs, AreHeldAgainstWhatTheySayOfTheirHeights)
{
    struct Row
    {
        const char *field;
        const char *said;
        int status;
    };
    const Row rows[] = {{"local_height_reference", "ellipsoid", 0},
                        {"local_height_reference", "geoid egm96_15.gtx", 1},
                        {"local_height_reference", "", 0}};
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.field) + ' ' + row.said);
        const QString file = layer(
            QStringLiteral("p.gpkg"), QStringLiteral("-a_srs EPSG:32631 -overwrite"),
            "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\",\"properties\":{"
            "\"" + QByteArray(row.field)
                + "\":\"" + row.said
                + "\"},\"geometry\":{\"type\":\"Point\",\"coordinates\":[663290.5,5780964.5,43.0]}}"
                  "]}");
        const ProgramResult result = convert(file);
        EXPECT_EQ(result.status, row.status) << result.err;
        if (row.status != 0) {
            EXPECT_TRUE(mentionsAll(
                result.err, {"the height is above \"geoid egm96_15.gtx\"", "above the ellipsoid"}))
                << result.err;
        }
    }
}

TEST_F(VectorInputs, OfOurShapefilesAreHeldAgainstWhatTheySayOfTheirHeights)
{
    const QString file =
        layer(QStringLiteral("p.shp"), QStringLiteral("-a_srs EPSG:32631"),
              "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\",\"properties\":{"
              "\"northing\":5780964.5,\"easting\":663290.5,\"height\":43.0,\"height_ref\":"
              "\"geoid egm96_15.gtx\"},\"geometry\":{\"type\":\"Point\",\"coordinates\":"
              "[663290.5,5780964.5,43.0]}}]}");
    const ProgramResult result = convert(file);
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"the height is above \"geoid egm96_15.gtx\""}))
        << result.err;
}

TEST_F(VectorInputs, InFeetAreReadInFeet)
{
    const QByteArray point = "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\","
                             "\"properties\":{},\"geometry\":{\"type\":\"Point\",\"coordinates\":"
                             "[984250.0,196850.0,10.0]}}]}";
    const QString file =
        layer(QStringLiteral("ny.gpkg"), QStringLiteral("-a_srs EPSG:2263"), point);
    const ProgramResult result = convert(file, QStringLiteral("--system EPSG:2263"));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"US survey foot", "heights in m"})) << result.err;
    const ProgramResult feet =
        convert(file, QStringLiteral("--system EPSG:2263 --length-unit us-ft"));
    // A US survey foot is 1200/3937 m.
    EXPECT_NEAR(numberIn(csvRows(feet.out).value(0), QStringLiteral("local_height_us_ft")), 10.0,
                printed);
    EXPECT_NEAR(numberIn(csvRows(feet.out).value(0), QStringLiteral("local_easting_us_ft")),
                984250.0, printed);
    const auto row = csvRows(result.out).value(0);
    const QStringList numbers =
        toolOutput(QStringLiteral("cs2cs"),
                   {QStringLiteral("-f"), QStringLiteral("%.11f"), QStringLiteral("EPSG:2263"),
                    QStringLiteral("+to"), QStringLiteral("EPSG:4269")},
                   "984250 196850\n")
            .simplified()
            .split(QLatin1Char(' '));
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_latitude_deg")), numbers[0].toDouble(), 1e-10);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_longitude_deg")), numbers[1].toDouble(), 1e-10);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_height_m")), 10.0, printed);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_easting_us_ft")), 984250.0, printed);
}

TEST_F(VectorInputs, RejectWhatIsNoPointByItsFeature)
{
    const QString file = m_program.file(
        QStringLiteral("mixed.geojson"),
        "{\"type\":\"FeatureCollection\",\"features\":["
        "{\"type\":\"Feature\",\"id\":11,\"properties\":{\"name\":\"A\"},\"geometry\":{\"type\":"
        "\"Point\",\"coordinates\":[5.4,52.2]}},"
        "{\"type\":\"Feature\",\"id\":12,\"properties\":{\"name\":\"B\"},\"geometry\":{\"type\":"
        "\"LineString\",\"coordinates\":[[5.4,52.2],[5.5,52.2]]}},"
        "{\"type\":\"Feature\",\"id\":13,\"properties\":{\"name\":\"C\"},\"geometry\":null},"
        "{\"type\":\"Feature\",\"id\":14,\"properties\":{\"name\":\"D\"},\"geometry\":{\"type\":"
        "\"MultiPoint\",\"coordinates\":[[5.4,52.2,7]]}},"
        "{\"type\":\"Feature\",\"id\":15,\"properties\":{\"name\":\"E\"},\"geometry\":{\"type\":"
        "\"MultiPoint\",\"coordinates\":[[5.4,52.2,7],[5.5,52.2,7]]}},"
        "{\"type\":\"Feature\",\"id\":16,\"properties\":{\"name\":\"F\"},\"geometry\":{\"type\":"
        "\"Point\",\"coordinates\":[5.4,95.0,1]}}]}");
    const ProgramResult result = convert(file);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(csvRows(result.out).size(), 2);
    EXPECT_TRUE(
        mentionsAll(result.err, {":12: it is no point but a Line String", ":13: it has no geometry",
                                 ":15: it is 2 points", ":16: its latitude is 95",
                                 "1 feature has no height: 0 is taken", "4 of 6 positions failed"}))
        << result.err;
}

TEST_F(VectorInputs, OfSeveralLayersNeedAName)
{
    const QString file = layer(QStringLiteral("two.gpkg"), QStringLiteral("-nln trees"));
    toolOutput(QStringLiteral("ogr2ogr"), words(QStringLiteral("-update -nln wells"))
                                              + QStringList{file}
                                              + QStringList{path(QStringLiteral("in.geojson"))});
    const QString lines =
        m_program.file(QStringLiteral("lines.geojson"),
                       "{\"type\":\"LineString\",\"coordinates\":[[5.4,52.2],[5.5,52.2]]}");
    toolOutput(QStringLiteral("ogr2ogr"),
               words(QStringLiteral("-update -nln roads")) + QStringList{file, lines});
    const ProgramResult several = convert(file);
    EXPECT_EQ(several.status, 2);
    EXPECT_TRUE(mentionsAll(several.err, {"\"trees\", \"wells\"", "--layer NAME"})) << several.err;
    EXPECT_EQ(convert(file, QStringLiteral("--layer wells")).status, 0);
    const ProgramResult unknown = convert(file, QStringLiteral("--layer oaks"));
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(mentionsAll(unknown.err, {"no layer \"oaks\"", "\"trees\", \"wells\""}));
    const ProgramResult road = convert(file, QStringLiteral("--layer roads"));
    EXPECT_EQ(road.status, 2);
    EXPECT_TRUE(mentionsAll(road.err, {"Line String"})) << road.err;
}

// Declared to have no heights, of a system above NAP; the second point has one.
TEST_F(VectorInputs, DeclaredWithoutHeightsAreHeldAgainstThemAllTheSame)
{
    const QByteArray points =
        "{\"type\":\"FeatureCollection\",\"features\":["
        "{\"type\":\"Feature\",\"properties\":{\"name\":\"flat\"},\"geometry\":{\"type\":"
        "\"Point\",\"coordinates\":[155000,463000]}},"
        "{\"type\":\"Feature\",\"properties\":{\"name\":\"high\"},\"geometry\":{\"type\":"
        "\"Point\",\"coordinates\":[155000,463000,10]}}]}";
    const QString file =
        layer(QStringLiteral("p.gpkg"), QStringLiteral("-a_srs EPSG:7415 -nlt POINTZ"), points);
    toolOutput(
        QStringLiteral("ogrinfo"),
        {file, QStringLiteral("-sql"), QStringLiteral("UPDATE gpkg_geometry_columns SET z = 0")});
    const ProgramResult result = convert(file, QStringLiteral("--system EPSG:28992"));
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"NAP height"})) << result.err;
    EXPECT_FALSE(result.out.contains(QLatin1String("high"))) << result.out;
}

TEST_F(VectorInputs, InThreeAxesOfFeetAreReadInFeet)
{
    const QByteArray point = "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\","
                             "\"properties\":{},\"geometry\":{\"type\":\"Point\",\"coordinates\":"
                             "[984250.0,196850.0,3937.0]}}]}";
    const QString definition = m_program.file(
        QStringLiteral("three.wkt"),
        "PROJCRS[\"NY in three\",BASEGEOGCRS[\"NAD83\",DATUM[\"North American Datum 1983\","
        "ELLIPSOID[\"GRS 1980\",6378137,298.257222101]]],CONVERSION[\"c\",METHOD[\"Lambert Conic "
        "Conformal (2SP)\"],PARAMETER[\"Latitude of false origin\",40.1666666666667,ANGLEUNIT["
        "\"degree\",0.0174532925199433]],PARAMETER[\"Longitude of false origin\",-74,ANGLEUNIT["
        "\"degree\",0.0174532925199433]],PARAMETER[\"Latitude of 1st standard parallel\","
        "41.0333333333333,ANGLEUNIT[\"degree\",0.0174532925199433]],PARAMETER[\"Latitude of 2nd "
        "standard parallel\",40.6666666666667,ANGLEUNIT[\"degree\",0.0174532925199433]],"
        "PARAMETER[\"Easting at false origin\",984250,LENGTHUNIT[\"US survey foot\","
        "0.304800609601219]],PARAMETER[\"Northing at false origin\",0,LENGTHUNIT[\"US survey "
        "foot\","
        "0.304800609601219]]],CS[Cartesian,3],AXIS[\"easting\",east],AXIS[\"northing\",north],AXIS["
        "\"ellipsoidal height\",up],LENGTHUNIT[\"US survey foot\",0.304800609601219]]");
    const QString file =
        layer(QStringLiteral("ny.gpkg"), QStringLiteral("-a_srs ") + definition, point);
    const ProgramResult result = convert(file, QStringLiteral("--system EPSG:2263"));
    ASSERT_EQ(result.status, 0) << result.err;
    // A US survey foot is 1200/3937 m.
    EXPECT_NEAR(numberIn(csvRows(result.out).value(0), QStringLiteral("local_height_m")), 1200.0,
                printed);
}

// What a KML says its heights are above.
TEST_F(VectorInputs, OfKmlTakeHeightsByTheirAltitudeMode)
{
    const char *const rows[][2] = {{"relativeToGround", "10"},
                                   {"clampToGround", "11"},
                                   {"absolute", "12"},
                                   {"", "13"},
                                   {"", "0"}};
    QByteArray bytes =
        "<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document>\n";
    for (const auto &row : rows) {
        bytes += "<Placemark><name>H" + QByteArray(row[1]) + "</name><Point>";
        if (*row[0] != '\0')
            bytes += "<altitudeMode>" + QByteArray(row[0]) + "</altitudeMode>";
        bytes +=
            "<coordinates>5.4,52.2," + QByteArray(row[1]) + "</coordinates></Point></Placemark>\n";
    }
    const QString file = m_program.file(QStringLiteral("p.kml"), bytes + "</Document></kml>\n");
    const ProgramResult result = convert(file, QStringLiteral("--height 7"));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(mentionsAll(result.err, {"above the ground (relativeToGround)",
                                         "2 features have no height: 7 m is taken"}))
        << result.err;
    const auto found = csvRows(result.out);
    ASSERT_EQ(found.size(), 4);
    const char *const heights[] = {"7.00000", "12.00000", "13.00000", "7.00000"};
    for (int i = 0; i < found.size(); ++i)
        EXPECT_EQ(found[i].value(QStringLiteral("wgs84_height_m")), heights[i]);
}

TEST_F(VectorInputs, KeepTheFractionsOfSeconds)
{
    const char *const times[][2] = {{"10:20:59.9999", "10:20:59.9999"},
                                    {"10:20:59.9", "10:20:59.900"},
                                    {"10:59:59.999999", "10:59:59.99999"},
                                    {"10:20:30.25", "10:20:30.250"},
                                    {"10:20:30", "10:20:30"}};
    QByteArray bytes = "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "
                       "xmlns=\"http://www.topografix.com/GPX/1/1\">";
    for (const auto &row : times) {
        bytes += "<wpt lat=\"52.155\" lon=\"5.387\"><ele>43.1</ele><time>2024-05-01T"
                 + QByteArray(row[0]) + "Z</time></wpt>";
    }
    const ProgramResult result = convert(m_program.file(QStringLiteral("p.gpx"), bytes + "</gpx>"));
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 5) << result.err;
    for (int i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].value(QStringLiteral("time")),
                  QStringLiteral("2024-05-01T%1Z").arg(QLatin1String(times[i][1])));
    }
}

TEST_F(VectorInputs, TakeNamesOfAnyField)
{
    const QString file = layer(QStringLiteral("p.gpkg"));
    const ProgramResult result = convert(file, QStringLiteral("--names code"));
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = csvRows(result.out);
    EXPECT_EQ(rows[0].value(QStringLiteral("point")), "TREE");
    EXPECT_EQ(rows[0].value(QStringLiteral("name")), "Mast");
    const ProgramResult unknown = convert(file, QStringLiteral("--names colour"));
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(mentionsAll(unknown.err, {"no field \"colour\"", "girth"})) << unknown.err;
}

struct Refused
{
    const char *made; ///< options of ogr2ogr
    const char *options;
    QList<const char *> mentioned;
};

TEST_F(VectorInputs, OfAnotherSystemAreRefusedBeforeAnythingIsPrinted)
{
    const Refused rows[] = {
        {"-t_srs EPSG:32632", "", {"lon_0 is 9 there and 3 here"}},
        {"-t_srs EPSG:28992", "", {"Amersfoort"}},
        {"-t_srs EPSG:28992", "--from wgs84-llh", {"longitude and latitude"}},
        {"-t_srs EPSG:4326", "--from local-neh", {"easting and northing"}},
        {"-a_srs EPSG:4289", "--from wgs84-llh", {"Amersfoort", "WGS 84"}},
        {"", "--columns 1,2,3", {"--columns"}},
        {"", "--skip 1", {"--skip"}},
    };
    for (const Refused &row : rows) {
        SCOPED_TRACE(std::string(row.made) + row.options);
        QFile::remove(path(QStringLiteral("p.gpkg")));
        const QString file = layer(QStringLiteral("p.gpkg"), QString::fromLatin1(row.made));
        const ProgramResult result = convert(file, QString::fromLatin1(row.options));
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(mentionsAll(result.err, row.mentioned)) << result.err;
    }
}

TEST_F(VectorInputs, WithoutAReferenceSystemNeedTheirFrame)
{
    const QString file = layer(QStringLiteral("p.shp"), QStringLiteral("-lco ENCODING=UTF-8"));
    ASSERT_TRUE(QFile::remove(path(QStringLiteral("p.prj"))));
    const ProgramResult without = convert(file);
    EXPECT_EQ(without.status, 2);
    EXPECT_TRUE(mentionsAll(without.err, {"--from"})) << without.err;
    const ProgramResult with = convert(file, QStringLiteral("--from wgs84-llh"));
    EXPECT_EQ(with.status, 0);
    EXPECT_TRUE(mentionsAll(with.err, {"names no coordinate reference system"})) << with.err;
}

struct Broken
{
    const char *name;
    QByteArray bytes;
};

TEST_F(VectorInputs, ThatAreBrokenAreRefused)
{
    const QByteArray whole = test::readFile(layer(QStringLiteral("p.gpkg")));
    const QByteArray shape = test::readFile(layer(QStringLiteral("q.shp")));
    const Broken rows[] = {
        {"empty.gpkg", {}},
        {"empty.shp", {}},
        {"empty.geojson", {}},
        {"noise.dxf", QByteArray(5000, '\x7f')},
        {"noise.kml", "<kml><Document><Placemark>"},
        {"half.gpkg", whole.left(whole.size() / 3)},
        {"alone.shp", shape},
        {"list.shp", "name,lon,lat,h\nA,5,52,0\n"},
        {"deep.geojson", "{\"type\":\"FeatureCollection\",\"features\":" + QByteArray(100000, '[')},
    };
    for (const Broken &row : rows) {
        SCOPED_TRACE(row.name);
        const QString file = m_program.file(QString::fromLatin1(row.name), row.bytes);
        const ProgramResult result = convert(file, QStringLiteral("--from wgs84-llh"));
        EXPECT_NE(result.status, 0);
        EXPECT_GT(result.status, 0) << "it crashed";
        EXPECT_TRUE(result.err.contains(QLatin1String(row.name))) << result.err;
    }
}

TEST_F(VectorInputs, AreLeftAsTheyAre)
{
    const QString file = layer(QStringLiteral("p.gpkg"));
    const QByteArray before = test::readFile(file);
    ASSERT_EQ(convert(file).status, 0);
    EXPECT_EQ(test::readFile(file), before);
    const QStringList beside = QFileInfo(file).dir().entryList({QStringLiteral("p.gpkg*")});
    EXPECT_EQ(beside, QStringList{"p.gpkg"});
}

// Without a schema beside it GML has texts, and it has none afterwards either.
TEST_F(VectorInputs, OfGmlWithoutASchemaKeepTheirTexts)
{
    const QString file = m_program.file(
        QStringLiteral("p.gml"),
        "<?xml version=\"1.0\"?><o:all xmlns:o=\"http://ogr.maptools.org/\" "
        "xmlns:gml=\"http://www.opengis.net/gml\"><gml:featureMember><o:p><o:place><gml:Point "
        "srsName=\"EPSG:32631\"><gml:coordinates>663290.5,5780964.25,43.5</gml:coordinates>"
        "</gml:Point></o:place><o:code>007</o:code><o:serial>99999999999999999999</o:serial>"
        "</o:p></gml:featureMember></o:all>");
    for (int run = 0; run < 2; ++run) {
        const ProgramResult result = convert(file, QStringLiteral("--fields code,serial"));
        EXPECT_EQ(result.out.toStdString(), "code,serial\n007,99999999999999999999\n")
            << result.err;
        EXPECT_EQ(QFileInfo(file).dir().entryList({QStringLiteral("p.*")}), QStringList{"p.gml"});
    }
}

TEST_F(VectorInputs, AreReadAlone)
{
    const QString file = layer(QStringLiteral("p.gpkg"));
    const QString list =
        m_program.file(QStringLiteral("list.csv"), "name,lat,lon,h\nA,52.5,5.25,1\n");
    for (const QStringList &operands : {QStringList{file, list}, QStringList{list, file}}) {
        const ProgramResult result =
            m_program.run(words(QStringLiteral("convert --system EPSG:32631")) + operands);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_TRUE(mentionsAll(result.err, {"a vector file is read alone"})) << result.err;
    }
}

TEST_F(VectorInputs, CannotBeTheRejects)
{
    const QString file = layer(QStringLiteral("p.gpkg"));
    const QByteArray before = test::readFile(file);
    const ProgramResult result = convert(file, QStringLiteral("--rejects ") + file);
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(mentionsAll(result.err, {"it is the input"})) << result.err;
    EXPECT_EQ(test::readFile(file), before);
}

} // namespace
} // namespace KelStd
