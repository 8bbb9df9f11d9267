// What `kelstd library` finds where, and how it shows it.

#include "cli/LibraryRun.h"
#include "cli/Terminal.h"

#include <KelStd/files/FileLock.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QThread>

#include <random>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;

class LibraryList : public LibraryRun
{
protected:
    /// The Dutch grid under another name, with an origin.
    static QByteArray systemWithOrigin(const char *name, const char *code, const char *area)
    {
        return test::editedSystem(
            text("rd_new.xml"),
            {{text("Amersfoort / RD New"), text(name)},
             {text("</Coord>"),
              text("<Origin ver=\"1\" authority=\"EPSG\" code=\"%1\"><Area west=\"176.5\" "
                   "south=\"-20\" east=\"-178\" north=\"-12.25\" name=\"%2\"/>"
                   "<Country name=\"Fiji\"/></Origin></Coord>")
                  .arg(text(code), text(area))}});
    }
};

TEST_F(LibraryList, ShowsEachKindInAlignedColumns)
{
    put("custom/Harbour.xml", system("Harbour"));
    put("standard/Long.xml", system("A long name"));
    put("ellipsoids/E.xml", ellipsoids(ellipsoid("E", "6378388")));
    put("projections/P.xml", projections("P"));
    const auto result = library({text("list")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.out, text("custom      Harbour  sterea, Bessel 1841\n"
                               "standard    A long name  sterea, Bessel 1841\n"
                               "ellipsoid   E  6378388 m, 1/298.25\n"
                               "projection  P  utm\n"));
}

TEST_F(LibraryList, TakesTheDirectoryBeforeOrBehindTheSubcommand)
{
    put("custom/Harbour.xml", system("Harbour"));
    for (const QStringList &words :
         {QStringList{text("library"), text("--dir=") + directory(), text("list"), text("--names")},
          QStringList{text("library"), text("list"), text("--names"), text("--dir"), directory()}})
        EXPECT_EQ(m_program.run(words).out, text("Harbour\n"));
}

TEST_F(LibraryList, NamesOfOneKindAreForScripts)
{
    put("custom/a.xml", system("A \xC3\xA4 %1"));
    put("standard/b.xml", system("B"));
    put("ellipsoids/e.xml", ellipsoids(ellipsoid("E") + ellipsoid("D")));
    put("projections/p.xml", projections("P"));
    EXPECT_EQ(names("systems"), (QStringList{text("A \xC3\xA4 %1"), text("B")}));
    EXPECT_EQ(names("custom"), QStringList{text("A \xC3\xA4 %1")});
    EXPECT_EQ(names("standard"), QStringList{text("B")});
    EXPECT_EQ(names("ellipsoid"), (QStringList{text("D"), text("E")}));
    EXPECT_EQ(names("projections"), QStringList{text("P")});
    const auto wrong = library({text("list"), text("--kind"), text("grids")});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.err, Mentions("--kind 'grids' is no kind"));
}

TEST_F(LibraryList, ShowsCodeAndArea)
{
    put("custom/a.xml", systemWithOrigin("Harbour", "3460", "Fiji - onshore."));
    put("custom/b.xml", systemWithOrigin("B", "28992",
                                         "An area with a description that goes on and on over "
                                         "many countries and islands"));
    put("custom/c.xml", system("Bare"));
    const auto result = library({text("list")});
    EXPECT_EQ(result.out,
              text("custom      B        EPSG:28992  sterea, Bessel 1841  An area with a "
                   "description that goes on and on over many...\n"
                   "custom      Bare                 sterea, Bessel 1841\n"
                   "custom      Harbour  EPSG:3460   sterea, Bessel 1841  Fiji - onshore.\n"));
}

TEST_F(LibraryList, FiltersByWords)
{
    put("custom/a.xml", systemWithOrigin("Harbour", "3460", "Viti Levu"));
    put("custom/b.xml", system("Bare"));
    put("ellipsoids/e.xml", ellipsoids(ellipsoid("Harbour 1900")));
    EXPECT_EQ(library({text("list"), text("--names"), text("harbour")}).outLines(),
              (QStringList{text("Harbour"), text("Harbour 1900")}));
    EXPECT_EQ(
        library({text("list"), text("--names"), text("levu"), text("fiji"), text("EPSG:3460")})
            .outLines(),
        QStringList{text("Harbour")});
    const auto none = library({text("list"), text("nowhere")});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out, QString());
}

