// What was in the home directory before PROJ is prepared, and what a killed process left there.

#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/Unprivileged.h"

#include <KelStd/files/FileLock.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::ProgramDirectory;
using test::readFile;
using test::writeFile;

/// Every file below a directory with its bytes, every link with where it leads to.
QMap<QString, QByteArray> contentOf(const QString &directory)
{
    QMap<QString, QByteArray> content;
    QDirIterator walk(directory,
                      QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QFileInfo entry(walk.next());
        content.insert(entry.filePath(), entry.isSymLink() ? entry.symLinkTarget().toUtf8()
                                         : entry.isFile()  ? readFile(entry.filePath())
                                                           : QByteArray("directory"));
    }
    return content;
}

QStringList entriesOf(const QString &directory)
{
    return QDir(directory).entryList(
        QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
}

/// By what a directory in which something is prepared is known.
constexpr const char *workshopMark =
    "KelStd prepares something here, and removes this directory.\n";

/// A prepared home whose marker is of another release.
class OldHome : public testing::Test
{
protected:
    OldHome()
    {
        writeFile(marker(), test::markerBytes(2));
        writeFile(home.path("proj/share/own.gsb"), "the user's own grid");
    }
    ~OldHome() override { ProjLib::___unloadEnviroment(); }

    QString marker() const { return home.path("proj/proj_enviroment"); }
    QString lockFile() const { return home.path("proj.lock"); }

    FakeProjHome home;
    ProgramDirectory program;
};

// --- The private directory -----------------------------------------------------------------------

struct UselessArchive
{
    std::string name;
    std::function<QByteArray()> bytes;
};

void PrintTo(const UselessArchive &row, std::ostream *out)
{
    *out << row.name;
}

class UselessArchives : public OldHome, public testing::WithParamInterface<UselessArchive>
{};

TEST_P(UselessArchives, LeaveThePrivateDirectoryAsItWas)
{
    program.writeArchive(GetParam().bytes());
    const auto before = contentOf(home.path());
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
    EXPECT_EQ(contentOf(home.path()), before);
}

INSTANTIATE_TEST_SUITE_P(
    Archives, UselessArchives,
    testing::Values(
        UselessArchive{"Empty", [] { return QByteArray(); }},
        UselessArchive{"Text", [] { return QByteArray("<html>404 Not Found</html>\n"); }},
        UselessArchive{"CutShort",
                       [] { return test::smallArchive().left(test::smallArchive().size() / 2); }},
        UselessArchive{"WithoutProj",
                       [] {
                           return test::storedZip({{"proj/share/proj.ini", "[general]\n"}});
                       }}),
    [](const auto &row) { return row.param.name; });

TEST_F(OldHome, IsLeftAsItWasWithoutAnArchive)
{
    const auto before = contentOf(home.path());
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(contentOf(home.path()), before);
}

TEST_F(OldHome, IsLeftAsItWasWithoutAnUnpacker)
{
    program.writeArchive(test::smallArchive());
    const auto before = contentOf(home.path());
    {
        const test::ScopedSearchPath nowhere(QFile::encodeName(home.path("no_programs")));
        EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    }
    EXPECT_EQ(contentOf(home.path()), before);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

/// While the archive is unpacked the earlier directory is whole, and no half-made one is there.
TEST_F(OldHome, IsReplacedInOneStep)
{
    program.writeArchive(test::smallArchive());
    const QString seen = home.path("seen");
    const test::FakeUnpacker unpacker("ls '" + QFile::encodeName(home.path("proj/share")) + "' > '"
                                      + QFile::encodeName(seen) + "'\n/usr/bin/unzip \"$@\"");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(seen), "own.gsb\n");
    EXPECT_EQ(entriesOf(home.path("proj/share")), QStringList{"proj.ini"});
    EXPECT_EQ(entriesOf(home.path()), (QStringList{"proj", "seen"}));
}

TEST_F(OldHome, ALinkInPlaceOfThePrivateDirectoryIsNotFollowed)
{
    program.writeArchive(test::smallArchive());
    ASSERT_TRUE(QDir(home.path()).rename("proj", "elsewhere"));
    for (const char *markerHex : {"00000002", ""}) {
        SCOPED_TRACE(markerHex);
        writeFile(home.path("elsewhere/proj_enviroment"), QByteArray::fromHex(markerHex));
        ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path("proj")));
        const auto before = contentOf(home.path());
        const test::LogCapture log;
        EXPECT_FALSE(ProjLib::___InitializeEnviroment());
        EXPECT_EQ(contentOf(home.path()), before);
        ASSERT_EQ(log.entries().size(), 1);
        EXPECT_EQ(log.entries()[0].module, "app_log");
        EXPECT_EQ(log.entries()[0].type, LogType_Error);
        EXPECT_EQ(log.entries()[0].text, home.path("proj")
                                             + " is a symbolic link and is not replaced; "
                                               "remove the link");
        ASSERT_TRUE(QFile::remove(home.path("proj")));
    }
}

