// Files that are cut, or not what they should be: written here by hand, and then by less.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <QtCore/QFile>

#include <ostream>

namespace KelStd {
namespace {

using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

constexpr int written = 300;

/// A format whose text has a beginning, points and an ending; "%1" is the number of a point.
struct Text
{
    const char *file;
    const char *beginning;
    const char *point;
    const char *ending;
};

const Text texts[] = {
    {"p.gml",
     "<?xml version=\"1.0\"?><o:all xmlns:o=\"http://ogr.maptools.org/\" "
     "xmlns:gml=\"http://www.opengis.net/gml\">",
     "<gml:featureMember><o:p><o:place><gml:Point><gml:coordinates>5.25,52.%1,43.5"
     "</gml:coordinates></gml:Point></o:place><o:code>%1</o:code></o:p></gml:featureMember>\n",
     "</o:all>"},
    {"p.jml",
     "<?xml version=\"1.0\"?><JCSDataFile xmlns:gml=\"http://www.opengis.net/gml\">"
     "<JCSGMLInputTemplate><CollectionElement>featureCollection</CollectionElement>"
     "<FeatureElement>feature</FeatureElement><GeometryElement>geometry</GeometryElement>"
     "<ColumnDefinitions><column><name>code</name><type>STRING</type><valueElement "
     "elementName=\"property\" attributeName=\"name\" attributeValue=\"code\"/>"
     "<valueLocation position=\"body\"/></column></ColumnDefinitions></JCSGMLInputTemplate>"
     "<featureCollection>\n",
     "<feature><geometry><gml:Point><gml:coordinates>5.25,52.%1,3</gml:coordinates></gml:Point>"
     "</geometry><property name=\"code\">%1</property></feature>\n",
     "</featureCollection></JCSDataFile>\n"},
    {"p.gpx",
     "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "
     "xmlns=\"http://www.topografix.com/GPX/1/1\">",
     "<wpt lat=\"52.%1\" lon=\"5.25\"><ele>3</ele><name>%1</name></wpt>\n", "</gpx>\n"},
    {"p.kml", "<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document>\n",
     "<Placemark><name>%1</name><Point><coordinates>5.25,52.%1,3</coordinates></Point>"
     "</Placemark>\n",
     "</Document></kml>\n"},
    {"p.geojson", "{\"type\":\"FeatureCollection\",\"features\":[\n",
     "{\"type\":\"Feature\",\"properties\":{\"code\":\"%1\"},\"geometry\":{\"type\":\"Point\","
     "\"coordinates\":[5.25,52.%1,3]}},\n",
     "{\"type\":\"Feature\",\"properties\":{\"code\":\"1\"},\"geometry\":{\"type\":\"Point\","
     "\"coordinates\":[5.25,52.1,3]}}]}\n"},
};

void PrintTo(const Text &text, std::ostream *out)
{
    *out << text.file;
}

class CutTexts : public testing::TestWithParam<Text>
{
protected:
    ProgramResult convert(const QByteArray &bytes) const
    {
        const QString file = m_program.file(QString::fromLatin1(GetParam().file), bytes);
        return m_program.run(words(QStringLiteral("convert --csv --from wgs84-llh --fields "
                                                  "wgs84_latitude --system EPSG:32631"))
                             + QStringList{file});
    }

    QByteArray whole() const
    {
        QByteArray bytes = GetParam().beginning;
        for (int i = 0; i < written; ++i)
            bytes += QByteArray(GetParam().point).replace("%1", QByteArray::number(100 + i));
        return bytes + GetParam().ending;
    }