TEST_F(LibraryList, IsJsonForPrograms)
{
    put("custom/a.xml", systemWithOrigin("Ha&quot;rbour", "3460", "Viti Levu"));
    put("custom/b.xml", system("Bare"));
    const auto result = library({text("list"), text("--json")});
    const QList<QByteArray> lines = result.out.toUtf8().split('\n');
    ASSERT_EQ(lines.size(), 3);
    const QJsonObject bare = QJsonDocument::fromJson(lines[0]).object();
    EXPECT_EQ(bare[text("name")].toString(), text("Bare"));
    EXPECT_TRUE(bare.contains(text("code")) && bare[text("code")].isNull());
    EXPECT_TRUE(bare.contains(text("area")) && bare[text("area")].isNull());
    EXPECT_TRUE(bare.contains(text("area_name")) && bare[text("area_name")].isNull());
    const QJsonObject full = QJsonDocument::fromJson(lines[1]).object();
    EXPECT_EQ(full[text("kind")].toString(), text("custom"));
    EXPECT_EQ(full[text("name")].toString(), text("Ha\"rbour"));
    EXPECT_EQ(full[text("code")].toString(), text("EPSG:3460"));
    EXPECT_EQ(full[text("area")].toArray(), (QJsonArray{176.5, -20, -178, -12.25}));
    EXPECT_EQ(full[text("area_name")].toString(), text("Viti Levu"));
    EXPECT_EQ(full[text("countries")].toArray(), (QJsonArray{text("Fiji")}));
    EXPECT_EQ(library({text("list"), text("--json"), text("--names")}).status, 2);
}

TEST_F(LibraryList, WritesNothingIntoALibraryThatItOnlyReads)
{
    put("custom/a.xml", system("A"));
    library({text("list")});
    library({text("show"), text("A")});
    library({text("check")});
    EXPECT_EQ(QDir(directory()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{text("custom")});
}

TEST_F(LibraryList, ADirectoryThatIsNoLibraryIsAnError)
{
    EXPECT_EQ(library({text("list")}).status, 3);
    EXPECT_THAT(library({text("list")}).err, Mentions("there is no directory "));
    put("elsewhere.xml", "x");
    EXPECT_EQ(library({text("list")}).status, 3);
    EXPECT_THAT(library({text("list")}).err, Mentions("holds no library"));
}

TEST_F(LibraryList, ShowReadsAsASurveyorReads)
{
    put("custom/Harbour.xml", system("Harbour"));
    put("ellipsoids/E.xml", ellipsoids(ellipsoid("E", "6378388")));
    put("projections/P.xml", projections("P"));
    const auto shown = library({text("show"), text("Harbour")});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.out,
              m_program.run({text("system"), text("show"), path("custom/Harbour.xml")}).out);
    EXPECT_THAT(shown.out, Mentions("Coordinate system         Harbour\n"));
    EXPECT_THAT(library({text("show"), text("E")}).out,
                Mentions("  semi-major axis         6378388 m\n"));
    EXPECT_THAT(library({text("show"), text("P")}).out,
                Mentions("  PROJ name               utm\n"));
    const auto none = library({text("show"), text("harbour"), text("--kind"), text("systems")});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err,
              text("kelstd: the library has no system \"harbour\"; did you mean "
                   "\"Harbour\"? 'kelstd library list' with the same --dir lists them\n"));
}

