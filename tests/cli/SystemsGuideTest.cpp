// The commands of docs/systems.md, run in their order.

#include "cli/ProgramRun.h"
#include "cli/ShownCommands.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

namespace KelStd {
namespace {

using test::ProgramRun;

TEST(SystemsGuide, ItsCommandsPrintWhatItShows)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(?:echo '([^']*)' \\| )?kelstd (.*)\\z"));
    const auto commands = test::commandsOf(test::sourceText(QStringLiteral("docs/systems.md")));
    EXPECT_GT(commands.size(), 7);
    const ProgramRun program;
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
