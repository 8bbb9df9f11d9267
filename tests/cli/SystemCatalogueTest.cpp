// Systems of PROJ's database found, imported and exported by the program.

#include "cli/ProgramRun.h"
#include "proj/ProjPrograms.h"
#include "support/FullDisk.h"
#include "support/Printers.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

QStringList wordsOf(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QJsonObject objectOf(const QString &line)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << line;
    return document.object();
}

class SystemCatalogue : public testing::Test
{
protected:
    ProgramResult system(const QStringList &words, const QByteArray &input = {}) const
    {
        return m_program.run(QStringList(QStringLiteral("system")) + words, input);
    }
    ProgramResult system(const char *words, const QByteArray &input = {}) const
    {
        return system(wordsOf(words), input);
    }

    QString path(const char *name) const { return m_program.home().path(QString::fromUtf8(name)); }

    static QString text(const QJsonObject &object, const char *key)
    {
        return object.value(QLatin1String(key)).toString();
    }

    ProgramRun m_program;
};

// --- search -----------------------------------------------------------------------------------

// The codes and areas are those of the EPSG registry, as "projinfo EPSG:28355" prints them.
TEST_F(SystemCatalogue, SearchFindsByWordsInAnyOrder)
{
    for (const char *words : {"search mga 55 gda94", "search gda94 55 MGA", "search 28355"}) {
        SCOPED_TRACE(words);
        const auto result = system(words);
        EXPECT_EQ(result.status, 0) << result.err;
        ASSERT_FALSE(result.outLines().isEmpty());
        EXPECT_THAT(result.outLines().first(), Mentions("EPSG:28355"));
        EXPECT_THAT(result.outLines().first(), Mentions("projected"));
        EXPECT_THAT(result.outLines().first(), Mentions("GDA94 / MGA zone 55"));
    }
}

TEST_F(SystemCatalogue, SearchPrintsJsonWithTheKeysOfEachSystem)
{
    const auto result = system("search 28992 --json");
    ASSERT_EQ(result.status, 0) << result.err;
    const QJsonObject object = objectOf(result.outLines().value(0));
    EXPECT_EQ(object.keys(), (QStringList{QStringLiteral("area"), QStringLiteral("area_name"),
                                          QStringLiteral("code"), QStringLiteral("deprecated"),
                                          QStringLiteral("kind"), QStringLiteral("name")}));
    EXPECT_EQ(text(object, "code"), QStringLiteral("EPSG:28992"));
    EXPECT_EQ(text(object, "name"), QStringLiteral("Amersfoort / RD New"));
    EXPECT_EQ(text(object, "kind"), QStringLiteral("projected"));
    EXPECT_FALSE(object.value(QStringLiteral("deprecated")).toBool(true));
    EXPECT_EQ(object.value(QStringLiteral("area")).toArray(), (QJsonArray{3.2, 50.75, 7.22, 53.7}));
}

// Fiji Map Grid, EPSG:3460, has the area 176.81 W to -178.15 E, across 180 degrees.
TEST_F(SystemCatalogue, SearchTakesPlacesAndBoxesAcrossTheAntimeridian)
{
    for (const char *place :
         {"--at 178.4,-18.1", "--at -179,-17", "--at 181,-17", "--bbox 179,-19,-179,-16"}) {
        SCOPED_TRACE(place);
        const auto result = system(wordsOf("search fiji map grid") + wordsOf(place));
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, Mentions("EPSG:3460"));
    }
    const auto elsewhere = system("search fiji map grid --at 5,52");
    EXPECT_EQ(elsewhere.status, 0);
    EXPECT_EQ(elsewhere.out, QString());
    EXPECT_EQ(elsewhere.err, QStringLiteral("kelstd: no coordinate system meets all of this\n"));
}

// EPSG:21780, Bern 1898 / LV03C, is deprecated since 2014.
TEST_F(SystemCatalogue, SearchLeavesDeprecatedSystemsOutUnlessAskedForThem)
{
    EXPECT_EQ(system("search 2400 --json").out, QString());
    const auto result = system("search 2400 --deprecated --json");
    EXPECT_TRUE(objectOf(result.outLines().value(0)).value(QStringLiteral("deprecated")).toBool());
}