TEST_F(LibraryList, ShowSaysWhichOfSeveralItShows)
{
    put("custom/X.xml", system("X"));
    put("standard/X.xml", system("X"));
    put("ellipsoids/X.xml", ellipsoids(ellipsoid("X")));
    const auto result = library({text("show"), text("X")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errLines().size(), 2);
    EXPECT_THAT(result.err, Mentions("shown is the custom system; the library has a standard"));
    EXPECT_THAT(result.err, Mentions("shown is the custom system; the library has an ellipsoid"));
    EXPECT_EQ(library({text("show"), text("X"), text("--kind"), text("ellipsoid")}).outLines()[0],
              text("Ellipsoid                 X"));
}

TEST_F(LibraryList, ShowTellsOfOtherFilesWithTheName)
{
    put("ellipsoids/one.xml", ellipsoids(ellipsoid("E", "6378001") + ellipsoid("F")));
    put("ellipsoids/two.xml", ellipsoids(ellipsoid("E", "6378002")));
    const auto result = library({text("show"), text("E")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              text("kelstd: note: shown is one of several: 2 files of ") + path("ellipsoids")
                  + text(" hold it: \"one.xml\", \"two.xml\"; delete all but one first\n"));
    EXPECT_EQ(library({text("show"), text("F")}).err, QString());
}

// A terminal would obey them, and a script would take one name for two.
TEST_F(LibraryList, ControlCharactersOfNamesAreShownAsTexts)
{
    put("custom/a.xml", system("A\x1B[31m&#10;B\xC2\x9B\x7F\xC3\xA9"));
    put("ellipsoids/e.xml", ellipsoids(ellipsoid("E&#10;F") + ellipsoid("G")));
    const QString name = text("A\\x1B[31m\\x0AB\\x9B\\x7F\xC3\xA9");
    EXPECT_EQ(library({text("list"), text("--names"), text("--kind"), text("custom")}).out,
              name + QLatin1Char('\n'));
    EXPECT_EQ(library({text("list")}).out, text("custom      ") + name
                                               + text("  sterea, Bessel 1841\n"
                                                      "ellipsoid   E\\x0AF  6378137 m, 1/298.25\n"
                                                      "ellipsoid   G       6378137 m, 1/298.25\n"));
    const QString given = QString::fromUtf8("A\x1B[31m\nB\xC2\x9B\x7F\xC3\xA9");
    EXPECT_EQ(library({text("show"), given}).outLines().value(0),
              text("Coordinate system         ") + name);
    for (const auto &result : {library({text("remove"), given}), library({text("check")}),
                               library({text("show"), text("31")})}) {
        EXPECT_THAT(result.out + result.err, Mentions(name.toUtf8().constData()));
        EXPECT_FALSE((result.out + result.err).contains(QChar(0x1B)));
    }
}

class HomeLibrary : public LibraryRun
{
protected:
    QString homeLibrary() const { return m_program.home().path(text("library")); }
};

TEST_F(HomeLibrary, IsLaidOutFromTheDeliveredOneAtItsFirstUse)
{
    const auto first = m_program.run({text("library"), text("list"), text("--names")});
    EXPECT_EQ(first.status, 0);
    ASSERT_EQ(first.errLines().size(), 1);
    EXPECT_THAT(first.err, Mentions("kelstd: note: the library "));
    EXPECT_THAT(first.err, Mentions(" is new, laid out from "));
    EXPECT_TRUE(first.outLines().contains(text("WGS 84 / UTM zone 31N")));
    EXPECT_TRUE(first.outLines().contains(text("Airy 1830")));
    const auto second = m_program.run({text("library"), text("list"), text("--names")});
    EXPECT_EQ(second.err, QString());
    EXPECT_EQ(second.out, first.out);
    // Nothing of the making is left.
    EXPECT_TRUE(QDir(m_program.home().path())
                    .entryList({text(".library*")}, QDir::AllEntries | QDir::Hidden)
                    .isEmpty());
}

TEST_F(HomeLibrary, FitsATerminalOfEightyColumns)
{
    test::Terminal terminal(80);
    const QStringList lines = terminal.run(m_program, {text("library"), text("list")}).outLines();
    ASSERT_GT(lines.size(), 140);
    for (const QString &line : lines)
        EXPECT_LE(line.size(), 80) << line;
    const QString japan =
        text("standard    JGD2011 / Japan Plane Rectangular CS IX  EPSG:6677   tmerc, GRS 1...");
    EXPECT_TRUE(lines.contains(japan)) << lines.filter(text("JGD2011")).join(QLatin1Char('|'));
}

TEST_F(HomeLibrary, TheDeliveredOneHasNothingToFind)
{
    const auto result = m_program.run({text("library"), text("check")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.outLines().last(), text("Everything is loaded."));
    EXPECT_THAT(result.out, Mentions("standard     140 of 140 documents read\n"));
}

TEST_F(HomeLibrary, WhatASurveyorHasIsNeverLaidOver)
{
    test::writeFile(homeLibrary() + text("/custom/Harbour.xml"), system("Harbour"));
    const auto result = m_program.run({text("library"), text("list"), text("--names")});
    EXPECT_EQ(result.out, text("Harbour\n"));
    EXPECT_EQ(result.err, QString());
}

TEST_F(HomeLibrary, OfAnEmptyDirectoryIsLaidOutAndOfAStrangeOneNot)
{
    QDir().mkpath(homeLibrary());
    EXPECT_THAT(m_program.run({text("library"), text("list")}).err, Mentions("is new"));
    test::ProgramRun other;
    test::writeFile(other.home().path(text("library/novel.txt")), "Call me Ishmael.");
    const auto result = other.run({text("library"), text("list")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("holds no library"));
}

// Each of them finds a whole library, whichever made it.
TEST_F(HomeLibrary, IsLaidOutOnceByProcessesThatStartTogether)
{
    std::vector<std::unique_ptr<QProcess>> programs;
    for (int i = 0; i < 8; ++i) {
        programs.push_back(m_program.process({text("library"), text("list"), text("--names")}));
        programs.back()->start();
    }
    QByteArray all;
    for (const auto &program : programs) {
        ASSERT_TRUE(program->waitForFinished(60000));
        EXPECT_EQ(program->exitCode(), 0) << program->readAllStandardError().toStdString();
        const QByteArray out = program->readAllStandardOutput();
        if (all.isEmpty())
            all = out;
        EXPECT_EQ(out, all);
    }
    EXPECT_EQ(all.count('\n'), 140 + 18 + 19);
    EXPECT_TRUE(QDir(m_program.home().path())
                    .entryList({text(".library*")}, QDir::AllEntries | QDir::Hidden)
                    .isEmpty());
}

TEST_F(HomeLibrary, IsWholeOrMissingWhereverItsMakingIsKilled)
{
    std::mt19937 random(20240229);
    std::uniform_int_distribution<unsigned long> microseconds(0, 40000);
    int killed = 0;
    for (int round = 0; round < 40; ++round) {
        ASSERT_TRUE(QDir(homeLibrary()).removeRecursively());
        const auto program = m_program.process({text("library"), text("list")});
        program->start();
        ASSERT_TRUE(program->waitForStarted());
        QThread::usleep(microseconds(random));
        program->kill();
        ASSERT_TRUE(program->waitForFinished(60000));
        killed += program->exitStatus() == QProcess::CrashExit ? 1 : 0;
        if (!QFileInfo::exists(homeLibrary()))
            continue;
        int documents = 0;
        QDirIterator files(homeLibrary(), {text("*.xml")}, QDir::Files,
                           QDirIterator::Subdirectories);
        for (; files.hasNext(); files.next())
            ++documents;
        EXPECT_EQ(documents, 1 + 140 + 18 + 19);
    }
    EXPECT_GT(killed, 0);
    EXPECT_EQ(m_program.run({text("library"), text("list"), text("--names")}).outLines().size(),
              140 + 18 + 19);
}

/// What a killed program has left goes with the next start; what only looks so stays.
TEST_F(HomeLibrary, LeftoversOfItsMakingAreRemoved)
{
    const QString home = m_program.home().path();
    const auto left = [&home] {
        return QDir(home).entryList(
            {text(".library*")},
            QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
    };
    for (const bool isLaidOut : {false, true}) {
        SCOPED_TRACE(isLaidOut);
        test::writeFile(home + text("/.library-abcDEF/.kelstd-workshop"),
                        "KelStd prepares something here, and removes this directory.\n");
        test::writeFile(home + text("/.library-abcDEF/library/custom/half.xml"), "<Coord");
        ASSERT_TRUE(QDir(home).mkpath(text(".library-empty1")));
        test::writeFile(home + text("/.library-backup/notes"), "the user's");
        test::writeFile(home + text("/.library-linked/notes"), "the user's");
        test::writeFile(home + text("/.library.lock"), "");
        EXPECT_EQ(m_program.run({text("library"), text("list")}).status, 0);
        EXPECT_EQ(left(), (QStringList{text(".library-backup"), text(".library-linked")}));
    }
}

/// "backup" has six letters, as what a temporary directory's name ends in.
TEST_F(HomeLibrary, ABackupOfTheUsersStays)
{
    const QString home = m_program.home().path();
    const QString file = home + text("/.library-backup/library/custom/mine.xml");
    test::writeFile(file, "years of work");
    for (const bool isLaidOut : {false, true}) {
        SCOPED_TRACE(isLaidOut);
        test::writeFile(home + text("/.library.lock"), "");
        EXPECT_EQ(m_program.run({text("library"), text("list")}).status, 0);
        EXPECT_EQ(test::readFile(file), "years of work");
    }
}

TEST_F(HomeLibrary, WhatALivingProgramIsMakingIsKept)
{
    ASSERT_EQ(m_program.run({text("library"), text("list")}).status, 0);
    const QString home = m_program.home().path();
    FileLock maker(home + text("/.library.lock"));
    ASSERT_EQ(maker.take(0), FileLock::Outcome::Taken);
    const QString file = home + text("/.library-abcDEF/library/custom/half.xml");
    test::writeFile(file, "<Coord");
    EXPECT_EQ(m_program.run({text("library"), text("list")}).status, 0);
    EXPECT_TRUE(QFileInfo::exists(file));
}

TEST_F(HomeLibrary, WithoutADeliveredOneIsAnError)
{
    m_program.setVariable(text("KELSTD_BIN_DIR"), m_program.home().path());
    const auto result = m_program.run({text("library"), text("list")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("there is no library in "));
}

} // namespace
} // namespace KelStd
