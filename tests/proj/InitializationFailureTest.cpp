// What a host learns of PROJ that could not be made ready.

#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/Printers.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::FakeUnpacker;
using test::ProgramDirectory;
using test::smallArchive;
using test::storedZip;
using test::TemporaryHome;
using test::writeFile;

using Kind = InitializationFailureKind;

const QByteArray libraryEntry = "proj/" KELSTD_PROJ_LIBRARY_NAME;

/// The kind of the failure, whose text says what is at fault.
void expectFailure(Kind kind, const QString &said)
{
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    const InitializationFailure failure = ProjLib::initializationFailure();
    EXPECT_EQ(failure.kind, kind) << failure.text;
    EXPECT_TRUE(failure.text.contains(said)) << failure.text;
    EXPECT_FALSE(failure.text.endsWith('.')) << failure.text;
}

TEST(InitializationFailure, IsThatOfTheLastTimeOnly)
{
    const FakeProjHome good;
    EXPECT_EQ(ProjLib::initializationFailure().kind, Kind::None);
    AppConfig::setHomeDir(QDir(good.path("absent")));
    expectFailure(Kind::NoHome, good.path("absent"));
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(ProjLib::initializationFailure().kind, Kind::NoHome);
    good.use();
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(ProjLib::initializationFailure().kind, Kind::None);
    EXPECT_EQ(ProjLib::initializationFailure().text, QString());
    ProjLib::___unloadEnviroment();
}

TEST(InitializationFailure, SaysWhoseTheCodeCouldBe)
{
    const FakeProjHome home;
    ASSERT_EQ(chmod(QFile::encodeName(home.libraryFile()).constData(), 0646), 0);
    expectFailure(Kind::Untrusted, home.libraryFile());
    ASSERT_EQ(chmod(QFile::encodeName(home.path()).constData(), 0777), 0);
    expectFailure(Kind::Untrusted, home.path() + " can be changed by every user");
}

TEST(InitializationFailure, SaysWhatIsWrongWithThePrivateDirectory)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(smallArchive());
    const QString place = home.path("proj");

    writeFile(place, "content");
    expectFailure(Kind::BadPrivateDirectory, place + " is no directory");

    ASSERT_TRUE(QFile::remove(place));
    ASSERT_TRUE(QFile::link(home.path("nowhere"), place));
    expectFailure(Kind::BadPrivateDirectory, place);

    ASSERT_TRUE(QDir().mkdir(home.path("nowhere")));
    expectFailure(Kind::LinkNotReplaced, place + " is a symbolic link");

    ASSERT_TRUE(QFile::remove(place));
    ASSERT_TRUE(QDir().mkpath(home.path("proj/proj_enviroment")));
    expectFailure(Kind::BadPrivateDirectory, home.path("proj/proj_enviroment"));
}

TEST(InitializationFailure, SaysWhatIsWrongWithTheArchive)
{
    const QByteArray whole = smallArchive();
    const struct
    {
        const char *claim;
        QByteArray bytes;
        Kind kind;
    } rows[] = {
        {"no archive", "<html>404 Not Found</html>\n", Kind::DamagedArchive},
        {"nothing", "", Kind::DamagedArchive},
        {"half of it", whole.left(whole.size() / 2), Kind::DamagedArchive},
        {"something else", storedZip({{"proj/share/proj.ini", "[general]\n"}}), Kind::WrongArchive},
        {"a marker of its own",
         storedZip({{libraryEntry, test::fakeProjBytes()},
                    {"proj/proj_enviroment", QByteArray("\0\0\0\2", 4)}}),
         Kind::WrongArchive},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.claim);
        const TemporaryHome home;
        const ProgramDirectory program;
        program.writeArchive(row.bytes);
        expectFailure(row.kind, program.archiveFile());
    }
    const TemporaryHome home;
    const ProgramDirectory program;
    expectFailure(Kind::NoArchive, program.archiveFile());
}

TEST(InitializationFailure, SaysWhatIsWrongWithTheUnpacker)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(smallArchive());
    {
        const test::ScopedSearchPath nowhere(QFile::encodeName(home.path("no_programs")));
        expectFailure(Kind::NoUnpacker, QStringLiteral(KELSTD_UNPACKER_NAME));
    }
    // unzip(1): 50 is a full disk, 80 the user's interruption.
    const struct
    {
        const char *end;
        Kind kind;
    } rows[] = {{"exit 50", Kind::NoRoom},
                {"exit 80", Kind::UnpackingFailed},
                {"exit 255", Kind::UnpackingFailed},
                {"kill -9 $$", Kind::UnpackingFailed}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.end);
        const FakeUnpacker unpacker(row.end);
        expectFailure(row.kind, program.archiveFile());
    }
}

TEST(InitializationFailure, SaysWhatCannotBeWrittenInTheHomeDirectory)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(smallArchive());
    // Somebody takes the private directory away meanwhile.
    const FakeUnpacker unpacker("touch \"$4/" + libraryEntry + "\"; rmdir \"$4/../../proj\"");
    expectFailure(Kind::HomeNotWritable, home.path("proj"));
}

TEST(InitializationFailure, SaysWhatIsWrongWithTheLibrary)
{
    {
        const FakeProjHome home("no library at all\n");
        expectFailure(Kind::LibraryNotLoadable, home.libraryFile());
    }
    const FakeProjHome home(test::fakeProjBytes("without_proj_trans"));
    expectFailure(Kind::FunctionMissing, home.libraryFile() + " has no function proj_trans");
}

TEST(InitializationFailure, SaysThatAPathIsTooLongForProj)
{
    const FakeProjHome prepared;
    const TemporaryHome parent;
    QString path = parent.path();
    while (path.size() < 2014)
        path += '/' + QString(200, 'x');
    ASSERT_TRUE(QDir().mkpath(path + "/proj"));
    ASSERT_TRUE(QFile::copy(prepared.libraryFile(), path + "/proj/" KELSTD_PROJ_LIBRARY_NAME));
    writeFile(path + "/proj/proj_enviroment", test::markerBytes(3));
    AppConfig::setHomeDir(QDir(path));
    expectFailure(Kind::PrivateDirectoryTooLong, path + "/proj");
}

} // namespace
} // namespace KelStd
