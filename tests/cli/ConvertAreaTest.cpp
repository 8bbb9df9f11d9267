// What `kelstd convert` says of positions outside the area of use of their system.

#include "cli/LibraryRun.h"

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;

class ConvertArea : public LibraryRun
{
protected:
    /// The Dutch grid with the area of EPSG:28992, as a file.
    QString dutchGrid() const
    {
        return given("rd.xml",
                     system("RD").replace("</Coord>",
                                          "<Origin ver=\"1\"><Area west=\"3.2\" south=\"50.75\" "
                                          "east=\"7.22\" north=\"53.7\" name=\"Netherlands\"/>"
                                          "</Origin></Coord>"));
    }

    test::ProgramResult convert(const QByteArray &points, const QStringList &options = {}) const
    {
        return m_program.run(QStringList{text("convert"), text("--system"), dutchGrid()} + options,
                             points);
    }
};

const char *const warning = "kelstd: warning: %1 outside the area of use of the system, longitudes "
                            "3.2 to 7.22, latitudes 50.75 to 53.7 (Netherlands); the first is "
                            "<stdin>:%2";

QString outside(const char *count, int line)
{
    return QString::fromLatin1(warning).arg(QString::fromLatin1(count)).arg(line);
}

TEST_F(ConvertArea, NothingIsSaidOfPositionsInside)
{
    const auto result = convert("5,52,1\n3.2,50.75,1\n7.22,53.7,1\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
}

TEST_F(ConvertArea, PositionsOutsideAreCountedOnce)
{
    const auto result = convert("5,52,1\n10,52,1\n5,51,1\n8,52,1\n5,54,1\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, outside("3 of 5 positions lie", 2) + text("\n"));
    const auto one = convert("10,52,1\n");
    EXPECT_EQ(one.err, outside("1 of 1 position lies", 1) + text("\n"));
}

TEST_F(ConvertArea, TheOutputIsTheSame)
{
    const QByteArray points = "5,52,1\n10,52,1\n";
    const QString without = given("bare.xml", system("RD"));
    EXPECT_EQ(convert(points).out,
              m_program.run({text("convert"), text("--system"), without}, points).out);
    EXPECT_EQ(m_program.run({text("convert"), text("--system"), without}, points).err, QString());
}

TEST_F(ConvertArea, MistakesAreNamedLouder)
{
    const auto result = convert("A,5,52,1\nB,52,5,1\nC,-5,52,1\nD,52.5,5,1\n");
    EXPECT_EQ(
        result.errLines(),
        (QStringList{outside("3 of 4 positions lie", 2),
                     text("kelstd: WARNING: 2 positions would lie inside the area of use "
                          "with longitude and latitude swapped; the first is <stdin>:2"),
                     text("kelstd: WARNING: 1 position would lie inside the area of use "
                          "with the sign of the longitude changed; the first is <stdin>:3")}));
}

TEST_F(ConvertArea, MistakesInThePlaneAreFound)
{
    // Northing, easting: the false origin is at Amersfoort.
    const auto result = convert("463000,155000,1\n155000,463000,1\n", {text("--from=local-neh")});
    EXPECT_THAT(result.err, Mentions("1 of 2 positions lie outside"));
    EXPECT_THAT(result.err, Mentions("WARNING: 1 position would lie inside the area of use with "
                                     "northing and easting swapped; the first is <stdin>:2"));
}

// One that fails is reported by itself, and no position outside.
TEST_F(ConvertArea, MistakesExplainPositionsThatFail)
{
    const auto result = convert("5,52,1\n-174,-60,1\n-5.4,-52.1,1\n", {text("--from=wgs84-llh")});
    EXPECT_THAT(result.err, Mentions("with the signs of longitude and latitude changed; the first "
                                     "is <stdin>:3"));
}

TEST_F(ConvertArea, HeadingsAndSkippedLinesCountAsLines)
{
    const auto result = convert("# title\nlon;lat;h\n\n10;52;1\n");
    EXPECT_THAT(result.err, Mentions("the first is <stdin>:4"));
}

// Blocks are handed to threads; the counts and the first line are those of the input.
TEST_F(ConvertArea, CountsAreExactOnSeveralThreads)
{
    QByteArray points;
    constexpr int lines = 40000;
    int outsiders = 0;
    int swapped = 0;
    for (int line = 1; line <= lines; ++line) {
        const bool isSwapped = line % 7 == 0 && line > 20000;
        const bool isOutside = line % 11 == 3 && line > 15000;
        swapped += isSwapped ? 1 : 0;
        outsiders += isSwapped || isOutside ? 1 : 0;
        points += isSwapped ? "52.1,5.1,1\n" : isOutside ? "10.1,52.1,1\n" : "5.1,52.1,1\n";
    }
    for (const char *threads : {"1", "4"}) {
        const auto result = convert(points, {text("--threads"), text(threads)});
        EXPECT_EQ(result.errLines(),
                  (QStringList{
                      outside(qPrintable(text("%1 of 40000 positions lie").arg(outsiders)), 15007),
                      text("kelstd: WARNING: %1 positions would lie inside the area of "
                           "use with longitude and latitude swapped; the first is "
                           "<stdin>:20006")
                          .arg(swapped)}));
    }
}

TEST_F(ConvertArea, AcrossTheMeridianOf180Degrees)
{
    const QString zone = text("WGS 84 / UTM zone 60S"); // delivered, 174 to 180 degrees east
    m_program.run({text("library"), text("list")});
    const auto inside = m_program.run({text("convert"), text("--system"), zone},
                                      "180,-17,1\n-180,-17,1\n179,-17,1\n");
    EXPECT_EQ(inside.err, QString());
    const auto outside = m_program.run({text("convert"), text("--system"), zone}, "-179.5,-17,1\n");
    EXPECT_THAT(outside.err, Mentions("1 of 1 position lies outside"));
}

} // namespace
} // namespace KelStd
