// GeoPackages and Shapefiles that the program writes, read by GDAL's own programs; and all forms
// there and back.

#include "cli/vector/VectorRun.h"
#include "support/FullDisk.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::readFile;
using test::toolOutput;
using test::words;

const QByteArray controller = "name,lon,lat,h,code,remark\n"
                              "A1,5.387,52.155,43.1,TREE,big old\n"
                              "\u011e\u00fc<&>,3.25,51.5,-2.5,,a^b {50%%} \\ c\n"
                              "C3,2,50,0.25,WELL,\n";

class LayerFiles : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_program.home().path(name); }

    ProgramResult convert(const QString &options, const QByteArray &input = controller,
                          const QString &system = QStringLiteral("EPSG:32631")) const
    {
        return m_program.run(
            QStringList{QStringLiteral("convert"), QStringLiteral("--system"), system}
                + words(options),
            input);
    }

    ProgramResult write(const QString &file, const QByteArray &input = controller,
                        const QString &system = QStringLiteral("EPSG:32631")) const
    {
        return convert(QStringLiteral("--columns name,lon,lat,h -o ") + path(file), input, system);
    }

    static QString info(const QString &file)
    {
        return toolOutput(QStringLiteral("ogrinfo"), {QStringLiteral("-al"), file});
    }

    QStringList files(const QString &pattern) const
    {
        return QDir(m_program.home().path())
            .entryList({pattern, QStringLiteral(".kelstd*")},
                       QDir::Files | QDir::Dirs | QDir::Hidden, QDir::Name);
    }

    ProgramRun m_program;
};

TEST_F(LayerFiles, HoldThePlaneAndTheReferenceSystem)
{
    for (const char *name : {"out.gpkg", "out.shp"}) {
        SCOPED_TRACE(name);
        const QString file = QString::fromLatin1(name);
        const ProgramResult result = write(file);
        ASSERT_EQ(result.status, 0) << result.err;
        const auto rows = test::ogrRows(path(file));
        ASSERT_EQ(rows.size(), 3);
        const double places[][3] = {{5.387, 52.155, 43.1}, {3.25, 51.5, -2.5}, {2.0, 50.0, 0.25}};
        for (int i = 0; i < 3; ++i) {
            const auto plane =
                test::cs2csEastNorth(QStringLiteral("EPSG:32631"), places[i][0], places[i][1]);
            EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("X")), plane.first, 1e-5);
            EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("Y")), plane.second, 1e-5);
            EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("Z")), places[i][2], 1e-5);
        }
        EXPECT_EQ(rows[1].value(QStringLiteral("point")), QString::fromUtf8("\u011e\u00fc<&>"));
        EXPECT_EQ(rows[1].value(QStringLiteral("remark")), "a^b {50%%} \\ c");
        const QString shown = info(path(file));
        EXPECT_TRUE(shown.contains(QLatin1String("ID[\"EPSG\",32631]"))) << shown;
        EXPECT_TRUE(shown.contains(QLatin1String("3D Point"))) << shown;
        EXPECT_TRUE(shown.contains(QLatin1String("code: String"))) << shown;
        EXPECT_TRUE(shown.contains(QLatin1String("wgs84_x_m: Real"))) << shown;
    }
}

TEST_F(LayerFiles, OfShapefilesListTheirShortenedNames)
{
    const ProgramResult result = write(QStringLiteral("out.shp"));
    EXPECT_TRUE(mentionsAll(result.err, {"names of fields in", "local_northing_m as northing",
                                         "wgs84_longitude_deg as wgs84_lon"}))
        << result.err;
    EXPECT_EQ(files(QStringLiteral("out*")),
              (QStringList{"out.cpg", "out.dbf", "out.prj", "out.shp", "out.shx"}));
}

// A limit of the user's account sends a signal, which ends programs that do not know it.
TEST_F(LayerFiles, LeaveNothingWhereALimitOfFilesSendsASignal)
{
    ASSERT_EQ(convert(QStringLiteral("--csv")).status, 0);
    QByteArray many = "name,lon,lat,h\n";
    for (int i = 0; i < 4000; ++i)
        many += 'P' + QByteArray::number(i) + ",5.387,52.155,43.1\n";
    m_program.beforeStart([] { test::limitFilesOfThisProcess(100000); });
    for (const char *const name : {"out.gpkg", "out.shp"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = write(QString::fromLatin1(name), many);
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {"cannot write", name})) << result.err;
        EXPECT_EQ(files(QStringLiteral("out*")), QStringList());
    }
}

