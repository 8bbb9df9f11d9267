// What a host can find out about the pieces of PROJ before anything is changed.

#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/Printers.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::markerBytes;
using test::ProgramDirectory;
using test::smallArchive;
using test::storedZip;
using test::TemporaryHome;
using test::writeFile;

const QString libraryName = QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);

TEST(ProjInspection, SaysWhereThePiecesLie)
{
    const ProjInspection proj(QDir("/home/anna/data"), QDir("/opt/program"));
    EXPECT_EQ(proj.archive(), "/opt/program/proj/proj.zip");
    EXPECT_EQ(proj.privateDirectory(), "/home/anna/data/proj");
    EXPECT_EQ(proj.marker(), "/home/anna/data/proj/proj_enviroment");
    EXPECT_EQ(proj.libraryFile(), "/home/anna/data/proj/" + libraryName);
    EXPECT_EQ(proj.database(), "/home/anna/data/proj/share/proj.db");
    EXPECT_EQ(proj.geoidModels(), "/home/anna/data/geoid_model_list");
    EXPECT_EQ(proj.deliveredGeoidModels(), "/opt/program/geoid_model_list");

    const TemporaryHome home;
    EXPECT_EQ(ProjInspection().privateDirectory(), home.path("proj"));
    EXPECT_EQ(ProjInspection().archive(), QStringLiteral(KELSTD_TEST_BIN_DIR "/proj/proj.zip"));
}

TEST(ProjInspection, ReadsTheMarker)
{
    using State = ProjInspection::MarkerState;
    const TemporaryHome home;
    const QString marker = home.path("proj/proj_enviroment");
    EXPECT_EQ(ProjInspection().markerState(), State::Missing);
    EXPECT_EQ(ProjInspection::markerVersion(), 3);
    const struct
    {
        QByteArray bytes;
        State state;
    } rows[] = {
        {markerBytes(3), State::Current},
        {markerBytes(3) + "x", State::Current},
        {markerBytes(2), State::OtherVersion},
        {markerBytes(4), State::OtherVersion},
        {"", State::OtherVersion},
    };
    for (const auto &row : rows) {
        writeFile(marker, row.bytes);
        EXPECT_EQ(ProjInspection().markerState(), row.state) << row.bytes.toHex().toStdString();
    }
    ASSERT_TRUE(QFile::remove(marker));
    ASSERT_TRUE(QFile::link(home.path("nowhere"), marker));
    EXPECT_EQ(ProjInspection().markerState(), State::Missing);
    ASSERT_TRUE(QFile::remove(marker));
    ASSERT_TRUE(QDir().mkpath(marker));
    EXPECT_EQ(ProjInspection().markerState(), State::Unreadable);
}

TEST(ProjInspection, LooksIntoTheArchive)
{
    using State = ProjInspection::ArchiveState;
    const TemporaryHome home;
    const ProgramDirectory program;
    const QString unpacker = ProjInspection::findUnpacker();
    EXPECT_EQ(QFileInfo(unpacker).fileName(), ProjInspection::unpackerName());
    const ProjInspection proj;
    EXPECT_EQ(proj.archiveState(unpacker), State::Missing);
    const QByteArray library = "proj/" KELSTD_PROJ_LIBRARY_NAME;
    const QByteArray whole = storedZip({{library, "code"}, {"proj/share/proj.db", "database"}});
    const struct
    {
        QByteArray bytes;
        State state;
    } rows[] = {
        {whole, State::Good},
        {whole.chopped(30), State::Damaged},
        {"no archive", State::Damaged},
        {storedZip({{"proj/share/proj.db", "database"}}), State::WithoutProj},
        {storedZip({{library, "code"}}), State::WithoutProj},
    };
    for (const auto &row : rows) {
        program.writeArchive(row.bytes);
        EXPECT_EQ(proj.archiveState(unpacker), row.state) << row.bytes.size();
    }
    EXPECT_FALSE(QFile::exists(home.path("proj")));
}

