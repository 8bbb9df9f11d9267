// Delivered entries of a library exported, copied, removed and brought back by the program.

#include "cli/LibraryRun.h"
#include "cli/Terminal.h"

#include <QtCore/QDir>

namespace KelStd {
namespace {

using test::csvRows;
using test::LibraryRun;
using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::readFile;

class LibraryDelivered : public LibraryRun
{
protected:
    static QString rdNew() { return text("Amersfoort / RD New"); }
    static QString rdFile() { return text("standard/Amersfoort_RD_New.xml"); }

    /// A command on the library of the home directory.
    ProgramResult home(const QStringList &words) const
    {
        return m_program.run(QStringList(text("library")) + words);
    }

    QString inHome(const QString &file) const
    {
        return m_program.home().path(text("library/") + file);
    }

    QByteArray delivered(const QString &file) const
    {
        return readFile(QDir(text(KELSTD_TEST_BIN_DIR)).filePath(text("library/") + file));
    }
};

TEST_F(LibraryDelivered, ASystemIsExportedSharedAndUsedUnderItsName)
{
    const QString file = m_program.home().path(text("rd.xml"));
    const auto exported = m_program.run(
        {text("system"), text("export"), rdNew(), text("--as"), text("xml"), text("-o"), file});
    EXPECT_EQ(exported.status, 0) << exported.err;
    EXPECT_EQ(library({text("add"), text("--create"), file}).status, 0);
    EXPECT_EQ(names("custom"), QStringList{rdNew()});
    EXPECT_TRUE(has("custom/Amersfoort %2F RD New.xml"));
    EXPECT_EQ(library({text("show"), rdNew()}).status, 0);
    // The projection's false origin is that of the tower in Amersfoort; its coordinates on Bessel
    // 1841 are 5.38763888 and 52.15616055 degrees.
    const auto result =
        m_program.run({text("convert"), text("--dir"), directory(), text("--system"), rdNew(),
                       text("--from"), text("local-llh")},
                      "5.387638888889,52.156160555556,0\n");
    const auto row = csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(row, text("local_easting_m")), 155000.0, 0.001);
    EXPECT_NEAR(numberIn(row, text("local_northing_m")), 463000.0, 0.001);
    // What has no file goes to standard output.
    const auto printed =
        m_program.run({text("system"), text("export"), rdNew(), text("--as"), text("xml")});
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(library({text("add"), text("--as"), text("Again"),
                       given("again.xml", printed.out.toUtf8())})
                  .status,
              0);
}

TEST_F(LibraryDelivered, AnEntryIsCopiedByItsName)
{
    EXPECT_EQ(library({text("add"), text("--create"), rdNew()}).status, 0);
    EXPECT_EQ(library({text("add"), text("--kind"), text("ellipsoid"), text("WGS 84")}).status, 0);
    EXPECT_EQ(names("systems"), QStringList{rdNew()});
    EXPECT_EQ(names("ellipsoids"), QStringList{text("WGS 84")});
    EXPECT_EQ(home({text("add"), rdNew(), text("--as"), text("Site / 1")}).status, 0);
    EXPECT_EQ(home({text("show"), text("Site / 1")}).status, 0);
    const auto taken = home({text("add"), rdNew()});
    EXPECT_EQ(taken.status, 1);
    EXPECT_THAT(taken.err, Mentions("is taken by the standard system"));
    EXPECT_EQ(home({text("add"), text("No such")}).status, 3);
}

TEST_F(LibraryDelivered, IsRemovedByForceAndComesBackAsItWas)
{
    const struct
    {
        QString name;
        QString file;
    } rows[] = {{rdNew(), rdFile()},
                {text("Bessel 1841"), text("ellipsoids/Bessel 1841.xml")},
                {text("Transverse Mercator"), text("projections/Transverse Mercator.xml")}};
    for (const auto &row : rows) {
        const auto refused = home({text("remove"), row.name});
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.err, Mentions("it is a delivered one; --force removes it"));
        EXPECT_EQ(readFile(inHome(row.file)), delivered(row.file));
        const auto removed = home({text("remove"), text("--force"), row.name});
        EXPECT_EQ(removed.status, 0) << removed.err;
        EXPECT_FALSE(QFileInfo::exists(inHome(row.file)));
    }
    EXPECT_EQ(home({text("show"), rdNew()}).status, 1);
    const auto restored = home({text("restore")});
    EXPECT_EQ(restored.status, 0) << restored.err;
    EXPECT_EQ(restored.outLines().size(), 3);
    for (const auto &row : rows)
        EXPECT_EQ(readFile(inHome(row.file)), delivered(row.file));
    EXPECT_EQ(home({text("restore")}).out, text("no delivered entry is missing\n"));
}

