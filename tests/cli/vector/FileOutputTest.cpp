// Files that the program writes in place of printing, in the forms that need no GDAL: read by
// ogr2ogr, the plane held against cs2cs.

#include "cli/vector/VectorRun.h"
#include "support/FullDisk.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::readFile;
using test::words;

const QByteArray controller = "name,lon,lat,h,code,remark\n"
                              "A1,5.387,52.155,43.1,TREE,big old\n"
                              "\u00dc<&>,3.25,51.5,-2.5,,a^b {50%%} \\ c\n"
                              "C3,2,50,0.25,WELL,\n";

class FileOutputs : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_program.home().path(name); }

    ProgramResult convert(const QString &options, const QByteArray &input = controller) const
    {
        return m_program.run(words(QStringLiteral("convert --system EPSG:32631 --columns "
                                                  "name,lon,lat,h ")
                                   + options),
                             input);
    }

    QStringList files() const
    {
        return QDir(m_program.home().path())
            .entryList({QStringLiteral("out*"), QStringLiteral(".kelstd*")},
                       QDir::Files | QDir::Dirs | QDir::Hidden, QDir::Name);
    }

    ProgramRun m_program;
};

TEST_F(FileOutputs, OfPrintedFormsAreWhatWouldBePrinted)
{
    for (const char *form : {"csv", "json", "geojson"}) {
        SCOPED_TRACE(form);
        const QString option = QString::fromLatin1(form);
        const QString file = path(QStringLiteral("out.") + option);
        const ProgramResult written = convert(QStringLiteral("-o ") + file);
        EXPECT_EQ(written.status, 0) << written.err;
        EXPECT_EQ(written.out, QStringLiteral("Wrote %1: 3 positions\n").arg(file));
        EXPECT_EQ(QString::fromUtf8(readFile(file)), convert(QStringLiteral("--") + option).out);
    }
}

struct Row
{
    const char *file;
    bool isPlane; ///< X and Y are easting and northing
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.file;
}

class TextFiles : public FileOutputs, public testing::WithParamInterface<Row>
{};

TEST_P(TextFiles, AreReadByOgr)
{
    const QString file = path(QString::fromLatin1(GetParam().file));
    const ProgramResult result = convert(QStringLiteral("-o ") + file);
    ASSERT_EQ(result.status, 0) << result.err;
    const bool isGpx = file.endsWith(QLatin1String(".gpx"));
    auto rows =
        test::ogrRows(file, isGpx ? QStringList{QStringLiteral("waypoints")} : QStringList());
    if (GetParam().isPlane) {
        // A point and its label, but for one without a name.
        ASSERT_EQ(rows.size(), 6);
        rows = {rows[0], rows[2], rows[4]};
    }
    ASSERT_EQ(rows.size(), 3);
    const double places[][3] = {{5.387, 52.155, 43.1}, {3.25, 51.5, -2.5}, {2.0, 50.0, 0.25}};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const auto *const place = places[i];
        const auto plane = test::cs2csEastNorth(QStringLiteral("EPSG:32631"), place[0], place[1]);
        const double x = GetParam().isPlane ? plane.first : place[0];
        const double y = GetParam().isPlane ? plane.second : place[1];
        const double tolerance = GetParam().isPlane ? 1.1e-5 : 1e-10;
        EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("X")), x, tolerance);
        EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("Y")), y, tolerance);
        EXPECT_NEAR(test::numberIn(rows[i], QStringLiteral("Z")), place[2], 1.1e-5);
    }
}

INSTANTIATE_TEST_SUITE_P(Written, TextFiles,
                         testing::Values(Row{"out.kml", false}, Row{"out.gpx", false},
                                         Row{"out.geojson", false}, Row{"out.dxf", true}));

