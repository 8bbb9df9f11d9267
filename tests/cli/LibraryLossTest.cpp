// Records that a document would not keep whole are refused by the program
// (tests/library/RecordLossTest.cpp has what is lost of which).

#include "cli/LibraryRun.h"

#include <QtCore/QDir>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;
using test::readFile;

/// The end of every refusal.
constexpr const char *advice = ", which a document that the library writes does not keep; copy the "
                               "file into the library's directory instead\n";

class LibraryLoss : public LibraryRun
{
protected:
    LibraryLoss() { QDir().mkpath(path("custom")); }

    /// The Dutch grid, called "T", with an attribute or a whole element of it changed.
    static QByteArray changed(const char *part, const char *other)
    {
        return test::editedSystem(text("rd_new.xml"), {{text("Amersfoort / RD New"), text("T")},
                                                       {text(part), text(other)}});
    }

    test::ProgramResult add(const QByteArray &document) const
    {
        return library({text("add"), given("t.xml", document)});
    }
};

constexpr const char *translation =
    "valType=\"Distance\" isDictionary=\"false\">-565.04</x_translate>";
constexpr const char *lossy = "valType=\"String\" isDictionary=\"false\">-565.04</x_translate>";
constexpr const char *lost = "the value of its parameter \"x_translate\" is a text";

TEST_F(LibraryLoss, IsTheReasonWhyASystemIsNotAdded)
{
    const auto result = add(changed(translation, lossy));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, text("kelstd: cannot add ") + m_program.home().path(text("t.xml: "))
                              + text(lost) + text(advice));
    EXPECT_FALSE(has("custom/T.xml"));
}

TEST_F(LibraryLoss, IsTheReasonWhyASystemIsNotReplaced)
{
    put("custom/T.xml", system("T"));
    const auto result =
        library({text("replace"), text("T"), given("t.xml", changed(translation, lossy))});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, text("kelstd: cannot take ") + m_program.home().path(text("t.xml: "))
                              + text(lost) + text(advice));
    EXPECT_EQ(readFile(path("custom/T.xml")), system("T"));
}

TEST_F(LibraryLoss, OfAProjectionIsFoundToo)
{
    QByteArray document = projections("P");
    document.replace("loc_or_height_unit=\"Meter\"/>",
                     "loc_or_height_unit=\"Meter\"><param name=\"zone\" ver=\"1\" unit=\"None\" "
                     "valType=\"String\" isDictionary=\"false\">31</param></Projection>");
    const auto result = library({text("add"), given("p.xml", document)});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, Mentions("the value of its parameter \"zone\" is a text"));
    EXPECT_TRUE(names("projections").isEmpty());
}

// A program that is killed would leave it behind.
TEST_F(LibraryLoss, IsToldWithoutATemporaryFile)
{
    m_program.setVariable(text("TMPDIR"), given("no directory", {}));
    const auto result = add(system("T"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(has("custom/T.xml"));
}

// What is accepted converts under its name as it does from its file.
TEST_F(LibraryLoss, LeavesConversionsAsTheyAre)
{
    const QString home = m_program.home().path(text("library"));
    const QByteArray points = "A,5.4,52.15,45\nB,-97.25,31.5,120.25\nC,145.1,-37.9,-3\n";
    const auto shown = [this](const QString &system) {
        return m_program.run({text("system"), text("show"), system}).out.section(text("\n"), 1);
    };
    for (const char *document : {"rd_new.xml", "british_national_grid.xml"}) {
        const QString file = QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/") + text(document);
        const QString name = text("System ") + text(document).left(2);
        const auto added = m_program.run({text("library"), text("add"), text("--create"),
                                          text("--dir"), home, file, text("--as"), name});
        ASSERT_EQ(added.status, 0) << added.err;
        const QStringList convert = {text("convert"), text("--system")};
        const auto byFile = m_program.run(convert + QStringList(file), points);
        const auto byName = m_program.run(convert + QStringList(name), points);
        EXPECT_EQ(byName.out, byFile.out) << file;
        EXPECT_EQ(byName.status, byFile.status) << file;
        EXPECT_NE(byFile.out, QString());
        EXPECT_EQ(shown(name), shown(file));
    }
}

} // namespace
} // namespace KelStd
