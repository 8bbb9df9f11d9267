#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <limits>

namespace KelStd {
namespace {

using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::slopingGrid;

const QString model = QStringLiteral("small.gtx");

/// A home with one model: 50 to 54 N, 3 to 7 E; 40 m at its south-western corner, 1 m more with
/// each degree northwards and 0.1 m eastwards.
class GeoidHeight : public testing::Test
{
protected:
    GeoidHeight()
    {
        program.file(QStringLiteral("geoid_model_list/small.gtx"), test::gtxBytes(slopingGrid()));
    }

    ProgramResult heights(const QByteArray &input, const QStringList &options = {},
                          const QString &ofModel = model) const
    {
        return program.run(QStringList{QStringLiteral("geoid"), QStringLiteral("height"),
                                       QStringLiteral("--model"), ofModel}
                               + options,
                           input);
    }

    ProgramRun program;
};

TEST_F(GeoidHeight, IsTheEllipsoidalHeightMinusTheSeparation)
{
    const auto result = heights("A,3.5,52.5,100\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.outLines(),
              (QStringList{"point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,"
                           "geoid_separation_m,height_above_geoid_m",
                           "A,3.50000000000,52.50000000000,100.00000,42.55000,57.45000"}));
}

TEST_F(GeoidHeight, InverseIsTheHeightAboveTheGeoidPlusTheSeparation)
{
    const auto result = heights("A,3.5,52.5,57.45\n", {QStringLiteral("--inverse")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.outLines().value(1),
              "A,3.50000000000,52.50000000000,100.00000,42.55000,57.45000");
}

TEST_F(GeoidHeight, OutputIsReadBackByItsHeadings)
{
    const QString there = heights("A,3.5,52.5,100\nB,6.75,50.25,-3.5\n").out;
    EXPECT_EQ(heights(there.toUtf8(), {QStringLiteral("--inverse")}).out, there);
    EXPECT_EQ(heights(there.toUtf8()).out, there);
}

/// A heading must not make an ellipsoidal height of one above the geoid, nor the other way round.
TEST_F(GeoidHeight, HeadingsOfTheOtherHeightAreRefused)
{
    for (const char *heading : {"ellipsoidal_height", "wgs84_height_m", "wgs84_height"}) {
        const auto result =
            heights(QByteArray("lon,lat,") + heading + "\n3.5,52.5,57.45\n", {"--inverse"});
        EXPECT_EQ(result.status, 2) << heading;
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("Accepted: longitude ("));
        EXPECT_THAT(result.err, Mentions("height_above_geoid"));
        EXPECT_EQ(heights(QByteArray("lon,lat,") + heading + "\n3.5,52.5,57.45\n").status, 0);
    }
    for (const char *heading : {"orthometric_height", "height_above_geoid_m"}) {
        const QByteArray input = QByteArray("lon,lat,") + heading + "\n3.5,52.5,57.45\n";
        EXPECT_EQ(heights(input).status, 2) << heading;
        EXPECT_EQ(heights(input, {"--inverse"}).status, 0) << heading;
    }
    EXPECT_EQ(heights("lon,lat,height\n3.5,52.5,57.45\n", {"--inverse"}).status, 0);
}

TEST_F(GeoidHeight, OfTheDeliveredModelIsThatOfItsGrid)
{
    ASSERT_TRUE(QFile::link(test::egm96Path(),
                            program.home().path(QStringLiteral("geoid_model_list/egm96_15.gtx"))));
    const auto result = heights("5.81015219,52.17852792,90.865\n-180,-89.9,0\n", {},
                                QStringLiteral("egm96_15.gtx"));
    ASSERT_EQ(result.status, 0) << result.err;
    const test::GridReader grid(test::readFile(test::egm96Path()));
    for (const auto &row : test::csvRows(result.out)) {
        const double separation = grid.separation(numberIn(row, "wgs84_latitude_deg"),
                                                  numberIn(row, "wgs84_longitude_deg"));
        EXPECT_NEAR(numberIn(row, "geoid_separation_m"), separation, 6e-6); // five decimals
        EXPECT_NEAR(numberIn(row, "height_above_geoid_m"),
                    numberIn(row, "wgs84_height_m") - separation, 6e-6);
    }
}

TEST_F(GeoidHeight, PointsOutsideAndBadLinesAreReportedAndTheRunGoesOn)
{
    const auto result = heights("A,3.5,52.5,100\nB,3.5,49,100\nC,x,50,1\nD,4,51,1\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.outLines().size(), 3);
    EXPECT_EQ(result.errLines(),
              (QStringList{"kelstd: <stdin>:2: Coordinate to transform falls outside grid",
                           "kelstd: <stdin>:3: longitude \"x\" is not a number",
                           "kelstd: 2 of 4 positions failed"}));
}

TEST_F(GeoidHeight, ModelMayBeAFileGivenRelatively)
{
    program.file(QStringLiteral("site/mine.gtx"), test::gtxBytes(slopingGrid()));
    for (const char *file : {"mine.gtx", "./mine.gtx", "../site/mine.gtx"}) {
        SCOPED_TRACE(file);
        const auto process = program.process({"geoid", "height", "--model", file});
        process->setWorkingDirectory(program.home().path("site"));
        process->start();
        process->write("3.5,52.5,100\n");
        process->closeWriteChannel();
        ASSERT_TRUE(process->waitForFinished());
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
        EXPECT_TRUE(process->readAllStandardOutput().contains(",42.55000,57.45000"));
    }
}

/// Another grid than the one meant would give heights that look right.
TEST_F(GeoidHeight, AModelsNameGoesBeforeAFilesUnlessTheFileIsNamedByItsPlace)
{
    test::Grid other = slopingGrid();
    for (float &value : other.values)
        value += 100.0F;
    program.file(QStringLiteral("site/small.gtx"), test::gtxBytes(other));
    const auto run = [this](const char *name) {
        const auto process = program.process({"geoid", "height", "--model", name});
        process->setWorkingDirectory(program.home().path("site"));
        process->start();
        process->write("3.5,52.5,100\n");
        process->closeWriteChannel();
        EXPECT_TRUE(process->waitForFinished());
        return process->readAllStandardOutput();
    };
    EXPECT_TRUE(run("small.gtx").contains(",42.55000,57.45000"));
    EXPECT_TRUE(run("./small.gtx").contains(",142.55000,-42.55000"));
}

TEST_F(GeoidHeight, ModelMayBeAGgfGridByNameOrFile)
{
    const QByteArray ggf = test::ggfBytes(slopingGrid(), test::RowOrder::Reversed);
    program.file(QStringLiteral("geoid_model_list/a.ggf"), ggf);
    const QString file = program.file(QStringLiteral("b.ggf"), ggf);
    const QString expected = heights("3.5,52.5,100\n").out;
    EXPECT_EQ(heights("3.5,52.5,100\n", {}, QStringLiteral("a.ggf")).out, expected);
    EXPECT_EQ(heights("3.5,52.5,100\n", {}, file).out, expected);
    EXPECT_FALSE(QFile::exists(file + ".gtx")); // converted for the run
    // PROJ would take the sign for the begin of a comment, and is given the conversion.
    const QString survey = program.file(QStringLiteral("survey #3/b.ggf"), ggf);
    EXPECT_EQ(heights("3.5,52.5,100\n", {}, survey).out, expected);
}

struct BadModel
{
    const char *name;
    const char *message;
};

TEST_F(GeoidHeight, AModelThatCannotBeUsedIsAnEnvironmentError)
{
    program.file(QStringLiteral("geoid_model_list/text.gtx"), QByteArray(500, 'x'));
    program.file(QStringLiteral("geoid_model_list/cut.ggf"),
                 test::ggfBytes(slopingGrid(), test::RowOrder::Reversed).left(200));
    // Six kilobytes that announce a row of eight gigabytes.
    test::Grid lie = slopingGrid();
    lie.columns = std::numeric_limits<qint32>::max();
    lie.rows = 2;
    lie.longitudeSpacing = 1e-5;
    program.file(QStringLiteral("geoid_model_list/lie.gtx"),
                 test::gtxBytes(lie) + QByteArray(6000, '\0'));
    const QString lieFile = program.home().path(QStringLiteral("geoid_model_list/lie.gtx"));
    test::Grid nowhere = slopingGrid();
    nowhere.latitudeSpacing = std::numeric_limits<double>::infinity();
    const QString nowhereFile = program.file(QStringLiteral("nowhere.ggf"),
                                             test::ggfBytes(nowhere, test::RowOrder::Reversed));
    const QByteArray lieName = lieFile.toUtf8();
    const QByteArray nowhereName = nowhereFile.toUtf8();
    for (const BadModel &row :
         {BadModel{"missing.gtx", "it is not in "}, BadModel{"missing.gtx", "nor is there a file"},
          BadModel{"egm96", "did you mean 'egm96_15.gtx'?"},
          BadModel{"../proj/proj_enviroment", "it is not in "},
          BadModel{"text.gtx", "PROJ does not read "},
          BadModel{"lie.gtx", "it is cut short: of 4294967294 values only 1525 are there"},
          BadModel{lieName.constData(), "it is cut short"},
          BadModel{nowhereName.constData(), "it is no GGF grid"},
          BadModel{"cut.ggf", "of 25 values only 13 are there"}, BadModel{"/", "it is no file"}}) {
        SCOPED_TRACE(row.name);
        const auto result = heights("3.5,52.5,100\n", {}, QString::fromUtf8(row.name));
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("kelstd: cannot use the geoid model "));
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_EQ(result.errLines().size(), 1);
    }
}

TEST_F(GeoidHeight, CommandLineMistakesAreUsageErrors)
{
    const auto withoutModel = program.run({"geoid", "height"}, "3,52,1\n");
    EXPECT_EQ(withoutModel.status, 2);
    EXPECT_THAT(withoutModel.err, Mentions("--model NAME|FILE is missing"));
    EXPECT_EQ(heights("3,52,1\n", {"--csv", "--table"}).status, 2);
    EXPECT_EQ(heights("3,52,1\n", {"/no/such/input"}).status, 2);
}

TEST_F(GeoidHeight, TableSaysWhichHeightIsWhich)
{
    const auto result = heights("A,3.5,52.5,100\nA longer name,4,51,1\n", {"--table"});
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0).simplified(), "point longitude latitude height separation height");
    EXPECT_EQ(lines.at(1).simplified(), "deg deg m (ell.) m m (geoid)");
    EXPECT_EQ(lines.at(2).simplified(), "A 3.500000000 52.500000000 100.0000 42.5500 57.4500");
    EXPECT_EQ(lines.at(3), "A longer name");
    for (const int numbers : {1, 2, 4})
        EXPECT_EQ(lines.at(numbers).size(), lines.at(0).size());
    EXPECT_LE(lines.at(0).size(), 80);
}

TEST_F(GeoidHeight, IsATableOnATerminal)
{
    const auto shown =
        test::Terminal(80).run(program, {"geoid", "height", "--model", model}, "3.5,52.5,100\n");
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_THAT(shown.out, Mentions("m (geoid)"));
}

} // namespace
} // namespace KelStd
