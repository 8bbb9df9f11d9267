// Whose code runs: the PROJ library's, the unpacker's, and who may write what they leave.

#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ScopedMask.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::ProgramDirectory;
using test::writeFile;

const QString libraryName = QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);

void setMode(const QString &path, mode_t mode)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// The start fails, and the log says where it would have taken another user's code from.
void expectRefusal(const QString &place, const char *reason)
{
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(test::projIsMissing());
    ASSERT_EQ(log.entries().size(), 1) << place;
    EXPECT_EQ(log.entries()[0].module, "app_log");
    EXPECT_EQ(log.entries()[0].type, LogType_Error);
    EXPECT_EQ(log.entries()[0].text,
              "The proj library is not loaded: " + place + QString::fromLatin1(reason));
}

constexpr const char *writableForAll =
    " can be changed by every user; take that away with 'chmod o-w'";
constexpr const char *ofAnotherUser =
    " belongs to another user; change its owner, or use another home directory";

// --- The library ---------------------------------------------------------------------------------

struct Place
{
    const char *name;
    const char *path; ///< below the home
};

void PrintTo(const Place &row, std::ostream *out)
{
    *out << row.name;
}

class Places : public testing::TestWithParam<Place>
{
protected:
    Places() { writeFile(home.path("proj/share/proj.db"), "a database"); }
    ~Places() override { ProjLib::___unloadEnviroment(); }

    QString place() const
    {
        return QDir::cleanPath(home.path(QString::fromLatin1(GetParam().path)));
    }

    FakeProjHome home;
};