TEST_F(OldHome, ALinkToAPreparedDirectoryIsUsed)
{
    writeFile(marker(), test::markerBytes(3));
    ASSERT_TRUE(QDir(home.path()).rename("proj", "elsewhere"));
    ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path("proj")));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

// --- Locks ---------------------------------------------------------------------------------------

struct LockFile
{
    std::string name;
    QByteArray bytes;
};

void PrintTo(const LockFile &row, std::ostream *out)
{
    *out << row.name;
}

class UnheldLocks : public OldHome, public testing::WithParamInterface<LockFile>
{};

/// Far above what a start costs on a machine under load, far below a minute.
constexpr qint64 atOnce = 10000; // [ms]

TEST_P(UnheldLocks, AreTakenOverAtOnce)
{
    program.writeArchive(test::smallArchive());
    writeFile(lockFile(), GetParam().bytes);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_LT(clock.elapsed(), atOnce);
    EXPECT_FALSE(QFile::exists(lockFile()));
}

TEST_P(UnheldLocks, BesideAValidMarkerAreNoHindrance)
{
    writeFile(marker(), test::markerBytes(3));
    writeFile(lockFile(), GetParam().bytes);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_LT(clock.elapsed(), atOnce);
    EXPECT_FALSE(QFile::exists(lockFile()));
}

INSTANTIATE_TEST_SUITE_P(Files, UnheldLocks,
                         testing::Values(LockFile{"Empty", ""},
                                         LockFile{"OfALivingProcess", "1\ninit\n\n\n"},
                                         LockFile{"OfAnotherHost", "99\nkelstd\nelsewhere\n"}),
                         [](const auto &row) { return row.param.name; });

TEST_F(OldHome, ALivingHolderIsWaitedFor)
{
    program.writeArchive(test::smallArchive());
    FileLock lock(lockFile());
    ASSERT_EQ(lock.take(0), FileLock::Outcome::Taken);
    writeFile(home.path(".proj-abcdef/in use"), "by the holder");
    bool wasKept = false;
    std::thread holder([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        wasKept = QFile::exists(home.path(".proj-abcdef/in use")) && QFile::exists(marker())
                  && readFile(marker()) == test::markerBytes(2);
        lock.release();
    });
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    holder.join();
    EXPECT_TRUE(wasKept);
    EXPECT_EQ(readFile(marker()), test::markerBytes(3));
}

