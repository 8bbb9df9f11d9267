// Programs that start for the first time in a home directory, at the same moment.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <memory>
#include <vector>

namespace KelStd {
namespace {

using test::ProgramRun;

TEST(FirstStart, OfSeveralProgramsAtOnceWorksInAllOfThem)
{
    constexpr int rounds = 3;
    constexpr int programs = 4;
    constexpr int patience = 60000; // [ms]
    const QByteArray system = test::editedSystem(
        QStringLiteral("ed50_utm_31n.xml"),
        {{QStringLiteral("modelFileName=\"\""), QStringLiteral("modelFileName=\"egm96_15.gtx\"")}});
    for (int round = 0; round < rounds; ++round) {
        ProgramRun program;
        const QString file = program.file(QStringLiteral("system.xml"), system);
        const QDir home(program.home().path(QStringLiteral("first")));
        ASSERT_TRUE(home.mkpath(QStringLiteral(".")));
        program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home.absolutePath());
        std::vector<std::unique_ptr<QProcess>> started;
        for (int i = 0; i < programs; ++i) {
            started.push_back(
                program.process({QStringLiteral("convert"), QStringLiteral("--system"), file}));
            started.back()->start();
        }
        QByteArray first;
        for (const auto &process : started) {
            process->write("A,3,50,100\n");
            process->closeWriteChannel();
            ASSERT_TRUE(process->waitForFinished(patience));
            EXPECT_EQ(process->exitCode(), 0);
            EXPECT_EQ(QString::fromUtf8(process->readAllStandardError()), QString());
            const QByteArray output = process->readAllStandardOutput();
            EXPECT_TRUE(output.contains("geoid egm96_15.gtx")) << output.constData();
            if (first.isEmpty())
                first = output;
            EXPECT_EQ(output, first);
        }
        EXPECT_EQ(
            home.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name),
            (QStringList{QStringLiteral("geoid_model_list"), QStringLiteral("proj")}));
    }
}

} // namespace
} // namespace KelStd
