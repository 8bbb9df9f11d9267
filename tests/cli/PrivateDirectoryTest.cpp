// What the program does with a private PROJ directory that is not its own, or not only its own.

#include "cli/DoctorRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ScopedMask.h"

#include <cli/proj/ProjAdvice.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <ostream>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::Mentions;

void setMode(const QString &path, mode_t mode)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
}

/// A home directory in which PROJ was never prepared.
class PrivateDirectory : public test::DoctorTest
{
protected:
    PrivateDirectory()
    {
        EXPECT_TRUE(QDir().mkpath(m_home));
        m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), m_home);
    }

    QString path(const char *name) const { return m_home + QLatin1Char('/') + QLatin1String(name); }
    void put(const char *name, const QByteArray &bytes) const
    {
        test::writeFile(path(name), bytes);
    }

    test::ProgramResult convert() const
    {
        return m_program.convert(QStringLiteral("rd_new.xml"), "5.25,52.5,1\n");
    }

    const QString m_home = m_program.home().path(QStringLiteral("other-home"));
    const QString m_advice =
        QStringLiteral("move it away, or set KELSTD_HOME_DIR to another directory");
};

TEST_F(PrivateDirectory, OfSomethingElseIsNotEmptied)
{
    put("proj/thesis.tex", "years of work");
    put("proj/share/pictures/cat.jpg", "cat");
    const auto converted = convert();
    EXPECT_EQ(converted.status, 3);
    EXPECT_EQ(converted.out, QString());
    EXPECT_EQ(converted.err, QStringLiteral("kelstd: PROJ is not ready: %1 holds something else "
                                            "and is not emptied; %2\n")
                                 .arg(path("proj"), m_advice));
    EXPECT_EQ(m_program
                  .run({QStringLiteral("geoid"), QStringLiteral("height"),
                        QStringLiteral("--model"), QStringLiteral("egm96_15.gtx")},
                       "5.25,52.5,1\n")
                  .status,
              3);
    for (const QStringList &options : {QStringList(), QStringList{QStringLiteral("--reinstall")}}) {
        const auto result = doctor(options);
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(markOf(result, "private PROJ directory"), QStringLiteral("problem"));
        EXPECT_EQ(adviceOn(result, "private PROJ directory"), m_advice);
    }
    EXPECT_EQ(test::readFile(path("proj/thesis.tex")), "years of work");
    EXPECT_EQ(test::readFile(path("proj/share/pictures/cat.jpg")), "cat");
    EXPECT_EQ(QDir(m_home).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList{QStringLiteral("proj")});
}

/// What is called like something of PROJ's beside years of work.
TEST_F(PrivateDirectory, OfSomethingElseIsNotEmptiedForACommonName)
{
    for (const char *name :
         {"proj/share/world", "proj/share/nad83", "proj/share/proj.ini",
          "proj/" KELSTD_PROJ_LIBRARY_NAME, "proj/proj_enviroment", "proj/share/proj.db"}) {
        SCOPED_TRACE(name);
        QDir(path("proj")).removeRecursively();
        put("proj/src/thesis.tex", "years of work");
        put(name, "the user's");
        const auto converted = convert();
        EXPECT_EQ(converted.status, 3);
        EXPECT_THAT(converted.err, Mentions("/proj holds something else and is not emptied"));
        for (const QStringList &options :
             {QStringList(), QStringList{QStringLiteral("--reinstall")}}) {
            const auto result = doctor(options);
            EXPECT_EQ(result.status, 3);
            EXPECT_EQ(adviceOn(result, "private PROJ directory"), m_advice);
        }
        EXPECT_EQ(test::readFile(path("proj/src/thesis.tex")), "years of work");
        EXPECT_EQ(test::readFile(path(name)), "the user's");
    }
}

/// In one that is prepared it hinders nothing but preparing it anew.
TEST_F(PrivateDirectory, WithANoteBesideProjWorksAndIsNotReplaced)
{
    ASSERT_EQ(convert().status, 0);
    put("proj/notes.txt", "the user's");
    EXPECT_EQ(convert().status, 0);
    EXPECT_EQ(doctor().status, 0);
    const auto result = doctor({QStringLiteral("--reinstall")});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(adviceOn(result, "private PROJ directory"), m_advice);
    EXPECT_EQ(test::readFile(path("proj/notes.txt")), "the user's");
}

struct Trace
{
    const char *name;
    const char *file; ///< below the home
};

void PrintTo(const Trace &row, std::ostream *out)
{
    *out << row.name;
}

class Traces : public PrivateDirectory, public testing::WithParamInterface<Trace>
{};

/// An earlier release unpacked into the directory itself; a killed one left some of it.
TEST_P(Traces, OfAnEarlierReleaseAreReplaced)
{
    put(GetParam().file, "half of it");
    EXPECT_EQ(convert().status, 0);
    EXPECT_EQ(test::readFile(path("proj/proj_enviroment")), test::markerBytes(3));
}

