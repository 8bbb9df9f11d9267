#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::FakeUnpacker;
using test::ProgramDirectory;
using test::readFile;
using test::TemporaryHome;
using test::writeFile;

const QString libraryName = QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);

class Installation : public testing::Test
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(QDir::currentPath(), m_directory);
        ProjLib::___unloadEnviroment();
    }

    /// Initialising fails, quietly, and leaves nothing loaded.
    void expectFailure() const
    {
        const test::LogCapture log;
        EXPECT_FALSE(ProjLib::___InitializeEnviroment());
        EXPECT_TRUE(log.entries().isEmpty());
        EXPECT_TRUE(test::projIsMissing());
        EXPECT_EQ(QDir::currentPath(), m_directory);
    }

private:
    QString m_directory = QDir::currentPath();
};

TEST_F(Installation, DeliveredArchiveGivesAWorkingProj)
{
    const TemporaryHome home;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());

    const QString staged = QStringLiteral(KELSTD_TEST_STAGED_PROJ);
    EXPECT_EQ(readFile(home.path("proj/") + libraryName),
              readFile(staged + QLatin1Char('/') + libraryName));
    EXPECT_EQ(readFile(home.path("proj/share/proj.db")), readFile(staged + "/share/proj.db"));
    EXPECT_EQ(readFile(home.path("proj/proj_enviroment")).toHex(), "00000003");
    EXPECT_EQ(readFile(home.path("geoid_model_list/egm96_15.gtx")),
              readFile(QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx")));

    // The definitions of authorities stand in proj.db. Latitude comes first in EPSG:4326, and the
    // equator at a zone's central meridian is at exactly 500 km east, 0 m north.
    Pos pos = Pos::fromXYZ(0.0, 3.0, 0.0);
    QString error;
    ASSERT_TRUE(ProjLib::ConvertPosList("EPSG:4326", "EPSG:32631", pos,
                                        ProjLib::LocalLatLongH_to_LocalNEH, &error))
        << error;
    EXPECT_NEAR(pos.getENU().e, 500000.0, 1e-6);
    EXPECT_NEAR(pos.getENU().n, 0.0, 1e-6);
}

TEST_F(Installation, NextStartOnlyLoads)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    writeFile(home.path("proj/share/added.txt"), "the user's");

    const FakeUnpacker unpacker("exit 1");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(unpacker.runs().isEmpty());
    EXPECT_TRUE(QFile::exists(home.path("proj/share/added.txt")));
}

TEST_F(Installation, UnpackerIsGivenOverwriteArchiveAndADirectoryInHome)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    const test::FakeProjHome prepared;
    home.use();
    AppConfig::setBinDir(QDir(program.path("")));
    // The fourth argument is where "proj" is made: the archive brings the folder.
    const FakeUnpacker unpacker("cp '" + QFile::encodeName(prepared.libraryFile())
                                + "' \"$4/proj/\"");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());

    ASSERT_EQ(unpacker.runs().size(), 1);
    const QStringList arguments = unpacker.runs().constFirst();
    EXPECT_EQ(arguments.mid(0, 3), (QStringList{"-o", program.archiveFile(), "-d"}));
    // On the same file system as what it replaces.
    EXPECT_EQ(arguments.size(), 4);
    EXPECT_TRUE(arguments.value(3).startsWith(home.path() + "/.proj-")) << arguments.value(3);
    EXPECT_FALSE(QFile::exists(arguments.value(3)));
    EXPECT_EQ(readFile(home.path("proj/proj_enviroment")).toHex(), "00000003");
}

/// An unpacker that does its work and then ends in this way is not to be trusted.
class FailingUnpacker : public Installation, public testing::WithParamInterface<const char *>
{};

TEST_P(FailingUnpacker, FailsAlthoughTheLibraryIsThere)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeGeoidModel("model.gtx", "grid");
    const test::FakeProjHome prepared;
    home.use();
    AppConfig::setBinDir(QDir(program.path("")));
    const FakeUnpacker unpacker("cp '" + QFile::encodeName(prepared.libraryFile())
                                + "' \"$4/proj/\"\n" + GetParam());

    expectFailure();
    EXPECT_EQ(unpacker.runs().size(), 1);
    EXPECT_FALSE(QFile::exists(home.path("proj/") + libraryName));
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
    EXPECT_FALSE(QFile::exists(home.path("geoid_model_list")));
}

INSTANTIATE_TEST_SUITE_P(Ends, FailingUnpacker,
                         testing::Values("exit 1", "exit 2", "exit 255", "kill -9 $$"),
                         [](const auto &row) { return "Way" + std::to_string(row.index); });

TEST_F(Installation, WithoutAnUnpackerFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    {
        const test::ScopedSearchPath nowhere(QFile::encodeName(home.path("no_programs")));
        expectFailure();
    }
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

TEST_F(Installation, UnpackerThatUnpacksNothingFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    const FakeUnpacker unpacker("exit 0");
    expectFailure();
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
}

TEST_F(Installation, UnpackingOverwritesWithoutAsking)
{
    const TemporaryHome home;
    writeFile(home.path("notes.txt"), "older");
    const ProgramDirectory program;
    program.writeArchive(test::storedZip({{"notes.txt", "newer"},
                                          {"proj/" KELSTD_PROJ_LIBRARY_NAME, test::fakeProjBytes()},
                                          {"proj/share/", ""}}));
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(home.path("notes.txt")), "newer");
}