/// What has the lock's name is the user's: others that start at the same moment are waited for all
/// the same, and what has the name stays.
TEST_F(OldHome, WhereTheLockIsSomethingElseAHolderIsWaitedForToo)
{
    program.writeArchive(test::smallArchive());
    for (const bool isFolder : {true, false}) {
        SCOPED_TRACE(isFolder);
        QFile::remove(lockFile());
        QDir(lockFile()).removeRecursively();
        const QString notes = isFolder ? lockFile() + "/notes" : lockFile();
        writeFile(notes, "the user's");
        writeFile(marker(), test::markerBytes(2));
        FileLock lock(home.path(".proj.install.lock"));
        ASSERT_EQ(lock.take(0), FileLock::Outcome::Taken);
        bool wasKept = false;
        std::thread holder([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            wasKept = readFile(marker()) == test::markerBytes(2);
            lock.release();
        });
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
        holder.join();
        EXPECT_TRUE(wasKept);
        EXPECT_EQ(readFile(marker()), test::markerBytes(3));
        EXPECT_EQ(readFile(notes), "the user's");
        EXPECT_FALSE(QFile::exists(home.path(".proj.install.lock")));
        ProjLib::___unloadEnviroment();
    }
}

TEST_F(OldHome, WhatAnotherProcessInstalledMeanwhileIsSuccess)
{
    program.writeArchive(test::smallArchive());
    for (const char *name : {"proj.lock", ".proj.install.lock"})
        ASSERT_TRUE(QDir().mkdir(home.path(name)));
    const test::FakeUnpacker unpacker("printf '\\000\\000\\000\\003' > '"
                                      + QFile::encodeName(marker()) + "'; exit 9\n");
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

/// Whoever starts next must wait for an unpacker whose starter was killed, and for nobody else.
TEST_F(OldHome, TheUnpackerOfAKilledStartKeepsTheLockUntilItsEnd)
{
    program.writeArchive(test::smallArchive());
    const QString gate = home.path("gate");
    const QString opened = home.path("unpacking");
    ASSERT_EQ(mkfifo(QFile::encodeName(gate).constData(), 0600), 0);
    const test::FakeUnpacker unpacker("touch '" + QFile::encodeName(opened) + "'; read line < '"
                                      + QFile::encodeName(gate) + "'");
    const pid_t start = fork();
    ASSERT_GE(start, 0);
    if (start == 0)
        _exit(ProjLib::___InitializeEnviroment() ? 0 : 1);
    constexpr int patience = 10'000; // [ms]
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(opened) && clock.elapsed() < patience)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ASSERT_TRUE(QFile::exists(opened));
    ASSERT_EQ(kill(start, SIGKILL), 0);
    ASSERT_EQ(waitpid(start, nullptr, 0), start);
    EXPECT_EQ(FileLock(lockFile()).take(100), FileLock::Outcome::HeldByAnother);

    writeFile(gate, "go on\n");
    EXPECT_EQ(FileLock(lockFile()).take(patience), FileLock::Outcome::Taken);
}

/// A program that is started so inherits it, as from a shell's "trap '' CHLD".
TEST_F(OldHome, IsReplacedWhereTheEndsOfChildrenAreIgnored)
{
    program.writeArchive(test::smallArchive());
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    struct sigaction before = {};
    ASSERT_EQ(sigaction(SIGCHLD, &ignored, &before), 0);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    struct sigaction after = {};
    EXPECT_EQ(sigaction(SIGCHLD, &before, &after), 0);
    EXPECT_EQ(after.sa_handler, SIG_IGN);
    EXPECT_EQ(readFile(marker()), test::markerBytes(3));
}

TEST_F(OldHome, WithAValidMarkerAHolderIsNotWaitedFor)
{
    writeFile(marker(), test::markerBytes(3));
    FileLock lock(lockFile());
    ASSERT_EQ(lock.take(0), FileLock::Outcome::Taken);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(QFile::exists(lockFile()));
}

TEST_F(OldHome, WithAValidMarkerNothingIsWritten)
{
    writeFile(marker(), test::markerBytes(3));
    ASSERT_EQ(chmod(QFile::encodeName(home.path()).constData(), 0555), 0);
    const auto before = contentOf(home.path());
    {
        const test::Unprivileged user;
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
        ProjLib::___unloadEnviroment();
    }
    EXPECT_EQ(contentOf(home.path()), before);
    ASSERT_EQ(chmod(QFile::encodeName(home.path()).constData(), 0700), 0);
}