    ProgramRun m_program;
};

TEST_P(CutTexts, AreNeverReadAsIfTheyWereWhole)
{
    const QByteArray bytes = whole();
    const ProgramResult result = convert(bytes);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_GT(result.out.count(QLatin1Char('\n')), written);
    // Within a point, behind one, and without the ending.
    const int middle = bytes.indexOf('\n', bytes.size() / 2) + 1;
    const int end = bytes.size() - QByteArray(GetParam().ending).size();
    for (const int size : {middle - 20, middle, end}) {
        SCOPED_TRACE(size);
        const ProgramResult cut = convert(bytes.left(size));
        EXPECT_TRUE(cut.status == 2 || cut.status == 3) << cut.status;
        EXPECT_TRUE(mentionsAll(cut.err, {"cannot read", GetParam().file})) << cut.err;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CutTexts, testing::ValuesIn(texts));

// Their positions are whole without the file of attributes, their names are gone.
TEST(FilesOfAttributes, AreMissed)
{
    const ProgramRun program;
    const QString in = program.file(QStringLiteral("in.geojson"), test::somePoints());
    const struct
    {
        const char *file;
        const char *attributes;
        const char *format;
    } rows[] = {{"p.shp", "p.dbf", "ESRI Shapefile"}, {"m.mif", "m.mid", "MapInfo File"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file);
        const QString file = program.home().path(QString::fromLatin1(row.file));
        test::toolOutput(QStringLiteral("ogr2ogr"),
                         {QStringLiteral("-f"), QString::fromLatin1(row.format), file, in});
        const auto convert = [&] {
            return program.run(words(QStringLiteral("convert --csv --system EPSG:32631 "))
                               + QStringList{file});
        };
        EXPECT_FALSE(convert().err.contains(QLatin1String("is beside it")));
        ASSERT_TRUE(QFile::remove(program.home().path(QString::fromLatin1(row.attributes))));
        const ProgramResult result = convert();
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {"warning", row.file, "is beside it"})) << result.err;
        EXPECT_EQ(test::csvRows(result.out).size(), 3);
    }
}

// MapInfo's tables of that ending begin with the word.
TEST(TablesOfText, AreReadUnderTheEndingOfLayers)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("t.tab"), "point\tlat\tlon\th\nA\t52.5\t5.25\t1\n");
    const ProgramResult result =
        program.run(words(QStringLiteral("convert --csv --system EPSG:32631 --fields point "))
                    + QStringList{list});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.toStdString(), "point\nA\n");
}

// A GeoPackage has no layers of such names.
TEST(GeoPackages, MayBeCalledAsTheirLayersMayNot)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("list.csv"), "point,lat,lon,h\nA,52.5,5.25,1\n");
    for (const char *const name : {"-x.gpkg", "gpkg_a.gpkg", ".a.b.gpkg"}) {
        SCOPED_TRACE(name);
        const QString file = program.home().path(QString::fromLatin1(name));
        const ProgramResult result =
            program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                         QStringLiteral("EPSG:32631"), QStringLiteral("-o"), file, list});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(test::ogrRows(file).size(), 1);
    }
}

struct Coordinates
{
    const char *file;
    const char *bytes;
    const char *mention; ///< empty where they are taken
};

void PrintTo(const Coordinates &row, std::ostream *out)
{
    *out << row.file << ' ' << row.mention;
}

class CoordinatesOfTexts : public testing::TestWithParam<Coordinates>
{};

TEST_P(CoordinatesOfTexts, AreNumbersFromBeginToEnd)
{
    const ProgramRun program;
    const QString file = program.file(QString::fromLatin1(GetParam().file), GetParam().bytes);
    const bool isPlane = file.endsWith(QLatin1String("f")); // .dxf, .mif
    const ProgramResult result = program.run(
        words(QStringLiteral("convert --csv --system EPSG:32631 --fields "
                             "%1 --from %2")
                  .arg(isPlane ? QStringLiteral("local_easting,local_northing")
                               : QStringLiteral("wgs84_longitude,wgs84_latitude"),
                       isPlane ? QStringLiteral("local-neh") : QStringLiteral("wgs84-llh")))
        + QStringList{file});
    const bool isTaken = *GetParam().mention == '\0';
    EXPECT_EQ(result.status, isTaken ? 0 : 2) << result.err;
    if (isTaken) {
        EXPECT_EQ(result.out.section(QLatin1Char('\n'), 1).toStdString(),
                  isPlane ? "155000.75000,463000.50000\n" : "5.25000000000,52.50000000000\n");
    } else {
        EXPECT_EQ(result.out, QString());
        EXPECT_TRUE(mentionsAll(result.err, {GetParam().file, GetParam().mention})) << result.err;
    }
}

#define GPX(content)                                                                               \
    "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "                                   \
    "xmlns=\"http://www.topografix.com/GPX/1/1\">\n" content "</gpx>\n"
#define KML(content)                                                                               \
    "<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document><Placemark>"   \
    "<Point>\n<coordinates>" content "</coordinates></Point></Placemark></Document></kml>\n"
#define GML(content)                                                                               \
    "<?xml version=\"1.0\"?><o:all xmlns:o=\"http://ogr.maptools.org/\" "                          \
    "xmlns:gml=\"http://www.opengis.net/"                                                          \
    "gml\"><gml:featureMember><o:p><o:place><gml:Point>\n" content                                 \
    "</gml:Point></o:place><o:code>1</o:code></o:p></gml:featureMember></o:all>\n"
#define DXF(content) "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nA\n" content "0\nENDSEC\n0\nEOF\n"
#define MIF(content)                                                                               \
    "Version 300\nCharset \"Neutral\"\nDelimiter \",\"\nColumns 1\n  code "                        \
    "Char(5)\nData\n\n" content "\n"

