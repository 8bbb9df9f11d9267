// `kelstd convert` and `kelstd system show` with the library of the home directory: systems by
// name, and the display configuration.

#include "cli/LibraryRun.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::LibraryRun;
using test::Mentions;
using test::numberIn;

class ConvertByName : public LibraryRun
{
protected:
    void putHome(const char *file, const QByteArray &bytes) const
    {
        test::writeFile(m_program.home().path(text("library/") + text(file)), bytes);
    }

    /// "A", with another false easting than `system` has.
    static QByteArray shiftedSystem()
    {
        return test::editedSystem(text("rd_new.xml"), {{text("Amersfoort / RD New"), text("A")},
                                                       {text("155000"), text("255000")}});
    }

    test::ProgramResult convert(const QString &system, const QByteArray &point,
                                const QStringList &options = {}) const
    {
        return m_program.run(QStringList{text("convert"), text("--system"), system} + options,
                             point);
    }
};

// By definition of the zone: false easting 500000 m, at its central meridian, 3 degrees east.
TEST_F(ConvertByName, ADeliveredSystemIsAtHand)
{
    const auto result = convert(text("WGS 84 / UTM zone 31N"), "3,0,10\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.errLines().size(), 1); // that the library is new
    const auto row = csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(row, text("local_easting_m")), 500000, 0.00001);
    EXPECT_NEAR(numberIn(row, text("local_northing_m")), 0, 0.00001);
    const auto again = convert(text("WGS 84 / UTM zone 31N"), "3,0,10\n");
    EXPECT_EQ(again.err, QString());
    EXPECT_EQ(again.out, result.out);
}

TEST_F(ConvertByName, ADeliveredSystemIsFoundByItsCode)
{
    convert(text("WGS 84 / UTM zone 31N"), "3,0,10\n"); // which makes the library
    const auto byName = convert(text("Amersfoort / RD New"), "5.25,52.5,10\n");
    ASSERT_EQ(byName.status, 0);
    for (const char *code : {"EPSG:28992", "epsg:28992"}) {
        const auto byCode = convert(text(code), "5.25,52.5,10\n");
        EXPECT_EQ(byCode.status, 0);
        EXPECT_EQ(byCode.err, QString());
        EXPECT_EQ(byCode.out, byName.out);
    }
    EXPECT_EQ(m_program.run({text("system"), text("show"), text("EPSG:28992")}).outLines().value(0),
              text("Coordinate system         Amersfoort / RD New"));
    for (const char *unknown : {"EPSG:289921", "ESRI:28992", "EPSG:"}) {
        const auto result = convert(text(unknown), "5.25,52.5,10\n");
        EXPECT_EQ(result.status, 3) << unknown;
        EXPECT_THAT(result.err, Mentions("the library has no system"));
    }
}

/// A system "A" whose origin has the code 28992 of the authority EPSG.
QByteArray coded(QByteArray document)
{
    return document.replace("</Coord>",
                            "<Origin ver=\"1\" authority=\"EPSG\" code=\"28992\"/></Coord>");
}

TEST_F(ConvertByName, ACodeMeansACustomSystemBeforeAStandardOne)
{
    putHome("standard/rd.xml", coded(system("RD")));
    putHome("custom/any.xml", coded(shiftedSystem()));
    const auto custom = convert(text("EPSG:28992"), "5.25,52.5,10\n");
    EXPECT_EQ(custom.status, 0);
    EXPECT_EQ(custom.out, convert(text("A"), "5.25,52.5,10\n").out);
    EXPECT_EQ(custom.err,
              text("kelstd: note: EPSG:28992 is the custom system \"A\" of the library\n"));
    putHome("custom/other.xml", coded(system("B / C")));
    const auto several = convert(text("EPSG:28992"), "5.25,52.5,10\n");
    EXPECT_EQ(several.status, 3);
    EXPECT_THAT(several.err, Mentions("2 custom systems of the library have this code: \"A\", "
                                      "\"B / C\"; name one of them"));
}

TEST_F(ConvertByName, ACustomSystemGoesBeforeAStandardOne)
{
    putHome("standard/A.xml", system("A"));
    putHome("custom/any.xml", shiftedSystem());
    putHome("standard/B.xml", system("B"));
    // The origin of the grid, so that its eastings are the false easting.
    const QStringList local = {text("--from"), text("local-neh")};
    const auto a = csvRows(convert(text("A"), "463000,255000,0\n", local).out).value(0);
    const auto b = csvRows(convert(text("B"), "463000,155000,0\n", local).out).value(0);
    EXPECT_EQ(a.value(text("local_longitude_deg")), b.value(text("local_longitude_deg")));
    EXPECT_FALSE(a.value(text("local_longitude_deg")).isEmpty());
}

