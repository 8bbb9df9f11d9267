// Output that cannot be written is an error, never a quiet loss.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
constexpr int patience = 60000; // [ms]

QStringList everyWriter(int command)
{
    switch (command) {
    case 0:
        return {QStringLiteral("convert"), QStringLiteral("--system"), test::systemPath(system)};
    case 1: return {QStringLiteral("system"), QStringLiteral("show"), test::systemPath(system)};
    case 2: return {QStringLiteral("doctor")};
    case 3: return {QStringLiteral("--help")};
    default: return {QStringLiteral("--version")};
    }
}

TEST(WriteFailure, AFullDiskIsReported)
{
    const ProgramRun program;
    for (int command = 0; command < 5; ++command) {
        const auto process = program.process(everyWriter(command));
        SCOPED_TRACE(everyWriter(command).first().toStdString());
        process->setStandardOutputFile(QStringLiteral("/dev/full"));
        process->start();
        process->write("5.25,52.5,1\n");
        process->closeWriteChannel();
        ASSERT_TRUE(process->waitForFinished(patience));
        EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process->exitCode(), 3);
        EXPECT_EQ(QString::fromUtf8(process->readAllStandardError()),
                  QStringLiteral("kelstd: cannot write standard output: No space left on "
                                 "device\n"));
    }
}

TEST(WriteFailure, AClosedPipeEndsTheRunWithoutACrash)
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]); // nobody will read
    ProgramRun program;
    program.beforeStart([end = ends[1]] { dup2(end, STDOUT_FILENO); });
    const auto result = program.convert(system, "5.25,52.5,1\n");
    close(ends[1]);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot write standard output: Broken pipe"));
}

TEST(WriteFailure, AClosedStandardOutputIsReported)
{
    ProgramRun program;
    program.beforeStart([] { close(STDOUT_FILENO); });
    const auto result = program.convert(system, "5.25,52.5,1\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot write standard output: "));
}

/// Without its standard streams the program must not write into a file that took their number.
TEST(WriteFailure, FilesStayAsTheyAreWhenStreamsAreClosed)
{
    ProgramRun program;
    const QByteArray document = test::readFile(test::systemPath(system));
    const QString file = program.file(QStringLiteral("system.xml"), document);
    const QString input = program.file(QStringLiteral("input.csv"), "5.25,52.5,1\n5.25,x,1\n");
    program.beforeStart([] {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
    });
    const auto result =
        program.run({QStringLiteral("convert"), QStringLiteral("--system"), file, input});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(test::readFile(file), document);
    EXPECT_EQ(test::readFile(input), QByteArray("5.25,52.5,1\n5.25,x,1\n"));
}

TEST(WriteFailure, AClosedStandardInputIsAnErrorNotAnEmptyInput)
{
    ProgramRun program;
    program.beforeStart([] { close(STDIN_FILENO); });
    const auto result = program.convert(system, {});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot read <stdin>: "));
}

} // namespace
} // namespace KelStd