TEST_F(SystemCatalogue, MistakesAreUsageErrors)
{
    struct Row
    {
        const char *words;
        const char *message;
    };
    const Row rows[] = {
        {"search --at 5", "--at \"5\": 2 numbers with commas between them are needed"},
        {"search --at 5,91", "the latitude \"91\" is not between -90 and 90"},
        {"search --at 52,x", "the latitude \"x\" is not a number"},
        {"search --at 400,1", "the longitude \"400\" is not between -180 and 360"},
        {"search --bbox 1,2,3", "4 numbers with commas"},
        {"search --bbox 1,20,3,10", "its south lies north of its north"},
        {"shifts", "the SOURCE is missing"},
        {"import", "the SOURCE is missing"},
        {"import EPSG:28992 -o a.xml --add", "give one of -o and --add"},
        {"import EPSG:28992 --as x", "--as goes with --add"},
        {"import EPSG:28992 -o -", "-o is for a file"},
        {"import EPSG:28992 EPSG:2154", "'EPSG:2154' is one argument too many"},
        {"export EPSG:28992", "--as FORM is missing"},
        {"export EPSG:28992 --as wkt1", "--as 'wkt1' is no form"},
        {"export --as proj", "the coordinate system is missing"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.words);
        const auto result = system(row.words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.message));
    }
}

// Each word is looked for in ten thousand names.
TEST_F(SystemCatalogue, SearchDoesNotTakeWordsWithoutEnd)
{
    const auto result =
        system(QStringList{QStringLiteral("search"), QStringLiteral("a ").repeated(501)});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, Mentions("more than 1000 characters"));
}

// --- shifts -----------------------------------------------------------------------------------

// Accuracy and area of EPSG:1777 and BETA2007's EPSG:15949 are those of the EPSG registry.
TEST_F(SystemCatalogue, ShiftsAreListedBestFirstWithTheirGrids)
{
    const auto result = system("shifts EPSG:31467 --json");
    ASSERT_EQ(result.status, 0) << result.err;
    QJsonObject published;
    int number = 0;
    for (const QString &line : result.outLines()) {
        const QJsonObject object = objectOf(line);
        EXPECT_EQ(object.value(QStringLiteral("number")).toInt(), ++number);
        if (text(object, "code") == QLatin1String("EPSG:1777"))
            published = object;
    }
    EXPECT_EQ(
        published.keys(),
        (QStringList{QStringLiteral("accuracy_m"), QStringLiteral("available"),
                     QStringLiteral("code"), QStringLiteral("coverage"), QStringLiteral("grids"),
                     QStringLiteral("kind"), QStringLiteral("name"), QStringLiteral("number")}));
    EXPECT_EQ(text(published, "name"), QStringLiteral("DHDN to WGS 84 (2)"));
    EXPECT_EQ(text(published, "kind"), QStringLiteral("seven"));
    EXPECT_EQ(published.value(QStringLiteral("accuracy_m")).toDouble(), 3.0);
    EXPECT_THAT(system("shifts EPSG:31467").out, Mentions("BETA2007.gsb"));
}

TEST_F(SystemCatalogue, ShiftsOfWhatIsNoSystemAreRefused)
{
    const auto result = system("shifts EPSG:999999");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("cannot list datum shifts of EPSG:999999: "));
}

// --- import -----------------------------------------------------------------------------------

