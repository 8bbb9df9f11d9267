// kelstd geoid info, list and convert.

#include "cli/ProgramRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <limits>

#include <unistd.h>

namespace KelStd {
namespace {

using test::Grid;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::RowOrder;
using test::slopingGrid;

/// The lines with single blanks.
QStringList simplifiedLines(const QString &text)
{
    QStringList lines;
    for (const QString &line : text.split('\n'))
        lines += line.simplified();
    return lines;
}

// --- info ---------------------------------------------------------------------------------------

ProgramResult info(const ProgramRun &program, const QString &file)
{
    return program.run({"geoid", "info", file});
}

// NGA, README.TXT of WW15MGH.GRD: "the undulation values range from -106.99 m to 85.39 m"; rows
// from 90 N to 90 S and 15 minutes apart.
TEST(GeoidInfo, OfTheDeliveredGrid)
{
    const auto result = info(ProgramRun(), test::egm96Path());
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = simplifiedLines(result.out);
    for (const char *line :
         {"format GTX", "latitudes -90 to 90 deg", "longitudes -180 to 179.75 deg",
          "spacing 0.25 deg", "rows, columns 721, 1440", "missing values 0 of 1038240 (0.00 %)"})
        EXPECT_TRUE(lines.contains(line)) << line;
    EXPECT_THAT(result.out, Mentions("-106.99"));
    EXPECT_THAT(result.out, Mentions("85.39"));
}

TEST(GeoidInfo, ShowsTheSameOfAGridInEitherLayoutAndOrder)
{
    const ProgramRun program;
    test::Grid grid = slopingGrid();
    grid.longitudeSpacing = 0.5;
    grid.values[24] = -88.8888F; // the north-eastern corner
    grid.values[1] = std::numeric_limits<float>::quiet_NaN();
    grid.values[2] = 1000.5F;
    const struct
    {
        const char *name;
        QByteArray bytes;
        const char *format;
    } files[] = {
        {"a.gtx", test::gtxBytes(grid), "format GTX"},
        {"b.ggf", test::ggfBytes(grid, RowOrder::OutputOrder), "format GGF"},
        {"c.GGF", test::ggfBytes(grid, RowOrder::Reversed), "format GGF"},
    };
    for (const auto &file : files) {
        SCOPED_TRACE(file.name);
        const auto result = info(program, program.file(file.name, file.bytes));
        ASSERT_EQ(result.status, 0) << result.err;
        const QStringList lines = simplifiedLines(result.out);
        for (const char *line :
             {file.format, "latitudes 50 to 54 deg", "longitudes 3 to 5 deg",
              "spacing 1 deg in latitude, 0.5 deg in longitude", "rows, columns 5, 5",
              "lowest value 40.000 m at latitude 50, longitude 3",
              "highest value 44.300 m at latitude 54, longitude 4.5",
              "missing values 3 of 25 (12.00 %)"})
            EXPECT_TRUE(lines.contains(line)) << line << '\n' << result.out;
    }
}

TEST(GeoidInfo, OfAGridWithoutValues)
{
    const ProgramRun program;
    test::Grid grid = slopingGrid();
    for (float &value : grid.values)
        value = -88.8888F;
    const auto result = info(program, program.file("a.gtx", test::gtxBytes(grid)));
    EXPECT_EQ(result.status, 0);
    const QStringList lines = simplifiedLines(result.out);
    EXPECT_TRUE(lines.contains("lowest value none"));
    EXPECT_TRUE(lines.contains("missing values 25 of 25 (100.00 %)"));
}

TEST(GeoidInfo, OfAGridThatIsCutShortShowsTheHeaderAndSaysSo)
{
    const ProgramRun program;
    const QByteArray whole = test::gtxBytes(slopingGrid());
    const auto result = info(program, program.file("a.gtx", whole.left(whole.size() - 3)));
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("latitudes"));
    EXPECT_FALSE(result.out.contains("lowest"));
    EXPECT_THAT(result.err, Mentions("it is cut short: of 25 values only 24 are there"));
}

/// PROJ would read four bytes for each value of eight, and give heights.
TEST(GeoidInfo, OfAGridThatIsLongerThanItsHeaderSays)
{
    const ProgramRun program;
    const QByteArray longer = test::gtxBytes(slopingGrid()) + QByteArray(25 * 4, '\0');
    const auto result = info(program, program.file("a.gtx", longer));
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("it has 240 bytes, but 5 rows of 5 values take 140"));
    EXPECT_FALSE(result.out.contains("lowest"));
}

TEST(GeoidInfo, OfWhatIsNoGridSaysWhy)
{
    const ProgramRun program;
    const struct
    {
        QString file;
        const char *message;
    } rows[] = {
        {"/no/such/file.gtx", "No such file"},
        {program.home().path(), "it is a directory"},
        {program.file("letters.gtx", QByteArray(500, 'x')), "it is no GTX grid"},
        {program.file("grid.tif", QByteArray("II*\0", 4)), "a GeoTIFF grid, which only PROJ reads"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file.toStdString());
        const auto result = info(program, row.file);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_EQ(result.errLines().size(), 1);
    }
    EXPECT_EQ(program.run({"geoid", "info"}).status, 2);
}

