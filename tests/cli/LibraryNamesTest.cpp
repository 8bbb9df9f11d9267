// Names of records that lead out of their directory, names with a byte order mark, and names of
// files and directories that begin with a colon.

#include "cli/LibraryRun.h"
#include "support/GridFiles.h"

#include <QtCore/QDir>

#include <unistd.h>

namespace KelStd {
namespace {

using test::csvRows;
using test::LibraryRun;
using test::Mentions;
using test::numberIn;
using test::readFile;

const QByteArray markBytes("\xEF\xBB\xBF"); // U+FEFF in UTF-8

class LibraryNames : public LibraryRun
{
protected:
    LibraryNames() { QDir().mkpath(path("custom")); }

    /// `fromUtf8` would take a mark at the beginning for one of the whole text.
    static QString marked(const char *name) { return QChar(0xFEFF) + text(name); }

    static QByteArray markedSystem(const char *name)
    {
        return system("NAME").replace("NAME", markBytes + name);
    }

    QStringList filesOf(const QString &folder) const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

TEST_F(LibraryNames, ThatLeadElsewhereAreNotGivenToAnything)
{
    const QString file = given("s.xml", system("S"));
    const QString named = given("named.xml", {});
    const QStringList outside = filesOf(m_program.home().path());
    struct Row
    {
        const char *name;
        const char *reason;
    };
    const Row rows[] = {
        {":x", "begins with a colon"},         {"::", "begins with a colon"},
        {"~", "begins with a tilde"},          {"~/x", "begins with a tilde"},
        {"../x", "begins with a dot"},         {"../../victim", "begins with a dot"},
        {"/tmp/x", "begins like a path"},      {"C:\\x", "begins like a path"},
        {"\\\\host\\x", "begins like a path"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        // The current directory is where a name that is a resource to Qt was written to.
        m_program.beforeStart([this] {
            if (chdir(QFile::encodeName(m_program.home().path()).constData()) != 0)
                _exit(99);
        });
        const auto result = library({text("add"), file, text("--as=") + text(row.name)});
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, Mentions(row.reason));
        // A document may have the name in it.
        test::writeFile(named, system(row.name));
        const auto refused = library({text("add"), named});
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.err, Mentions(row.reason));
    }
    EXPECT_EQ(filesOf(m_program.home().path()), outside);
    EXPECT_TRUE(filesOf(path("custom")).isEmpty());
}

TEST_F(LibraryNames, ThatLeadElsewhereAreNeitherReplacedNorRemoved)
{
    const QString file = given("s.xml", system("S"));
    test::writeFile(m_program.home().path(text("victim.xml")), "a stranger's");
    for (const char *name : {"../../victim", ":victim", "~victim", "/victim"}) {
        SCOPED_TRACE(name);
        put("custom/evil.xml", system(name));
        ASSERT_EQ(names("custom"), QStringList{text(name)});
        const auto replaced = library({text("replace"), text(name), file});
        EXPECT_EQ(replaced.status, 1);
        EXPECT_THAT(replaced.err, Mentions("cannot replace"));
        const auto removed = library({text("remove"), text(name)});
        EXPECT_EQ(removed.status, 1);
        EXPECT_THAT(removed.err, Mentions("cannot remove"));
        EXPECT_EQ(readFile(path("custom/evil.xml")), system(name));
        EXPECT_EQ(readFile(m_program.home().path(text("victim.xml"))), "a stranger's");
    }
}

TEST_F(LibraryNames, AByteOrderMarkIsNoPartOfANameThatIsAdded)
{
    EXPECT_EQ(library({text("add"), given("a.xml", markedSystem("A"))}).status, 0);
    EXPECT_EQ(library({text("add"), given("b.xml", system("x")), text("--as"), marked("B")}).status,
              0);
    EXPECT_EQ(filesOf(path("custom")), (QStringList{text("A.xml"), text("B.xml")}));
    EXPECT_EQ(names("custom"), (QStringList{text("A"), text("B")}));
    EXPECT_FALSE(readFile(path("custom/A.xml")).contains(markBytes));
    // An empty name stays one.
    EXPECT_EQ(library({text("add"), given("c.xml", system("x")), text("--as"), marked("")}).status,
              2);
    // What is taken is taken with a mark, too.
    put("custom/C.xml", markedSystem("C"));
    const auto taken = library({text("add"), given("c.xml", system("c"))});
    EXPECT_EQ(taken.status, 1);
    EXPECT_THAT(taken.err, Mentions("is taken by the custom system"));
}

TEST_F(LibraryNames, AreFoundWhicheverSideHasAByteOrderMark)
{
    put("custom/any.xml", markedSystem("A"));
    put("custom/B.xml", system("B"));
    for (const QString &name : {text("A"), marked("A"), text("B"), marked("B")}) {
        EXPECT_EQ(library({text("show"), name}).status, 0) << name;
        const auto converted = m_program.run(
            {text("convert"), text("--dir"), directory(), text("--system"), name}, "5.25,52.5,1\n");
        EXPECT_EQ(converted.status, 0) << converted.err;
    }
    EXPECT_EQ(library({text("show"), text("AB")}).status, 1);
    EXPECT_EQ(library({text("replace"), marked("B"), given("b.xml", system("x"))}).status, 0);
    EXPECT_EQ(library({text("remove"), marked("B")}).status, 0);
    EXPECT_FALSE(has("custom/B.xml"));
    // The registry would look for a file of the name with its mark.
    const auto removed = library({text("remove"), text("A")});
    EXPECT_EQ(removed.status, 1);
    EXPECT_THAT(removed.err, Mentions("byte order mark"));
    EXPECT_TRUE(has("custom/any.xml"));
}

TEST_F(LibraryNames, ThatDifferByAByteOrderMarkAloneAreTwoOfOneName)
{
    put("custom/one.xml", system("A"));
    put("custom/two.xml", markedSystem("A"));
    const auto converted =
        m_program.run({text("convert"), text("--dir"), directory(), text("--system"), text("A")},
                      "5.25,52.5,1\n");
    EXPECT_EQ(converted.status, 3);
    EXPECT_THAT(converted.err, Mentions("2 files of"));
    const auto shown = library({text("show"), text("A")});
    EXPECT_THAT(shown.err, Mentions("shown is one of several"));
    EXPECT_EQ(library({text("remove"), text("A")}).status, 1);
}

/// To Qt a path that begins with a colon is a resource within the program.
class ColonPaths : public LibraryRun
{
protected:
    ColonPaths()
    {
        QDir().mkpath(inside(""));
        m_program.beforeStart([this] {
            if (chdir(QFile::encodeName(inside("")).constData()) != 0)
                _exit(99);
        });
    }

