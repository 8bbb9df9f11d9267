// What --rejects keeps of the features of a layer, and how it is read again.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::mentionsAll;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::toolOutput;
using test::words;

class RejectedFeatures : public testing::Test
{
protected:
    QString path(const char *name) const { return m_program.home().path(QLatin1String(name)); }

    /// A file that ogr2ogr makes of the features.
    QString layer(const char *name, const char *options, const QByteArray &features) const
    {
        const QString in =
            m_program.file(QStringLiteral("in.geojson"),
                           "{\"type\":\"FeatureCollection\",\"features\":[" + features + "]}");
        toolOutput(QStringLiteral("ogr2ogr"),
                   words(QLatin1String(options)) + QStringList{path(name), in});
        return path(name);
    }

    static QByteArray feature(const QByteArray &properties, const QByteArray &geometry)
    {
        return "{\"type\":\"Feature\",\"properties\":{" + properties + "},\"geometry\":" + geometry
               + '}';
    }

    /// Of a conversion of the file, which fails for some.
    QByteArray rejectsOf(const QString &file, const QString &options) const
    {
        const QString rejects = path("rejects.csv");
        m_result = m_program.run(words(QStringLiteral("convert ") + options)
                                 + QStringList{QStringLiteral("--rejects"), rejects, file});
        EXPECT_EQ(m_result.status, 1) << m_result.err;
        return test::readFile(rejects);
    }

    ProgramRun m_program;
    mutable ProgramResult m_result;
};

TEST_F(RejectedFeatures, KeepWhatIsNoPointAsText)
{
    const QByteArray line = "{\"type\":\"LineString\",\"coordinates\":[[5.4,52.2],[5.5,52.25]]}";
    const QByteArray two = "{\"type\":\"MultiPoint\",\"coordinates\":[[5.4,52.2,7],[5.5,52.2,8]]}";
    const QByteArray far = "{\"type\":\"Point\",\"coordinates\":[5.4,95.0,1]}";
    const QString file =
        layer("mixed.gpkg", "-nlt GEOMETRY",
              feature("\"name\":\"B\",\"h\":1.5", line) + ',' + feature("\"name\":\"C\"", "null")
                  + ',' + feature("\"name\":\"E\"", two) + ',' + feature("\"name\":\"F\"", far));
    EXPECT_EQ(rejectsOf(file, QStringLiteral("--system EPSG:32631")).toStdString(),
              "point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,h,geometry\n"
              "B,,,,1.5,\"LINESTRING (5.4 52.2,5.5 52.25)\"\n"
              "C,,,,,\n"
              "E,,,,,\"MULTIPOINT Z ((5.4 52.2 7),(5.5 52.2 8))\"\n"
              "F,5.4,95,1,,\n");
}

TEST_F(RejectedFeatures, OfPointsAloneHaveNoColumnForOthers)
{
    const QString file =
        layer("points.gpkg", "-nlt POINTZ",
              feature("\"name\":\"F\"", "{\"type\":\"Point\",\"coordinates\":[5.4,95.0,1]}"));
    EXPECT_EQ(rejectsOf(file, QStringLiteral("--system EPSG:32631")).toStdString(),
              "point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m\nF,5.4,95,1\n");
}

TEST_F(RejectedFeatures, HaveNoHeightOfAnotherKind)
{
    const QString file = layer(
        "p.gpkg", "-a_srs EPSG:7415 -nlt POINTZ",
        feature("\"name\":\"high\"", "{\"type\":\"Point\",\"coordinates\":[155000,463000,10]}"));
    toolOutput(
        QStringLiteral("ogrinfo"),
        {file, QStringLiteral("-sql"), QStringLiteral("UPDATE gpkg_geometry_columns SET z = 0")});
    EXPECT_EQ(rejectsOf(file, QStringLiteral("--system EPSG:28992")).toStdString(),
              "point,local_northing_m,local_easting_m,local_height_m,geometry\n"
              "high,463000,155000,,POINT Z (155000 463000 10)\n");
}

TEST_F(RejectedFeatures, KeepAPointOfKmlAboveTheGround)
{
    const QString file = m_program.file(
        QStringLiteral("p.kml"),
        "<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document>"
        "<Placemark><name>A</name><Point><altitudeMode>relativeToGround</altitudeMode>"
        "<coordinates>5.4,52.2,7.5</coordinates></Point></Placemark></Document></kml>\n");
    const QByteArray rejects = rejectsOf(file, QStringLiteral("--system EPSG:32631"));
    EXPECT_TRUE(rejects.contains("A,,,,")) << rejects.toStdString();
    EXPECT_TRUE(rejects.contains("POINT Z (5.4 52.2 7.5)")) << rejects.toStdString();
}

TEST_F(RejectedFeatures, StillSayWhatTheirHeightsAreAbove)
{
    const QString file = layer(
        "p.gpkg", "-a_srs EPSG:32631 -nlt POINTZ",
        feature("\"name\":\"A\",\"local_height_reference\":\"geoid egm96_15.gtx\",\"code\":\"x\"",
                "{\"type\":\"Point\",\"coordinates\":[663290.5,5780964.5,43]}"));
    const QByteArray rejects = rejectsOf(file, QStringLiteral("--system EPSG:32631"));
    EXPECT_EQ(rejects.toStdString(), "point,local_northing_m,local_easting_m,local_height_m,"
                                     "local_height_reference,code\n"
                                     "A,5780964.5,663290.5,43,geoid egm96_15.gtx,x\n");
    const ProgramResult again = m_program.run(
        words(QStringLiteral("convert --system EPSG:32631 --from local-neh")), rejects);
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(mentionsAll(again.err, {"the height is above \"geoid egm96_15.gtx\""}))
        << again.err;
}

// EPSG:2263 is a plane in US survey feet (1200/3937 m).
TEST_F(RejectedFeatures, NameTheirUnitsAndAreReadInThem)
{
    const QByteArray far = "{\"type\":\"Point\",\"coordinates\":[984250.0,196850000.0,39.37]}";
    const QString file =
        layer("ny.gpkg", "-a_srs EPSG:2263 -nlt POINTZ", feature("\"name\":\"B\",\"h\":3", far));
    QByteArray rejects = rejectsOf(file, QStringLiteral("--system EPSG:2263 --length-unit us-ft"));
    EXPECT_EQ(rejects.toStdString(),
              "point,local_northing_us_ft,local_easting_us_ft,local_height_us_ft,h\n"
              "B,196850000,984250,39.37,3\n");
    rejects.replace("196850000", "196850");
    const ProgramResult mended =
        m_program.run(words(QStringLiteral("convert --system EPSG:2263 --from local-neh "
                                           "--fields local_northing,local_height,h")),
                      rejects);
    ASSERT_EQ(mended.status, 0) << mended.err;
    EXPECT_EQ(mended.out.toStdString(),
              "local_northing_us_ft,local_height_m,h\n196850.00000,12.00000,3\n");
}

} // namespace
} // namespace KelStd
