// `kelstd convert --system` with the code of a system, and names that look like codes.

#include "cli/LibraryRun.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::LibraryRun;
using test::Mentions;
using test::numberIn;

class ConvertByCode : public LibraryRun
{
protected:
    void putHome(const char *file, const QByteArray &bytes) const
    {
        test::writeFile(m_program.home().path(text("library/") + text(file)), bytes);
    }

    test::ProgramResult run(std::initializer_list<const char *> words) const
    {
        QStringList arguments;
        for (const char *word : words)
            arguments += text(word);
        return m_program.run(arguments);
    }

    test::ProgramResult convert(const char *system, const QByteArray &point) const
    {
        return m_program.run({text("convert"), text("--system"), text(system)}, point);
    }

    /// The document with an origin of this code.
    static QByteArray coded(QByteArray document, const QByteArray &code)
    {
        return document.replace("</Coord>", "<Origin ver=\"1\" authority=\"EPSG\" code=\"" + code
                                                + "\"/></Coord>");
    }

    static void expectPlane(const test::ProgramResult &result, double northing, double easting)
    {
        ASSERT_EQ(result.status, 0) << result.err;
        const auto row = csvRows(result.out).value(0);
        EXPECT_NEAR(numberIn(row, text("local_northing_m")), northing, 0.001);
        EXPECT_NEAR(numberIn(row, text("local_easting_m")), easting, 0.001);
    }
};

const QByteArray dutchPoint = "5.25,52.5,10\n";

TEST_F(ConvertByCode, ANameOfACodeIsRefusedUnlessItIsTheSystemsOwn)
{
    const QByteArray rd = coded(system("RD"), "28992");
    struct Row
    {
        QByteArray document;
        const char *name;
        const char *reason; ///< nullptr where it is added
    };
    const Row rows[] = {
        {rd, "EPSG:2154",
         "the name \"EPSG:2154\" is that of a code, and the system's own is "
         "EPSG:28992; give it another one with --as"},
        {rd, "epsg:2154", "the system's own is EPSG:28992"},
        {rd, "urn:ogc:def:crs:EPSG::2154", "the system's own is EPSG:28992"},
        {system("RD"), "EPSG:28992", "is that of a code, and the system has none"},
        {rd, "epsg:28992", nullptr},
        {rd, "Site 2: north", nullptr},
        {rd, "2154", nullptr},
    };
    QDir().mkpath(path("custom"));
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const QString file = given("rd.xml", row.document);
        const auto added = library({text("add"), file, text("--as"), text(row.name)});
        const QString named =
            given("named.xml",
                  QByteArray(row.document).replace("\"RD\"", '"' + QByteArray(row.name) + '"'));
        const auto asNamed = library({text("add"), named});
        EXPECT_EQ(added.status, row.reason == nullptr ? 0 : 1) << added.err;
        EXPECT_EQ(asNamed.status, 1);
        EXPECT_THAT(asNamed.err, Mentions(row.reason == nullptr ? "is taken by" : row.reason));
        if (row.reason != nullptr) {
            EXPECT_THAT(added.err, Mentions(row.reason));
        }
    }
    EXPECT_EQ(names("custom"),
              (QStringList{text("2154"), text("Site 2: north"), text("epsg:28992")}));
}

TEST_F(ConvertByCode, ARecordOfACodesNameIsNotReplacedByAnotherSystem)
{
    put("custom/a.xml", coded(system("EPSG:28992"), "28992"));
    const auto same =
        library({text("replace"), text("EPSG:28992"), given("same.xml", system("A"))});
    EXPECT_EQ(same.status, 1) << same.err; // its file's name is another
    put("custom/EPSG:28992.xml", coded(system("EPSG:28992"), "28992"));
    QFile::remove(path("custom/a.xml"));
    const auto other = library(
        {text("replace"), text("EPSG:28992"), given("other.xml", coded(system("A"), "2154"))});
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.err, Mentions("cannot replace the custom system \"EPSG:28992\": the name "
                                    "\"EPSG:28992\" is that of a code, and the system's own is "
                                    "EPSG:2154"));
    EXPECT_EQ(library({text("replace"), text("EPSG:28992"), given("same.xml", system("A"))}).status,
              0);
}

TEST_F(ConvertByCode, AnImportedSystemIsNotCalledByAnotherCode)
{
    QDir().mkpath(path("custom"));
    const auto imported = [this](const char *code, const char *name) {
        return m_program.run({text("system"), text("import"), text(code), text("--add"),
                              text("--as"), text(name), text("--dir"), directory()});
    };
    const auto refused = imported("EPSG:32631", "EPSG:32632");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, Mentions("the system's own is EPSG:32631"));
    EXPECT_EQ(imported("EPSG:32631", "EPSG:32631").status, 0);
    EXPECT_EQ(names("custom"), QStringList{text("EPSG:32631")});
}

