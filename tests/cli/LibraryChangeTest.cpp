// Records of a library added, replaced and removed by the program.

#include "cli/LibraryRun.h"

#include <KelStd/io/SystemDocument.h>

#include <QtCore/QDir>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;
using test::readFile;

class LibraryChange : public LibraryRun
{
protected:
    LibraryChange() { QDir().mkpath(path("custom")); }
};

TEST_F(LibraryChange, AddsASystemAnEllipsoidAndAProjection)
{
    const auto added = library({text("add"), given("s.xml", system("Harbour"))});
    EXPECT_EQ(added.status, 0) << added.err;
    EXPECT_EQ(added.out,
              text("added the custom system \"Harbour\": ") + path("custom/Harbour.xml\n"));
    EXPECT_EQ(library({text("add"), given("e.xml", ellipsoids(ellipsoid("E")))}).status, 0);
    EXPECT_EQ(library({text("add"), given("p.xml", projections("P"))}).status, 0);
    EXPECT_EQ(names("custom"), QStringList{text("Harbour")});
    EXPECT_EQ(names("ellipsoids"), QStringList{text("E")});
    EXPECT_EQ(names("projections"), QStringList{text("P")});
    EXPECT_TRUE(has("ellipsoids/E.xml") && has("projections/P.xml"));
}

TEST_F(LibraryChange, AsGivesTheRecordAnotherNameForGood)
{
    const QString file = m_program.file(text("s.xml"), system(".A"));
    const auto refused = library({text("add"), file});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, Mentions("begins with a dot"));
    EXPECT_THAT(refused.err, Mentions("--as"));
    EXPECT_EQ(library({text("add"), file, text("--as"), text("A \xC3\xB6 %1")}).status, 0);
    EXPECT_EQ(names("custom"), QStringList{text("A \xC3\xB6 %1")});
    EXPECT_THAT(QString::fromUtf8(readFile(path("custom/A \xC3\xB6 %1.xml"))),
                Mentions("coord_name=\"A \xC3\xB6 %1\""));
}

TEST_F(LibraryChange, NamesThatNoFileShouldHaveAreRefused)
{
    const QString file = given("s.xml", system("S"));
    for (const QString &name :
         {text(""), text("  "), text("/a"), text("\\a"), text("../x"), text(".x"), text("a\nb"),
          text("a\xEF\xBF\xBE"), // U+FFFE
          QString(252, QLatin1Char('a')), QString(126, QChar(0xE4))}) {
        const auto result = library({text("add"), file, text("--as"), name});
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_EQ(result.out, QString());
    }
    EXPECT_TRUE(names("custom").isEmpty());
    EXPECT_EQ(library({text("add"), file, text("--as"), QString(251, QLatin1Char('a'))}).status, 0);
    EXPECT_EQ(names("custom"), QStringList{QString(251, QLatin1Char('a'))});
}

TEST_F(LibraryChange, ANameWithSlashesHasAFileOfItsOwn)
{
    const QString file = given("s.xml", system("Amersfoort / RD New"));
    const QString name = text("Amersfoort / RD New");
    const auto added = library({text("add"), file});
    EXPECT_EQ(added.status, 0) << added.err;
    EXPECT_EQ(added.out, text("added the custom system \"Amersfoort / RD New\": ")
                             + path("custom/Amersfoort %2F RD New.xml\n"));
    EXPECT_EQ(names("custom"), QStringList{name});
    EXPECT_EQ(library({text("show"), name}).outLines().value(0),
              text("Coordinate system         Amersfoort / RD New"));
    EXPECT_EQ(library({text("check")}).status, 0);
    const auto replaced = library({text("replace"), name, given("t.xml", system("T"))});
    EXPECT_EQ(replaced.status, 0) << replaced.err;
    EXPECT_EQ(names("custom"), QStringList{name});
    EXPECT_EQ(library({text("remove"), name}).status, 0);
    EXPECT_FALSE(has("custom/Amersfoort %2F RD New.xml"));
    EXPECT_EQ(library({text("add"), file, text("--as"), text("a\\b")}).status, 0);
    EXPECT_TRUE(has("custom/a%5Cb.xml"));
}

// What an application has put there under the name of that file.
TEST_F(LibraryChange, NoTwoNamesShareAFile)
{
    const QByteArray other = system("A%2FB");
    put("custom/A%2FB.xml", other);
    const auto refused = library({text("add"), given("s.xml", system("A/B"))});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, Mentions("A%2FB.xml exists and is kept"));
    EXPECT_EQ(readFile(path("custom/A%2FB.xml")), other);
    const auto unchanged = library({text("remove"), text("A%2FB")});
    EXPECT_EQ(unchanged.status, 1);
    EXPECT_THAT(unchanged.err, Mentions("it came from the file \"A%2FB.xml\""));
    EXPECT_EQ(readFile(path("custom/A%2FB.xml")), other);
}

