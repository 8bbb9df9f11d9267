// A change that was made while standard output takes nothing: its status is neither that of a
// failure, after which one would try again, nor that of a success that was told.

#include "cli/LibraryRun.h"
#include "location/PublishedFigures.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;

constexpr int unreported = 4;

class UnreportedChange : public test::LibraryRun
{
protected:
    /// A run whose standard output is a full disk.
    ProgramResult onFullDisk(const QStringList &arguments, const QByteArray &input = {}) const
    {
        const auto process = m_program.process(arguments);
        process->setStandardOutputFile(QStringLiteral("/dev/full"));
        process->start();
        process->write(input);
        process->closeWriteChannel();
        EXPECT_TRUE(process->waitForFinished(60000));
        EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
        ProgramResult result;
        result.status = process->exitCode();
        result.err = QString::fromUtf8(process->readAllStandardError());
        return result;
    }

    ProgramResult changeOnFullDisk(const QStringList &words) const
    {
        return onFullDisk(QStringList{QStringLiteral("library"), words.first(),
                                      QStringLiteral("--dir"), directory()}
                          + words.mid(1));
    }

    static void expectUnreported(const ProgramResult &result, const QString &change)
    {
        EXPECT_EQ(result.status, unreported);
        ASSERT_EQ(result.errLines().size(), 2) << result.err;
        EXPECT_EQ(result.errLines().at(0),
                  "kelstd: cannot write standard output: No space left on device");
        EXPECT_TRUE(result.errLines().at(1).startsWith("kelstd: done all the same: " + change))
            << result.err;
    }
};

TEST_F(UnreportedChange, OfALibrary)
{
    const QString file = m_program.file("in.xml", system("Harbour"));
    expectUnreported(changeOnFullDisk({"add", "--create", file}), "added the ");
    EXPECT_EQ(names("system"), QStringList("Harbour"));
    const QString other = m_program.file("other.xml", system("Harbour"));
    expectUnreported(changeOnFullDisk({"replace", "Harbour", other}), "replaced the ");
    expectUnreported(changeOnFullDisk({"remove", "Harbour"}), "removed the ");
    EXPECT_EQ(names("system"), QStringList());
}

TEST_F(UnreportedChange, OfAFileThatIsWritten)
{
    const QString target = m_program.home().path("system.xml");
    expectUnreported(onFullDisk({"system", "default", "--utm-zone", "31", "-o", target}),
                     "Wrote " + target);
    EXPECT_TRUE(QFileInfo(target).isFile());

    const QString ggf =
        m_program.file("in.ggf", test::ggfBytes(test::slopingGrid(), test::RowOrder::Reversed));
    const QString gtx = m_program.home().path("out.gtx");
    expectUnreported(onFullDisk({"geoid", "convert", ggf, gtx}), "Wrote " + gtx);
    EXPECT_EQ(test::readFile(gtx), test::gtxBytes(test::slopingGrid()));
}

TEST_F(UnreportedChange, OfAnInstallation)
{
    const auto result = onFullDisk({"doctor", "--reinstall"});
    expectUnreported(result, "PROJ was unpacked anew");
    EXPECT_FALSE(QFileInfo(m_program.home().path("proj/" KELSTD_PROJ_LIBRARY_NAME)).isSymLink());
}

TEST_F(UnreportedChange, IsToldWhereStandardOutputIsClosed)
{
    m_program.beforeStart([] { close(STDOUT_FILENO); });
    const QString target = m_program.home().path("system.xml");
    const auto result = m_program.run({"system", "default", "--utm-zone", "31", "-o", target});
    EXPECT_EQ(result.status, unreported);
    EXPECT_THAT(result.err, Mentions("done all the same: Wrote "));
}

/// Nothing was changed: it is a failure like any other.
TEST_F(UnreportedChange, IsNoneWhereNothingChanged)
{
    const QString target = m_program.file("system.xml", "precious");
    const auto refused = onFullDisk({"system", "default", "--utm-zone", "31", "-o", target});
    EXPECT_EQ(refused.status, 2) << "nothing was to be printed";
    EXPECT_FALSE(refused.err.contains("done all the same"));
    EXPECT_EQ(onFullDisk({"doctor"}).status, 3);
    EXPECT_EQ(onFullDisk({"library", "--dir", directory(), "add", target}).status, 3);
}

/// The lines that failed are worth keeping beside those that did not, which are lost here. The file
/// of an earlier run stays.
TEST_F(UnreportedChange, IsNotMadeByRejectedLines)
{
    const QString rejects = m_program.file("rejects.csv", "of an earlier run\n");
    const QStringList convert{"convert", "--system", test::systemPath("rd_new.xml"), "--rejects",
                              rejects};
    const auto result = onFullDisk(convert, "A,5.25,52.5,1\nB,5.25,x,1\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot write standard output: No space left on device\n"));
    EXPECT_THAT(result.err, Mentions("kelstd: the rejected lines are not kept\n"));
    EXPECT_EQ(test::readFile(rejects), "of an earlier run\n");
    EXPECT_EQ(m_program.run(convert, "A,5.25,52.5,1\nB,5.25,x,1\n").status, 1);
    EXPECT_EQ(test::readFile(rejects), "B,5.25,x,1\n");
}

TEST_F(UnreportedChange, IsNamedAmongTheStatuses)
{
    EXPECT_THAT(m_program.run({"--help"}).out, Mentions("  4  the change was made"));
    for (const char *command : {"library add", "library replace", "library remove", "geoid convert",
                                "doctor", "system default"}) {
        EXPECT_THAT(m_program.run(QString(command).split(' ') + QStringList{"--help", "full"}).out,
                    Mentions("standard"))
            << command;
    }
}

} // namespace
} // namespace KelStd