TEST_F(LibraryDelivered, AChangedOneComesBackByItsNameAlone)
{
    const QString file = text("ellipsoids/WGS 84.xml");
    const QString other = given("e.xml", ellipsoids(ellipsoid("WGS 84", "6378138")));
    EXPECT_EQ(home({text("replace"), text("WGS 84"), other}).status, 0);
    const QByteArray changed = readFile(inHome(file));
    const auto all = home({text("restore")});
    EXPECT_EQ(all.status, 0);
    EXPECT_THAT(all.err, Mentions("note: the ellipsoid \"WGS 84\" was changed and stays"));
    EXPECT_EQ(readFile(inHome(file)), changed);
    EXPECT_EQ(home({text("restore"), text("WGS 84")}).status, 0);
    EXPECT_EQ(readFile(inHome(file)), delivered(file));
    EXPECT_EQ(home({text("restore"), text("WGS 84")}).out,
              text("the ellipsoid \"WGS 84\" is as delivered\n"));
}

TEST_F(LibraryDelivered, AnUnknownNameRestoresNothing)
{
    EXPECT_EQ(home({text("remove"), text("--force"), rdNew()}).status, 0);
    const auto result = home({text("restore"), rdNew(), text("Besel 1841")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, text("kelstd: no entry \"Besel 1841\" is delivered; did you mean "
                               "\"Bessel 1841\"?\n"));
    EXPECT_FALSE(QFileInfo::exists(inHome(rdFile())));
}

TEST_F(LibraryDelivered, WhatStandsInItsPlaceIsKept)
{
    EXPECT_EQ(home({text("remove"), text("--force"), rdNew()}).status, 0);
    test::writeFile(inHome(rdFile()), "not a document");
    const auto other = home({text("restore"), rdNew()});
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.err, Mentions("rename or delete it first"));
    EXPECT_EQ(readFile(inHome(rdFile())), QByteArray("not a document"));
    test::writeFile(inHome(rdFile()), system("My own"));
    EXPECT_THAT(home({text("restore"), rdNew()}).err,
                Mentions("that file holds \"My own\"; rename or delete it first"));
    QFile::remove(inHome(rdFile()));
    // A system of the user's own that took the name meanwhile.
    EXPECT_EQ(home({text("add"), given("s.xml", system("Amersfoort / RD New"))}).status, 0);
    const auto taken = home({text("restore")});
    EXPECT_EQ(taken.status, 1);
    EXPECT_THAT(taken.err, Mentions("is taken by the custom system"));
    EXPECT_FALSE(QFileInfo::exists(inHome(rdFile())));
}

// Who sits at a terminal is asked.
TEST_F(LibraryDelivered, ATerminalIsAsked)
{
    const struct
    {
        const char *answer;
        bool isRemoved;
    } rows[] = {{"n\n", false}, {"\n", false}, {"maybe\n", false}, {"y\n", true}};
    EXPECT_EQ(home({text("list")}).status, 0);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.answer);
        test::Terminal terminal(80);
        terminal.start(m_program, {text("library"), text("remove"), rdNew()},
                       test::Terminal::Errors::Shown);
        EXPECT_TRUE(terminal.waitFor(text("(y or n)"))) << terminal.shown();
        terminal.type(row.answer);
        EXPECT_EQ(terminal.finish(), row.isRemoved ? 0 : 1);
        EXPECT_EQ(QFileInfo::exists(inHome(rdFile())), !row.isRemoved);
    }
}

} // namespace
} // namespace KelStd
