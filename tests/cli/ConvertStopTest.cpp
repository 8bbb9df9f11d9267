// A run that is told to stop leaves whole lines, and says how far it has come.

#include "cli/ProgramRun.h"
#include "cli/RunningProgram.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>

#include <csignal>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;
using test::RunningProgram;

constexpr int patience = 60000; // [ms]
constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};

/// As a terminal's shell leaves them.
void setDefaultActions()
{
    for (const int signal : stopSignals)
        std::signal(signal, SIG_DFL);
}

QStringList convertArguments(const QStringList &more = {})
{
    return QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                       test::systemPath(QStringLiteral("rd_new.xml"))}
           + more;
}

/// The program with all signals at their defaults: what runs the tests may have had them ignored.
class Interruptible : public ProgramRun
{
public:
    Interruptible() { beforeStart(setDefaultActions); }
};

/// N of "kelstd: stopped behind line N of <stdin>", the last report; -1 when it is none.
int stoppedBehind(const RunningProgram &running)
{
    static const QRegularExpression report(
        QStringLiteral("(\\A|\\n)kelstd: stopped behind line ([0-9]+) of <stdin>\\n\\z"));
    const auto match = report.match(QString::fromUtf8(running.err()));
    return match.hasMatch() ? match.captured(2).toInt() : -1;
}

TEST(ConvertStop, InTheMiddleOfALineThatIsNoLine)
{
    const Interruptible program;
    for (const int signal : stopSignals) {
        SCOPED_TRACE(signal);
        RunningProgram running(program, convertArguments());
        running.send("A,5,52,1\nB,5,52,2\nC,5,52,3");
        EXPECT_TRUE(running.waitForOutput("\nB,5.0"));
        running.signal(signal);
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.endedBy(), signal);
        EXPECT_EQ(stoppedBehind(running), 2) << running.err().constData();
        EXPECT_EQ(running.err().count('\n'), 1);
        EXPECT_TRUE(running.out().endsWith('\n'));
        EXPECT_EQ(running.out().count('\n'), 3);
        EXPECT_FALSE(running.out().contains("\nC"));
    }
}

TEST(ConvertStop, BeforeAnyPosition)
{
    const Interruptible program;
    RunningProgram running(program, convertArguments());
    running.send("# nothing\n5,52\n"); // the report tells that it has read them
    EXPECT_TRUE(running.waitForError("<stdin>:2: "));
    running.signal(SIGINT);
    ASSERT_TRUE(running.waitForEnd());
    EXPECT_EQ(running.endedBy(), SIGINT);
    EXPECT_EQ(stoppedBehind(running), 2) << running.err().constData();
    EXPECT_TRUE(running.out().startsWith("point,"));
    EXPECT_EQ(running.out().count('\n'), 1);
}

/// Lines whose names and heights are their numbers.
QByteArray numberedLines(int count)
{
    QByteArray lines;
    for (int i = 1; i <= count; ++i)
        lines += QStringLiteral("%1,5.5,52.5,%2\n").arg(i, 5, 10, QLatin1Char('0')).arg(i).toUtf8();
    return lines;
}

TEST(ConvertStop, WhileItIsBusyItLeavesEveryLineItHasRead)
{
    constexpr int linesAround = 20000;
    const Interruptible program;
    const QByteArray lines = numberedLines(linesAround);
    for (const int signal : stopSignals) {
        SCOPED_TRACE(signal);
        RunningProgram running(program, convertArguments({QStringLiteral("--threads=3")}));
        ASSERT_TRUE(running.sendUntilWritten(lines, 1 << 20));
        running.startToSend(lines);
        running.signal(signal);
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.endedBy(), signal);
        const QStringList out = QString::fromUtf8(running.out()).split(QLatin1Char('\n'));
        EXPECT_EQ(out.last(), QString());
        const int printed = out.size() - 2; // without the heading and what is behind the last line
        EXPECT_GT(printed, 5000);
        EXPECT_EQ(stoppedBehind(running), printed) << running.err().constData();
        for (int i = 0; i < printed; ++i) {
            const int number = i % linesAround + 1;
            const QString line = out.at(i + 1);
            ASSERT_TRUE(line.startsWith(QStringLiteral("%1,5.50000000000,52.50000000000,%2.00000,")
                                            .arg(number, 5, 10, QLatin1Char('0'))
                                            .arg(number)))
                << line;
            ASSERT_TRUE(line.endsWith(QLatin1String(",ellipsoid"))) << line;
            ASSERT_EQ(line.count(QLatin1Char(',')), 13) << line;
        }
    }
}

TEST(ConvertStop, AGeoJsonDocumentIsStillOne)
{
    const Interruptible program;
    for (const char *input : {"A,5,52,1\nB,5,52,2\nC,5", "5,52\n5"}) {
        SCOPED_TRACE(input);
        RunningProgram running(program, convertArguments({QStringLiteral("--geojson")}));
        running.send(input);
        const int features = *input == 'A' ? 2 : 0;
        EXPECT_TRUE(features == 2 ? running.waitForOutput("\"B\"") : running.waitForError(":1: "));
        running.signal(SIGTERM);
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.endedBy(), SIGTERM);
        const QJsonObject document = QJsonDocument::fromJson(running.out()).object();
        EXPECT_EQ(document.value(QStringLiteral("type")).toString(),
                  QStringLiteral("FeatureCollection"));
        EXPECT_EQ(document.value(QStringLiteral("features")).toArray().size(), features);
    }
}

