// The commands of docs/systems.md and docs/sites.md, run in their order.

#include "cli/ProgramRun.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;

/// A command of the page, and the lines below it.
struct Shown
{
    QString command;
    QStringList lines;
};

QList<Shown> commandsOf(const QString &page)
{
    static const QRegularExpression block(QStringLiteral("```console\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QList<Shown> commands;
    auto blocks = block.globalMatch(page);
    while (blocks.hasNext()) {
        for (const QString &line : blocks.next().captured(1).split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1String("$ ")))
                commands.append({line.mid(2), {}});
            else if (!line.isEmpty())
                commands.last().lines += line;
        }
    }
    return commands;
}

/// What standard output and standard error have, against lines of which "..." stands for any.
void expectShown(const QStringList &lines, const QStringList &printed)
{
    int at = 0;
    bool mayPass = false;
    for (const QString &line : lines) {
        if (line == QLatin1String("...")) {
            mayPass = true;
            continue;
        }
        while (mayPass && at < printed.size() && printed.at(at) != line)
            ++at;
        ASSERT_LT(at, printed.size()) << "not printed: " << line;
        EXPECT_EQ(printed.at(at), line);
        ++at;
        mayPass = false;
    }
    EXPECT_TRUE(mayPass || at == printed.size()) << printed.value(at) << " is not shown";
}

struct Guide
{
    const char *name;
    const char *page;
    int commands; ///< at least
};

void PrintTo(const Guide &guide, std::ostream *out)
{
    *out << guide.page;
}

class Guides : public testing::TestWithParam<Guide>
{};

INSTANTIATE_TEST_SUITE_P(Pages, Guides,
                         testing::Values(Guide{"Systems", "docs/systems.md", 8},
                                         Guide{"Sites", "docs/sites.md", 6}),
                         [](const auto &guide) { return std::string(guide.param.name); });

TEST_P(Guides, CommandsPrintWhatThePageShows)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:echo '([^']*)' \\| )?kelstd (.*)\\z"));
    const QList<Shown> commands =
        commandsOf(test::sourceText(QString::fromLatin1(GetParam().page)));
    EXPECT_GE(commands.size(), GetParam().commands);
    const ProgramRun program;
    for (const char *name :
         {"examples/site.xml", "examples/rd_new.xml", "examples/site_control.csv"}) {
        const QString path = QString::fromLatin1(name);
        program.file(path, test::sourceText(path).toUtf8());
    }
    program.run({QStringLiteral("library"), QStringLiteral("list")}); // which lays the library out
    for (const Shown &shown : commands) {
        SCOPED_TRACE(shown.command.toStdString());
        const auto match = form.match(shown.command);
        ASSERT_TRUE(match.hasMatch());
        const auto process = program.process(match.captured(2).split(QLatin1Char(' ')));
        process->setWorkingDirectory(program.home().path());
        process->start();
        process->write(match.captured(1).toUtf8() + '\n');
        process->closeWriteChannel();
        ASSERT_TRUE(process->waitForFinished(60000));
        const QString printed =
            QString::fromUtf8(process->readAllStandardOutput() + process->readAllStandardError());
        expectShown(shown.lines, printed.split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    }
}

} // namespace
} // namespace KelStd
