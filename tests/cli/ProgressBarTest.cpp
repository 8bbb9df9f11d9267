#include <cli/terminal/ProgressBar.h>

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

namespace KelStd {
namespace {

using test::ProgramResult;
using test::ProgramRun;
using test::Terminal;
using Stream = Terminal::Stream;

struct ShownProgress
{
    qint64 done;
    qint64 size;
    qint64 elapsed; ///< [ms]
    int columns;
    const char *text;
};

constexpr qint64 hour = 3600 * 1000; // [ms]

constexpr ShownProgress shownProgress[] = {
    // How much.
    {0, 1000, 0, 80, "[----------------------------------------]   0 %"},
    {500, 1000, 0, 80, "[####################--------------------]  50 %"},
    {1000, 1000, 0, 80, "[########################################] 100 %"},
    {249, 1000, 0, 80, "[#########-------------------------------]  24 %"},
    {999, 1000, 0, 80, "[#######################################-]  99 %"},
    // A file that grows or shrinks meanwhile, and an empty one.
    {2000, 1000, 0, 80, "[########################################] 100 %"},
    {0, 0, 0, 80, "[########################################] 100 %"},
    {10, 0, 5000, 80, "[########################################] 100 %  0:00 left"},
    // How long it will take: as long again for the other half.
    {500, 1000, 999, 80, "[####################--------------------]  50 %"},
    {500, 1000, 1000, 80, "[####################--------------------]  50 %  0:01 left"},
    {500, 1000, 12000, 80, "[####################--------------------]  50 %  0:12 left"},
    {250, 1000, 20000, 80, "[##########------------------------------]  25 %  1:00 left"},
    {750, 1000, 4800, 80, "[##############################----------]  75 %  0:02 left"},
    {500, 1000, 59499, 80, "[####################--------------------]  50 %  0:59 left"},
    {500, 1000, 59500, 80, "[####################--------------------]  50 %  1:00 left"},
    {500, 1000, 59 * 60 * 1000 + 59000, 80,
     "[####################--------------------]  50 %  59:59 left"},
    {500, 1000, hour, 80, "[####################--------------------]  50 %  1:00:00 left"},
    {500, 1000, hour + 5 * 60 * 1000 + 9000, 80,
     "[####################--------------------]  50 %  1:05:09 left"},
    {250, 1000, 10 * hour, 80, "[##########------------------------------]  25 %  30:00:00 left"},
    {0, 1000, 12000, 80, "[----------------------------------------]   0 %"},
    {1000, 1000, 12000, 80, "[########################################] 100 %  0:00 left"},
    // Where there is room for it.
    {500, 1000, 0, 48, "[####################--------------------]  50 %"},
    {500, 1000, 0, 47, "[###################--------------------]  50 %"},
    {500, 1000, 12000, 30, "[#####------]  50 %  0:12 left"},
    {500, 1000, 0, 12, "[##--]  50 %"},
    {500, 1000, 0, 9, "[-]  50 %"},
    {500, 1000, 0, 8, "  50 %"},
    {500, 1000, 0, 0, "  50 %"},
};

TEST(ProgressText, IsAsKnownByHand)
{
    for (const ShownProgress &row : shownProgress) {
        EXPECT_EQ(cli::progressText(row.done, row.size, row.elapsed, row.columns),
                  QString::fromLatin1(row.text))
            << row.done << " of " << row.size << " in " << row.elapsed << ", " << row.columns;
    }
}

TEST(ProgressText, FitsTheColumnsThatHoldItsNumbers)
{
    for (int columns = 22; columns <= 100; ++columns) {
        for (qint64 done = 0; done <= 100; done += 7)
            EXPECT_LE(cli::progressText(done, 100, 3723000, columns).size(), columns) << done;
    }
}

const QString system = QStringLiteral("rd_new.xml");
constexpr int terminalColumns = 80;

class ProgressBar : public testing::Test
{
protected:
    static QStringList arguments(const QStringList &more)
    {
        return QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                           test::systemPath(system)}
               + more;
    }

    /// Lines of several blocks, of which a few fail.
    static QByteArray lines()
    {
        QByteArray bytes;
        for (int i = 1; i <= 8000; ++i)
            bytes += QByteArray::number(i) + (i % 2000 == 0 ? ",x,52,1\n" : ",5.25,52.5,1.25\n");
        return bytes;
    }