INSTANTIATE_TEST_SUITE_P(Files, Traces,
                         testing::Values(Trace{"Marker", "proj/proj_enviroment"},
                                         Trace{"Library", "proj/" KELSTD_PROJ_LIBRARY_NAME},
                                         Trace{"Database", "proj/share/proj.db"},
                                         Trace{"FirstOfTheArchive", "proj/share/ITRF2008"}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(PrivateDirectory, ThatIsEmptyIsPrepared)
{
    ASSERT_TRUE(QDir().mkpath(path("proj/share")));
    EXPECT_EQ(convert().status, 0);
}

TEST_F(PrivateDirectory, ThatIsALinkIsNotReplaced)
{
    put("elsewhere/proj_enviroment", test::markerBytes(2));
    put("elsewhere/thesis.tex", "years of work");
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("proj")));
    EXPECT_EQ(convert().status, 3);
    for (const QStringList &options : {QStringList(), QStringList{QStringLiteral("--reinstall")}}) {
        const auto result = doctor(options);
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(markOf(result, "private PROJ directory"), QStringLiteral("problem"));
        EXPECT_THAT(result.out, Mentions("/proj is a symbolic link and is not replaced"));
        EXPECT_EQ(adviceOn(result, "private PROJ directory"),
                  QStringLiteral("remove the link, then run 'kelstd doctor'"));
    }
    EXPECT_EQ(test::readFile(path("elsewhere/proj_enviroment")), test::markerBytes(2));
    EXPECT_EQ(test::readFile(path("elsewhere/thesis.tex")), "years of work");
}

// --- Whose code runs -----------------------------------------------------------------------------

class WhoseCode : public test::DoctorTest
{};

TEST_F(WhoseCode, APlaceThatAllCanWriteIsAProblem)
{
    // The library file of a prepared home is a link; this one is the home's own.
    const QString library = privateFile(KELSTD_PROJ_LIBRARY_NAME);
    const QString original = QFileInfo(library).canonicalFilePath();
    ASSERT_TRUE(QFile::remove(library) && QFile::copy(original, library));
    // So are the resources.
    const QString database = QFileInfo(privateFile("share/proj.db")).canonicalFilePath();
    ASSERT_TRUE(QFile::remove(privateFile("share")) && QDir().mkdir(privateFile("share"))
                && QFile::copy(database, privateFile("share/proj.db")));
    const struct
    {
        const char *label;
        QString path;
    } places[] = {{"home directory", m_program.home().path()},
                  {"private PROJ directory", m_program.home().path(QStringLiteral("proj"))},
                  {"PROJ library", library},
                  {"PROJ database", privateFile("share")},
                  {"PROJ database", privateFile("share/proj.db")}};
    for (const auto &place : places) {
        SCOPED_TRACE(place.label);
        setMode(place.path, 0757);
        const auto result = doctor();
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(markOf(result, place.label), QStringLiteral("problem"));
        EXPECT_THAT(result.out, Mentions(" can be changed by every user"));
        EXPECT_EQ(adviceOn(result, place.label),
                  QStringLiteral("run 'chmod o-w %1'").arg(place.path));
        EXPECT_EQ(markOf(result, "PROJ release"), QStringLiteral("-")) << "it is not loaded";
        EXPECT_EQ(m_program.convert(QStringLiteral("rd_new.xml"), "5.25,52.5,1\n").status, 3);
        setMode(place.path, 0755);
        EXPECT_EQ(doctor().status, 0);
    }
}

TEST_F(WhoseCode, AResourceDirectoryWithoutADatabaseIsJudgedAsWell)
{
    ASSERT_TRUE(QFile::remove(privateFile("share")) && QDir().mkdir(privateFile("share")));
    setMode(privateFile("share"), 0757);
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "PROJ database"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions("/share can be changed by every user"));
    EXPECT_EQ(markOf(result, "PROJ release"), QStringLiteral("-")) << "it is not loaded";
}

TEST_F(WhoseCode, APathIsQuotedForAShell)
{
    const QString place = m_program.home().path(QStringLiteral("a \"b\" $c"));
    ASSERT_TRUE(QDir().mkdir(place));
    setMode(place, 0757);
    const auto problem = cli::accessProblem(place);
    ASSERT_TRUE(problem);
    EXPECT_TRUE(problem->advice.startsWith(QStringLiteral("run 'chmod o-w -- \"/")));
    EXPECT_TRUE(problem->advice.endsWith(QStringLiteral("/a \\\"b\\\" \\$c\"'")))
        << problem->advice.toStdString();
}

TEST_F(WhoseCode, TheUnpackerIsNotThatOfTheCurrentDirectory)
{
    m_program.setVariable(QStringLiteral("PATH"), QStringLiteral(".:sub:"));
    EXPECT_EQ(markOf(doctor(), "unpacking program"), QStringLiteral("problem"));
}