    /// The path of something in the program's current directory.
    QString inside(const char *name) const
    {
        return m_program.home().path(text("work/") + text(name));
    }

    void write(const char *name, const QByteArray &bytes) const
    {
        test::writeFile(inside(name), bytes);
    }

    bool isThere(const char *name) const { return QFileInfo::exists(inside(name)); }

    test::ProgramResult run(std::initializer_list<const char *> words) const
    {
        QStringList arguments;
        for (const char *word : words)
            arguments += text(word);
        return m_program.run(arguments);
    }
};

TEST_F(ColonPaths, NameALibrary)
{
    write(":s.xml", system("S"));
    const auto added = run({"library", "--dir", ":lib", "add", "--create", ":s.xml"});
    EXPECT_EQ(added.status, 0) << added.err;
    EXPECT_TRUE(isThere(":lib/custom/S.xml"));
    EXPECT_EQ(run({"library", "--dir", ":lib", "show", "S"}).status, 0);
    EXPECT_EQ(run({"library", "--dir", ":lib", "check"}).status, 0);
    EXPECT_EQ(run({"library", "--dir", ":lib", "replace", "S", ":s.xml"}).status, 0);
    EXPECT_EQ(run({"library", "--dir=:lib", "remove", "S"}).status, 0);
    EXPECT_FALSE(isThere(":lib/custom/S.xml"));
    // As in any directory, a document may have any name.
    write(":lib/custom/:t.xml", system("T"));
    EXPECT_EQ(run({"library", "--dir", ":lib", "list", "--names"}).outLines(),
              QStringList{text("T")});
    EXPECT_THAT(run({"library", "--dir", ":lib", "check"}).out, Mentions("1 of 1 documents read"));
}

TEST_F(ColonPaths, NameSystemsPositionsAndRejects)
{
    write(":s.xml", system("S"));
    write(":p.csv", "A,5.25,52.5,1\nB,5.25,92.5,1\n");
    const auto converted = run({"convert", "--system", ":s.xml", "--rejects", ":r.csv", ":p.csv"});
    ASSERT_EQ(converted.status, 1) << converted.err;
    EXPECT_EQ(csvRows(converted.out).size(), 1);
    EXPECT_THAT(converted.err, Mentions(":p.csv"));
    EXPECT_EQ(readFile(inside(":r.csv")), "B,5.25,92.5,1\n");
    EXPECT_EQ(run({"system", "show", ":s.xml"}).status, 0);
    const auto made = run({"system", "default", "--utm-zone", "31N", "-o", ":made.xml"});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_TRUE(isThere(":made.xml"));
}

TEST_F(ColonPaths, NameGrids)
{
    write(":g.ggf", test::ggfBytes(test::slopingGrid(), test::RowOrder::OutputOrder));
    EXPECT_EQ(run({"geoid", "info", ":g.ggf"}).status, 0);
    const auto made = run({"geoid", "convert", ":g.ggf", ":g.gtx"});
    EXPECT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(readFile(inside(":g.gtx")), test::gtxBytes(test::slopingGrid()));
    write(":p.csv", "3.5,52.5,100\n");
    const auto heights = run({"geoid", "height", "--model", ":g.gtx", ":p.csv"});
    EXPECT_EQ(heights.status, 0) << heights.err;
}

TEST_F(ColonPaths, NameTheHome)
{
    QDir().mkpath(inside(":home"));
    m_program.setVariable(text("KELSTD_HOME_DIR"), text(":home"));
    EXPECT_EQ(run({"library", "list"}).status, 0);
    EXPECT_TRUE(isThere(":home/library/standard"));
}

} // namespace
} // namespace KelStd