    ProgramRun program;
    const QString input = program.file(QStringLiteral("input.csv"), lines());
};

/// What a terminal has on its screen after these characters: they go over what is there.
QStringList screen(const QString &shown)
{
    static const QString eraseToEnd = QStringLiteral("\033[K");
    QStringList rows = {{}};
    int column = 0;
    for (int i = 0; i < shown.size(); ++i) {
        const QChar c = shown.at(i);
        if (c == QLatin1Char('\n')) {
            rows += QString();
            column = 0;
        } else if (c == QLatin1Char('\r')) {
            column = 0;
        } else if (shown.mid(i, eraseToEnd.size()) == eraseToEnd) {
            rows.last().truncate(column);
            i += eraseToEnd.size() - 1;
        } else {
            EXPECT_TRUE(c.isPrint()) << c.unicode();
            rows.last().replace(column++, 1, c);
        }
    }
    return rows;
}

const QRegularExpression bar(QStringLiteral("\\[#*-*\\] +[0-9]+ %"));

TEST_F(ProgressBar, IsShownOnATerminalAndRemovedAtTheEnd)
{
    Terminal terminal(terminalColumns);
    const ProgramResult result = terminal.run(program, arguments({input}), {}, Stream::Error);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.outLines().size(), 1 + 7996);
    EXPECT_TRUE(bar.match(result.err).hasMatch()) << result.err;

    QStringList expected;
    for (const int line : {2000, 4000, 6000, 8000})
        expected +=
            QStringLiteral("kelstd: %1:%2: longitude \"x\" is not a number").arg(input).arg(line);
    expected += {QStringLiteral("kelstd: 4 of 8000 positions failed"), {}};
    EXPECT_EQ(screen(result.err), expected);
}

TEST_F(ProgressBar, GrowsAndLeavesTheLastColumnFree)
{
    Terminal terminal(40);
    const ProgramResult result = terminal.run(program, arguments({input}), {}, Stream::Error);
    int shares = 0;
    int before = -1;
    for (const QString &piece : result.err.split(QStringLiteral("\r\033[K"))) {
        const QString text = piece.section(QLatin1Char('\n'), -1); // behind a report
        if (!bar.match(text).hasMatch())
            continue;
        EXPECT_LT(text.size(), 40) << text;
        const int share = text.section(QLatin1Char(']'), 1).section(QLatin1Char('%'), 0, 0).toInt();
        EXPECT_GE(share, before);
        before = share;
        ++shares;
    }
    EXPECT_GE(shares, 1);
}

TEST_F(ProgressBar, IsRemovedWhenTheHeaderIsNoUse)
{
    const QString bad = program.file(QStringLiteral("bad.csv"), "east;north\n1;2\n");
    Terminal terminal(terminalColumns);
    const ProgramResult result = terminal.run(program, arguments({bad}), {}, Stream::Error);
    EXPECT_EQ(result.status, 2);
    const QStringList rows = screen(result.err);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(rows.first().startsWith(QStringLiteral("kelstd: %1:1: ").arg(bad)));
    EXPECT_EQ(rows.last(), QString());
}

TEST_F(ProgressBar, IsNotShownForAPipe)
{
    Terminal terminal(terminalColumns);
    const ProgramResult result = terminal.run(program, arguments({}), lines(), Stream::Error);
    EXPECT_EQ(result.status, 1);
    EXPECT_FALSE(bar.match(result.err).hasMatch());
    EXPECT_FALSE(result.err.contains(QLatin1Char('\r')));
    EXPECT_EQ(result.errLines().size(), 5);
}

TEST_F(ProgressBar, IsNotShownWhereStandardErrorIsNoTerminal)
{
    const auto result = program.run(arguments({input}));
    EXPECT_FALSE(bar.match(result.err).hasMatch());
    EXPECT_FALSE(result.err.contains(QLatin1Char('\r')));
    EXPECT_EQ(result.errLines().size(), 5);
}

TEST_F(ProgressBar, IsNotShownAmongTheOutput)
{
    const QString few = program.file(QStringLiteral("few.csv"), "A,5.25,52.5,1\nB,x,52,1\n");
    for (const bool errorsToo : {false, true}) {
        Terminal terminal(terminalColumns);
        if (errorsToo)
            terminal.start(program, arguments({few}), Terminal::Errors::Shown);
        else
            terminal.start(program, arguments({few}));
        EXPECT_TRUE(terminal.waitFor(QStringLiteral("local projected")));
        terminal.finish();
        EXPECT_FALSE(bar.match(terminal.shown()).hasMatch()) << terminal.shown();
        EXPECT_FALSE(terminal.shown().contains(QLatin1Char('\r')));
        EXPECT_EQ(terminal.shown().contains(QLatin1String("positions failed")), errorsToo);
    }
}

} // namespace
} // namespace KelStd