TEST_F(LibraryChange, TheOriginOfASystemGoesAlong)
{
    const QByteArray origin = "<Origin ver=\"1\" authority=\"EPSG\" code=\"28992\"/>";
    const QByteArray document = system("A").replace("</Coord>", origin + "</Coord>");
    const auto originIn = [this](const char *file) {
        SystemOrigin read;
        io::DocumentFailure failure;
        EXPECT_TRUE(io::readOrigin(path(file), read, failure)) << failure.text;
        return read.fullCode();
    };
    EXPECT_EQ(library({text("add"), given("a.xml", document)}).status, 0);
    EXPECT_EQ(originIn("custom/A.xml"), text("EPSG:28992"));
    // Replaced by the same without an origin, it is still what it was.
    EXPECT_EQ(library({text("replace"), text("A"), given("b.xml", system("B"))}).status, 0);
    EXPECT_EQ(originIn("custom/A.xml"), text("EPSG:28992"));
    QByteArray moved = system("B").replace(">155000<", ">155001<");
    EXPECT_EQ(library({text("replace"), text("A"), given("c.xml", moved)}).status, 0);
    EXPECT_EQ(originIn("custom/A.xml"), QString());
    // What is wrong in it is not written into a library.
    const auto refused =
        library({text("add"),
                 given("d.xml", system("D").replace("</Coord>", "<Origin code=\"1\"/></Coord>"))});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, Mentions("Coord/Origin: <Origin> where ver=\"1\" is needed"));
}

TEST_F(LibraryChange, AMistypedSourceGetsNearNames)
{
    put("custom/h.xml", system("Harbour"));
    const auto own = library({text("add"), text("Harbor"), text("--as"), text("q")});
    EXPECT_EQ(own.status, 3);
    EXPECT_EQ(own.err, text("kelstd: there is no file Harbor, and the library has no entry "
                            "\"Harbor\"; did you mean \"Harbour\"? 'kelstd library list' with the "
                            "same --dir lists them\n"));
    EXPECT_THAT(library({text("add"), text("Amersfort"), text("--as"), text("q")}).err,
                Mentions("did you mean \"Amersfoort / RD New\"?"));
    EXPECT_THAT(library({text("add"), text("nowhere.xml")}).err,
                Mentions("kelstd: cannot read the coordinate system nowhere.xml: No such file"));
    EXPECT_FALSE(has("custom/q.xml"));
}

TEST_F(LibraryChange, ATakenNameIsSaidToBeWhose)
{
    put("custom/Harbour.xml", system("Harbour"));
    put("standard/City.xml", system("City"));
    const auto custom = library({text("add"), given("a.xml", system("HARBOUR"))});
    EXPECT_EQ(custom.status, 1);
    EXPECT_EQ(custom.err, text("kelstd: the name \"HARBOUR\" is taken by the custom system "
                               "\"Harbour\"\n"));
    const auto standard = library({text("add"), given("a.xml", system(" city "))});
    EXPECT_EQ(standard.status, 1);
    EXPECT_THAT(standard.err, Mentions("taken by the standard system \"City\""));
    EXPECT_EQ(names("systems"), (QStringList{text("Harbour"), text("City")}));
}

TEST_F(LibraryChange, AFileOfAnotherRecordIsNotLost)
{
    put("custom/A.xml", system("B"));
    put("custom/C.xml", "not a system");
    const auto other = library({text("add"), given("a.xml", system("A"))});
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.err, Mentions("A.xml exists and is kept"));
    EXPECT_EQ(library({text("add"), given("a.xml", system("C"))}).status, 1);
    EXPECT_EQ(readFile(path("custom/A.xml")), system("B"));
    EXPECT_EQ(readFile(path("custom/C.xml")), QByteArray("not a system"));
}

TEST_F(LibraryChange, WhatIsNoFileIsNeitherReplacedNorWaitedFor)
{
    ASSERT_EQ(mkfifo(path("custom/Fifo.xml").toUtf8().constData(), 0600), 0);
    QDir().mkpath(path("custom/Folder.xml"));
    ASSERT_TRUE(QFile::link(path("nothing"), path("custom/Link.xml")));
    for (const char *name : {"Fifo", "Folder", "Link"}) {
        const auto result = library({text("add"), given("s.xml", system(name))});
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_THAT(result.err,
                    Mentions((QByteArray(name) + ".xml exists and is kept").constData()));
    }
    EXPECT_FALSE(has("nothing"));
    EXPECT_TRUE(QFileInfo(path("custom/Link.xml")).isSymLink());
    EXPECT_TRUE(QFileInfo(path("custom/Folder.xml")).isDir());
    const QString fifo = path("custom/Fifo.xml");
    put("custom/A.xml", system("A"));
    for (const auto &result :
         {library({text("add"), fifo}), library({text("replace"), text("A"), fifo}),
          library({text("add"), text("--kind"), text("ellipsoid"), fifo})}) {
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, Mentions("it is no regular file"));
    }
}