TEST_F(Installation, DeliveredGeoidModelsReplaceAndTheUsersStay)
{
    const TemporaryHome home;
    writeFile(home.path("geoid_model_list/own.gtx"), "the user's own");
    writeFile(home.path("geoid_model_list/sub/own.gtx"), "the user's own, deeper");
    writeFile(home.path("geoid_model_list/delivered.gtx"), "an older delivery, which is longer");
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    program.writeGeoidModel("delivered.gtx", "delivered");
    program.writeGeoidModel("sub/deeper.gtx", "delivered, deeper");

    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(home.path("geoid_model_list/delivered.gtx")), "delivered");
    EXPECT_EQ(readFile(home.path("geoid_model_list/sub/deeper.gtx")), "delivered, deeper");
    EXPECT_EQ(readFile(home.path("geoid_model_list/own.gtx")), "the user's own");
    EXPECT_EQ(readFile(home.path("geoid_model_list/sub/own.gtx")), "the user's own, deeper");
}

TEST_F(Installation, WithoutGeoidModelsSucceeds)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    ASSERT_FALSE(QFile::exists(program.path("geoid_model_list")));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());
}

TEST_F(Installation, HomeThatDoesNotExistFailsAndIsNotCreated)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    AppConfig::setHomeDir(QDir(home.path("absent")));
    expectFailure();
    EXPECT_FALSE(QFile::exists(home.path("absent")));
}

TEST_F(Installation, HomeThatIsAFileFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    writeFile(home.path("file"), "content");
    AppConfig::setHomeDir(QDir(home.path("file")));
    expectFailure();
    EXPECT_EQ(readFile(home.path("file")), "content");
}

TEST_F(Installation, PrivateDirectoryThatIsAFileFailsAndStays)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    writeFile(home.path("proj"), "content");
    const FakeUnpacker unpacker("exit 0");
    expectFailure();
    EXPECT_EQ(readFile(home.path("proj")), "content");
    EXPECT_TRUE(unpacker.runs().isEmpty());
}

TEST_F(Installation, PrivateDirectoryThatCannotBeCreatedFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    // A link to nowhere takes the name, also from a user who may write everywhere.
    ASSERT_TRUE(QFile::link(home.path("nowhere"), home.path("proj")));
    const FakeUnpacker unpacker("exit 0");
    expectFailure();
    EXPECT_TRUE(unpacker.runs().isEmpty());
}

TEST_F(Installation, FailureUnloadsWhatWasLoadedBefore)
{
    const test::FakeProjHome good;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    ASSERT_FALSE(test::projIsMissing());
    AppConfig::setHomeDir(QDir(good.path("absent")));
    expectFailure();
    EXPECT_EQ(good.fake().count("proj_cleanup"), 1);
}

TEST_F(Installation, UnloadingTouchesNoFile)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    const QDir privateDir(home.path("proj"));
    const QStringList before = privateDir.entryList();
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(privateDir.entryList(), before);
    EXPECT_TRUE(before.contains(libraryName));
    EXPECT_EQ(readFile(home.path("proj/proj_enviroment")).toHex(), "00000003");
}

TEST_F(Installation, RelativePlacesAreUnderstood)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    const QDir here = QDir::current();
    AppConfig::setBinDir(QDir(here.relativeFilePath(program.path(""))));
    AppConfig::setHomeDir(QDir(here.relativeFilePath(home.path())));
    ASSERT_TRUE(AppConfig::getInstance().homeDir().isRelative());
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(QFile::exists(home.path("proj/") + libraryName));
    EXPECT_FALSE(test::projIsMissing());
}

/// Names that a shell, a pattern or a quoted command line would take for something else.
class OddName : public Installation, public testing::WithParamInterface<const char16_t *>
{};

TEST_P(OddName, OfHomeAndProgramDirectoryIsSafe)
{
    const QString name = QString::fromUtf16(GetParam());
    const TemporaryHome parent;
    ASSERT_TRUE(QDir(parent.path()).mkdir(name));
    const ProgramDirectory program(name);
    program.writeArchive(test::smallArchive());
    program.writeGeoidModel("model.gtx", "grid");
    AppConfig::setHomeDir(QDir(parent.path(name)));

    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());
    EXPECT_EQ(readFile(parent.path(name + "/proj/proj_enviroment")).toHex(), "00000003");
    EXPECT_EQ(readFile(parent.path(name + "/geoid_model_list/model.gtx")), "grid");
    EXPECT_EQ(QDir(parent.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Names, OddName,
                         testing::Values(u"two  blanks ", u" leading blank", u"double\"quote",
                                         u"single'quote", u"Größe in Škofja Loka", u"测量",
                                         u"[a-z]", u"[", u"star*", u"question?", u"-d", u"%1 %2",
                                         u"dollar$HOME", u"semi;colon&", u"back\\slash"),
                         [](const auto &row) { return "Name" + std::to_string(row.index); });

} // namespace
} // namespace KelStd