// "projinfo EPSG:4833 -o PROJ" has these numbers; in EPSG's registry the rotations are 1.9342,
// -1.6677 and 9.1019 microradians of the coordinate frame convention.
TEST_F(SystemCatalogue, ImportWritesADocumentThatConverts)
{
    const QString file = path("rd.xml");
    const auto result =
        system(wordsOf("import EPSG:28992 --shift EPSG:4833 -o") + QStringList(file));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, QStringLiteral("Wrote %1: Amersfoort / RD New\n").arg(file));
    for (const char *text : {"Amersfoort / RD New (EPSG:28992)", "seven parameters",
                             "Amersfoort to WGS 84 (4) (EPSG:4833)", "accuracy 1 m", "100 %",
                             "largest difference to PROJ"})
        EXPECT_THAT(result.err, Mentions(text));

    const auto converted = m_program.run(
        {QStringLiteral("convert"), QStringLiteral("--system"), file}, "5.5,52.5,0\n");
    ASSERT_EQ(converted.status, 0) << converted.err;
    const auto row = test::csvRows(converted.out).value(0);
    const Pos expected =
        test::runCs2cs(QStringLiteral("+proj=longlat +datum=WGS84"),
                       QStringLiteral("+proj=sterea +lat_0=52.1561605555556 "
                                      "+lon_0=5.38763888888889 +k=0.9999079 +x_0=155000 "
                                      "+y_0=463000 +ellps=bessel "
                                      "+towgs84=565.4171,50.3319,465.5524,-0.398957388243134,"
                                      "0.343987817378283,-1.87740163998045,4.0725"),
                       {Pos::fromLongLatH(5.5, 52.5, 0.0)})
            .value(0);
    constexpr double tolerance = 0.001; // [m], what an import may differ
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_easting_m")),
                test::componentsOf(expected)[0], tolerance);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_northing_m")),
                test::componentsOf(expected)[1], tolerance);
}

TEST_F(SystemCatalogue, ImportPrintsTheDocumentWithoutATarget)
{
    const auto result = system("import EPSG:32631");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(result.out.startsWith(QLatin1String("<?xml")));
    EXPECT_THAT(result.err, Mentions("WGS 84 / UTM zone 31N (EPSG:32631)"));
    Coord coord;
    QString error;
    ASSERT_TRUE(Coord_IO::xml_read(m_program.file(QStringLiteral("utm.xml"), result.out.toUtf8()),
                                   coord, &error))
        << error;
    EXPECT_EQ(coord.coord_name, QStringLiteral("WGS 84 / UTM zone 31N"));
    EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
}

TEST_F(SystemCatalogue, ImportReportsAsOneJsonObject)
{
    const auto result = system("import EPSG:31467 --shift EPSG:1777 --json");
    ASSERT_EQ(result.status, 0) << result.err;
    ASSERT_EQ(result.outLines().size(), 1);
    const QJsonObject object = objectOf(result.out);
    for (const char *key : {"source", "name", "code", "area", "shift", "difference_m",
                            "alternatives", "better", "vertical", "warnings"})
        EXPECT_TRUE(object.contains(QLatin1String(key))) << key;
    EXPECT_EQ(text(object, "source"), QStringLiteral("EPSG:31467"));
    EXPECT_EQ(text(object, "code"), QStringLiteral("EPSG:31467"));
    EXPECT_EQ(text(object, "name"), QStringLiteral("DHDN / 3-degree Gauss-Kruger zone 3"));
    EXPECT_FALSE(object.contains(QStringLiteral("refused")));
    const QJsonObject shift = object.value(QStringLiteral("shift")).toObject();
    EXPECT_EQ(text(shift, "kind"), QStringLiteral("seven"));
    EXPECT_EQ(text(shift, "code"), QStringLiteral("EPSG:1777"));
    EXPECT_EQ(shift.value(QStringLiteral("accuracy_m")).toDouble(), 3.0);
    EXPECT_TRUE(object.value(QStringLiteral("difference_m")).isDouble());
    EXPECT_TRUE(object.value(QStringLiteral("vertical")).isNull());
}

struct Refusal
{
    const char *source;
    const char *word;
};