TEST_F(PrivateDirectory, IsNotForAllToWriteWhateverTheMaskLeaves)
{
    m_program.beforeStart([] { umask(0); });
    EXPECT_EQ(doctor().status, 0);
    EXPECT_EQ(m_program.run({QStringLiteral("library"), QStringLiteral("list")}).status, 0);
    const QString output = path("new.xml");
    EXPECT_EQ(
        m_program
            .run({QStringLiteral("system"), QStringLiteral("default"), QStringLiteral("--utm-zone"),
                  QStringLiteral("31"), QStringLiteral("-o"), output})
            .status,
        0);
    int entries = 0;
    QDirIterator walk(m_home, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                      QDirIterator::Subdirectories);
    for (; walk.hasNext(); ++entries) {
        const QFileInfo entry(walk.next());
        EXPECT_FALSE(entry.permissions().testFlag(QFile::WriteOther)) << entry.filePath();
    }
    EXPECT_GT(entries, 100);
    EXPECT_TRUE(QFileInfo::exists(output));
}

/// The archive and the library as they are delivered.
TEST(Delivered, NothingIsForAllToWrite)
{
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"),
                {QStringLiteral("-Z"), QStringLiteral(KELSTD_TEST_BIN_DIR "/proj/proj.zip")});
    ASSERT_TRUE(unzip.waitForFinished(60000));
    int entries = 0;
    for (const QByteArray &line : unzip.readAllStandardOutput().split('\n')) {
        const QByteArray mode = line.left(10);
        if (!line.contains(" unx "))
            continue;
        ++entries;
        EXPECT_TRUE(mode == "drwxr-xr-x" || mode == "-rw-r--r--") << line.constData();
    }
    EXPECT_GT(entries, 10);
}

// --- Installing anew -----------------------------------------------------------------------------

class Reinstalling : public test::DoctorTest
{
protected:
    test::ProgramResult reinstall() const { return doctor({QStringLiteral("--reinstall")}); }

    QString model(const char *name) const
    {
        return m_program.home().path(QLatin1String("geoid_model_list/") + QLatin1String(name));
    }
};

TEST_F(Reinstalling, SaysWhichModelsItOverwritesAndWhy)
{
    test::writeFile(model("egm96_15.gtx"), "a better one");
    const QByteArray mine = test::gtxBytes(test::slopingGrid());
    test::writeFile(model("own.gtx"), mine);
    const auto result = reinstall();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.outLines().value(0),
              QStringLiteral("overwriting the geoid model %1: it differs from the delivered one of "
                             "that name, %2")
                  .arg(model("egm96_15.gtx"),
                       QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx")));
    EXPECT_EQ(result.out.count(QStringLiteral("overwriting")), 1);
    EXPECT_EQ(test::readFile(model("own.gtx")), mine);
    // Now they are the same.
    EXPECT_FALSE(reinstall().out.contains(QStringLiteral("overwriting")));
}

TEST_F(Reinstalling, OverwritesNoDirectory)
{
    ASSERT_TRUE(QDir().mkpath(model("egm96_15.gtx")));
    const auto result = reinstall();
    EXPECT_EQ(result.outLines().value(0),
              QStringLiteral("not copying the delivered geoid model %1: %2 is a directory")
                  .arg(QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx"),
                       model("egm96_15.gtx")));
    EXPECT_FALSE(result.out.contains(QStringLiteral("overwriting")));
    EXPECT_TRUE(QFileInfo(model("egm96_15.gtx")).isDir());
}

TEST_F(Reinstalling, SaysSoBeforeItDoes)
{
    // An unpacker that stops the whole program: what was said by then was said before.
    const QString tools = m_program.home().path(QStringLiteral("tools"));
    const QString script = tools + QStringLiteral("/" KELSTD_UNPACKER_NAME);
    test::writeFile(script, "#!/bin/sh\ncase $1 in -o) kill -9 $PPID;; *) exit 0;; esac\n");
    setMode(script, 0700);
    m_program.setVariable(QStringLiteral("PATH"), tools + QStringLiteral(":/usr/bin:/bin"));
    test::writeFile(model("egm96_15.gtx"), "a better one");
    const auto program =
        m_program.process({QStringLiteral("doctor"), QStringLiteral("--reinstall")});
    program->start();
    ASSERT_TRUE(program->waitForFinished(60000));
    EXPECT_EQ(program->exitStatus(), QProcess::CrashExit);
    EXPECT_THAT(program->readAllStandardOutput().toStdString(),
                testing::StartsWith("overwriting the geoid model "));
    EXPECT_EQ(test::readFile(model("egm96_15.gtx")), "a better one");
}

TEST_F(Reinstalling, KeepsWhatWorksWhenUnpackingFails)
{
    const QString tools = m_program.home().path(QStringLiteral("tools"));
    const QString script = tools + QStringLiteral("/" KELSTD_UNPACKER_NAME);
    test::writeFile(script, "#!/bin/sh\ncase $1 in -o) exit 50;; *) exit 0;; esac\n");
    setMode(script, 0700);
    m_program.setVariable(QStringLiteral("PATH"), tools);
    const auto result = reinstall();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "marker"), QStringLiteral("problem"));
    EXPECT_THAT(result.out, Mentions("PROJ was not unpacked anew; what was there is kept."));
    EXPECT_EQ(test::readFile(privateFile("proj_enviroment")), test::markerBytes(3));
    EXPECT_EQ(m_program.convert(QStringLiteral("rd_new.xml"), "5.25,52.5,1\n").status, 0);
}

} // namespace
} // namespace KelStd