INSTANTIATE_TEST_SUITE_P(
    Gpx, CoordinatesOfTexts,
    testing::Values(
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.5\" lon=\"+5.25E0\"><ele> 7 </ele></wpt>"), ""},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.5\" lon=\"5.25\"><ele/></wpt>"), ""},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.5\" lon=\"5.25\"><ele>NaN</ele></wpt>"), ""},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52,2755\" lon=\"5,4881\"/>"),
                    "line 2: \"lat\" of the point (wpt) is \"52,2755\""},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.2755\" lon=\"5 24\"/>"), "\"5 24\""},
        Coordinates{"p.gpx", GPX("<wpt lon=\"5.25\"/>"), "the point (wpt) has no \"lat\""},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.5\" lon=\"5.25\"><ele>10,75</ele></wpt>"),
                    "\"ele\" of a point is \"10,75\", which is no number"},
        Coordinates{"p.gpx", GPX("<wpt lat=\"52.5\" lon=\"5.25\"><ele>n/a</ele></wpt>"),
                    "\"n/a\""}));

INSTANTIATE_TEST_SUITE_P(Kml, CoordinatesOfTexts,
                         testing::Values(Coordinates{"p.kml", KML(" 5.25,52.5,7 "), ""},
                                         Coordinates{"p.kml", KML("5.25,52.5"), ""},
                                         Coordinates{"p.kml", KML("5\u00b024',52\u00b012'"),
                                                     "line 2: \"coordinates\""},
                                         Coordinates{"p.kml", KML("5,25,52,5"), "\"5,25,52,5\""},
                                         Coordinates{"p.kml", KML("5,25 52,5"), "\"5,25 52,5\""}));

INSTANTIATE_TEST_SUITE_P(
    Gml, CoordinatesOfTexts,
    testing::Values(
        Coordinates{"p.gml", GML("<gml:pos>5.25 52.5</gml:pos>"), ""},
        Coordinates{"p.gml", GML("<gml:coordinates>5.25,52.5,7</gml:coordinates>"), ""},
        Coordinates{"p.gml",
                    GML("<gml:coordinates decimal=\",\" cs=\";\">5,25;52,5</gml:coordinates>"), ""},
        Coordinates{"p.gml", GML("<gml:coord><gml:X>5.25</gml:X><gml:Y>52.5</gml:Y></gml:coord>"),
                    ""},
        Coordinates{"p.gml", GML("<gml:pos>52,2 9,4</gml:pos>"), "line 2: \"pos\" of a point"},
        Coordinates{"p.gml", GML("<gml:pos>abc 9.4</gml:pos>"), "\"abc 9.4\""},
        Coordinates{"p.gml", GML("<gml:coordinates>5,25 52,5</gml:coordinates>"), "coordinate"},
        Coordinates{"p.gml", GML("<gml:coord><gml:X>5,25</gml:X><gml:Y>52.5</gml:Y></gml:coord>"),
                    "\"X\" of a point is \"5,25\""}));

INSTANTIATE_TEST_SUITE_P(
    Lines, CoordinatesOfTexts,
    testing::Values(
        Coordinates{"p.dxf", DXF(" 10\n155000.75\n 20\n  463000.5\n 30\n0.0\n"), ""},
        Coordinates{"p.dxf",
                    DXF("102\n{ACAD_REACTORS\n330\n1F\n102\n}\n10\n1.5500075E+05\n20\n"
                        "463000.5\n1001\nOTHER\n1000\n10\n"),
                    ""},
        Coordinates{"p.dxf", DXF("10\n155000,75\n20\n463000,5\n30\n5,5\n"),
                    "line 10: a point has the coordinate \"155000,75\""},
        Coordinates{"p.dxf", DXF("10\nabc\n20\n463000.5\n"), "\"abc\""},
        Coordinates{"p.dxf", DXF("10\n155000.75\n30\n5.5\n"), "line 6: a point has no northing"},
        Coordinates{"p.dxf", DXF("20\n463000.5\n"), "a point has no easting (group 10)"},
        Coordinates{"p.mif", MIF("Point 155000.75 463000.5\n    Symbol (35,0,12)"), ""},
        Coordinates{"p.mif", MIF("Multipoint 1\n155000.75 463000.5"), ""},
        Coordinates{"p.mif", MIF("Point 155000,75 463000,5"), "line 8: a point has the coordinate"},
        Coordinates{"p.mif", MIF("POINT 155000.75"), "155000.75"},
        Coordinates{"p.mif", MIF("Multipoint 1\n155000.75 463000,5"), "463000,5"}));

#undef GPX
#undef KML
#undef GML
#undef DXF
#undef MIF

} // namespace
} // namespace KelStd
