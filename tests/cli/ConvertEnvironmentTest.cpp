// What `kelstd convert` needs besides positions: a system, and PROJ.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QDir>

#include <ostream>

namespace KelStd {
namespace {

using test::editedSystem;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QByteArray position = "5.25,52.5,1\n";
const QString rdNew = QStringLiteral("rd_new.xml");

/// The scale of a planar transformation that nobody filled, and one that can be applied.
const QString unfilledRatio = QStringLiteral("<ratio ver=\"1\" unit=\"None\" valType=\"Double\" "
                                             "isDictionary=\"false\">0<");
const QString ratioOne = QStringLiteral("<ratio ver=\"1\" unit=\"None\" valType=\"Double\" "
                                        "isDictionary=\"false\">1<");

/// Converts with a document of these bytes.
ProgramResult convertWith(const QByteArray &document)
{
    const ProgramRun program;
    return program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                        program.file(QStringLiteral("system.xml"), document)},
                       position);
}

TEST(ConvertEnvironment, TheSystemMustBeNamed)
{
    for (const QStringList &options : {QStringList(), QStringList{QStringLiteral("--system=")}}) {
        const auto result = ProgramRun().run(QStringList(QStringLiteral("convert")) + options);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("--system FILE.xml is missing"));
    }
}

TEST(ConvertEnvironment, AMissingSystemIsSaidWithTheFilesErrorText)
{
    const auto result = ProgramRun().run({QStringLiteral("convert"), QStringLiteral("--system"),
                                          QStringLiteral("no-such-system.xml")},
                                         position);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, QStringLiteral("kelstd: cannot read the coordinate system "
                                         "no-such-system.xml: No such file or directory\n"));
}

struct BadDocument
{
    const char *testName;
    QByteArray bytes;
    const char *reason;
};

void PrintTo(const BadDocument &row, std::ostream *out)
{
    *out << row.testName;
}

class BadDocuments : public testing::TestWithParam<BadDocument>
{};

TEST_P(BadDocuments, EndTheRunWithAReason)
{
    const auto result = convertWith(GetParam().bytes);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    ASSERT_EQ(result.errLines().size(), 1) << result.err;
    EXPECT_THAT(result.err, Mentions("system.xml: "));
    EXPECT_THAT(result.err, Mentions(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, BadDocuments,
    testing::Values(
        BadDocument{"Empty", "", "the file is empty"},
        BadDocument{"NotXml", "longitude latitude\n",
                    "no coordinate-system document of version 1 (line 1: no well-formed XML: "},
        BadDocument{"Binary", QByteArray("\0\1\2\xFF<", 5), "no coordinate-system document"},
        BadDocument{"TagOpen", editedSystem(rdNew, {{QStringLiteral("</Coord>"), QString()}}),
                    ": no well-formed XML: unexpected end of file)"},
        BadDocument{"AttributeTwice", "<Coord ver=\"1\"\n  ver=\"1\"/>",
                    "line 2: no well-formed XML: the attribute \"ver\" stands twice in a tag"},
        BadDocument{"OtherVersion", "<Coord ver=\"2\"/>", "no coordinate-system document"},
        BadDocument{"ElementMissing", "<Coord ver=\"1\"/>", "element [Ellpsoid] not found"},
        BadDocument{"UnknownProjection",
                    editedSystem(rdNew, {{QStringLiteral("sterea"), QStringLiteral("stereoo")}}),
                    "PROJ refuses its definition \"+proj=stereoo "},
        BadDocument{"UnknownEllipsoid",
                    editedSystem(rdNew, {{QStringLiteral("proj4EllpsName=\"bessel\""),
                                          QStringLiteral("proj4EllpsName=\"basel\"")}}),
                    "PROJ refuses its definition \"+proj=longlat +ellps=basel "},
        BadDocument{"FalseEastingToTheWest",
                    editedSystem(rdNew, {{QStringLiteral("sterea"), QStringLiteral("tmerc")},
                                         {QStringLiteral("positiveDir=\"ENU\""),
                                          QStringLiteral("positiveDir=\"WSU\"")}}),
                    "it takes no false easting and no false northing but 0"},
        BadDocument{
            "DefinitionTooLong",
            editedSystem(rdNew, {{QStringLiteral("sterea"), QString(600, QLatin1Char('s'))}}),
            "its PROJ definition is longer than 511 bytes"},
        BadDocument{"TimeSpanParameter",
                    editedSystem(rdNew, {{QStringLiteral("unit=\"None\" valType=\"Double\" "
                                                         "isDictionary=\"false\">0.9999079"),
                                          QStringLiteral("unit=\"None\" valType=\"TimeSpan\" "
                                                         "isDictionary=\"false\">0.9999079")}}),
                    "No Time Value In Coordinate"},
        BadDocument{"TranslationInDegrees",
                    editedSystem(rdNew, {{QStringLiteral("<x_translate ver=\"1\" unit=\"Meter\""),
                                          QStringLiteral("<x_translate ver=\"1\" "
                                                         "unit=\"Degree\"")}}),
                    "a length has a unit that is no unit of length"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertEnvironment, ADirectoryIsNoSystem)
{
    const ProgramRun program;
    const auto result = program.run(
        {QStringLiteral("convert"), QStringLiteral("--system"), program.home().path()}, position);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("directory"));
}

TEST(ConvertEnvironment, WithoutAHomeItSaysWhatToDo)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"),
                        program.home().path(QStringLiteral("no-such-home")));
    const auto result = program.convert(rdNew, position);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err,
              QStringLiteral("kelstd: the home directory %1 is no directory; create it, "
                             "or set KELSTD_HOME_DIR to another one\n")
                  .arg(program.home().path(QStringLiteral("no-such-home"))));
}