// Which of them is loaded depends on the order in which the file system lists them.
TEST_F(ConvertByName, ASystemOfSeveralFilesIsRefused)
{
    putHome("custom/One.xml", system("A"));
    putHome("custom/two.xml", shiftedSystem());
    putHome("custom/b.xml", system("B"));
    putHome("custom/skipped.xml", "<Coord ver=\"1\" coord_name=\"B\"/>");
    const QString several =
        text("kelstd: cannot read the coordinate system A: 2 files of ")
        + m_program.home().path(text("library/custom"))
        + text(" hold it: \"One.xml\", \"two.xml\"; delete all but one first\n");
    for (const auto &result : {convert(text("A"), "5,52,10\n"),
                               m_program.run({text("system"), text("show"), text("A")})}) {
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_EQ(result.err, several);
    }
    EXPECT_EQ(convert(text("B"), "5,52,10\n").err, QString());
    const auto shown = m_program.run({text("library"), text("show"), text("A")});
    EXPECT_EQ(shown.status, 0);
    EXPECT_THAT(shown.err, Mentions("kelstd: note: shown is one of several: 2 files of "));
    EXPECT_EQ(shown.errLines().size(), 1);
    EXPECT_EQ(m_program.run({text("library"), text("show"), text("B")}).err, QString());
}

TEST_F(ConvertByName, UnknownNamesGetNearOnesAndAHint)
{
    putHome("standard/a.xml", system("City / Old"));
    putHome("standard/b.xml", system("City / New"));
    const auto equal = convert(text("city / old"), "3,0,10\n");
    EXPECT_EQ(equal.status, 3);
    EXPECT_EQ(equal.err, text("kelstd: there is no file city / old, and the library has no system "
                              "\"city / old\"; did you mean \"City / Old\"? 'kelstd library list' "
                              "lists them\n"));
    EXPECT_THAT(convert(text("City"), "3,0,10\n").err,
                Mentions("did you mean \"City / New\", \"City / Old\" or "));
    // By the catalogue's words, where it has better ones than the library.
    EXPECT_THAT(convert(text("utm 35s"), "3,0,10\n").err,
                Mentions("did you mean EPSG:32735 (WGS 84 / UTM zone 35S), EPSG:"));
    EXPECT_THAT(convert(text("Pulkovo 1942 / Gaus-Kruger zone 7"), "3,0,10\n").err,
                Mentions("did you mean EPSG:28407 (Pulkovo 1942 / Gauss-Kruger zone 7)"));
    EXPECT_THAT(convert(text("Amersfort"), "3,0,10\n").err,
                Mentions("EPSG:28992 (Amersfoort / RD New)"));
    EXPECT_THAT(convert(text("Nowhere"), "3,0,10\n").err,
                Mentions("no system \"Nowhere\"; 'kelstd library list'"));
}

TEST_F(ConvertByName, WhatMeansAFileNeedsNoLibrary)
{
    for (const char *name : {"no-such.xml", "./no-such", "../no-such", "/no/such"}) {
        const auto result = convert(text(name), "3,0,10\n");
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, Mentions("No such file or directory")) << name;
    }
    EXPECT_EQ(convert(test::ProgramRun().file(text("x"), {}), "3,0,10\n").status, 3);
    const QString file = given("a system", system("A"));
    EXPECT_EQ(convert(file, "5,52,10\n").status, 0);
    EXPECT_FALSE(QFileInfo::exists(m_program.home().path(text("library"))));
}

TEST_F(ConvertByName, ASystemMayBeCalledLikeAFile)
{
    const QString name = text("convert by name test.xml");
    putHome("custom/x.xml", system("convert by name test.xml"));
    putHome("custom/y.xml", system("/no/such"));
    EXPECT_EQ(convert(name, "5,52,10\n").status, 0);
    EXPECT_EQ(convert(text("/no/such"), "5,52,10\n").status, 0);
    EXPECT_THAT(convert(text("no-such.xml"), "5,52,10\n").err,
                Mentions("no-such.xml: No such file or directory\n"));
}

TEST_F(ConvertByName, AFileThatHidesASystemIsSaidTo)
{
    const QString file = given("hiding.xml", "no document");
    putHome("custom/x.xml", system(file.toUtf8().constData()));
    const auto hidden = convert(file, "5,52,10\n");
    EXPECT_EQ(hidden.status, 3);
    EXPECT_THAT(hidden.err,
                Mentions("; the library has a system of this name, which the file hides\n"));
    const auto other = convert(given("other.xml", "no document"), "5,52,10\n");
    EXPECT_EQ(other.status, 3);
    EXPECT_FALSE(other.err.contains(text("hides")));
}

