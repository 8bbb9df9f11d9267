#include "cli/DoctorRun.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace KelStd {
namespace {

using test::examined;
using test::Mentions;

const QString installAgain =
    QStringLiteral("install KelStd again, or set KELSTD_BIN_DIR to the directory that holds "
                   "proj/proj.zip");
const QString reinstall = QStringLiteral("run 'kelstd doctor --reinstall'");

class Doctor : public test::DoctorTest
{};

TEST_F(Doctor, AllIsWell)
{
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(result.err, QString());
    for (const char *label : examined)
        EXPECT_EQ(markOf(result, label), QStringLiteral("ok")) << label;
    EXPECT_EQ(result.outLines().size(), 13) << "one line each, and the summary";
    EXPECT_EQ(result.outLines().last(), QStringLiteral("All is well."));
}

TEST_F(Doctor, NamesThePlacesAndTheRelease)
{
    const auto result = doctor();
    EXPECT_THAT(result.out, Mentions(m_program.home().path().toUtf8().constData()));
    EXPECT_THAT(result.out, Mentions("(from KELSTD_HOME_DIR)"));
    EXPECT_THAT(result.out, Mentions(KELSTD_TEST_BIN_DIR " (from KELSTD_BIN_DIR)"));
    EXPECT_THAT(result.out, Mentions(KELSTD_TEST_BIN_DIR "/proj/proj.zip ("));
    EXPECT_THAT(result.out, Mentions("/proj/proj_enviroment (version 3)"));
    EXPECT_THAT(result.out, Mentions("/proj/" KELSTD_PROJ_LIBRARY_NAME " ("));
    EXPECT_THAT(result.out, Mentions("/proj/share/proj.db ("));
    EXPECT_THAT(result.out, Mentions("  9.1."));
    EXPECT_FALSE(result.out.contains(QLatin1String("prepared just now")));
}

TEST_F(Doctor, WithoutVariablesThePlacesAreTheUsersAndTheProgramsOwn)
{
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), {});
    m_program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), {});
    m_program.setVariable(QStringLiteral("HOME"), m_program.home().path());
    m_program.setVariable(QStringLiteral("XDG_DATA_HOME"),
                          m_program.home().path(QStringLiteral("data")));
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Mentions("/data/kelstd (the user's application data)"));
    EXPECT_THAT(result.out, Mentions(KELSTD_TEST_BIN_DIR " (the program's own)"));
}

TEST_F(Doctor, PreparesANewHome)
{
    const QString home = m_program.home().path(QStringLiteral("new"));
    QDir().mkpath(home);
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Mentions("/new/proj (prepared just now)"));
    for (const char *label : {"private PROJ directory", "marker", "PROJ library", "PROJ database"})
        EXPECT_EQ(markOf(result, label), QStringLiteral("made")) << label;
    for (const char *label : {"home directory", "PROJ archive", "PROJ release"})
        EXPECT_EQ(markOf(result, label), QStringLiteral("ok")) << label;
    EXPECT_THAT(result.out, Mentions("egm96_15.gtx (home directory, delivered, copied just now)"));
    const auto again = doctor();
    EXPECT_FALSE(again.out.contains(QLatin1String("just now")));
    for (const char *label : examined)
        EXPECT_EQ(markOf(again, label), QStringLiteral("ok")) << label;
}

TEST_F(Doctor, NamesTheGridsOfDatumShifts)
{
    test::ownResourceDirectory(m_program.home());
    test::writeFile(privateFile("share/site.gsb"), test::ntv2Bytes());
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Mentions("BETA2007.gsb (delivered), "));
    EXPECT_THAT(result.out, Mentions("site.gsb (the user's)"));
    test::writeFile(privateFile("share/site.gsb"), test::ntv2Bytes().chopped(100));
    const auto spoilt = doctor();
    EXPECT_EQ(spoilt.status, 3);
    EXPECT_EQ(markOf(spoilt, "datum-shift grid "), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(spoilt, "datum-shift grid "),
              QStringLiteral("put a whole one there by 'kelstd grid add --force', or remove the "
                             "file"));
}

TEST_F(Doctor, PreparesAnEnvironmentOfAnotherVersionAnew)
{
    test::writeFile(privateFile("proj_enviroment"), test::markerBytes(2));
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Mentions("/proj (prepared just now)"));
    EXPECT_EQ(test::readFile(privateFile("proj_enviroment")), test::markerBytes(3));
}

TEST_F(Doctor, AMissingHome)
{
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"),
                          m_program.home().path(QStringLiteral("nowhere")));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "home directory"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "home directory"),
              QStringLiteral("create it, or set KELSTD_HOME_DIR to another one"));
    EXPECT_EQ(markOf(result, "private PROJ directory"), QStringLiteral("-"));
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
}

TEST_F(Doctor, AHomeInWhichNothingCanBeCreated)
{
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/proc"));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "private PROJ directory"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "private PROJ directory"), QStringLiteral("make /proc writable"));
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
}

TEST_F(Doctor, AMissingProgramDirectory)
{
    m_program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), QStringLiteral("/no/such/directory"));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "program directory"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "program directory"), installAgain);
    EXPECT_EQ(markOf(result, "test conversion"), QStringLiteral("ok"))
        << "what is unpacked still works";
}

TEST_F(Doctor, AMissingArchive)
{
    ownProgramDirectory();
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "PROJ archive"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions("/program/proj/proj.zip is missing"));
    EXPECT_EQ(adviceOn(result, "PROJ archive"), installAgain);
}