TEST_F(FileOutputs, HaveAllColumnsAsAttributes)
{
    for (const char *name : {"out.kml", "out.gpx"}) {
        SCOPED_TRACE(name);
        const QString file = path(QString::fromLatin1(name));
        ASSERT_EQ(convert(QStringLiteral("-o ") + file).status, 0);
        const bool isGpx = file.endsWith(QLatin1String("gpx"));
        const QString shown =
            test::toolOutput(QStringLiteral("ogrinfo"), {QStringLiteral("-al"), file});
        const QString prefix = isGpx ? QStringLiteral("ogr_") : QString();
        for (const QString &line :
             {QStringLiteral("ame (String) = A1"), QString::fromUtf8("ame (String) = \u00dc<&>"),
              prefix + QStringLiteral("code (String) = TREE"),
              prefix + QStringLiteral("remark (String) = big old"),
              prefix + QStringLiteral("remark (String) = a^b {50%%} \\ c"),
              prefix + QStringLiteral("wgs84_height_m (Real) = 43.1"),
              prefix + QStringLiteral("local_height_reference (String) = ellipsoid")})
            EXPECT_TRUE(shown.contains(line)) << line << '\n' << shown;
    }
}

TEST_F(FileOutputs, SayWhatHeightsAre)
{
    EXPECT_TRUE(convert(QStringLiteral("-o ") + path(QStringLiteral("out.kml")))
                    .err.contains(QLatin1String("heights in")));
    EXPECT_TRUE(readFile((convert(QStringLiteral("-o ") + path(QStringLiteral("out.dxf"))),
                          path(QStringLiteral("out.dxf"))))
                    .startsWith("999\nEPSG:32631 WGS 84 / UTM zone 31N: easting, northing, "
                                "ellipsoidal height in m\n999\n1 unit = 1 m\n"));
}

TEST_F(FileOutputs, ReplaceAFileOnlyWhenTold)
{
    const QString file = m_program.file(QStringLiteral("out.csv"), "mine");
    const ProgramResult kept = convert(QStringLiteral("-o ") + file);
    EXPECT_EQ(kept.status, 2);
    EXPECT_TRUE(mentionsAll(kept.err, {"exists; --force replaces it"})) << kept.err;
    EXPECT_EQ(readFile(file), "mine");
    EXPECT_EQ(convert(QStringLiteral("--force -o ") + file).status, 0);
    EXPECT_TRUE(readFile(file).startsWith("point,"));
}

struct Mistake
{
    const char *options;
    const char *mentioned;
};

TEST_F(FileOutputs, HaveOneFormThatTheirExtensionSays)
{
    const Mistake rows[] = {
        {"-o out.xyz", "none of the extensions .csv .json"},
        {"-o out", "none of the extensions"},
        {"-o .csv", "none of the extensions"},
        {"--csv -o out.kml", "--csv and -o out.kml exclude each other"},
        {"--geojson -o out.csv", "exclude each other"},
        {"--table -o out.csv", "exclude each other"},
        {"--excel -o out.json", "--excel and -o out.json exclude each other"},
        {"--excel --csv -o out.csv", "--csv and -o out.csv exclude each other"},
        {"--no-header -o out.kml", "--no-header"},
        {"--force", "--force is for -o FILE"},
    };
    for (const Mistake &row : rows) {
        SCOPED_TRACE(row.options);
        const ProgramResult result = convert(QString::fromLatin1(row.options));
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(mentionsAll(result.err, {row.mentioned})) << result.err;
    }
    EXPECT_EQ(
        convert(QStringLiteral("--csv --no-header -o ") + path(QStringLiteral("out.csv"))).status,
        0);
    EXPECT_TRUE(readFile(path(QStringLiteral("out.csv"))).startsWith("A1,"));
}

TEST_F(FileOutputs, OfSpreadsheetsAreWhatIsPrintedForThem)
{
    const ProgramResult printed = convert(QStringLiteral("--excel"));
    EXPECT_EQ(printed.status, 0) << printed.err;
    const QString file = path(QStringLiteral("sheet.csv"));
    EXPECT_EQ(convert(QStringLiteral("--excel -o ") + file).status, 0);
    EXPECT_TRUE(readFile(file).startsWith("\xEF\xBB\xBFpoint,"));
    EXPECT_EQ(QString::fromUtf8(readFile(file)), printed.out);
    EXPECT_EQ(convert(QStringLiteral("--excel --no-header --force -o ") + file).status, 0);
    EXPECT_FALSE(readFile(file).contains("point"));
}

