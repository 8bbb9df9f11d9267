// What a document keeps that `kelstd library` writes: all of a record, or the record is refused.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>

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
constexpr const char *rotation = "valType=\"Angle\" isDictionary=\"false\">0</rotate_angle>";
constexpr const char *scale = "valType=\"Double\" isDictionary=\"false\">0.9999079</param>";

struct Lossy
{
    const char *part;
    const char *other;
    const char *lost;
};

const Lossy lossyRows[] = {
    // The text of such a parameter is never written.
    {scale, "valType=\"String\" isDictionary=\"false\">0.9999079</param>",
     "the value of its parameter \"k_0\" is a text"},
    {translation, "valType=\"String\" isDictionary=\"false\">-565.04</x_translate>",
     "the value of its parameter \"x_translate\" is a text"},
    {rotation, "valType=\"String\" isDictionary=\"false\">7</rotate_angle>",
     "the value of its parameter \"rotate_angle\" is a text"},
    {"valType=\"Y\" isDictionary=\"false\">0</east_zero_y0>",
     "valType=\"String\" isDictionary=\"false\">7</east_zero_y0>",
     "the value of its parameter \"east_zero_y0\" is a text"},
    // "S" reads as 1, which is written as a word that reads as 0.
    {rotation, "valType=\"EllipsoidDirection\" isDictionary=\"false\">S</rotate_angle>",
     "the value of its parameter \"rotate_angle\" is a direction of axes"},
    {translation, "valType=\"Distance\" isDictionary=\"true\">-565.04</x_translate>",
     "the value of its parameter \"x_translate\" is one beside a dictionary"},
    {scale,
     "valType=\"Double\" isDictionary=\"true\" dictionarySelKey=\"one\">0.9999079"
     "<key key_name=\"one\">0.9999079</key></param>",
     "the value of its parameter \"k_0\" is one beside a dictionary"},
    {rotation,
     "valType=\"String\" isDictionary=\"true\" dictionarySelKey=\"one\">"
     "<key key_name=\"one\">7</key></rotate_angle>",
     "the entry \"one\" of its parameter \"rotate_angle\" is a text"},
};

TEST_F(LibraryLoss, IsTheReasonWhyASystemIsNotAdded)
{
    for (const Lossy &row : lossyRows) {
        const auto result = add(changed(row.part, row.other));
        EXPECT_EQ(result.status, 1) << row.other;
        EXPECT_EQ(result.out, QString());
        EXPECT_EQ(result.err, text("kelstd: cannot add ") + m_program.home().path(text("t.xml: "))
                                  + text(row.lost) + text(advice));
    }
    EXPECT_FALSE(has("custom/T.xml"));
}

TEST_F(LibraryLoss, IsTheReasonWhyASystemIsNotReplaced)
{
    put("custom/T.xml", system("T"));
    for (const Lossy &row : lossyRows) {
        const auto result =
            library({text("replace"), text("T"), given("t.xml", changed(row.part, row.other))});
        EXPECT_EQ(result.status, 1) << row.other;
        EXPECT_EQ(result.err, text("kelstd: cannot take ") + m_program.home().path(text("t.xml: "))
                                  + text(row.lost) + text(advice));
    }
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

TEST_F(LibraryLoss, IsNoneWhereNothingIsToBeWritten)
{
    const struct
    {
        const char *part;
        const char *other;
    } rows[] = {
        {rotation, "valType=\"String\" isDictionary=\"false\"></rotate_angle>"},
        {rotation, "valType=\"EllipsoidDirection\" isDictionary=\"false\">ENU</rotate_angle>"},
        {rotation, "valType=\"String\" isDictionary=\"false\"/>"},
        {rotation, "valType=\"Double\" isDictionary=\"true\" dictionarySelKey=\"one\">"
                   "<key key_name=\"one\">7</key></rotate_angle>"},
        // A document has 15 digits of these 17.
        {scale, "valType=\"Double\" isDictionary=\"false\">0.99990790000000003</param>"},
        // The value is a text of no kind, which is written.
        {scale, "valType=\"None\" isDictionary=\"false\">0.9999079</param>"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(add(changed(row.part, row.other)).err, QString()) << row.other;
        EXPECT_EQ(library({text("remove"), text("T")}).status, 0) << row.other;
    }
}

// A program that is killed would leave it behind.
TEST_F(LibraryLoss, IsToldWithoutATemporaryFile)
{
    m_program.setVariable(text("TMPDIR"), given("no directory", {}));
    const auto result = add(system("T"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(has("custom/T.xml"));
}

QStringList systemDocuments()
{
    QStringList documents;
    QDirIterator files(QStringLiteral(KELSTD_TEST_DATA_DIR), {QStringLiteral("*.xml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        documents += files.next();
    documents.sort();
    return documents;
}

// Whatever is accepted converts under its name as it does from its file.
TEST_F(LibraryLoss, LeavesEveryConversionAsItIs)
{
    const QString home = m_program.home().path(text("library"));
    const QByteArray points = "A,5.4,52.15,45\nB,-97.25,31.5,120.25\nC,145.1,-37.9,-3\n";
    const auto shown = [this](const QString &system) {
        return m_program.run({text("system"), text("show"), system}).out.section(text("\n"), 1);
    };
    int added = 0;
    for (const QString &file : systemDocuments()) {
        const QString name = text("System %1").arg(added);
        const auto result = m_program.run({text("library"), text("add"), text("--create"),
                                           text("--dir"), home, file, text("--as"), name});
        if (result.status != 0)
            continue;
        ++added;
        const QStringList convert = {text("convert"), text("--system")};
        const auto byFile = m_program.run(convert + QStringList(file), points);
        const auto byName = m_program.run(convert + QStringList(name), points);
        EXPECT_EQ(byName.out, byFile.out) << file;
        EXPECT_EQ(byName.status, byFile.status) << file;
        EXPECT_EQ(shown(name), shown(file));
    }
    EXPECT_GE(added, 25);
}

} // namespace
} // namespace KelStd