TEST_F(ConvertByName, SystemShowTakesANameToo)
{
    putHome("custom/A.xml", system("A"));
    const auto result = m_program.run({text("system"), text("show"), text("A")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.outLines().value(0), text("Coordinate system         A"));
    EXPECT_EQ(m_program.run({text("system"), text("show"), text("a")}).status, 3);
}

TEST_F(ConvertByName, TheLibraryMayLieElsewhere)
{
    put("custom/A.xml", system("A"));
    const QStringList there = {text("--dir"), directory()};
    const auto result = convert(text("A"), "5,52,10\n", there);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.out, convert(path("custom/A.xml"), "5,52,10\n").out);
    const auto shown = m_program.run(QStringList{text("system"), text("show"), text("A")} + there);
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.outLines().value(0), text("Coordinate system         A"));
    EXPECT_FALSE(QFileInfo::exists(m_program.home().path(text("library"))));

    putHome("custom/B.xml", system("B"));
    EXPECT_EQ(convert(text("B"), "5,52,10\n").status, 0);
    const auto elsewhere = convert(text("B"), "5,52,10\n", there);
    EXPECT_EQ(elsewhere.status, 3);
    EXPECT_THAT(elsewhere.err, Mentions("there is no file B, and the library has no system \"B\""));
}

TEST_F(ConvertByName, ALibraryThatIsNamedMustBeThere)
{
    QDir().mkpath(m_program.home().path(text("empty")));
    const QString file = given("a.xml", system("A"));
    putHome("custom/A.xml", system("A"));
    const std::pair<QString, QString> cases[] = {
        {QString(), text("kelstd: --dir is empty\n")},
        {text("/no/such"), text("kelstd: there is no directory /no/such\n")},
        {m_program.home().path(text("empty")),
         text("kelstd: ") + m_program.home().path(text("empty"))
             + text(" holds no library: nothing in it is called base.xml, ellipsoids, projections, "
                    "custom, standard, offered.xml or display.bin\n")}};
    for (const auto &[directory, error] : cases) {
        for (const QString &chosen : {text("A"), file}) {
            const auto result = convert(chosen, "5,52,10\n", {text("--dir"), directory});
            EXPECT_EQ(result.status, 3);
            EXPECT_EQ(result.out, QString());
            EXPECT_EQ(result.err, error);
        }
    }
}

/// The bytes of a display configuration, field by field as its file has them.
QByteArray displayBytes(const char *angleStyle, const char *distance, const char *plane)
{
    const QByteArray lengths = "00000014 02 00";
    return QByteArray::fromHex(
        QByteArray("00000001" // version
                   "00000001" // order of coordinates
                   "08 00")   // plain numbers
        + angleStyle          // longitudes and latitudes: style, decimals, trailing zeros
        + lengths             // ellipsoidal heights: feet, 2 decimals
        + plane               // northings and eastings
        + lengths             // projected heights
        + "0000001f"          // time: local
          "000000c8 01 00"    // temperature
          "00000064 01 00"    // pressure
          "00000016 04 00"    // angles
        + distance            // distances
        + "0000000a 03 00");  // heights
}

const char *const degrees4 = "00000016 04 01";
const char *const feet1 = "00000014 01 01";
const char *const millimetres0 = "0000000b 00 00";

TEST_F(ConvertByName, ATableIsShownAsTheLibraryIsConfigured)
{
    putHome("custom/A.xml", system("A"));
    const QByteArray point = "A,5.5,52.25,304.8\n";
    const QStringList table = {text("--table")};
    const auto before = convert(text("A"), point, table).outLines();
    putHome("display.bin", displayBytes(degrees4, feet1, millimetres0));
    const auto result = convert(text("A"), point, table);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    const QStringList units = result.outLines()
                                  .value(2)
                                  .simplified()
                                  .remove(text("(ell.)"))
                                  .simplified()
                                  .split(QLatin1Char(' '));
    EXPECT_EQ(units, (QStringList{text("deg"), text("deg"), text("ft"), text("ft"), text("ft"),
                                  text("ft"), text("deg"), text("deg"), text("ft"), text("mm"),
                                  text("mm"), text("ft")}));
    const QStringList words = result.outLines().value(3).simplified().split(QLatin1Char(' '));
    EXPECT_EQ(words.value(1), text("005.5000\xC2\xB0"
                                   "E"));
    EXPECT_EQ(words.value(2), text("52.2500\xC2\xB0N"));
    EXPECT_EQ(words.value(3), text("1000")); // 304.8 m
    // The same northing, in millimetres.
    const QString metres = before.value(3).simplified().split(QLatin1Char(' ')).value(10);
    EXPECT_NEAR(words.value(10).toDouble(), metres.toDouble() * 1000, 0.6);
    // Columns stay below their headings.
    EXPECT_EQ(result.outLines().value(3).size(), result.outLines().value(2).size());
}