TEST_P(Places, ThatAllCanWriteAreNotTrusted)
{
    for (const mode_t mode : {0777U, 0757U, 01777U, 0702U}) {
        SCOPED_TRACE(mode);
        setMode(place(), mode);
        expectRefusal(place(), writableForAll);
    }
    setMode(place(), 0755);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

TEST_P(Places, OfTheUsersGroupAreTrusted)
{
    setMode(place(), 0775);
    const test::LogCapture log;
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
}

/// Only root can give a file away: for others what stays to be shown is that root is trusted.
TEST_P(Places, OfAnotherUserAreNotTrusted)
{
    const bool isRoot = geteuid() == 0;
    constexpr uid_t another = 12345;
    if (isRoot) {
        ASSERT_EQ(chown(QFile::encodeName(place()).constData(), another, another), 0);
        expectRefusal(place(), ofAnotherUser);
        ASSERT_EQ(chown(QFile::encodeName(place()).constData(), 0, 0), 0);
    }
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

INSTANTIATE_TEST_SUITE_P(Paths, Places,
                         testing::Values(Place{"Home", "."}, Place{"PrivateDirectory", "proj"},
                                         Place{"Resources", "proj/share"},
                                         Place{"Database", "proj/share/proj.db"},
                                         Place{"LibraryFile", "proj/" KELSTD_PROJ_LIBRARY_NAME}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(LinkedLibrary, IsTrustedByWhatItLeadsTo)
{
    const FakeProjHome home;
    const QString elsewhere = home.path("elsewhere");
    const QString target = elsewhere + "/real.so";
    ASSERT_TRUE(QDir().mkdir(elsewhere));
    ASSERT_TRUE(QFile::rename(home.libraryFile(), target));
    ASSERT_TRUE(QFile::link(target, home.libraryFile()));
    setMode(elsewhere, 0777);
    expectRefusal(elsewhere, writableForAll);
    setMode(elsewhere, 0755);
    setMode(target, 0646);
    expectRefusal(target, writableForAll);
    setMode(target, 0644);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    ProjLib::___unloadEnviroment();
}

TEST(LinkedDatabase, IsTrustedByWhatItLeadsTo)
{
    const FakeProjHome home;
    const QString target = home.path("elsewhere/real.db");
    writeFile(target, "a database");
    ASSERT_TRUE(QFile::link(target, home.path("proj/share/proj.db")));
    setMode(home.path("elsewhere"), 0777);
    expectRefusal(home.path("elsewhere"), writableForAll);
    setMode(home.path("elsewhere"), 0755);
    setMode(target, 0646);
    expectRefusal(target, writableForAll);
    setMode(target, 0644);
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    ProjLib::___unloadEnviroment();
}

TEST(UntrustedHome, IsNotPrepared)
{
    const test::TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    setMode(home.path(), 0777);
    expectRefusal(home.path(), writableForAll);
    EXPECT_TRUE(QDir(home.path()).isEmpty());
}

// --- The unpacker --------------------------------------------------------------------------------

class Unpackers : public testing::Test
{
protected:
    Unpackers()
    {
        program.writeArchive(test::smallArchive());
        // Where the process happens to be there is a program of the unpacker's name.
        for (const char *path : {"here/unzip", "here/sub/unzip"}) {
            const QString file = home.path(QString::fromLatin1(path));
            writeFile(file, "#!/bin/sh\ntouch '" + QFile::encodeName(home.path("was-run")) + "'\n");
            QFile::setPermissions(file, QFile::ReadOwner | QFile::ExeOwner);
        }
        EXPECT_TRUE(QDir::setCurrent(home.path("here")));
    }
    ~Unpackers() override
    {
        ProjLib::___unloadEnviroment();
        EXPECT_TRUE(QDir::setCurrent(m_before));
        EXPECT_FALSE(QFile::exists(home.path("was-run")));
    }

    test::TemporaryHome home;
    ProgramDirectory program;

private:
    QString m_before = QDir::currentPath();
};

TEST_F(Unpackers, AreNotTakenFromTheCurrentDirectory)
{
    for (const char *before : {".:", ":", "::", "sub:", "./sub:", "../here:"}) {
        SCOPED_TRACE(before);
        QDir(home.path("proj")).removeRecursively();
        const test::ScopedSearchPath path(before + qgetenv("PATH"));
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    }
}

TEST_F(Unpackers, WhereAllEntriesAreRelativeThereIsNone)
{
    for (const char *entries : {".", "", "sub", ".:sub:", ":"}) {
        SCOPED_TRACE(entries);
        const test::ScopedSearchPath path(entries);
        EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    }
}

TEST_F(Unpackers, ThatAnotherUserMayChangeAreNotTaken)
{
    const QString directory = home.path("here");
    const QString file = directory + "/unzip";
    const QByteArray entry = QFile::encodeName(directory);
    const test::ScopedSearchPath path(entry + ':' + qgetenv("PATH"));
    for (const QString &place : {directory, file}) {
        SCOPED_TRACE(place.toStdString());
        QDir(home.path("proj")).removeRecursively();
        const mode_t before = modeOf(place);
        setMode(place, 0757);
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
        setMode(place, before);
        if (geteuid() != 0)
            continue; // only root can give a file away
        QDir(home.path("proj")).removeRecursively();
        constexpr uid_t another = 12345;
        ASSERT_EQ(chown(QFile::encodeName(place).constData(), another, another), 0);
        EXPECT_TRUE(ProjLib::___InitializeEnviroment());
        ASSERT_EQ(chown(QFile::encodeName(place).constData(), 0, 0), 0);
    }
}

TEST_F(Unpackers, AreNotTakenFromADirectoryOfProcesses)
{
    const test::ScopedSearchPath path("/proc/self/cwd:/proc/self/cwd/sub:" + qgetenv("PATH"));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

TEST_F(Unpackers, AreGivenNoOptionsByTheEnvironment)
{
    // As the real one would: it takes them for options.
    const test::FakeUnpacker unpacker("env | grep -E '^(UNZIP|UNZIPOPT|ZIPINFO|ZIPINFOOPT)=' > '"
                                      + QFile::encodeName(home.path("options")) + "'; exit 9\n");
    for (const char *name : {"UNZIP", "UNZIPOPT", "ZIPINFO", "ZIPINFOOPT"})
        qputenv(name, "-x *");
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    for (const char *name : {"UNZIP", "UNZIPOPT", "ZIPINFO", "ZIPINFOOPT"})
        qunsetenv(name);
    EXPECT_EQ(unpacker.runs().size(), 1);
    EXPECT_EQ(test::readFile(home.path("options")), "");
}

// --- What is created -----------------------------------------------------------------------------

class Created : public testing::TestWithParam<mode_t>
{
protected:
    ~Created() override { ProjLib::___unloadEnviroment(); }
};

TEST_P(Created, HasAtMostWhatTheMaskLeavesAndNothingForOthersToWrite)
{
    const test::TemporaryHome home;
    const ProgramDirectory program;
    program.writeGeoidModel("model.gtx", "grid");
    program.writeGeoidModel("sub/model.gtx", "grid");
    program.writeArchive(
        test::storedZip({{"proj/", "", 07777},
                         {"proj/" KELSTD_PROJ_LIBRARY_NAME, test::fakeProjBytes(), 06777},
                         {"proj/share/", "", 0777},
                         {"proj/share/proj.ini", "[general]\n", 0666},
                         {"proj/share/hidden", "nobody's", 0001}}));
    {
        const test::ScopedMask mask(GetParam());
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    }
    int entries = 0;
    QDirIterator walk(home.path(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                      QDirIterator::Subdirectories);
    for (; walk.hasNext(); ++entries) {
        const QString path = walk.next();
        EXPECT_EQ(modeOf(path) & (GetParam() | S_IWOTH | S_ISUID | S_ISGID | S_ISVTX), 0U)
            << path << ' ' << modeOf(path);
        EXPECT_EQ(modeOf(path) & 0600U, 0600U) << path;
    }
    EXPECT_EQ(entries, 10);
    // What the archive does not give is not added.
    EXPECT_EQ(modeOf(home.path("proj/share/proj.ini")) & 0111U, 0U);
}

INSTANTIATE_TEST_SUITE_P(Masks, Created, testing::Values(0, 002, 022, 027, 077),
                         [](const auto &row) { return "Mask" + std::to_string(row.index); });

} // namespace
} // namespace KelStd