TEST(ProjInspection, FindsNoUnpackerWhereThereIsNone)
{
    const TemporaryHome home;
    const test::ScopedSearchPath nowhere(QFile::encodeName(home.path("no_programs")));
    EXPECT_EQ(ProjInspection::findUnpacker(), QString());
}

TEST(ProjInspection, KnowsWhatIsNotProjs)
{
    const struct
    {
        QList<const char *> files; ///< below the private directory
        bool isElse;
    } rows[] = {
        {{}, false},
        {{KELSTD_PROJ_LIBRARY_NAME}, false},
        {{"share/proj.db"}, false},
        {{"share/proj.db", "proj_enviroment"}, false},
        {{"share/mine.txt"}, true},
        {{"notes.txt"}, true},
        {{KELSTD_PROJ_LIBRARY_NAME, "notes.txt"}, true},
    };
    for (const auto &row : rows) {
        const TemporaryHome home;
        for (const char *file : row.files)
            writeFile(home.path("proj/") + file, "content");
        EXPECT_EQ(ProjInspection().holdsSomethingElse(), row.isElse)
            << (row.files.isEmpty() ? "nothing" : row.files.last());
    }
}

TEST(ProjInspection, KnowsWhoCouldChangeAFile)
{
    using Fault = ProjInspection::AccessFault;
    const TemporaryHome home;
    const QString file = home.path("file");
    EXPECT_EQ(ProjInspection::accessFault(file), Fault::None);
    writeFile(file, "content");
    ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0664), 0);
    EXPECT_EQ(ProjInspection::accessFault(file), Fault::None);
    ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0646), 0);
    EXPECT_EQ(ProjInspection::accessFault(file), Fault::WritableByAll);
}

TEST(ProjInspection, ComparesDeliveredModels)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    for (const char *name :
         {"same.gtx", "other.gtx", "sub/other.gtx", "absent.gtx", "folder.gtx", "linked.gtx"})
        program.writeGeoidModel(name, "delivered");
    const QDir models(home.path("geoid_model_list"));
    writeFile(models.filePath("same.gtx"), "delivered");
    writeFile(models.filePath("other.gtx"), "DELIVERED");
    writeFile(models.filePath("sub/other.gtx"), "shorter");
    writeFile(models.filePath("own.gtx"), "the user's");
    ASSERT_TRUE(models.mkpath("folder.gtx"));
    writeFile(home.path("elsewhere.gtx"), "the user's");
    ASSERT_TRUE(QFile::link(home.path("elsewhere.gtx"), models.filePath("linked.gtx")));
    const ProjInspection::DeliveredModels compared = ProjInspection().deliveredModels();
    EXPECT_EQ(compared.different, (QStringList{"other.gtx", "sub/other.gtx"}));
    EXPECT_EQ(compared.blocked, QStringList{"folder.gtx"});
}

TEST(ProjInspection, AsksALibraryForItsRelease)
{
    QString error;
    const QString release =
        ProjInspection::release(QStringLiteral(KELSTD_TEST_STAGED_PROJ "/") + libraryName, &error);
    EXPECT_TRUE(release.startsWith("9.")) << release << error;
    EXPECT_EQ(release.split('.').size(), 3);
    const FakeProjHome home;
    EXPECT_EQ(ProjInspection::release(home.libraryFile(), &error), QString());
    EXPECT_EQ(error, "the library has no proj_info");
    EXPECT_EQ(ProjInspection::release(home.path("absent.so")), QString());
}

TEST(ProjInspection, ConvertsAKnownPosition)
{
    const TemporaryHome home(TemporaryHome::PreparedProj);
    QString error;
    EXPECT_FALSE(ProjInspection::convertsKnownPosition(&error));
    EXPECT_EQ(error, "No proj library.");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(ProjInspection::convertsKnownPosition(&error)) << error;
    ProjLib::___unloadEnviroment();
    // A library that adds one to each number is not PROJ.
    const FakeProjHome fake;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(ProjInspection::convertsKnownPosition(&error));
    EXPECT_FALSE(error.isEmpty());
    ProjLib::___unloadEnviroment();
}

} // namespace
} // namespace KelStd
