// What `kelstd library check` finds.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::editedSystem;
using test::LibraryRun;
using test::Mentions;

class LibraryCheck : public LibraryRun
{
protected:
    test::ProgramResult check() const { return library({text("check")}); }

    /// All that is said below a file's name, in one line.
    static QString saidOf(const test::ProgramResult &result, const char *file)
    {
        QStringList said;
        bool isBelow = false;
        for (const QString &line : result.outLines()) {
            if (line.startsWith(QLatin1String("    ")) && isBelow)
                said += line.simplified();
            else
                isBelow = line == QLatin1String("  ") + text(file);
        }
        return said.join(QLatin1Char(' '));
    }
};

struct Faulty
{
    const char *file;
    QByteArray bytes;
    const char *reason;
};

TEST_F(LibraryCheck, SaysOfEachSkippedDocumentWhy)
{
    QByteArray deep;
    for (int i = 0; i < 257; ++i)
        deep += "<a ver=\"1\">";
    const QString withoutEllipsoid =
        QString::fromUtf8(system("X"))
            .replace(QLatin1String("<Ellpsoid "), QLatin1String("<Elipsoid "));
    const Faulty rows[] = {
        {"custom/text.xml", "no XML at all", "skipped: line 1: no well-formed XML: "},
        {"custom/cut.xml", system("X").left(900),
         "skipped: line 9: no well-formed XML: unexpected end of file"},
        {"custom/empty.xml", "", "skipped: the file is empty"},
        {"custom/version.xml", "<Coord ver=\"2\"/>",
         "skipped: line 1: the element [Coord] has version \"2\", not version 1"},
        {"custom/element.xml", withoutEllipsoid.toUtf8(),
         "skipped: line 2: Format error, element [Ellpsoid] not found."},
        {"custom/entity.xml", "<!DOCTYPE Coord [<!ENTITY e \"x\">]><Coord ver=\"1\">&e;</Coord>",
         "skipped: line 1: it declares entities or elements of its own"},
        {"custom/deep.xml", deep, "skipped: line 1: its elements are nested deeper than 256"},
        {"custom/notes.txt", "x", "skipped: its name does not end in .xml"},
        {"custom/.hidden.xml", system("H"), "skipped: it is hidden"},
        {"ellipsoids/list.xml", "<Ellipsoid_List ver=\"3\"/>",
         "skipped: line 1: the element [Ellipsoid_List] has version \"3\", not version 1"},
        {"ellipsoids/record.xml", ellipsoids(ellipsoid("A") + "\n<Ellpsoid ellipsoid_name=\"B\"/>"),
         "skipped: line 2: the element [Ellpsoid] has no version, not version 1"},
        {"projections/cut.xml", projections("P").chopped(5),
         "no well-formed XML: unexpected end of file"},
    };
    for (const Faulty &row : rows)
        put(row.file, row.bytes);
    put("custom/good.xml", system("good"));
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, QString());
    for (const Faulty &row : rows) {
        EXPECT_THAT(saidOf(result, text(row.file).section(QLatin1Char('/'), 1).toUtf8()),
                    Mentions(row.reason))
            << row.file;
    }
    EXPECT_EQ(saidOf(result, "good.xml"), QString());
    EXPECT_THAT(result.out, Mentions("custom       1 of 8 documents read\n"));
    EXPECT_THAT(result.out, Mentions("ellipsoids   0 of 2 documents read\n"));
    EXPECT_THAT(result.out, Mentions("skipped: 12, problems: 0, notes: 0\n"));
    // What it says is what loading does.
    EXPECT_EQ(library({text("list"), text("--names")}).out, text("good\n"));
    for (const QString &line : result.outLines().mid(1))
        EXPECT_LE(line.size(), 80) << line;
}