TEST_F(FileOutputs, AreNoFilesOfRejectsEither)
{
    for (const char *const other : {"out.shp", "out.dbf", "../%1/out.dbf", "./out.shp"}) {
        SCOPED_TRACE(other);
        const QString home = m_program.home().path();
        QString rejects = home + QLatin1Char('/') + QString::fromLatin1(other);
        rejects.replace(QStringLiteral("%1"), QFileInfo(home).fileName());
        const ProgramResult result =
            convert(QStringLiteral("-o %1/out.shp --rejects %2").arg(home, rejects));
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(mentionsAll(result.err, {"rejected lines go to the same file"})) << result.err;
        EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("out.shp"))));
        EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("out.dbf"))));
    }
    const ProgramResult result =
        convert(QStringLiteral("-o %1 --rejects %2")
                    .arg(path(QStringLiteral("out.kml")), path(QStringLiteral("out.csv"))));
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(FileOutputs, AreNeverWhatIsRead)
{
    const QString input = m_program.file(QStringLiteral("out.csv"), controller);
    const ProgramResult result = convert(QStringLiteral("--force -o %1 %1").arg(input));
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(mentionsAll(result.err, {"it is read in this run"})) << result.err;
    EXPECT_EQ(readFile(input), controller);
}

TEST_F(FileOutputs, AreNotTheFileOfTheRejects)
{
    const char *const rows[][2] = {{"out.csv", "out.csv"},
                                   {"./out.csv", "out.csv"},
                                   {"out.kml", "out.kml"},
                                   {"out.gpkg", "out.gpkg"},
                                   {"out.dbf", "out.shp"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row[1]);
        const ProgramResult result =
            convert(QStringLiteral("--rejects %1 -o %2")
                        .arg(path(QString::fromLatin1(row[0])), path(QString::fromLatin1(row[1]))));
        EXPECT_NE(result.status, 0);
        EXPECT_TRUE(mentionsAll(result.err, {"rejected lines go to the same file"})) << result.err;
        EXPECT_EQ(files(), QStringList());
    }
}

