// The commands of the pages of the guide, run in their order.

#include "cli/ProgramRun.h"
#include "cli/ShownCommands.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;

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

INSTANTIATE_TEST_SUITE_P(
    Pages, Guides,
    testing::Values(Guide{"CoordinateSystems", "docs/coordinate-systems.md", 2},
                    Guide{"GetStarted", "docs/get-started.md", 1},
                    Guide{"Heights", "docs/heights.md", 3}, Guide{"Systems", "docs/systems.md", 8},
                    Guide{"Sites", "docs/sites.md", 6}, Guide{"Time", "docs/time.md", 2}),
    [](const auto &guide) { return std::string(guide.param.name); });

TEST_P(Guides, CommandsPrintWhatThePageShows)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:echo '([^']*)' \\| )?kelstd (.*)\\z"));
    const auto commands = test::commandsOf(test::sourceText(QString::fromLatin1(GetParam().page)));
    EXPECT_GE(commands.size(), GetParam().commands);
    const ProgramRun program;
    for (const char *name : {"examples/site.xml", "examples/rd_new.xml",
                             "examples/rd_new_points.csv", "examples/site_control.csv"}) {
        const QString path = QString::fromLatin1(name);
        program.file(path, test::sourceText(path).toUtf8());
    }
    program.run({QStringLiteral("library"), QStringLiteral("list")}); // which lays the library out
    for (const test::ShownCommand &shown : commands) {
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
        test::expectShown(shown.lines, printed);
    }
}

} // namespace
} // namespace KelStd