TEST_F(LibraryCheck, WhatIsNoRegularFileIsNotWaitedFor)
{
    put("custom/good.xml", system("good"));
    ASSERT_EQ(mkfifo(path("custom/fifo.xml").toUtf8().constData(), 0600), 0);
    ASSERT_EQ(mkfifo(path("base.xml").toUtf8().constData(), 0600), 0);
    ASSERT_EQ(mkfifo(path("offered.xml").toUtf8().constData(), 0600), 0);
    ASSERT_EQ(mkfifo(path("display.bin").toUtf8().constData(), 0600), 0);
    QDir().mkpath(path("custom/folder.xml"));
    ASSERT_TRUE(QFile::link(path("nothing"), path("custom/link.xml")));
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(saidOf(result, "folder.xml"), text("skipped: it is a directory"));
    EXPECT_EQ(saidOf(result, "link.xml"), text("skipped: it is a link to nothing"));
    for (const char *file : {"fifo.xml", "base.xml", "offered.xml", "display.bin"})
        EXPECT_EQ(saidOf(result, file), text("skipped: it is no regular file")) << file;
}

TEST_F(LibraryCheck, OfEqualNamesTheOneThatLoadingKeeps)
{
    put("ellipsoids/one.xml", ellipsoids(ellipsoid("E", "6378001")));
    put("ellipsoids/two.xml", ellipsoids(ellipsoid("E", "6378002")));
    put("ellipsoids/F.xml", ellipsoids(ellipsoid("F", "1") + ellipsoid("F", "2")));
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    const bool keepsOne = library({text("show"), text("E")}).out.contains(text("6378001 m"));
    const QString lost = saidOf(result, keepsOne ? "two.xml" : "one.xml");
    EXPECT_THAT(lost, Mentions(keepsOne ? "skipped: one.xml holds \"E\", too"
                                        : "skipped: two.xml holds \"E\", too"));
    EXPECT_THAT(saidOf(result, "F.xml"), Mentions("of several records called \"F\" the last one"));
}

TEST_F(LibraryCheck, AFileThatIsNotNamedAfterItsRecordIsNoted)
{
    put("custom/a.xml", system("B"));
    put("ellipsoids/list.xml", ellipsoids(ellipsoid("E") + ellipsoid("F")));
    put("standard/s.xml", system("S"));
    const auto result = check();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(saidOf(result, "a.xml"), Mentions("note: it holds \"B\""));
    EXPECT_THAT(saidOf(result, "list.xml"), Mentions("note: it holds several records"));
    EXPECT_EQ(saidOf(result, "s.xml"), QString());
    EXPECT_THAT(result.out, Mentions("skipped: 0, problems: 0, notes: 2\n"));
}

// Separators of paths and percent signs stand otherwise in files' names; such records are replaced
// and removed like others.
TEST_F(LibraryCheck, AFileThatIsNamedByASafeNameIsNotNoted)
{
    const struct
    {
        const char *name;
        const char *file;
    } rows[] = {{"NAD83 / New York", "custom/NAD83 %2F New York.xml"},
                {"a%2Fb", "custom/a%252Fb.xml"},
                {"100 %", "custom/100 %.xml"}};
    put("custom/Plain.xml", system("Plain"));
    for (const auto &row : rows) {
        ASSERT_EQ(library({text("add"), given("new.xml", system(row.name))}).status, 0);
        EXPECT_TRUE(has(row.file)) << row.file;
    }
    EXPECT_THAT(check().out, Mentions("Everything is loaded."));
    for (const auto &row : rows) {
        EXPECT_EQ(
            library({text("replace"), text(row.name), given("new.xml", system(row.name))}).status,
            0);
        EXPECT_EQ(library({text("remove"), text(row.name)}).status, 0);
    }
    EXPECT_EQ(names("custom"), QStringList{text("Plain")});
}

TEST_F(LibraryCheck, OfferedNamesThatNoSystemHas)
{
    put("custom/A.xml", system("A"));
    put("offered.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n"
                       "    <Coord coord_name=\"A\" show_name=\"\"/>\n"
                       "    <Coord coord_name=\"a\" show_name=\"A\"/>\n</root>\n");
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, Mentions("offered.xml  1 of 2 names are systems\n"));
    EXPECT_EQ(saidOf(result, "\"a\""),
              text("skipped: it is offered, but the library has no such system"));
    put("offered.xml", "<root>");
    EXPECT_THAT(saidOf(check(), "offered.xml"), Mentions("skipped: line 1: no well-formed XML: "));
}

