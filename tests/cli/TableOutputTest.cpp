#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::Terminal;

const QString system = QStringLiteral("rd_new.xml");
const QStringList tableOption = {QStringLiteral("--table")};
constexpr int wideTerminal = 240;
constexpr int narrowTerminal = 80;

QStringList convertArguments(const QStringList &more = {})
{
    return QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                       test::systemPath(system)}
           + more;
}

/// The columns of text in which the words of a line end.
QList<int> wordEnds(const QString &line)
{
    QList<int> ends;
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i) != QLatin1Char(' ')
            && (i + 1 == line.size() || line.at(i + 1) == QLatin1Char(' ')))
            ends += i;
    }
    return ends;
}

TEST(TableOutput, EveryColumnHasAFrameALabelAndAUnit)
{
    const auto result = ProgramRun().convert(system, "A,5.25,52.5,1\n", tableOption);
    ASSERT_EQ(result.status, 0) << result.err;
    ASSERT_EQ(result.outLines().size(), 4);
    const QString titles = result.outLines().at(0);
    int position = 0;
    for (const char *frame :
         {"WGS84 geographic", "WGS84 cartesian", "local geographic", "local projected"}) {
        EXPECT_GE(titles.indexOf(QLatin1String(frame)), position) << titles;
        position = titles.indexOf(QLatin1String(frame));
    }
    EXPECT_EQ(result.outLines().at(1).simplified(),
              QStringLiteral("point longitude latitude height X Y Z longitude latitude height "
                             "northing easting height"));
    EXPECT_EQ(result.outLines().at(2).simplified(),
              QStringLiteral("dms dms m (ell.) m m m dms dms m (ell.) m m m (ell.)"));
}

/// A name with a line break would make two rows of one.
TEST(TableOutput, LineBreaksOfTheInputAreShown)
{
    const ProgramRun program;
    const QByteArray input = "point,lon,lat,h,\"re\nmark\"\n\"A\nB\",5.25,52.5,1,\"x\r\ny\"\n";
    const auto wide = program.convert(system, input, tableOption);
    ASSERT_EQ(wide.status, 0) << wide.err;
    ASSERT_EQ(wide.outLines().size(), 4) << wide.out;
    EXPECT_TRUE(wide.outLines().at(1).endsWith(QLatin1String("  re\\x0Amark"))) << wide.out;
    EXPECT_TRUE(wide.outLines().at(3).startsWith(QLatin1String("A\\x0AB "))) << wide.out;
    EXPECT_TRUE(wide.outLines().at(3).endsWith(QLatin1String("  x\\x0D\\x0Ay"))) << wide.out;
    Terminal terminal(narrowTerminal);
    const auto narrow = terminal.run(program, convertArguments(), input);
    ASSERT_EQ(narrow.status, 0) << narrow.err;
    EXPECT_EQ(narrow.outLines().at(0), QStringLiteral("A\\x0AB"));
    EXPECT_EQ(narrow.outLines().last(), QStringLiteral("  re\\x0Amark: x\\x0D\\x0Ay"));
}

/// Where the decimal points of a line stand.
QList<int> points(const QString &line)
{
    QList<int> found;
    for (int i = line.indexOf(QLatin1Char('.')); i >= 0; i = line.indexOf(QLatin1Char('.'), i + 1))
        found += i;
    return found;
}

TEST(TableOutput, NumbersEndBelowTheirLabels)
{
    const auto result = ProgramRun().convert(
        system, "A,5.25,52.5,1\nB,-179.5,-12.25,-1234.5\nCCCCCCCCCC,5,52,12345.6789\n",
        tableOption + QStringList{QStringLiteral("--precision=4")});
    ASSERT_EQ(result.status, 0) << result.err;
    ASSERT_EQ(result.outLines().size(), 6);
    const QList<int> labels = wordEnds(result.outLines().at(1)).mid(1);
    ASSERT_EQ(labels.size(), 12);
    const QString units = result.outLines().at(2);
    EXPECT_EQ(wordEnds(QString(units).replace("m (ell.)", "m_(ell.)")), labels);
    for (int i = 3; i < 6; ++i)
        EXPECT_EQ(wordEnds(result.outLines().at(i)).mid(1), labels) << result.outLines().at(i);
}

TEST(TableOutput, DecimalPointsStandBelowEachOtherWithoutTheirTrailingZeros)
{
    const auto result = ProgramRun().convert(
        system, "A,5.25,52.5,1.5\nB,-179.5,-12.25,-1234.25\nC,5,52,12345.6789\n", tableOption);
    ASSERT_EQ(result.status, 0) << result.err;
    ASSERT_EQ(result.outLines().size(), 6);
    const QList<int> expected = points(result.outLines().at(5));
    ASSERT_EQ(expected.size(), 12);
    for (int i = 3; i < 5; ++i)
        EXPECT_EQ(points(result.outLines().at(i)), expected) << result.outLines().at(i);
    EXPECT_EQ(result.outLines().at(3).simplified().split(QLatin1Char(' ')).at(3),
              QStringLiteral("1.5"));
}

