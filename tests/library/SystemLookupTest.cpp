// Which system of a library a name or a code means.

#include "library/RecordKinds.h"

#include <KelStd/library/SystemLookup.h>

namespace KelStd::test {
namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class SystemsMeant : public LibraryTest
{
protected:
    LibraryDirectory directory() const { return LibraryDirectory(path("")); }

    /// A document of a system with this code, written by hand.
    static QByteArray document(const char *name, const char *code)
    {
        return SystemKind::document(text(name), 1)
            .replace("</Coord>", QByteArray("<Origin ver=\"1\" authority=\"EPSG\" code=\"") + code
                                     + "\"/></Coord>");
    }

    library::SystemLookup ofName(const char *name) const
    {
        return library::systemOfName(directory(), text(name));
    }

    library::SystemLookup ofCode(const char *code) const
    {
        return library::systemOfCode(directory(), text(code));
    }
};

void expectMatch(const library::SystemLookup &lookup, RecordKind kind, const char *name)
{
    EXPECT_FALSE(lookup.failure) << lookup.failure.text;
    ASSERT_TRUE(lookup.match);
    EXPECT_EQ(lookup.match->kind, kind);
    EXPECT_EQ(lookup.match->name, text(name));
    EXPECT_TRUE(lookup.match->copies.isEmpty());
}

void expectNothing(const library::SystemLookup &lookup)
{
    EXPECT_FALSE(lookup.failure) << lookup.failure.text;
    EXPECT_FALSE(lookup.match);
}

TEST(CodesMeant, AreThoseThatProjTakesForTheSame)
{
    const struct
    {
        const char *given, *code;
    } rows[] = {
        {"EPSG:28992", "EPSG:28992"},
        {"28992", "EPSG:28992"},
        {"urn:ogc:def:crs:EPSG::28992", "EPSG:28992"},
        {"ESRI:102100", "ESRI:102100"},
        {"Amersfoort / RD New", ""},
        {"28992 ", ""},
        {"28992\n", ""},
        {"", ""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(library::codeMeantBy(text(row.given)), text(row.code)) << row.given;
}

TEST_F(SystemsMeant, FindNamesOfCustomSystemsBeforeStandardOnes)
{
    write("custom/a.xml", document("Both", "1"));
    write("standard/a.xml", document("Both", "2"));
    write("standard/b.xml", document("Standard only", "3"));
    expectMatch(ofName("Both"), RecordKind::Custom, "Both");
    expectMatch(ofName("Standard only"), RecordKind::Standard, "Standard only");
    expectNothing(ofName("both"));
    expectNothing(ofName("EPSG:3"));
    expectNothing(ofName(""));
}

TEST_F(SystemsMeant, FindCodesOfCustomSystemsBeforeStandardOnes)
{
    write("custom/a.xml", document("Mine", "1"));
    write("standard/a.xml", document("Delivered", "1"));
    write("standard/b.xml", document("Standard only", "3"));
    for (const char *code : {"EPSG:1", "epsg:1", "1", "urn:ogc:def:crs:EPSG::1"})
        expectMatch(ofCode(code), RecordKind::Custom, "Mine");
    expectMatch(ofCode("3"), RecordKind::Standard, "Standard only");
    expectNothing(ofCode("EPSG:4"));
    expectNothing(ofCode("ESRI:1"));
    expectNothing(ofCode("Mine"));
}

TEST_F(SystemsMeant, LeaveTheChoiceOfSeveralSystemsToTheUser)
{
    write("custom/a.xml", document("A", "1"));
    write("custom/b.xml", document("B", "1"));
    const auto several = ofCode("1");
    EXPECT_FALSE(several.match);
    EXPECT_EQ(several.failure.kind, LibraryFailureKind::SeveralSystems);
    EXPECT_EQ(several.failure.text, text("2 custom systems of the library have this code: \"A\", "
                                         "\"B\"; name one of them"));
    EXPECT_EQ(several.subject, text("EPSG:1"));
    // But for the one that is called as the code.
    write("custom/c.xml", document("EPSG:1", "1"));
    expectMatch(ofCode("1"), RecordKind::Custom, "EPSG:1");
}

TEST_F(SystemsMeant, LeaveTheChoiceOfSeveralDocumentsToTheUser)
{
    write("custom/a.xml", document("A", "1"));
    write("custom/b.xml", document("A", "1"));
    for (const auto &lookup : {ofName("A"), ofCode("1")}) {
        EXPECT_FALSE(lookup.match);
        EXPECT_EQ(lookup.failure.kind, LibraryFailureKind::SeveralFiles);
        EXPECT_EQ(lookup.subject, text("A"));
    }
}

TEST(RemarksOnSystems, SayWhoseSystemACodeHasMeant)
{
    using library::SystemMatch;
    const QString code = text("28992");
    EXPECT_EQ(library::remarkOn(SystemMatch{RecordKind::Standard, text("RD"), {}}, code), text(""));
    EXPECT_EQ(library::remarkOn(SystemMatch{RecordKind::Custom, text("Mine"), {}}, code),
              text("28992 is the custom system \"Mine\" of the library"));
    EXPECT_EQ(
        library::remarkOn(
            SystemMatch{RecordKind::Standard, text("RD"), {text("Mine"), text("Mine2")}}, code),
        text("EPSG:28992 is the standard system \"RD\" of the library; 2 custom systems have "
             "this code, too: \"Mine\", \"Mine2\""));
}

} // namespace
} // namespace KelStd::test