/// The first run in a new home unpacks PROJ, without a word.
TEST(ConvertEnvironment, PreparesProjInANewHome)
{
    ProgramRun program;
    const QString home = program.home().path(QStringLiteral("new home"));
    QDir().mkpath(home);
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
    const auto result = program.convert(rdNew, position);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.outLines().size(), 2);
    EXPECT_EQ(test::readFile(home + QStringLiteral("/proj/proj_enviroment")), test::markerBytes(3));
}

TEST(ConvertEnvironment, ASystemFromAnotherDirectoryAndARelativeInputAreFound)
{
    const ProgramRun program;
    program.file(QStringLiteral("my points.csv"), position);
    program.file(QString::fromUtf8("systems/B\xC3\xBCro 1.xml"),
                 test::readFile(test::systemPath(rdNew)));
    const auto process = program.process({QStringLiteral("convert"), QStringLiteral("--system"),
                                          QString::fromUtf8("systems/B\xC3\xBCro 1.xml"),
                                          QStringLiteral("my points.csv")});
    process->setWorkingDirectory(program.home().path());
    process->start();
    process->closeWriteChannel();
    ASSERT_TRUE(process->waitForFinished(60000));
    EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
    EXPECT_EQ(QString::fromUtf8(process->readAllStandardOutput()),
              program.convert(rdNew, position).out);
}

struct NotedSystem
{
    const char *testName;
    QByteArray document;
    const char *note;
};

void PrintTo(const NotedSystem &row, std::ostream *out)
{
    *out << row.testName;
}

class NotedSystems : public testing::TestWithParam<NotedSystem>
{};

TEST_P(NotedSystems, AreNotedOnceARun)
{
    const ProgramRun program;
    const auto result =
        program.run({QStringLiteral("convert"), QStringLiteral("--system"),
                     program.file(QStringLiteral("system.xml"), GetParam().document)},
                    position + position + position);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.outLines().size(), 4);
    ASSERT_EQ(result.errLines().size(), 1) << result.err;
    EXPECT_THAT(result.err, Mentions("kelstd: note: "));
    EXPECT_THAT(result.err, Mentions(GetParam().note));
}

INSTANTIATE_TEST_SUITE_P(
    Notes, NotedSystems,
    testing::Values(
        NotedSystem{
            "PlanarTransformation",
            editedSystem(rdNew, {{QStringLiteral("<Plane_Transform ver=\"1\" fuction=\"None\""),
                                  QStringLiteral("<Plane_Transform ver=\"1\" "
                                                 "fuction=\"Four\"")},
                                 {unfilledRatio, ratioOne}}),
            "planar transformation is not applied to the four frames"},
        NotedSystem{
            "HeightFitting",
            editedSystem(rdNew, {{QStringLiteral("<Elevation_Fitting ver=\"1\" function=\"None\""),
                                  QStringLiteral("<Elevation_Fitting ver=\"1\" "
                                                 "function=\"Fixed\"")}}),
            "height fitting is not applied to the four frames"},
        NotedSystem{"AxesWestAndSouth",
                    test::readFile(test::systemPath(QStringLiteral("hartebeesthoek94_lo29.xml"))),
                    "axes of this system point west and south"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertEnvironment, ASystemWithoutPeculiaritiesIsNotNoted)
{
    EXPECT_EQ(ProgramRun().convert(rdNew, position).err, QString());
}

} // namespace
} // namespace KelStd
