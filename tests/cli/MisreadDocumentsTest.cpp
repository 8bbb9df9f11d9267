// Systems and lists whose documents are not understood as they are written are refused everywhere.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>

#include <sys/stat.h>

#include <fstream>
#include <thread>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;
using test::readFile;

constexpr const char *point = "A,5.387,52.155,45\n";

class MisreadDocuments : public LibraryRun
{
protected:
    MisreadDocuments() { QDir().mkpath(path("custom")); }

    /// The Dutch grid, called "T", with a text of it changed.
    static QByteArray changed(const char *from, const char *to)
    {
        return test::editedSystem(
            text("rd_new.xml"), {{text("Amersfoort / RD New"), text("T")}, {text(from), text(to)}});
    }
    /// A decimal comma in line 17.
    static QByteArray misread() { return changed(">-565.04<", ">-565,04<"); }

    test::ProgramResult convert(const QString &system, const QStringList &more = {}) const
    {
        return m_program.run(QStringList{text("convert"), text("--system"), system} + more, point);
    }

    /// Refused with a list in which each line but the last is a finding.
    static void expectRefused(const test::ProgramResult &result, const QString &file,
                              const char *finding)
    {
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(finding));
        const QStringList lines = result.errLines();
        ASSERT_GE(lines.size(), 2) << result.err;
        for (const QString &line : lines.mid(0, lines.size() - 1))
            EXPECT_TRUE(line.startsWith(QStringLiteral("kelstd: %1: line ").arg(file))) << line;
        EXPECT_TRUE(lines.last().startsWith(QStringLiteral("kelstd: %1 is refused: ").arg(file)));
    }
};

struct Misread
{
    const char *from;
    const char *to;
    const char *finding;
};

const Misread misreadRows[] = {
    {">-565.04<", ">-565,04<",
     "line 17, Coord/Ellipsoid_Transform/x_translate: \"-565,04\" is no number that can be read; "
     "understood: 0\n"},
    {">-565.04<", ">-565.04 m<", "x_translate: \"-565.04 m\" is no number that can be read"},
    {">-565.04<", ">-565<!-- metres -->.04<",
     "x_translate: something stands within the text \"-565.04\"; understood: -565\n"},
    {"fuction=\"Seven\"", "fuction=\"seven\"",
     "line 16, Coord/Ellipsoid_Transform: fuction=\"seven\" is none of the format's words; "
     "understood: None\n"},
    {"fuction=\"Seven\"", "function=\"Seven\"",
     "Coord/Ellipsoid_Transform: function=\"Seven\" is no attribute that is read here\n"},
    {"<x_translate ver=\"1\"", "<x_translate",
     "x_translate: <x_translate> where ver=\"1\" is needed, so that it is passed over"},
    {"<param name=\"FalseEast\" ver=\"1\" unit=\"Meter\"",
     "<param name=\"FalseEast\" ver=\"1\" unit=\"Foot\"",
     "line 5, Coord/Projection/param[FalseEast]: unit=\"Foot\" is not converted; understood: "
     "x_0=155000 (Meter)\n"},
    {"<x_rotate ver=\"1\" unit=\"Second\"", "<x_rotate ver=\"1\" unit=\"Radian\"",
     "x_rotate: unit=\"Radian\" is none of the format's words; understood: None\n"},
    {"proj4Param=\"lat_0\"", "proj4Param=\"lat0\"",
     "line 13, Coord/Projection/paramProj4[lat_0]: proj4Param=\"lat0\" is no parameter that PROJ "
     "uses for this projection\n"},
    {"proj4Param=\"k_0\"", "proj4Param=\"to_meter\"", "proj4Param=\"to_meter\" is no parameter"},
    {"proj4Projection=\"sterea\"", "proj4Projection=\"sterea +lat_0=0\"",
     "line 4, Coord/Projection: proj4Projection=\"sterea +lat_0=0\" is not one name of PROJ\n"},
    {"<paramProj4 name=\"FalseEast\"",
     "<param name=\"grid\" ver=\"1\" unit=\"None\" valType=\"String\">egm96_15.gtx</param>"
     "<paramProj4 name=\"grid\" proj4Param=\"geoidgrids\"/><paramProj4 name=\"FalseEast\"",
     "line 10, Coord/Projection/paramProj4[grid]: proj4Param=\"geoidgrids\" is not for a "
     "projection "
     "to say, it overrules the rest; understood: the geoid model: heights are those above this "
     "grid\n"},
    {"biggerHalfAxle=\"6377397.155\"", "biggerHalfAxle=\"6377\"",
     "line 3, Coord/Ellpsoid: biggerHalfAxle=\"6377\" cannot be meant"},
    {"reciprocal=\"299.1528128\" positiveDir=\"ENU\" proj4EllpsName=\"bessel\"",
     "reciprocal=\"0.5\" positiveDir=\"ENU\" proj4EllpsName=\"\"",
     "line 3, Coord/Ellpsoid: reciprocal=\"0.5\" cannot be meant"},
    {">0.9999079<", ">0.09999079<", "param[k_0]: \"0.09999079\" cannot be meant"},
    {">52.1561605555556<", ">521.561605555556<", "\"521.561605555556\" cannot be meant"},
};