TEST(ConvertStop, TheRejectedLinesAreInTheirFile)
{
    for (const int signal : stopSignals) {
        SCOPED_TRACE(signal);
        const Interruptible program;
        const QString rejects = program.home().path(QStringLiteral("rejects.csv"));
        RunningProgram running(program, convertArguments({QStringLiteral("--rejects"), rejects}));
        running.send("A,5,52,1\nB,x,52,2\nC,5,52,3\nD,y,5");
        EXPECT_TRUE(running.waitForOutput("\nC,5.0"));
        running.signal(signal);
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.endedBy(), signal);
        EXPECT_EQ(stoppedBehind(running), 3) << running.err().constData();
        EXPECT_EQ(test::readFile(rejects), QByteArray("B,x,52,2\n"));
        EXPECT_EQ(
            QDir(program.home().path()).entryList({QStringLiteral("rejects*")}, QDir::AllEntries),
            QStringList(QStringLiteral("rejects.csv")));
    }
}

/// As under nohup, or in the background of a script.
TEST(ConvertStop, ASignalThatIsIgnoredAtTheStartStaysIgnored)
{
    for (const int signal : {SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        ProgramRun program;
        program.beforeStart([signal] {
            setDefaultActions();
            std::signal(signal, SIG_IGN);
        });
        RunningProgram running(program, convertArguments());
        running.send("A,5,52,1\n");
        EXPECT_TRUE(running.waitForOutput("\nA,5.0"));
        running.signal(signal);
        running.send("B,5,52,2\n");
        EXPECT_TRUE(running.waitForOutput("\nB,5.0"));
        running.signal(signal);
        running.closeInput();
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.status(), 0);
        EXPECT_EQ(running.err(), QByteArray());
    }
}

/// The program with a pipe for its standard output that nobody reads yet.
class BlockedOutput
{
public:
    BlockedOutput()
    {
        EXPECT_EQ(pipe2(m_ends, O_CLOEXEC), 0);
        EXPECT_GT(fcntl(m_ends[1], F_SETPIPE_SZ, pipeSize), 0);
    }
    ~BlockedOutput()
    {
        if (m_process) {
            m_process->kill();
            m_process->waitForFinished(patience);
        }
        close(m_ends[0]);
    }
    BlockedOutput(const BlockedOutput &) = delete;
    BlockedOutput &operator=(const BlockedOutput &) = delete;

    /// Starts it and waits until it can write no more.
    void start(const QByteArray &input)
    {
        m_program.beforeStart([end = m_ends[1]] {
            setDefaultActions();
            dup2(end, STDOUT_FILENO);
        });
        m_process = m_program.process(
            convertArguments({m_program.file(QStringLiteral("input.csv"), input)}));
        m_process->start();
        EXPECT_TRUE(m_process->waitForStarted(patience));
        close(m_ends[1]);
        EXPECT_TRUE(waitUntilFull());
    }

    void signal(int number)
    {
        EXPECT_EQ(kill(static_cast<pid_t>(m_process->processId()), number), 0);
    }

    bool endsWithin(int milliseconds) { return m_process->waitForFinished(milliseconds); }

    int endedBy() const
    {
        return m_process->exitStatus() == QProcess::CrashExit ? m_process->exitCode() : 0;
    }

    /// All that the program writes until it ends.
    QByteArray read() const
    {
        QByteArray bytes;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::read(m_ends[0], buffer, sizeof buffer)) > 0;)
            bytes.append(buffer, static_cast<int>(count));
        return bytes;
    }

private:
    bool waitUntilFull() const
    {
        int bytes = 0;
        QElapsedTimer clock;
        clock.start();
        while (bytes < pipeSize && clock.elapsed() < patience) {
            QThread::msleep(1);
            EXPECT_EQ(ioctl(m_ends[0], FIONREAD, &bytes), 0);
        }
        return bytes >= pipeSize;
    }

    static constexpr int pipeSize = 4096;

    int m_ends[2] = {-1, -1};
    ProgramRun m_program;
    std::unique_ptr<QProcess> m_process;
};

TEST(ConvertStop, TheSecondSignalEndsAProgramWhoseOutputIsBlocked)
{
    for (const int first : stopSignals) {
        for (const int second : stopSignals) {
            SCOPED_TRACE(QStringLiteral("%1, %2").arg(first).arg(second).toStdString());
            BlockedOutput blocked;
            blocked.start(numberedLines(5000));
            blocked.signal(first);
            EXPECT_FALSE(blocked.endsWithin(200));
            blocked.signal(second);
            ASSERT_TRUE(blocked.endsWithin(patience));
            EXPECT_EQ(blocked.endedBy(), second);
        }
    }
}

/// The last piece of the output is as whole as the others.
TEST(ConvertStop, TheFirstSignalLetsTheLastOutputBeWritten)
{
    BlockedOutput blocked;
    blocked.start(numberedLines(50));
    blocked.signal(SIGTERM);
    EXPECT_FALSE(blocked.endsWithin(200));
    const QByteArray out = blocked.read();
    EXPECT_EQ(out.count('\n'), 51);
    EXPECT_TRUE(out.endsWith(",ellipsoid\n"));
    EXPECT_TRUE(blocked.endsWithin(patience));
}

} // namespace
} // namespace KelStd