// What loading reads is found in all the places alike, whatever a stricter parser says of it.
TEST_F(LibraryCheck, ABadByteInACommentIsNoFault)
{
    const QByteArray comment = "<!-- M\xFCller -->";
    put("custom/A.xml", system("A") + comment);
    put("ellipsoids/E.xml", comment + ellipsoids(ellipsoid("E") + ellipsoid("F")));
    put("offered.xml", comment + "<root><Coord coord_name=\"A\"/></root>");
    auto result = check();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(saidOf(result, "A.xml"), QString());
    EXPECT_THAT(saidOf(result, "E.xml"), Mentions("note: it holds several records"));
    EXPECT_THAT(result.out, Mentions("offered.xml  1 of 1 names are systems\n"));
    EXPECT_EQ(saidOf(result, "offered.xml"), QString());
    EXPECT_THAT(result.out, Mentions("skipped: 0, problems: 0, notes: 1\n"));

    put("offered.xml", comment + "<root><Coord coord_name=\"A\"/><Coord coord_name=\"b\"/></root>");
    result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, Mentions("offered.xml  1 of 2 names are systems\n"));
    EXPECT_EQ(saidOf(result, "\"b\""),
              text("skipped: it is offered, but the library has no such system"));
}

TEST_F(LibraryCheck, LargerDocumentsThanLoadingReads)
{
    for (const char *file : {"custom/large.xml", "offered.xml"}) {
        put(file, system("A"));
        ASSERT_TRUE(QFile::resize(path(file), 64 * 1024 * 1024 + 1));
    }
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    for (const char *file : {"large.xml", "offered.xml"})
        EXPECT_EQ(saidOf(result, file), text("skipped: the file is larger than 64 MiB"));
}

TEST_F(LibraryCheck, DisplayConfigurationsThatAreOthersOrCutShort)
{
    put("custom/A.xml", system("A"));
    const struct
    {
        QByteArray bytes;
        const char *said;
    } rows[] = {
        {{}, "skipped: the file is empty"},
        {QByteArray::fromHex("00000002") + QByteArray(64, '\1'),
         "skipped: it has version 2, not 1"},
        {QByteArray::fromHex("00000001") + QByteArray(10, '\0'), "problem: it ends after 14 of 68"},
        {QByteArray::fromHex("00000001") + QByteArray(65, '\0'),
         "problem: something stands behind"},
        {QByteArray::fromHex("00000001") + QByteArray(64, '\0'), "problem: it has a unit, a style"},
    };
    for (const auto &row : rows) {
        put("display.bin", row.bytes);
        const auto result = check();
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(saidOf(result, "display.bin"), Mentions(row.said));
    }
}

TEST_F(LibraryCheck, SystemsThatProjRefuses)
{
    put("custom/X.xml",
        editedSystem(text("rd_new.xml"), {{text("Amersfoort / RD New"), text("X")},
                                          {text("\"sterea\""), text("\"nosuch\"")}}));
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(saidOf(result, "X.xml"), Mentions("problem: PROJ refuses its definition"));
    EXPECT_THAT(result.out, Mentions("custom       1 of 1 documents read\n"));
    // Without PROJ the rest is checked all the same.
    m_program.setVariable(text("KELSTD_HOME_DIR"), text("/no/such/home"));
    const auto without = check();
    EXPECT_EQ(without.status, 0);
    EXPECT_THAT(without.err, Mentions("note: PROJ is not ready"));
}

TEST_F(LibraryCheck, ABaseSystemThatIsSkipped)
{
    put("base.xml", system("Base"));
    EXPECT_THAT(check().out, Mentions("base.xml     read: \"Base\"\n"));
    put("base.xml", "<Coord/>");
    const auto result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(saidOf(result, "base.xml"), Mentions("skipped: line 1: the element [Coord] has no "
                                                     "version, not version 1"));
}

} // namespace
} // namespace KelStd
