// The display configuration of a library changed by the program: its bytes by hand.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;
using test::ProgramResult;
using test::readFile;

/// Version 1 and the fields of a new configuration in their order: an enumeration has four bytes,
/// decimals and flags one each.
const QByteArray defaults = QByteArray("00000001"
                                       "00000001"       // north, east
                                       "0600"           // numbers
                                       "000000140600"   // longitudes and latitudes: style 20
                                       "0000000a0400"   // ellipsoidal heights: unit 10
                                       "0000000a0400"   // northing and easting
                                       "0000000a0400"   // local heights
                                       "0000001e"       // time scale 30
                                       "000000c80000"   // temperatures: unit 200
                                       "000000640000"   // pressures: unit 100
                                       "000000170200"   // angles: style 23
                                       "0000000a0400"   // distances
                                       "0000000a0400"); // heights

QByteArray changed(int offset, const char *hex)
{
    QByteArray bytes = defaults;
    return bytes.replace(2 * offset, static_cast<int>(qstrlen(hex)), hex);
}

class DisplayCommand : public LibraryRun
{
protected:
    DisplayCommand() { QDir().mkpath(path("custom")); }

    ProgramResult display(std::initializer_list<const char *> words) const
    {
        QStringList arguments = {text("display")};
        for (const char *word : words)
            arguments += text(word);
        return m_program.run(arguments + QStringList{text("--dir"), directory()});
    }

    QByteArray hex() const { return readFile(path("display.bin")).toHex(); }
};