TEST_F(ConvertByName, ATableIsShownAsTheNamedLibraryIsConfigured)
{
    put("custom/A.xml", system("A"));
    put("display.bin", displayBytes(degrees4, feet1, millimetres0));
    const QByteArray point = "A,5.5,52.25,304.8\n";
    const QString file = path("custom/A.xml");
    const QStringList table = {text("--table")};
    const QStringList there = table + QStringList{text("--dir"), directory()};
    EXPECT_THAT(convert(text("A"), point, there).out, Mentions(" 005.5000\xC2\xB0"));
    EXPECT_EQ(convert(file, point, there).out, convert(text("A"), point, there).out);
    EXPECT_THAT(convert(file, point, table).out, Mentions(" 005\xC2\xB0"));
    putHome("custom/A.xml", system("A"));
    putHome("display.bin", displayBytes(degrees4, feet1, millimetres0));
    QFile::remove(path("display.bin"));
    EXPECT_THAT(convert(text("A"), point, there).out, Mentions(" 005\xC2\xB0"));
}

TEST_F(ConvertByName, OptionsGoBeforeTheConfiguration)
{
    putHome("custom/A.xml", system("A"));
    putHome("display.bin", displayBytes(degrees4, feet1, millimetres0));
    const auto result = convert(text("A"), "A,5.5,52.25,304.8\n",
                                {text("--table"), text("--angle"), text("dms"),
                                 text("--length-unit"), text("m"), text("--precision"), text("3")});
    const QStringList words = result.outLines().value(3).simplified().split(QLatin1Char(' '));
    EXPECT_EQ(words.value(1), text("005\xC2\xB0"
                                   "30\xE2\x80\xB2"
                                   "00.00000\xE2\x80\xB3"
                                   "E"));
    EXPECT_EQ(words.value(3), text("304.800"));
}

// Other programs read CSV.
TEST_F(ConvertByName, PlainNumbersFollowNoConfiguration)
{
    putHome("custom/A.xml", system("A"));
    const QByteArray point = "A,5.5,52.25,304.8\n";
    const QList<QStringList> plain = {{},
                                      {text("--angle"), text("degree")},
                                      {text("--format"), text("exact")},
                                      {text("--table"), text("--format"), text("exact")}};
    QStringList before;
    for (const QStringList &options : plain)
        before += convert(text("A"), point, options).out;
    putHome("display.bin", displayBytes(degrees4, feet1, millimetres0));
    for (int i = 0; i < plain.size(); ++i)
        EXPECT_EQ(convert(text("A"), point, plain.at(i)).out, before.at(i)) << i;
    EXPECT_THAT(convert(text("A"), point, {text("--format"), text("configured")}).out,
                Mentions("wgs84_height_ft"));
}

// In the registry, feet for distances would write the axis of Airy's ellipsoid in feet.
TEST_F(ConvertByName, AConfigurationChangesNothingThatIsComputed)
{
    putHome("custom/A.xml",
            test::editedSystem(text("british_national_grid.xml"),
                               {{text("OSGB36 / British National Grid"), text("A")}}));
    const QByteArray point = "A,-1.5,52.25,100\n";
    const QStringList exact = {text("--table"), text("--precision"),   text("4"), text("--angle"),
                               text("degree"),  text("--length-unit"), text("m")};
    const auto before = convert(text("A"), point, exact);
    ASSERT_EQ(before.status, 0);
    const auto shown = m_program.run({text("system"), text("show"), text("A")});
    EXPECT_THAT(shown.out, Mentions("+a=6377563.396"));
    putHome("display.bin", displayBytes(degrees4, feet1, millimetres0));
    EXPECT_EQ(convert(text("A"), point, exact).out, before.out);
    EXPECT_EQ(m_program.run({text("system"), text("show"), text("A")}).out, shown.out);
}

TEST_F(ConvertByName, AConfigurationThatIsNotToBeTrustedIsNotUsed)
{
    putHome("custom/A.xml", system("A"));
    const QByteArray point = "A,5.5,52.25,304.8\n";
    const QStringList table = {text("--table")};
    const auto before = convert(text("A"), point, table);
    const QByteArray whole = displayBytes(degrees4, feet1, millimetres0);
    for (const QByteArray &bytes : {QByteArray(), whole.left(67), whole + '\0',
                                    QByteArray::fromHex("00000002") + whole.mid(4),
                                    displayBytes("0000001e 04 01", feet1, millimetres0),
                                    displayBytes("00000016 12 01", feet1, millimetres0),
                                    displayBytes(degrees4, "00000064 01 00", millimetres0)}) {
        putHome("display.bin", bytes);
        const auto result = convert(text("A"), point, table);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, before.out);
        EXPECT_THAT(result.err, Mentions("warning: the display configuration "));
    }
}

} // namespace
} // namespace KelStd