TEST_F(FileOutputs, OfKmlHaveNamesThatDifferInMoreThanCase)
{
    const QString file = path(QStringLiteral("out.kml"));
    const ProgramResult result =
        m_program.run(words(QStringLiteral("convert --system EPSG:32631 --columns 1,2,3,4 -o "))
                          + QStringList{file},
                      "name,lon,lat,h,a,A\nP,5.387,52.155,43.1,x,y\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"A as A_2"})) << result.err;
    const QString shown =
        test::toolOutput(QStringLiteral("ogrinfo"), {QStringLiteral("-al"), file});
    for (const char *line : {"a (String) = x", "A_2 (String) = y"})
        EXPECT_TRUE(shown.contains(QLatin1String(line))) << line << '\n' << shown;
}

TEST_F(FileOutputs, OfKmlKeepAttributesThatAreCalledAsWhatKmlSays)
{
    const QString out = path(QStringLiteral("out.kml"));
    const ProgramResult result =
        convert(QStringLiteral("-o ") + out,
                "name,lon,lat,h,Name,timestamp,visibility,end\nP1,5.387,52.155,43.1,B,10:20,7,E\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"Name as Name_2", "timestamp as timestamp_2"}))
        << result.err;
    const QString shown = test::toolOutput(QStringLiteral("ogrinfo"), {QStringLiteral("-al"), out});
    EXPECT_TRUE(mentionsAll(shown, {"Name (String) = P1", "Name_2 (String) = B",
                                    "timestamp_2 (String) = 10:20", "visibility_2 (String) = 7",
                                    "end_2 (String) = E"}))
        << shown;
}

TEST_F(FileOutputs, AreNotWrittenWhereTheRunDoesNotEnd)
{
    const QString file = m_program.file(QStringLiteral("out.csv"), "mine");
    // Other headings further down end the run.
    const ProgramResult result =
        convert(QStringLiteral("--force -o ") + file, controller + "code,remark,h,lat,lon,name\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(mentionsAll(result.err, {"out.csv is not written"})) << result.err;
    EXPECT_EQ(readFile(file), "mine");
    const ProgramResult failed =
        convert(QStringLiteral("--force -o ") + file, "name,lon,lat,h\nA,5,95,0\n");
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(mentionsAll(failed.err, {"out.csv is not written"})) << failed.err;
    EXPECT_EQ(readFile(file), "mine");
    EXPECT_EQ(files(), QStringList{"out.csv"});
}

TEST_F(FileOutputs, AreNotWrittenWhereTheRunIsStopped)
{
    const QString file = m_program.file(QStringLiteral("out.csv"), "mine");
    const auto process =
        m_program.process(words(QStringLiteral("convert --system EPSG:32631 --force -o ") + file));
    process->start();
    process->write("A,5.387,52.155,43.1\nB,5.4,95,43.1\n");
    // The second line is reported once both are read.
    QByteArray said;
    process->setReadChannel(QProcess::StandardError);
    while (!said.contains(":2: ") && process->waitForReadyRead(60000))
        said += process->readAll();
    process->terminate();
    ASSERT_TRUE(process->waitForFinished(60000));
    said += process->readAll();
    EXPECT_TRUE(said.contains("out.csv is not written")) << said.toStdString();
    EXPECT_EQ(readFile(file), "mine");
    EXPECT_EQ(files(), QStringList{"out.csv"});
}

TEST_F(FileOutputs, LeaveNothingOnAFullDisk)
{
    // The library is laid out and PROJ is asked before the disk is full.
    ASSERT_EQ(convert({}).status, 0);
    QByteArray many = "name,lon,lat,h\n";
    for (int i = 0; i < 2000; ++i)
        many += 'P' + QByteArray::number(i) + ",5.387,52.155,43.1\n";
    for (const char *name : {"out.csv", "out.kml", "out.gpx", "out.dxf", "out.geojson"}) {
        SCOPED_TRACE(name);
        m_program.file(QString::fromLatin1(name), "mine");
        ProgramResult result;
        {
            const test::FullDisk limit(100000);
            result = convert(QStringLiteral("--force -o ") + path(QString::fromLatin1(name)), many);
        }
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {"cannot write", name, "File too large"}))
            << result.err;
        EXPECT_EQ(readFile(path(QString::fromLatin1(name))), "mine");
    }
    EXPECT_EQ(files().filter(QStringLiteral(".kelstd")), QStringList());
    EXPECT_EQ(files().size(), 5);
}

// A limit of the user's account sends a signal, which ends programs that do not know it.
TEST_F(FileOutputs, LeaveNothingWhereALimitOfFilesSendsASignal)
{
    ASSERT_EQ(convert({}).status, 0);
    QByteArray many = "name,lon,lat,h\n";
    for (int i = 0; i < 4000; ++i)
        many += 'P' + QByteArray::number(i) + ",5.387,52.155,43.1\n";
    m_program.beforeStart([] { test::limitFilesOfThisProcess(100000); });
    for (const char *const name :
         {"out.csv", "out.kml", "out.gpx", "out.dxf", "out.geojson", "out.json"}) {
        SCOPED_TRACE(name);
        const ProgramResult result =
            convert(QStringLiteral("-o ") + path(QString::fromLatin1(name)), many);
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {"cannot write", "out."})) << result.err;
        EXPECT_EQ(files(), QStringList());
    }
}

TEST_F(FileOutputs, InFeetSayTheirUnit)
{
    const QString file = path(QStringLiteral("out.dxf"));
    const auto result = m_program.run(
        words(QStringLiteral("convert --system EPSG:2263 --from local-neh -o ") + file),
        "northing,easting,height\n196850,984250,10\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(readFile(file).contains("ellipsoidal height in US survey foot"));
    const auto row = test::ogrRows(file).value(0);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("X")), 984250.0, 1e-4);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("Y")), 196850.0, 1e-4);
    // A drawing has one unit: a US survey foot is 1200/3937 m.
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("Z")), 10.0 * 3937.0 / 1200.0, 1e-4);
}

} // namespace
} // namespace KelStd