// The natural origin of the projection has the false coordinates: 700000 m and 6600000 m of
// Lambert-93, 463000 m and 155000 m of the Dutch grid.
TEST_F(ConvertByCode, ACodeGoesBeforeARecordOfItsName)
{
    putHome("custom/named.xml", coded(system("EPSG:2154"), "28992"));
    const auto french = convert("EPSG:2154", "3,46.5,10\n");
    expectPlane(french, 6600000.0, 700000.0);
    EXPECT_THAT(french.err,
                Mentions("note: EPSG:2154 is taken as a code; the custom system of this "
                         "name is not known to have it"));
    // That of the library's own code goes before it, too.
    putHome("custom/rd.xml", coded(system("RD"), "28992"));
    putHome("standard/two.xml", system("EPSG:28992").replace("155000", "255000"));
    QFile::remove(m_program.home().path(text("library/custom/named.xml")));
    const auto dutch = convert("EPSG:28992", dutchPoint);
    EXPECT_EQ(dutch.status, 0);
    EXPECT_EQ(dutch.out, convert("RD", dutchPoint).out);
    EXPECT_THAT(dutch.err, Mentions("the standard system of this name is not known to have it"));
}

TEST_F(ConvertByCode, ANameThatIsNobodysCodeIsAName)
{
    putHome("custom/site.xml", system("SITE:4"));
    const auto result = convert("SITE:4", dutchPoint);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, text("kelstd: note: SITE:4 is the system of this name of the library, "
                               "which is not known to be SITE:4\n"));
}

TEST_F(ConvertByCode, CopiesOfADeliveredSystemLeaveItsCodeToIt)
{
    const char *const delivered = "Amersfoort / RD New";
    ASSERT_EQ(run({"library", "add", delivered, "--as", "Mine"}).status, 0);
    const auto one = convert("EPSG:28992", dutchPoint);
    EXPECT_EQ(one.err,
              text("kelstd: note: EPSG:28992 is the custom system \"Mine\" of the library\n"));
    ASSERT_EQ(run({"library", "add", delivered, "--as", "Mine2"}).status, 0);
    const auto byName = convert(delivered, dutchPoint);
    ASSERT_EQ(byName.status, 0);
    for (const char *code : {"EPSG:28992", "28992", "urn:ogc:def:crs:EPSG::28992"}) {
        const auto byCode = convert(code, dutchPoint);
        EXPECT_EQ(byCode.status, 0);
        EXPECT_EQ(byCode.out, byName.out);
        EXPECT_EQ(byCode.err,
                  text("kelstd: note: EPSG:28992 is the standard system \"Amersfoort / RD New\" of "
                       "the library; 2 custom systems have this code, too: \"Mine\", \"Mine2\"\n"));
    }
    // One that was changed is not what the code is delivered with.
    const QString file = m_program.home().path(text("library/standard/Amersfoort_RD_New.xml"));
    test::writeFile(file, test::readFile(file).replace("155000", "155001"));
    const auto changed = convert("EPSG:28992", dutchPoint);
    EXPECT_EQ(changed.status, 3);
    EXPECT_THAT(changed.err, Mentions("2 custom systems of the library have this code: \"Mine\", "
                                      "\"Mine2\"; name one of them"));
}

TEST_F(ConvertByCode, ACopyOfTheCodesOwnNameIsTheOneThatIsMeant)
{
    putHome("custom/a.xml", coded(system("EPSG:28992").replace("155000", "255000"), "28992"));
    putHome("custom/b.xml", coded(system("B"), "28992"));
    const auto result = convert("EPSG:28992", dutchPoint);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out, convert("B", dutchPoint).out);
}

TEST_F(ConvertByCode, AnEpsgNumberIsLookedForInTheLibrary)
{
    putHome("custom/a.xml", coded(system("A").replace("155000", "255000"), "28992"));
    const auto byNumber = convert("28992", dutchPoint);
    EXPECT_EQ(byNumber.out, convert("A", dutchPoint).out);
    EXPECT_EQ(byNumber.err,
              text("kelstd: note: 28992 is the custom system \"A\" of the library\n"));
    // A job's number is a name.
    putHome("custom/b.xml", system("28992"));
    const auto byName = convert("28992", dutchPoint);
    EXPECT_EQ(byName.status, 0);
    EXPECT_NE(byName.out, byNumber.out);
    EXPECT_EQ(byName.err, text("kelstd: note: 28992 is the system of this name of the library, "
                               "which is not known to be EPSG:28992\n"));
}

TEST_F(ConvertByCode, ACodeThatIsNowhereIsSaidToBe)
{
    putHome("custom/a.xml", system("A"));
    for (const QByteArray code : {"EPSG:99999", "FOO:1", "99999"}) {
        const auto result = convert(code.constData(), dutchPoint);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, Mentions(("there is no file " + code
                                          + ", PROJ's database has no such code, and the library "
                                            "has no system \"")
                                             .constData()));
    }
    EXPECT_FALSE(convert("Nowhere", dutchPoint).err.contains(text("database")));
}

} // namespace
} // namespace KelStd