TEST_F(LibraryChange, AddMakesALibraryOnlyWhenTold)
{
    const QString elsewhere = m_program.home().path(text("new/lib"));
    const QString file = given("s.xml", system("S"));
    const QStringList add = {text("library"), text("add"), text("--dir"), elsewhere, file};
    EXPECT_EQ(m_program.run(add).status, 3);
    EXPECT_FALSE(QFileInfo::exists(elsewhere));
    EXPECT_EQ(m_program.run(add + QStringList(text("--create"))).status, 0);
    EXPECT_TRUE(QFileInfo::exists(elsewhere + text("/custom/S.xml")));
}

TEST_F(LibraryChange, WhatCannotBeReadIsNotAdded)
{
    const auto missing = library({text("add"), text("no-such.xml")});
    EXPECT_EQ(missing.status, 3);
    EXPECT_THAT(missing.err, Mentions("no-such.xml: No such file or directory"));
    EXPECT_EQ(library({text("add"), given("a.xml", "<Coord ver=\"2\"/>")}).status, 3);
    const auto two =
        library({text("add"), given("e.xml", ellipsoids(ellipsoid("A") + ellipsoid("B")))});
    EXPECT_EQ(two.status, 3);
    EXPECT_THAT(two.err, Mentions("holds 2 records of this kind (\"A\", \"B\"); one is needed"));
    const auto equal = library(
        {text("add"), given("e.xml", ellipsoids(ellipsoid("A", "1") + ellipsoid("A", "2")))});
    EXPECT_EQ(equal.status, 3);
    EXPECT_THAT(equal.err, Mentions("holds 2 records of this kind (\"A\", \"A\"); one is needed"));
    EXPECT_FALSE(has("ellipsoids/A.xml"));
}

TEST_F(LibraryChange, ReplacesACustomSystem)
{
    put("custom/Harbour.xml", system("Harbour"));
    const QByteArray changed =
        test::editedSystem(text("rd_new.xml"), {{text("155000"), text("156000")}});
    const auto result = library({text("replace"), text("Harbour"), given("n.xml", changed)});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, text("kelstd: note: the file's \"Amersfoort / RD New\" is kept under the "
                               "name \"Harbour\"\n"));
    EXPECT_EQ(names("custom"), QStringList{text("Harbour")});
    EXPECT_THAT(QString::fromUtf8(readFile(path("custom/Harbour.xml"))), Mentions("156000"));
}

TEST_F(LibraryChange, OnlyWhatIsThereAndCustomIsReplacedOrRemoved)
{
    put("standard/City.xml", system("City"));
    const QString file = given("n.xml", system("City"));
    for (const auto &result : {library({text("replace"), text("City"), file}),
                               library({text("remove"), text("City")})}) {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions("it is a standard system"));
    }
    for (const auto &result : {library({text("replace"), text("city"), file}),
                               library({text("remove"), text("city")})}) {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions("did you mean \"City\"?"));
    }
    EXPECT_EQ(readFile(path("standard/City.xml")), system("City"));
}

TEST_F(LibraryChange, RemovesARecordWithItsFile)
{
    put("custom/X.xml", system("X"));
    put("ellipsoids/X.xml", ellipsoids(ellipsoid("X")));
    const auto which = library({text("remove"), text("X")});
    EXPECT_EQ(which.status, 2);
    EXPECT_THAT(which.err, Mentions("\"X\" is a custom system and an ellipsoid; say which"));
    const auto removed = library({text("remove"), text("--kind"), text("system"), text("X")});
    EXPECT_EQ(removed.status, 0) << removed.err;
    EXPECT_EQ(removed.out, text("removed the custom system \"X\": ") + path("custom/X.xml\n"));
    EXPECT_FALSE(has("custom/X.xml"));
    EXPECT_EQ(library({text("remove"), text("X")}).status, 0);
    EXPECT_FALSE(has("ellipsoids/X.xml"));
}

TEST_F(LibraryChange, ARecordWhoseFileIsNotItsOwnStays)
{
    put("custom/a.xml", system("B"));
    for (const auto &result :
         {library({text("remove"), text("B")}),
          library({text("replace"), text("B"), given("b.xml", system("B"))})}) {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions("the custom system \"B\": it came from the file "
                                         "\"a.xml\""));
    }
    EXPECT_EQ(readFile(path("custom/a.xml")), system("B"));
    EXPECT_FALSE(has("custom/B.xml"));
}

TEST_F(LibraryChange, AFullDiskLeavesTheOldFile)
{
    put("custom/Harbour.xml", system("Harbour"));
    const QString file = given("n.xml", system("Harbour"));
    m_program.beforeStart([] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{100, 100};
        setrlimit(RLIMIT_FSIZE, &none);
    });
    const auto replaced = library({text("replace"), text("Harbour"), file});
    EXPECT_EQ(replaced.status, 3);
    EXPECT_THAT(replaced.err, Mentions("cannot write "));
    EXPECT_EQ(library({text("add"), file, text("--as"), text("New")}).status, 3);
    EXPECT_EQ(readFile(path("custom/Harbour.xml")), system("Harbour"));
    EXPECT_EQ(QDir(path("custom")).entryList(QDir::Files | QDir::Hidden),
              QStringList{text("Harbour.xml")});
}

} // namespace
} // namespace KelStd