// Kinds as "projinfo" tells them: EPSG:4326 is geographic; nobody has the code 999999.
TEST_F(SystemCatalogue, RefusalsHaveAWordAndAReasonAndWriteNothing)
{
    const Refusal rows[] = {
        {"EPSG:4326", "not-projected"},
        {"EPSG:5773", "not-projected"},
        {"EPSG:999999", "not-understood"},
        {"no_such_system_anywhere", "not-understood"},
        {"+proj=pipeline +step +proj=utm +zone=31", "not-understood"},
        {"+init=epsg:28992", "not-understood"},
        {"PROJCRS[\"cut", "not-understood"},
        {"{\"type\": \"ProjectedCRS\"", "not-understood"},
    };
    const QString file = path("out.xml");
    for (const Refusal &row : rows) {
        SCOPED_TRACE(row.source);
        const auto result =
            system(QStringList{QStringLiteral("import"), QString::fromLatin1(row.source),
                               QStringLiteral("-o"), file, QStringLiteral("--json")});
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(QFileInfo::exists(file));
        const QJsonObject object = objectOf(result.out);
        EXPECT_EQ(text(object, "refused"), QString::fromLatin1(row.word));
        EXPECT_FALSE(text(object, "reason").isEmpty());
        EXPECT_THAT(result.err, Mentions("cannot import "));
    }
}

TEST_F(SystemCatalogue, FilesAndStandardInputAreSourcesWithMarksToo)
{
    const QByteArray prj =
        "PROJCS[\"WGS_1984_UTM_Zone_31N\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
        "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],"
        "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
        "PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",0.0],"
        "PARAMETER[\"Central_Meridian\",3.0],PARAMETER[\"Scale_Factor\",0.9996],"
        "PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";
    const QString file = m_program.file(QStringLiteral("job.prj"), "\xEF\xBB\xBF" + prj);
    const auto fromFile = system(QStringList{QStringLiteral("import"), file});
    EXPECT_EQ(fromFile.status, 0) << fromFile.err;
    const auto fromInput = system("import -", prj);
    EXPECT_EQ(fromInput.status, 0) << fromInput.err;
    Coord first;
    Coord second;
    ASSERT_TRUE(Coord_IO::xml_read(m_program.file(QStringLiteral("a.xml"), fromFile.out.toUtf8()),
                                   first, nullptr));
    ASSERT_TRUE(Coord_IO::xml_read(m_program.file(QStringLiteral("b.xml"), fromInput.out.toUtf8()),
                                   second, nullptr));
    EXPECT_TRUE(first == second);
    EXPECT_EQ(first.projection.param.value(QStringLiteral("lon_0")).value.toDouble(), 3.0);
}

TEST_F(SystemCatalogue, SourcesWithoutEndAreRefused)
{
    const QByteArray endless(3000000, 'x');
    const auto result = system("import - --json", endless);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(text(objectOf(result.out), "refused"), QStringLiteral("not-understood"));
    const auto device = system("import /dev/zero --json");
    EXPECT_EQ(device.status, 1);
    const auto missing = system("import job.prj");
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, Mentions("there is no file of this name either"));
}

TEST_F(SystemCatalogue, AFileThatExistsIsKeptUnlessForced)
{
    const QString file = m_program.file(QStringLiteral("mine.xml"), "mine");
    const QStringList words = wordsOf("import EPSG:32631 -o") + QStringList(file);
    const auto kept = system(words);
    EXPECT_EQ(kept.status, 2);
    EXPECT_EQ(kept.out, QString());
    EXPECT_EQ(test::readFile(file), QByteArray("mine"));
    EXPECT_EQ(system(words + QStringList(QStringLiteral("--force"))).status, 0);
    EXPECT_TRUE(test::readFile(file).startsWith("<?xml"));
}

TEST_F(SystemCatalogue, AFullDiskLeavesNothing)
{
    const QString file = path("full.xml");
    m_program.beforeStart([] { new test::FullDisk(1000); });
    const auto result = system(wordsOf("import EPSG:32631 -o") + QStringList(file));
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("cannot write "));
    EXPECT_FALSE(QFileInfo::exists(file));
}