TEST_F(MisreadDocuments, AreNotConvertedWith)
{
    for (const Misread &row : misreadRows) {
        SCOPED_TRACE(row.to);
        const QString file = given("t.xml", changed(row.from, row.to));
        const auto result = convert(file);
        expectRefused(result, file, row.finding);
        EXPECT_THAT(result.err, Mentions("--lenient"));
    }
}

// They are not read at all, so that nothing makes them acceptable.
TEST_F(MisreadDocuments, WithoutAVersionAreRefusedWithElementAndLine)
{
    const Misread rows[] = {
        {"<Ellpsoid ver=\"1\"", "<Ellpsoid", "line 3, Coord/Ellpsoid: <Ellpsoid> "},
        {"<Projection ver=\"1\"", "<Projection", "line 4, Coord/Projection: <Projection> "},
        {"<param name=\"k_0\" ver=\"1\"", "<param name=\"k_0\"",
         "line 7, Coord/Projection/param[k_0]: <param> "},
        {"<Ellipsoid_Transform ver=\"1\"", "<Ellipsoid_Transform ver=\"2\"",
         "line 16, Coord/Ellipsoid_Transform: ver=\"2\" "},
    };
    for (const Misread &row : rows) {
        SCOPED_TRACE(row.to);
        const QString file = given("t.xml", changed(row.from, row.to));
        for (const auto &result : {convert(file), convert(file, {text("--lenient")}),
                                   m_program.run({text("system"), text("show"), file})}) {
            EXPECT_EQ(result.status, 3);
            EXPECT_EQ(result.out, QString());
            EXPECT_THAT(result.err, Mentions(row.finding));
            EXPECT_THAT(result.err, Mentions("where ver=\"1\" is needed"));
        }
    }
}

TEST_F(MisreadDocuments, AreConvertedWithAllTheSameWhenTold)
{
    const auto result = convert(given("t.xml", misread()), {text("--lenient")});
    EXPECT_EQ(result.status, 0) << result.err;
    // What is understood is a shift of 0 along x.
    EXPECT_EQ(result.out, convert(given("zero.xml", changed(">-565.04<", ">0<"))).out);
    EXPECT_NE(result.out, convert(given("right.xml", system("T"))).out);
    EXPECT_EQ(result.err, text("kelstd: warning: ") + m_program.home().path(text("t.xml"))
                              + text(": line 17, Coord/Ellipsoid_Transform/x_translate: "
                                     "\"-565,04\" is no number that can be read; understood: "
                                     "0\n"));
    EXPECT_EQ(convert(given("right.xml", system("T")), {text("--lenient")}).err, QString());
}

TEST_F(MisreadDocuments, AreNotConvertedWithByName)
{
    put("custom/some file.xml", misread());
    put("custom/other.xml", system("other"));
    put("standard/S.xml", changed("coord_name=\"T\"", "coord_name=\"S\" Coord_Name=\"S\""));
    put("standard/T2.xml", system("T2"));
    const QStringList library = {text("--dir"), directory()};
    expectRefused(convert(text("T"), library), path("custom/some file.xml"), "\"-565,04\"");
    expectRefused(convert(text("S"), library), path("standard/S.xml"), "Coord_Name=\"S\"");
    EXPECT_EQ(convert(text("T"), library + QStringList{text("--lenient")}).status, 0);
    EXPECT_EQ(convert(text("other"), library).err, QString());
    EXPECT_EQ(convert(text("T2"), library).err, QString());
}

TEST_F(MisreadDocuments, AreNotShown)
{
    const QString file = given("t.xml", misread());
    const QStringList show = {text("system"), text("show")};
    expectRefused(m_program.run(show + QStringList{file}), file, "\"-565,04\"");
    const auto lenient = m_program.run(show + QStringList{file, text("--lenient")});
    EXPECT_EQ(lenient.status, 0);
    EXPECT_THAT(lenient.out, Mentions("+towgs84=0,49.91,465.84"));
    EXPECT_THAT(lenient.err, Mentions("warning: "));

    put("custom/T.xml", misread());
    put("ellipsoids/E.xml", ellipsoids(ellipsoid("E", "6378,137")));
    put("ellipsoids/F.xml", ellipsoids(ellipsoid("F")));
    put("projections/P.xml", projections("P\" proj4projection=\"tmerc"));
    expectRefused(library({text("show"), text("T")}), path("custom/T.xml"), "\"-565,04\"");
    expectRefused(library({text("show"), text("E")}), path("ellipsoids/E.xml"),
                  "biggerHalfAxle=\"6378,137\" is no number");
    expectRefused(library({text("show"), text("P")}), path("projections/P.xml"),
                  "proj4projection=\"tmerc\" is no attribute that is read here");
    EXPECT_EQ(library({text("show"), text("F")}).err, QString());
    const auto shown = library({text("show"), text("--lenient"), text("E")});
    EXPECT_EQ(shown.status, 0);
    EXPECT_THAT(shown.err, Mentions("warning: "));
}