// A .prj of a system that the database has no code for names no datum shift.
TEST_F(LayerFiles, WarnOfAShiftThatAPrjCannotCarry)
{
    const QString system =
        QStringLiteral("+proj=tmerc +lat_0=0 +lon_0=5 +k=0.9999 +x_0=100000 +y_0=0 +ellps=bessel "
                       "+towgs84=600,50,400 +type=crs");
    const ProgramResult shape = write(QStringLiteral("out.shp"), controller, system);
    ASSERT_EQ(shape.status, 0) << shape.err;
    EXPECT_TRUE(mentionsAll(shape.err, {"warning", ".prj", "datum shift"})) << shape.err;
    EXPECT_FALSE(readFile(path(QStringLiteral("out.prj"))).contains("TOWGS84"));
    const ProgramResult package = write(QStringLiteral("out.gpkg"), controller, system);
    ASSERT_EQ(package.status, 0) << package.err;
    EXPECT_FALSE(package.err.contains(QLatin1String("the .prj beside")));
    const QString shown =
        toolOutput(QStringLiteral("gdalsrsinfo"), {QStringLiteral("-o"), QStringLiteral("proj4"),
                                                   path(QStringLiteral("out.gpkg"))});
    for (const char *part : {"+proj=tmerc", "+lon_0=5", "+k=0.9999", "+x_0=100000"})
        EXPECT_TRUE(shown.contains(QLatin1String(part))) << shown;
    // And they are read again as layers of that system.
    for (const char *name : {"out.shp", "out.gpkg"}) {
        const ProgramResult back =
            convert(QStringLiteral("--csv ") + path(QString::fromLatin1(name)), {}, system);
        EXPECT_EQ(back.status, 0) << back.err;
        EXPECT_NEAR(test::numberIn(csvRows(back.out).value(0), QStringLiteral("wgs84_height_m")),
                    43.1, 1e-4);
    }
}

// EPSG:28992 is known by its code, whose own shift programs take.
TEST_F(LayerFiles, OfAKnownSystemNameItsCode)
{
    const ProgramResult result =
        write(QStringLiteral("out.shp"), controller, QStringLiteral("EPSG:28992"));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_FALSE(result.err.contains(QLatin1String("warning: the .prj"))) << result.err;
    EXPECT_TRUE(readFile(path(QStringLiteral("out.prj"))).contains("D_Amersfoort"));
}

TEST_F(LayerFiles, InFeetCountInTheUnitOfTheirSystem)
{
    const ProgramResult result =
        convert(QStringLiteral("--from local-neh -o ") + path(QStringLiteral("out.gpkg")),
                "northing,easting,height\n196850,984250,10\n", QStringLiteral("EPSG:2263"));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"US survey foot", "heights in m"})) << result.err;
    const auto row = test::ogrRows(path(QStringLiteral("out.gpkg"))).value(0);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("X")), 984250.0, 1e-4);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("Y")), 196850.0, 1e-4);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("Z")), 10.0, 1e-4);
    EXPECT_TRUE(info(path(QStringLiteral("out.gpkg"))).contains(QLatin1String("2263")));
}

TEST_F(LayerFiles, OfWesternAxesAreNotWritten)
{
    const ProgramResult result =
        convert(QStringLiteral("--from local-neh -o ") + path(QStringLiteral("out.gpkg")),
                "northing,easting,height\n1050000,650000,10\n", QStringLiteral("EPSG:5513"));
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(mentionsAll(result.err, {"axes of the system", "WEST"})) << result.err;
    EXPECT_EQ(files(QStringLiteral("out*")), QStringList());
}