TEST_F(SystemCatalogue, AddsToTheLibraryUnderTheSystemsName)
{
    const QString dir = path("lib");
    QDir().mkpath(dir + QStringLiteral("/custom"));
    const QStringList words = wordsOf("import EPSG:2154 --add --dir") + QStringList(dir);
    const auto added = system(words);
    ASSERT_EQ(added.status, 0) << added.err;
    EXPECT_THAT(added.out, Mentions("added the custom system \"RGF93 v1 / Lambert-93\": "));
    const auto listed = m_program.run({QStringLiteral("library"), QStringLiteral("list"),
                                       QStringLiteral("--names"), QStringLiteral("--dir"), dir});
    EXPECT_EQ(listed.outLines(), QStringList(QStringLiteral("RGF93 v1 / Lambert-93")));
    // It is found by its code now, without a word of an import.
    const auto converted =
        m_program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                       QStringLiteral("EPSG:2154"), QStringLiteral("--dir"), dir},
                      "3,46.5,0\n");
    ASSERT_EQ(converted.status, 0) << converted.err;
    EXPECT_FALSE(converted.err.contains(QLatin1String("PROJ's database")));
    // The natural origin of Lambert-93 is 3 E 46.5 N with 700,000 m and 6,600,000 m.
    const auto row = test::csvRows(converted.out).value(0);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_easting_m")), 700000.0, 0.001);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_northing_m")), 6600000.0, 0.001);

    const auto again = system(words);
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, Mentions("is taken by the custom system"));
    EXPECT_EQ(system(words + wordsOf("--as job17")).status, 0);
}

// --- a system for one run ---------------------------------------------------------------------

// UTM's central meridian meets the equator at 500,000 m; so does RGF93's Lambert-93 as above.
TEST_F(SystemCatalogue, ConvertTakesCodesNamesAndDefinitions)
{
    const QString dir = path("none");
    QDir().mkpath(dir + QStringLiteral("/custom"));
    const QString prj =
        m_program.file(QStringLiteral("job.wkt"), "+proj=utm +zone=31 +datum=WGS84");
    for (const QString &source :
         {QStringLiteral("EPSG:32631"), QStringLiteral("WGS 84 / UTM zone 31N"), prj}) {
        SCOPED_TRACE(source.toStdString());
        const auto result = m_program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                                           source, QStringLiteral("--dir"), dir},
                                          "3,0,0\n");
        ASSERT_EQ(result.status, 0) << result.err;
        const auto row = test::csvRows(result.out).value(0);
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_easting_m")), 500000.0, 0.001);
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_northing_m")), 0.0, 0.001);
        EXPECT_EQ(result.err.count(QLatin1String("is taken from")), 1);
    }
    const auto refused = m_program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                                        QStringLiteral("EPSG:4326"), QStringLiteral("--dir"), dir},
                                       "3,0,0\n");
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.out, QString());
    EXPECT_THAT(refused.err, Mentions("cannot use the coordinate system EPSG:4326: "));

    // What helps is said in the words of the command that has it.
    const auto without = m_program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                                        QStringLiteral("EPSG:4533"), QStringLiteral("--dir"), dir},
                                       "3,0,0\n");
    EXPECT_EQ(without.status, 3);
    EXPECT_THAT(without.err, Mentions("; use kelstd system import --take-as-wgs84, which takes"));
    EXPECT_THAT(system("import EPSG:4533").err, Mentions("; use --take-as-wgs84, which takes"));

    // Why a definition is not understood is not told as of a document.
    const QString pipeline =
        m_program.file(QStringLiteral("pipeline.txt"), "+proj=pipeline +step +proj=utm +zone=31");
    const auto unread = m_program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                                       pipeline, QStringLiteral("--dir"), dir},
                                      "3,0,0\n");
    EXPECT_EQ(unread.status, 3);
    EXPECT_THAT(unread.err, Mentions("cannot use the coordinate system "));
    EXPECT_FALSE(unread.err.contains(QLatin1String("XML")));
}

// --- export -----------------------------------------------------------------------------------