// --- Geoid models --------------------------------------------------------------------------------

TEST_F(OldHome, GeoidModelsAreNotWrittenThroughLinks)
{
    program.writeArchive(test::smallArchive());
    program.writeGeoidModel("egm96_15.gtx", "delivered");
    writeFile(home.path("elsewhere/egm96_15.gtx"), "the user's");
    for (const bool isFolder : {true, false}) {
        SCOPED_TRACE(isFolder);
        writeFile(marker(), test::markerBytes(2));
        const QString folder = home.path("geoid_model_list");
        QFile::remove(folder);
        QDir(folder).removeRecursively();
        if (isFolder) {
            ASSERT_TRUE(QFile::link("elsewhere", folder));
        } else {
            ASSERT_TRUE(QDir().mkdir(folder));
            ASSERT_TRUE(QFile::link("../elsewhere/egm96_15.gtx", folder + "/egm96_15.gtx"));
        }
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
        EXPECT_EQ(readFile(marker()), test::markerBytes(3));
        EXPECT_EQ(readFile(home.path("elsewhere/egm96_15.gtx")), "the user's");
    }
}

// --- Leftovers -----------------------------------------------------------------------------------

TEST_F(OldHome, WhatKilledStartsHaveLeftIsRemoved)
{
    program.writeArchive(test::smallArchive());
    writeFile(home.path("elsewhere/grid.gtx"), "the user's");
    for (const char *name : {".proj-abc123", ".proj-XYZxyz", ".proj-marked"})
        writeFile(home.path(name) + "/.kelstd-workshop", workshopMark);
    writeFile(home.path(".proj-abc123/new/proj/share/proj.db"), "half of it");
    ASSERT_TRUE(QDir().mkdir(home.path(".proj-empty1")));
    writeFile(home.path(".proj-XYZxyz/old/proj/proj_enviroment"), test::markerBytes(3));
    ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path(".proj-abc123/new/linked")));
    // What only looks so is not of ours.
    ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path(".proj-linked")));
    writeFile(home.path(".proj-backup/notes"), "the user's");
    writeFile(home.path(".proj-settings/notes"), "the user's");
    writeFile(home.path(".proj-file_1"), "the user's");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(entriesOf(home.path()), (QStringList{".proj-backup", ".proj-file_1", ".proj-linked",
                                                   ".proj-settings", "elsewhere", "proj"}));
    EXPECT_EQ(readFile(home.path("elsewhere/grid.gtx")), "the user's");
}

/// "backup" has six letters, as what a temporary directory's name ends in.
TEST_F(OldHome, WhatTheUserKeepsUnderSuchANameStays)
{
    program.writeArchive(test::smallArchive());
    const QStringList files = {".proj-backup/old/proj/share/own.gsb",
                               ".proj-backup/new/notes",
                               ".proj-oldone/old/notes",
                               ".proj-newone/new/notes",
                               ".proj-beside/keep/notes",
                               ".proj-others/new/notes"};
    for (const QString &file : files)
        writeFile(home.path(file), "the user's");
    // Not all is this system's own, or the mark is another's.
    writeFile(home.path(".proj-beside/.kelstd-workshop"), workshopMark);
    writeFile(home.path(".proj-others/.kelstd-workshop"), "something else\n");
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    for (const QString &file : files)
        EXPECT_EQ(readFile(home.path(file)), "the user's") << file;
}

TEST_F(OldHome, WhatIsBeingMadeBearsTheMarkFirst)
{
    program.writeArchive(test::smallArchive());
    const test::FakeUnpacker unpacker("cat '" + QFile::encodeName(home.path())
                                      + "'/.proj-[!.]*/.kelstd-workshop > '"
                                      + QFile::encodeName(home.path("seen")) + "'; exit 9\n");
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(home.path("seen")), workshopMark);
    EXPECT_EQ(entriesOf(home.path()), (QStringList{"proj", "seen"}));
}

} // namespace
} // namespace KelStd