TEST(GeoidInfo, OfAModelByItsNameUnlessAFileIsMeant)
{
    const ProgramRun program;
    const QByteArray model = test::gtxBytes(slopingGrid());
    program.file("geoid_model_list/mine.gtx", model);
    const auto named = info(program, "mine.gtx");
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_THAT(named.out, Mentions("geoid_model_list/mine.gtx"));
    const auto file = info(program, "./mine.gtx");
    EXPECT_EQ(file.status, 3);
    EXPECT_THAT(file.err, Mentions("cannot read the geoid grid ./mine.gtx"));
}

// --- list ---------------------------------------------------------------------------------------

TEST(GeoidList, HasEveryModelByTheNameThatASystemGives)
{
    const ProgramRun program;
    program.file("geoid_model_list/b.gtx", test::gtxBytes(slopingGrid()));
    program.file("geoid_model_list/a.ggf", test::ggfBytes(slopingGrid(), RowOrder::Reversed));
    program.file("geoid_model_list/a.ggf.gtx", test::gtxBytes(slopingGrid())); // of a.ggf
    program.file("geoid_model_list/europe/de.GTX", test::gtxBytes(slopingGrid()));
    program.file("geoid_model_list/readme.txt", "no grid");
    program.file("geoid_model_list/broken.gtx", "no grid");
    const QByteArray tiff = QByteArray("MM\0*", 4) + QByteArray(100, 'x');
    program.file("geoid_model_list/image.gtx", tiff);
    program.file("geoid_model_list/picture.tif", tiff);
    const auto result = program.run({"geoid", "list"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    const QString sloping = "latitudes 50 to 54 deg, longitudes 3 to 7 deg, every 1 deg";
    EXPECT_EQ(
        simplifiedLines(result.out),
        (QStringList{"a.ggf GGF, " + sloping + "; home directory",
                     "b.gtx GTX, " + sloping + "; home directory",
                     "broken.gtx not usable: its 7 bytes are too short for a GTX header; home "
                     "directory",
                     "egm96_15.gtx GTX, latitudes -90 to 90 deg, longitudes -180 to 179.75 "
                     "deg, every 0.25 deg; program directory",
                     "europe/de.GTX GTX, " + sloping + "; home directory",
                     "image.gtx not usable: it is a GeoTIFF file by its first bytes, which PROJ "
                     "reads only under another name than that of a GTX grid; home directory",
                     "picture.tif GeoTIFF, which only PROJ reads; home directory", QString()}));
}

/// Where a model is found that both folders have.
TEST(GeoidList, SaysWhichOfTwoModelsIsUsed)
{
    ProgramRun program;
    program.setVariable("KELSTD_BIN_DIR", program.home().path("program"));
    const QByteArray model = test::gtxBytes(slopingGrid());
    program.file("program/geoid_model_list/a.gtx", model);
    program.file("program/geoid_model_list/b.gtx", model);
    program.file("program/geoid_model_list/c.gtx", model.chopped(1));
    program.file("geoid_model_list/a.gtx", model.chopped(1));
    program.file("geoid_model_list/b.gtx", model);
    program.file("geoid_model_list/c.gtx", model.chopped(5));
    program.file("geoid_model_list/d,e.gtx", model);
    const QString content = "GTX, latitudes 50 to 54 deg, longitudes 3 to 7 deg, every 1 deg; ";
    EXPECT_EQ(
        simplifiedLines(program.run({"geoid", "list"}).out),
        (QStringList{"a.gtx " + content
                         + "program directory (that of the home directory is not usable: it "
                           "is cut short: of 25 values only 24 are there)",
                     "b.gtx " + content + "home directory",
                     "c.gtx not usable: it is cut short: of 25 values only 23 are there; home "
                     "directory (that of the program directory is not usable: it is cut "
                     "short: of 25 values only 24 are there)",
                     "d,e.gtx not usable: its name has a comma, at which PROJ begins to read "
                     "another one; home directory",
                     QString()}));
    EXPECT_THAT(program.run({"geoid", "info", "a.gtx"}).out,
                Mentions("/program/geoid_model_list/a.gtx"));
}

/// At the very first start the delivered models are not in the home directory yet.
TEST(GeoidList, HasTheDeliveredModelAtTheFirstStart)
{
    ProgramRun program;
    const QString home = program.home().path("fresh");
    ASSERT_TRUE(QDir().mkpath(home));
    program.setVariable("KELSTD_HOME_DIR", home);
    const auto result = program.run({"geoid", "list"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(result.out.startsWith("egm96_15.gtx  GTX, ")) << result.out;
}

TEST(GeoidList, WithoutModelsSaysWhereTheyWouldBe)
{
    ProgramRun program;
    program.setVariable("KELSTD_BIN_DIR", program.home().path("program"));
    const auto result = program.run({"geoid", "list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, "kelstd: there is no geoid model in "
                              + program.home().path("geoid_model_list") + " or "
                              + program.home().path("program/geoid_model_list") + '\n');
}

// --- convert ------------------------------------------------------------------------------------

TEST(GeoidFileConversion, WritesTheGridAsGtx)
{
    const ProgramRun program;
    const QString source =
        program.file("in.ggf", test::ggfBytes(slopingGrid(), RowOrder::Reversed));
    const QString target = program.home().path("out.gtx");
    const auto result = program.run({"geoid", "convert", source, target});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Wrote " + target + '\n');
    EXPECT_EQ(test::readFile(target), test::gtxBytes(slopingGrid()));
}

TEST(GeoidFileConversion, ReplacesAFileOnlyByForce)
{
    const ProgramRun program;
    const QString source =
        program.file("in.ggf", test::ggfBytes(slopingGrid(), RowOrder::OutputOrder));
    const QString target = program.file("out.gtx", "precious");
    const auto refused = program.run({"geoid", "convert", source, target});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "kelstd: " + target + " exists; --force replaces it\n");
    EXPECT_EQ(test::readFile(target), "precious");
    EXPECT_EQ(program.run({"geoid", "convert", "--force", source, target}).status, 0);
    EXPECT_EQ(test::readFile(target), test::gtxBytes(slopingGrid()));
}

TEST(GeoidFileConversion, DoesNotOverwriteItsInput)
{
    const ProgramRun program;
    const QByteArray bytes = test::ggfBytes(slopingGrid(), RowOrder::OutputOrder);
    const QString source = program.file("in.ggf", bytes);
    const QString soft = program.home().path("soft.gtx");
    const QString hard = program.home().path("hard.gtx");
    ASSERT_TRUE(QFile::link(source, soft));
    ASSERT_EQ(::link(QFile::encodeName(source).constData(), QFile::encodeName(hard).constData()),
              0);
    for (const QString &target : {soft, hard}) {
        const auto result = program.run({"geoid", "convert", "--force", source, target});
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.err, "kelstd: cannot write " + target + ": it is the input\n");
        EXPECT_EQ(test::readFile(source), bytes);
        EXPECT_EQ(test::readFile(target), bytes);
    }
}

TEST(GeoidFileConversion, SaysWhatIsWrong)
{
    const ProgramRun program;
    const QByteArray ggf = test::ggfBytes(slopingGrid(), RowOrder::OutputOrder);
    const QString good = program.file("good.ggf", ggf);
    const QString cut = program.file("cut.ggf", ggf.left(ggf.size() - 1));
    const QString target = program.home().path("out.gtx");
    const QString nowhere = program.home().path("no/such/folder/out.gtx");
    const struct
    {
        QStringList arguments;
        int status;
        const char *message;
    } rows[] = {
        {{}, 2, "IN.ggf and OUT.gtx are needed"},
        {{good}, 2, "IN.ggf and OUT.gtx are needed"},
        {{good, target, target}, 2, "is one argument too many"},
        {{target, target}, 2, "is no GGF file by its name"},
        {{good, good + ".tif"}, 2, "does not end in .gtx"},
        {{"/no/such.ggf", target}, 3, "cannot convert /no/such.ggf: No such file"},
        {{cut, target}, 3, "it is cut short: of 25 values only 24 are there"},
        {{good, nowhere}, 3, "cannot write "},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.message);
        const auto result = program.run(QStringList{"geoid", "convert"} + row.arguments);
        EXPECT_EQ(result.status, row.status);
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_EQ(result.out, QString());
    }
    EXPECT_FALSE(QFileInfo::exists(target));
}

/// Such a grid would be converted, found by its name, and give heights that look right.
TEST(GeoidFileConversion, RefusesAHeaderWithoutPlaces)
{
    const ProgramRun program;
    const QString target = program.home().path("out.gtx");
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const struct
    {
        double Grid::*field;
        QList<double> values;
    } rows[] = {
        {&Grid::latitude, {nan, infinity, -infinity, 90.5, -1e300}},
        {&Grid::longitude, {nan, infinity, -infinity, 361.0}},
        {&Grid::latitudeSpacing, {nan, infinity, -infinity, 0.0, 1e-15, -1.0, 1000.0, 1e300}},
        {&Grid::longitudeSpacing, {nan, infinity, -infinity, 0.0, 1e-15, -1.0, 1000.0, 1e300}},
    };
    for (const auto &row : rows) {
        for (const double value : row.values) {
            SCOPED_TRACE(value);
            Grid grid = slopingGrid();
            grid.*row.field = value;
            const QString source =
                program.file("in.ggf", test::ggfBytes(grid, RowOrder::OutputOrder));
            const auto result = program.run({"geoid", "convert", source, target});
            EXPECT_EQ(result.status, 3);
            EXPECT_THAT(result.err, Mentions("cannot convert "));
            EXPECT_THAT(result.err, Mentions("header"));
            EXPECT_EQ(result.out, QString());
            EXPECT_FALSE(QFileInfo::exists(target));
        }
    }
}

} // namespace
} // namespace KelStd