TEST_F(MisreadDocuments, AreNotAdded)
{
    for (const Misread &row : misreadRows) {
        SCOPED_TRACE(row.to);
        const QString file = given("t.xml", changed(row.from, row.to));
        expectRefused(library({text("add"), file}), file, row.finding);
    }
    const QString ellipsoidFile = given("e.xml", ellipsoids(ellipsoid("E", "6377")));
    expectRefused(library({text("add"), ellipsoidFile}), ellipsoidFile,
                  "biggerHalfAxle=\"6377\" cannot be meant");
    const QString projectionFile = given("p.xml", projections("P\" units=\"m"));
    expectRefused(library({text("add"), projectionFile}), projectionFile, "units=\"m\"");
    EXPECT_EQ(QDir(path("custom")).entryList(QDir::Files), QStringList());
    EXPECT_FALSE(has("ellipsoids/E.xml") || has("projections/P.xml"));
}

// It would be written back as the text that it is not.
TEST_F(MisreadDocuments, OfAnUnknownKindOfValueAreNotAdded)
{
    const QString file =
        given("t.xml", changed("valType=\"Double\" isDictionary=\"false\">0.9999079",
                               "valType=\"double\" isDictionary=\"false\">0.9999079"));
    expectRefused(library({text("add"), file}), file,
                  "valType=\"double\" is none of the format's words");
}

TEST_F(MisreadDocuments, ReplaceNothing)
{
    put("custom/T.xml", system("T"));
    const QString file = given("t.xml", misread());
    expectRefused(library({text("replace"), text("T"), file}), file, "\"-565,04\"");
    EXPECT_EQ(readFile(path("custom/T.xml")), system("T"));
}

TEST_F(MisreadDocuments, AreProblemsOfALibrary)
{
    put("custom/T.xml", misread());
    put("custom/U.xml", system("U"));
    put("ellipsoids/E.xml", ellipsoids(ellipsoid("E", "6377")));
    put("base.xml", changed("fuction=\"Seven\"", "fuction=\"seven\""));
    const auto result = library({text("check")});
    EXPECT_EQ(result.status, 1);
    const QString said = result.out.simplified();
    EXPECT_THAT(said, Mentions("T.xml problem: line 17, Coord/Ellipsoid_Transform/x_translate: "
                               "\"-565,04\" is no number that can be read; understood: 0"));
    EXPECT_THAT(said, Mentions("E.xml problem: line 1, Ellipsoid_List/Ellpsoid: "
                               "biggerHalfAxle=\"6377\" cannot be meant; understood: 6377"));
    EXPECT_THAT(said, Mentions("problem: line 16, Coord/Ellipsoid_Transform: fuction=\"seven\""));
    EXPECT_THAT(said, Mentions("skipped: 0, problems: 3, notes: 0"));
    EXPECT_EQ(readFile(path("custom/T.xml")), misread());
}

// It can be read once only.
TEST_F(MisreadDocuments, MayComeFromAPipe)
{
    const QString fifo = m_program.home().path(text("system.fifo"));
    for (const QByteArray &document : {system("T"), misread()}) {
        ASSERT_EQ(mkfifo(fifo.toUtf8().constData(), 0600), 0);
        std::thread writer([&fifo, &document] {
            std::ofstream out(fifo.toUtf8().constData(), std::ios::binary);
            out.write(document.constData(), document.size());
        });
        const auto result = convert(fifo);
        writer.join();
        EXPECT_EQ(result.status, document == misread() ? 3 : 0) << result.err;
        QFile::remove(fifo);
    }
}

TEST_F(MisreadDocuments, AreSaidToBeWhatTheyAreInTheHelp)
{
    for (const QStringList &command :
         {QStringList{text("convert")}, QStringList{text("system"), text("show")},
          QStringList{text("library"), text("show")}})
        EXPECT_THAT(m_program.run(command + QStringList{text("--help"), text("full")}).out,
                    Mentions("--lenient"));
}

// A control character of a document does not reach the terminal.
TEST_F(MisreadDocuments, AreListedWithoutTheirControlCharacters)
{
    const auto result = convert(given("t.xml", changed(">-565.04<", ">&#x9b;31m<")));
    EXPECT_EQ(result.status, 3);
    EXPECT_FALSE(result.err.contains(QChar(0x9b)));
}

} // namespace
} // namespace KelStd