TEST_F(LayerFiles, KeepNamesThatDifferInCaseOrAreTheDatabasesOwn)
{
    const ProgramResult result =
        convert(QStringLiteral("--columns 1,2,3,4 -o ") + path(QStringLiteral("out.gpkg")),
                "name,lon,lat,h,Code,code,fid,geom\nA1,5.387,52.155,43.1,x,y,f,g\n");
    ASSERT_EQ(result.status, 0) << result.err;
    const QString shown = info(path(QStringLiteral("out.gpkg")));
    for (const char *line :
         {"Code (String) = x", "code_2 (String) = y", "fid (String) = f", "geom (String) = g"})
        EXPECT_TRUE(shown.contains(QLatin1String(line))) << line << '\n' << shown;
    EXPECT_TRUE(mentionsAll(result.err, {"code as code_2"})) << result.err;
}

TEST_F(LayerFiles, KeepWholeNumbersWhole)
{
    const QString points = m_program.file(
        QStringLiteral("in.geojson"),
        "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\",\"properties\":{"
        "\"big\":123456789012345678,\"small\":7,\"real\":0.5},\"geometry\":{\"type\":\"Point\","
        "\"coordinates\":[5.387,52.155,43.1]}}]}");
    for (const char *name : {"out.gpkg", "out.shp"}) {
        SCOPED_TRACE(name);
        const QString file = path(QString::fromLatin1(name));
        const ProgramResult result = convert(QStringLiteral("-o %1 %2").arg(file, points));
        ASSERT_EQ(result.status, 0) << result.err;
        const QString shown = info(file);
        for (const char *line :
             {"big (Integer64) = 123456789012345678", "small (Integer", "real (Real) = 0.5"})
            EXPECT_TRUE(shown.contains(QLatin1String(line))) << line << '\n' << shown;
    }
}

TEST_F(LayerFiles, NeverCutATextShort)
{
    const QByteArray fits(254, 'x');
    ASSERT_EQ(write(QStringLiteral("out.shp"),
                    "name,lon,lat,h,remark\nA1,5.387,52.155,43.1," + fits + '\n')
                  .status,
              0);
    EXPECT_EQ(test::ogrRows(path(QStringLiteral("out.shp")))[0].value(QStringLiteral("remark")),
              QString::fromLatin1(fits));
    const QByteArray before = readFile(path(QStringLiteral("out.dbf")));
    const ProgramResult result =
        convert(QStringLiteral("--columns 1,2,3,4 --force -o ") + path(QStringLiteral("out.shp")),
                "name,lon,lat,h,remark\nA1,5.387,52.155,43.1," + fits + "x\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(mentionsAll(result.err, {"255 bytes", "a Shapefile holds 254"})) << result.err;
    EXPECT_EQ(readFile(path(QStringLiteral("out.dbf"))), before);
    EXPECT_EQ(files(QStringLiteral(".kelstd*")), QStringList());
    const ProgramResult package = write(
        QStringLiteral("out.gpkg"), "name,lon,lat,h,remark\nA1,5.387,52.155,43.1," + fits + "x\n");
    EXPECT_EQ(package.status, 0) << package.err;
}

TEST_F(LayerFiles, ReplaceAWholeSetOnlyWhenTold)
{
    m_program.file(QStringLiteral("out.dbf"), "mine");
    const ProgramResult kept = write(QStringLiteral("out.shp"));
    EXPECT_EQ(kept.status, 2);
    EXPECT_TRUE(mentionsAll(kept.err, {"out.dbf exists", "--force"})) << kept.err;
    EXPECT_EQ(files(QStringLiteral("out*")), QStringList{"out.dbf"});
    m_program.file(QStringLiteral("out.qix"), "of the old one");
    EXPECT_EQ(convert(QStringLiteral("--columns name,lon,lat,h --force -o ")
                      + path(QStringLiteral("out.shp")))
                  .status,
              0);
    EXPECT_EQ(files(QStringLiteral("out*")),
              (QStringList{"out.cpg", "out.dbf", "out.prj", "out.shp", "out.shx"}));
}

TEST_F(LayerFiles, LeaveNothingOnAFullDisk)
{
    ASSERT_EQ(convert(QStringLiteral("--columns name,lon,lat,h")).status, 0);
    QByteArray many = "name,lon,lat,h\n";
    for (int i = 0; i < 3000; ++i)
        many += 'P' + QByteArray::number(i) + ",5.387,52.155,43.1\n";
    for (const char *name : {"out.gpkg", "out.shp"}) {
        SCOPED_TRACE(name);
        m_program.file(QString::fromLatin1(name), "mine");
        ProgramResult result;
        {
            const test::FullDisk limit(120000);
            result = convert(QStringLiteral("--columns name,lon,lat,h --force -o ")
                                 + path(QString::fromLatin1(name)),
                             many);
        }
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {"cannot write", name})) << result.err;
        EXPECT_EQ(readFile(path(QString::fromLatin1(name))), "mine");
    }
    EXPECT_EQ(files(QStringLiteral("out*")), (QStringList{"out.gpkg", "out.shp"}));
}