TEST_F(DisplayCommand, ShowsTheDefaultsWhereThereIsNoFile)
{
    const auto shown = display({"show"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.err, QString());
    EXPECT_EQ(shown.outLines().size(), 31); // as many as a configuration has fields
    for (const char *line :
         {"latlong-style                dms  ", "latlong-decimals             6  ",
          "plane-unit                   m  ", "angle-style                  second  ",
          "number-decimals              6  ", "pressure-unit                bar  ",
          "temperature-unit             Celsius  ", "time-scale                   utc  ",
          "distance-zeros               no  ", "coordinate-order             north-east  "})
        EXPECT_THAT(shown.out, Mentions(line));
    EXPECT_FALSE(has("display.bin"));
}

TEST_F(DisplayCommand, SetWritesOneFieldOfTheFile)
{
    const struct
    {
        const char *name;
        const char *value;
        int offset; ///< in the file [bytes]
        const char *hex;
    } rows[] = {
        {"coordinate-order", "east-north", 4, "00000002"},
        {"number-decimals", "17", 8, "11"},
        {"number-zeros", "yes", 9, "01"},
        {"latlong-decimals", "8", 14, "08"},
        {"latlong-zeros", "yes", 15, "01"},
        {"ellipsoidal-height-unit", "ft", 16, "00000014"},
        {"plane-unit", "us-ft", 22, "0000001e"},
        {"plane-decimals", "3", 26, "03"},
        {"local-height-unit", "mm", 28, "0000000b"},
        {"time-scale", "gpsw", 34, "00000021"},
        {"temperature-unit", "Kelvin", 38, "000000ca"},
        {"pressure-unit", "inHg", 44, "00000068"},
        {"angle-decimals", "0", 54, "00"},
        {"distance-decimals", "5", 60, "05"},
        {"height-zeros", "yes", 67, "01"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const auto set = display({"set", row.name, row.value});
        EXPECT_EQ(set.status, 0) << set.err;
        EXPECT_THAT(set.out, Mentions(row.name));
        EXPECT_EQ(hex(), changed(row.offset, row.hex));
        EXPECT_THAT(display({"show"}).out, Mentions((text(row.name).leftJustified(27) + text("  ")
                                                     + text(row.value) + QLatin1Char(' '))
                                                        .toUtf8()
                                                        .constData()));
        EXPECT_EQ(display({"reset"}).status, 0);
        EXPECT_FALSE(has("display.bin"));
    }
}

// 0.000001 of a second is 0.03 mm on the ground; 10 decimals of a degree are 0.01 mm, 12 of a
// radian 0.006 mm.
TEST_F(DisplayCommand, AnotherStyleShowsAsMuchAsBefore)
{
    EXPECT_THAT(display({"set", "latlong-style", "degree"}).out,
                Mentions("set latlong-style to degree, and latlong-decimals to 10: "));
    EXPECT_EQ(hex(), changed(10, "000000160a"));
    EXPECT_THAT(display({"set", "latlong-style", "radian"}).out,
                Mentions("and latlong-decimals to 12: "));
    EXPECT_THAT(display({"set", "latlong-style", "dms"}).out,
                Mentions("and latlong-decimals to 7: "));
    EXPECT_EQ(display({"set", "latlong-style", "dms"}).out,
              text("set latlong-style to dms: ") + path("display.bin\n"));
}

TEST_F(DisplayCommand, ASettingIsThatOfTables)
{
    put("custom/A.xml", system("A"));
    EXPECT_EQ(display({"set", "latlong-style", "degree"}).status, 0);
    EXPECT_EQ(display({"set", "latlong-decimals", "3"}).status, 0);
    const auto table = m_program.run(
        {text("convert"), text("--dir"), directory(), text("--system"), text("A"), text("--table")},
        "5.5,-52.25,40\n");
    EXPECT_EQ(table.outLines().value(3).simplified().left(17), text("005.500\xC2\xB0"
                                                                    "E 52.250\xC2\xB0"
                                                                    "S")
                                                                   .left(17));
}

// A hectopascal is a millibar: 100 Pa.
TEST_F(DisplayCommand, AHectopascalIsAMillibar)
{
    EXPECT_EQ(display({"set", "pressure-unit", "mbar"}).status, 0);
    const auto millibar = hex();
    EXPECT_EQ(display({"reset"}).status, 0);
    EXPECT_EQ(display({"set", "pressure-unit", "hPa"}).status, 0);
    EXPECT_EQ(hex(), millibar);
}

TEST_F(DisplayCommand, AUnitIsNotTakenForAnotherOfAFactor)
{
    for (const char *word : {"kPa", "MPa", "hpas"}) {
        const auto result = display({"set", "pressure-unit", word});
        EXPECT_EQ(result.status, 2);
        EXPECT_FALSE(result.err.contains(text("did you mean"))) << result.err;
    }
    EXPECT_THAT(display({"set", "plane-unit", "cm"}).err,
                Mentions("is no value of plane-unit; there are m, ft, us-ft, mm"));
    EXPECT_THAT(display({"set", "plane-unit", "usft"}).err, Mentions("did you mean 'us-ft'?"));
}

TEST_F(DisplayCommand, MistakesAreRefusedWithNearWords)
{
    const struct
    {
        std::initializer_list<const char *> words;
        const char *message;
    } rows[] = {
        {{"set", "latlong-stile", "dms"},
         "there is no setting 'latlong-stile'; did you mean 'latlong-style'?"},
        {{"set", "latlong-style", "degre"},
         "'degre' is no value of latlong-style; did you mean 'degree'? There are dms, degree, "
         "second, radian"},
        {{"set", "plane-unit", "furlong"},
         "'furlong' is no value of plane-unit; there are m, ft, us-ft, mm"},
        {{"set", "plane-decimals", "18"}, "'18' is no value of plane-decimals; there are 0 to 17"},
        {{"set", "plane-decimals", "-1"}, "'-1' is no value of plane-decimals; there are 0 to 17"},
        {{"set", "plane-decimals"}, "NAME and VALUE are needed"},
        {{"set", "plane-zeros", "yes", "no"}, "'no' is one argument too many"},
    };
    for (const auto &row : rows) {
        const auto result = display(row.words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.message));
    }
    EXPECT_FALSE(has("display.bin"));
}

TEST_F(DisplayCommand, WhatReachesDefinitionsOfApplicationsIsNoted)
{
    EXPECT_THAT(display({"set", "distance-unit", "ft"}).err, Mentions("note: an application"));
    EXPECT_EQ(display({"set", "distance-unit", "m"}).err, QString());
    EXPECT_THAT(display({"set", "distance-decimals", "2"}).err, Mentions("note: an application"));
    EXPECT_EQ(display({"set", "plane-unit", "ft"}).err, QString());
}

TEST_F(DisplayCommand, AFileThatIsNotWholeIsKept)
{
    const QByteArray whole = QByteArray::fromHex(defaults);
    for (const QByteArray &bytes :
         {QByteArray(), whole.left(67), whole + '\0', "\0\0\0\2" + whole.mid(4)}) {
        put("display.bin", bytes);
        const auto set = display({"set", "plane-decimals", "3"});
        EXPECT_EQ(set.status, 3);
        EXPECT_THAT(set.err, Mentions("'kelstd display reset' removes it"));
        EXPECT_EQ(display({"show"}).status, 3);
        EXPECT_EQ(readFile(path("display.bin")), bytes);
    }
    EXPECT_EQ(display({"reset"}).status, 0);
    EXPECT_EQ(display({"show"}).status, 0);
}

// Unit 21 is the yard, which has no symbol.
TEST_F(DisplayCommand, AValueWithoutAWordIsMendedByASetting)
{
    put("display.bin", QByteArray::fromHex(changed(22, "00000015")));
    const auto shown = display({"show"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_THAT(shown.err, Mentions("warning: the display configuration "));
    EXPECT_THAT(shown.out, Mentions("plane-unit                   ? (21)"));
    EXPECT_EQ(display({"set", "plane-unit", "m"}).status, 0);
    EXPECT_EQ(hex(), defaults);
}

TEST_F(DisplayCommand, ADirectoryInItsPlaceIsLeft)
{
    QDir().mkpath(path("display.bin/inside"));
    for (const auto &result : {display({"set", "plane-decimals", "3"}), display({"reset"})}) {
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
    }
    EXPECT_TRUE(has("display.bin/inside"));
}

} // namespace
} // namespace KelStd