TEST_F(Doctor, AMissingArchiveInANewHomeIsTheOnlyProblem)
{
    ownProgramDirectory();
    const QString home = m_program.home().path(QStringLiteral("new"));
    QDir().mkpath(home);
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
    EXPECT_EQ(markOf(result, "test conversion"), QStringLiteral("-"));
}

TEST_F(Doctor, AnArchiveThatIsNone)
{
    const QString program = ownProgramDirectory();
    test::writeFile(program + QStringLiteral("/proj/proj.zip"), "this is no archive");
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("proj.zip is damaged"));
    EXPECT_EQ(adviceOn(result, "PROJ archive"), installAgain);
    EXPECT_EQ(result.err, QString());
}

TEST_F(Doctor, AnArchiveThatWasCutShort)
{
    const QString program = ownProgramDirectory();
    const QByteArray whole = test::readFile(QStringLiteral(KELSTD_TEST_BIN_DIR "/proj/proj.zip"));
    test::writeFile(program + QStringLiteral("/proj/proj.zip"), whole.left(whole.size() / 2));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("proj.zip is damaged"));
}

TEST_F(Doctor, AnArchiveOfSomethingElse)
{
    const QString program = ownProgramDirectory();
    test::writeFile(program + QStringLiteral("/proj/readme.txt"), "hello");
    QProcess pack;
    pack.setWorkingDirectory(program);
    pack.start(QStringLiteral(KELSTD_TEST_CMAKE),
               {QStringLiteral("-E"), QStringLiteral("tar"), QStringLiteral("cf"),
                QStringLiteral("proj/proj.zip"), QStringLiteral("--format=zip"),
                QStringLiteral("proj/readme.txt")});
    ASSERT_TRUE(pack.waitForFinished(60000));
    ASSERT_EQ(pack.exitCode(), 0);
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("proj.zip holds no PROJ"));
    EXPECT_EQ(adviceOn(result, "PROJ archive"), installAgain);
}

TEST_F(Doctor, AMissingUnpacker)
{
    m_program.setVariable(QStringLiteral("PATH"), m_program.home().path());
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "unpacking program"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions(KELSTD_UNPACKER_NAME " is not on the search path"));
    EXPECT_EQ(adviceOn(result, "unpacking program"),
              QStringLiteral("install it in a directory that only you or root can write (on "
                             "Debian: apt-get install unzip)"));
    EXPECT_EQ(markOf(result, "PROJ archive"), QStringLiteral("-"));
}

/// An unpacker that finds the archive in order and then cannot unpack it: a full disk, say.
TEST_F(Doctor, AnUnpackingThatFails)
{
    const QString tools = m_program.home().path(QStringLiteral("tools"));
    const QString script = tools + QStringLiteral("/" KELSTD_UNPACKER_NAME);
    test::writeFile(script, "#!/bin/sh\ncase $1 in -o) exit 50;; *) exit 0;; esac\n");
    QFile(script).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_program.setVariable(QStringLiteral("PATH"), tools);
    QFile::remove(privateFile("proj_enviroment"));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "marker"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "marker"),
              QStringLiteral("make %1 writable, see that the disk has room, then %2")
                  .arg(m_program.home().path(), reinstall));
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
}

TEST_F(Doctor, AFileInPlaceOfThePrivateDirectory)
{
    QDir(m_program.home().path(QStringLiteral("proj"))).removeRecursively();
    m_program.file(QStringLiteral("proj"), "in the way");
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "private PROJ directory"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "private PROJ directory"), QStringLiteral("remove or rename it"));
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
}

TEST_F(Doctor, AMarkerThatCannotBeRead)
{
    QFile::remove(privateFile("proj_enviroment"));
    QDir().mkpath(privateFile("proj_enviroment")); // opening a directory fails for root, too
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "marker"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "marker"), QStringLiteral("remove it, then ") + reinstall);
}

TEST_F(Doctor, AMissingLibraryFile)
{
    QFile::remove(privateFile(KELSTD_PROJ_LIBRARY_NAME));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "marker"), QStringLiteral("ok"));
    EXPECT_EQ(markOf(result, "PROJ library"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "PROJ library"), reinstall);
    EXPECT_EQ(result.outLines().last(), QStringLiteral("Problems: 1"));
}

TEST_F(Doctor, ALibraryFileThatCannotBeLoaded)
{
    QFile::remove(privateFile(KELSTD_PROJ_LIBRARY_NAME));
    test::writeFile(privateFile(KELSTD_PROJ_LIBRARY_NAME), "no library");
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "PROJ release"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions("Cannot load library"));
    EXPECT_THAT(adviceOn(result, "PROJ release"), Mentions(reinstall.toUtf8().constData()));
}

TEST_F(Doctor, ALibraryFileWithoutProj)
{
    QFile::remove(privateFile(KELSTD_PROJ_LIBRARY_NAME));
    ASSERT_TRUE(QFile::copy(QStringLiteral(KELSTD_TEST_OTHER_LIBRARY),
                            privateFile(KELSTD_PROJ_LIBRARY_NAME)));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "PROJ release"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions("the library has no proj_info"));
    EXPECT_THAT(adviceOn(result, "PROJ release"), Mentions(reinstall.toUtf8().constData()));
}

TEST_F(Doctor, AMissingDatabase)
{
    QFile::remove(privateFile("share")); // a link in a prepared home
    QDir().mkpath(privateFile("share"));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "PROJ database"), QStringLiteral("problem"));
    EXPECT_EQ(adviceOn(result, "PROJ database"), reinstall);
}

} // namespace
} // namespace KelStd