TEST(TableOutput, IsConfiguredAsTheLibraryStarts)
{
    const auto result = ProgramRun().convert(system, "A,116.5,-52.25,1.23456\n", tableOption);
    const QStringList words = result.outLines().value(3).simplified().split(QLatin1Char(' '));
    ASSERT_EQ(words.size(), 13);
    EXPECT_EQ(words.at(1), QString::fromUtf8("116\u00B030\u203200.000000\u2033E"));
    EXPECT_EQ(words.at(2), QString::fromUtf8("52\u00B015\u203200.000000\u2033S"));
    EXPECT_EQ(words.at(3), QStringLiteral("1.2346"));
}

TEST(TableOutput, ALongNameStandsInALineOfItsOwn)
{
    const auto result = ProgramRun().convert(
        system, "A,5.25,52.5,1\na very long name of a point,5.25,52.5,1\n", tableOption);
    ASSERT_EQ(result.outLines().size(), 6);
    EXPECT_EQ(result.outLines().at(4), QStringLiteral("a very long name of a point"));
    EXPECT_EQ(wordEnds(result.outLines().at(5)), wordEnds(result.outLines().at(3)).mid(1));
}

TEST(TableOutput, WithoutNamesThereIsNoNameColumn)
{
    const auto result = ProgramRun().convert(system, "5.25,52.5,1\n", tableOption);
    EXPECT_FALSE(result.out.contains(QLatin1String("point")));
    EXPECT_EQ(wordEnds(result.outLines().value(3)).value(1),
              wordEnds(result.outLines().value(1)).value(1));
    EXPECT_EQ(wordEnds(result.outLines().value(3)).size(), 12);
}

TEST(TableOutput, IsTheDefaultOnATerminal)
{
    const ProgramRun program;
    const auto table = program.convert(system, "A,5.25,52.5,1\n", tableOption);
    Terminal terminal(wideTerminal);
    const ProgramResult shown = terminal.run(program, convertArguments(), "A,5.25,52.5,1\n");
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.out, table.out);
}

TEST(TableOutput, CsvMayBeChosenOnATerminal)
{
    const ProgramRun program;
    const auto csv = program.convert(system, "A,5.25,52.5,1\n");
    Terminal terminal(wideTerminal);
    EXPECT_EQ(
        terminal.run(program, convertArguments({QStringLiteral("--csv")}), "A,5.25,52.5,1\n").out,
        csv.out);
}

TEST(TableOutput, ATerminalOfUnknownWidthIsWide)
{
    const ProgramRun program;
    Terminal terminal(0);
    EXPECT_EQ(terminal.run(program, convertArguments(), "A,5.25,52.5,1\n").out,
              program.convert(system, "A,5.25,52.5,1\n", tableOption).out);
}

TEST(TableOutput, OnANarrowTerminalEveryFrameHasItsOwnLabels)
{
    const ProgramRun program;
    Terminal terminal(narrowTerminal);
    const ProgramResult shown =
        terminal.run(program, convertArguments(), "A,5.25,52.5,1\nB,5.5,52.25,2\n");
    EXPECT_EQ(shown.status, 0) << shown.err;
    const QStringList lines = shown.outLines();
    ASSERT_EQ(lines.size(), 19);
    for (const QString &line : lines)
        EXPECT_LE(line.size(), narrowTerminal) << line;
    EXPECT_EQ(lines.at(0), QStringLiteral("A"));
    EXPECT_EQ(lines.at(9), QString());
    EXPECT_EQ(lines.at(10), QStringLiteral("B"));

    const char *labels[] = {"longitude [dms] latitude [dms] ell. height [m]", "X [m] Y [m] Z [m]",
                            "longitude [dms] latitude [dms] ell. height [m]",
                            "northing [m] easting [m] ell. height [m]"};
    const char *titles[] = {"  WGS84 geographic ", "  WGS84 cartesian ", "  local geographic ",
                            "  local projected "};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(lines.at(1 + 2 * i).simplified(), QString::fromLatin1(labels[i]));
        EXPECT_TRUE(lines.at(2 + 2 * i).startsWith(QLatin1String(titles[i])));
    }
    // The same numbers as in the wide table.
    QStringList numbers;
    for (int i = 0; i < 4; ++i)
        numbers += lines.at(2 + 2 * i).mid(18).simplified();
    EXPECT_EQ(
        numbers.join(QLatin1Char(' ')),
        program.convert(system, "5.25,52.5,1\n", tableOption).outLines().value(3).simplified());
}

TEST(TableOutput, ATypedPositionIsAnsweredBeforeTheNext)
{
    const ProgramRun program;
    Terminal terminal(narrowTerminal);
    terminal.start(program, convertArguments());
    terminal.type("first 5.25 52.5 1\n");
    EXPECT_TRUE(terminal.waitFor(QStringLiteral("first\n"))) << terminal.shown();
    EXPECT_TRUE(terminal.waitFor(QStringLiteral("  local projected"))) << terminal.shown();
    terminal.type("second 5.25 52.5 1\n");
    EXPECT_TRUE(terminal.waitFor(QStringLiteral("second\n"))) << terminal.shown();
    EXPECT_EQ(terminal.finish(), 0);
}

} // namespace
} // namespace KelStd