struct Form
{
    const char *extension;
};

void PrintTo(const Form &row, std::ostream *out)
{
    *out << row.extension;
}

class ThereAndBack : public LayerFiles, public testing::WithParamInterface<Form>
{};

TEST_P(ThereAndBack, LosesNoColumn)
{
    const QString file = QStringLiteral("out.") + QString::fromLatin1(GetParam().extension);
    ASSERT_EQ(write(file).status, 0);
    const bool isDxf = file.endsWith(QLatin1String("dxf"));
    const ProgramResult back =
        convert((isDxf ? QStringLiteral("--from local-neh --csv ") : QStringLiteral("--csv "))
                + path(file));
    ASSERT_EQ(back.status, 0) << back.err;
    const auto rows = csvRows(back.out);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].value(QStringLiteral("point")), "A1");
    EXPECT_EQ(rows[1].value(QStringLiteral("point")), QString::fromUtf8("\u011e\u00fc<&>"));
    EXPECT_EQ(rows[0].value(QStringLiteral("code")), "TREE");
    EXPECT_EQ(rows[2].value(QStringLiteral("code")), "WELL");
    EXPECT_EQ(rows[1].value(QStringLiteral("remark")), "a^b {50%%} \\ c");
    EXPECT_NEAR(test::numberIn(rows[1], QStringLiteral("wgs84_longitude_deg")), 3.25, 2e-10);
    EXPECT_NEAR(test::numberIn(rows[1], QStringLiteral("wgs84_latitude_deg")), 51.5, 2e-10);
    EXPECT_NEAR(test::numberIn(rows[1], QStringLiteral("wgs84_height_m")), -2.5, 2e-5);
}

// So many rows that batches are written, and features are read by several threads.
TEST_P(ThereAndBack, KeepsTensOfThousandsOfPoints)
{
    const QString file = QStringLiteral("out.") + QString::fromLatin1(GetParam().extension);
    const int count = file.endsWith(QLatin1String("gpkg")) ? 70000 : KELSTD_ROWS_OF_TEXT;
    QByteArray many = "name,lon,lat,h,code,n\n";
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        many += 'P' + number + ',' + QByteArray::number(3.0 + i * 1e-5, 'f', 9) + ",51.5,"
                + QByteArray::number(i % 100) + ",C" + QByteArray::number(i % 17) + ',' + number
                + '\n';
    }
    const ProgramResult written = write(file, many);
    ASSERT_EQ(written.status, 0) << written.err;
    const bool isDxf = file.endsWith(QLatin1String("dxf"));
    const ProgramResult back =
        convert((isDxf ? QStringLiteral("--from local-neh --csv ") : QStringLiteral("--csv "))
                + path(file));
    ASSERT_EQ(back.status, 0) << back.err;
    const QStringList lines = back.outLines();
    ASSERT_EQ(lines.size(), count + 1);
    const QString columns = isDxf ? QStringLiteral(",POINTS") : QString();
    for (int i = 0; i < count; i += 997) {
        const QString &line = lines.at(i + 1);
        EXPECT_TRUE(line.startsWith(QStringLiteral("P%1,").arg(i))) << line;
        EXPECT_TRUE(
            line.endsWith(QStringLiteral(",ellipsoid%1,C%2,%3").arg(columns).arg(i % 17).arg(i)))
            << line;
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, ThereAndBack,
                         testing::Values(Form{"gpkg"}, Form{"shp"}, Form{"kml"}, Form{"gpx"},
                                         Form{"dxf"}, Form{"geojson"}));

} // namespace
} // namespace KelStd