TEST_F(SystemCatalogue, ExportWritesEachForm)
{
    const QString dir = path("none");
    QDir().mkpath(dir + QStringLiteral("/custom"));
    struct Row
    {
        const char *form;
        const char *begins;
    };
    const Row rows[] = {
        {"wkt2", "PROJCRS["}, {"projjson", "{"}, {"proj", "+proj="}, {"esri", "PROJCS["}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.form);
        const auto result = system(QStringList{
            QStringLiteral("export"), QStringLiteral("EPSG:32631"), QStringLiteral("--dir"), dir,
            QStringLiteral("--as"), QString::fromLatin1(row.form)});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(result.out.trimmed().startsWith(QLatin1String(row.begins))) << result.out;
    }
    const QString file = path("utm.prj");
    const auto written = system(QStringList{QStringLiteral("export"), QStringLiteral("EPSG:32631"),
                                            QStringLiteral("--dir"), dir, QStringLiteral("--as"),
                                            QStringLiteral("esri"), QStringLiteral("-o"), file});
    EXPECT_EQ(written.status, 0) << written.err;
    EXPECT_TRUE(test::readFile(file).startsWith("PROJCS["));
}

// The projection's natural origin has false coordinates by definition: 300000 m, which is 984250 US
// survey feet of 1200/3937 m, in New York's Long Island zone (EPSG:2263).
TEST_F(SystemCatalogue, ExportKeepsTheUnitOfThePlane)
{
    QDir().mkpath(path("none") + QStringLiteral("/custom"));
    const QStringList there = {QStringLiteral("--dir"), path("none")};
    const QString file = path("long-island.xml");
    ASSERT_EQ(system(QStringList{QStringLiteral("import"), QStringLiteral("EPSG:2263"),
                                 QStringLiteral("-o"), file})
                  .status,
              0);
    const QByteArray imported = test::readFile(file);
    // Another's system is written by its own parameters, as the texts of the database are not.
    const QString own = m_program.file(QStringLiteral("own.xml"),
                                       QByteArray(imported).replace(">300000<", ">300001<"));
    struct Row
    {
        QString file;
        const char *form;
        const char *unit;
        double easting; ///< [us-ft]
    };
    const Row rows[] = {
        {file, "proj", "+units=us-ft", 984250.0},
        {file, "wkt2", "US survey foot", 984250.0},
        {own, "proj", "+units=us-ft", 984250.0 + 3937.0 / 1200.0},
        {own, "wkt2", "US survey foot", 984250.0 + 3937.0 / 1200.0},
        {own, "projjson", "US survey foot", 984250.0 + 3937.0 / 1200.0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.form);
        const auto text = system(QStringList{QStringLiteral("export"), row.file,
                                             QStringLiteral("--as"), QLatin1String(row.form)});
        ASSERT_EQ(text.status, 0) << text.err;
        EXPECT_THAT(text.out, test::Mentions(row.unit));
        EXPECT_FALSE(text.err.contains(QLatin1String("count"))) << text.err;
        const QString source = m_program.file(QStringLiteral("source.txt"), text.out.toUtf8());
        const auto back = m_program.run(
            QStringList{QStringLiteral("convert"), QStringLiteral("--system"), source} + there,
            "-74,40.1666666666666667,0\n");
        ASSERT_EQ(back.status, 0) << back.err;
        const auto values = test::csvRows(back.out).value(0);
        EXPECT_NEAR(test::numberIn(values, QStringLiteral("local_easting_us_ft")), row.easting,
                    0.001);
    }
    // A unit that the text has not is said to be lost.
    const QString other =
        m_program.file(QStringLiteral("other.xml"),
                       QByteArray(imported)
                           .replace("metres=\"0.30480060960121924\"", "metres=\"0.3048\"")
                           .replace("US survey foot", "foot"));
    const auto lost = system(QStringList{QStringLiteral("export"), other, QStringLiteral("--as"),
                                         QStringLiteral("esri")});
    EXPECT_THAT(lost.err, test::Mentions("lost: The unit \"foot\" of northing and easting"));
}

} // namespace
} // namespace KelStd
