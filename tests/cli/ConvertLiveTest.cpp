// A receiver's stream, converted as it comes.

#include "cli/ProgramRun.h"
#include "cli/RunningProgram.h"
#include "location/PublishedFigures.h"
#include "nmea/Sentences.h"
#include "support/Printers.h"

#include <QtCore/QThread>

#include <csignal>

namespace KelStd {
namespace {

using test::log;
using test::ProgramRun;
using test::RunningProgram;

const QByteArray rmc = "GNRMC,123456.20,A,5231.0,N,00524.0,E,0.01,45.0,290224,,,R,V";
const QByteArray gga = "GNGGA,123456.20,5231.0,N,00524.0,E,4,17,0.62,34.5678,M,39.8765,M,1.0,0001";
const QByteArray gst = "GNGST,123456.20,8.5,0.012,0.009,77.1,0.0107,0.0095,0.0182";

QByteArray ggaAt(const char *time)
{
    return QByteArray("GNGGA,") + time + ",5231.0,N,00524.0,E,4,17,0.6,30.0,M,40.0,M,,";
}

class LiveStream : public testing::Test
{
protected:
    QStringList arguments(const QStringList &more = {}) const
    {
        return QStringList{QStringLiteral("convert"), QStringLiteral("--nmea"),
                           QStringLiteral("--no-header"), QStringLiteral("--system"),
                           test::systemPath(QStringLiteral("rd_new.xml"))}
               + more;
    }

    ProgramRun program;
};

TEST_F(LiveStream, AnEpochIsPrintedAfterASilence)
{
    RunningProgram running(program, arguments());
    running.send(log({rmc, gga, gst}));
    EXPECT_TRUE(running.waitForOutput("2024-02-29T12:34:56.20Z,2303,390914.20,4,17,0.62,39.8765,"
                                      "0.0107,0.0095,0.0182\n"));
    // What comes in pieces is one epoch all the same.
    const QByteArray second = log({ggaAt("123457.20")});
    running.send(second.left(30));
    QThread::msleep(50);
    running.send(second.mid(30));
    EXPECT_TRUE(running.waitForOutput("2024-02-29T12:34:57.20Z,"));
    EXPECT_TRUE(running.isRunning());
    running.closeInput();
    EXPECT_TRUE(running.waitForEnd());
    EXPECT_EQ(running.status(), 0);
    EXPECT_EQ(running.out().count('\n'), 2);
}

TEST_F(LiveStream, AnEpochIsPrintedWhenTheNextBegins)
{
    RunningProgram running(program, arguments());
    running.send(log({rmc, gga, ggaAt("123456.40")}));
    // Nothing is silent here: other sentences come all the time.
    EXPECT_TRUE(running.sendUntilWritten(log({"GPGSV,3,1,11,03,03,111,00"}), 1));
    EXPECT_TRUE(running.out().contains("2024-02-29T12:34:56.20Z"));
    running.closeInput();
    EXPECT_TRUE(running.waitForEnd());
    EXPECT_EQ(running.status(), 0);
    EXPECT_TRUE(running.out().contains("2024-02-29T12:34:56.40Z"));
}

TEST_F(LiveStream, AStopPrintsWhatWasRead)
{
    program.beforeStart([] { std::signal(SIGINT, SIG_DFL); });
    RunningProgram running(program, arguments());
    running.send(log({rmc, gga}));
    ASSERT_TRUE(running.waitForOutput("2024-02-29T12:34:56.20Z"));
    running.send("$GNGGA,123456.40,5231.0"); // a part of a sentence is not broken
    running.signal(SIGINT);
    EXPECT_TRUE(running.waitForEnd());
    EXPECT_EQ(running.endedBy(), SIGINT);
    EXPECT_EQ(running.out().count('\n'), 1);
    EXPECT_FALSE(running.err().contains("broken"));
    EXPECT_TRUE(running.err().contains("stopped behind line 1 of <stdin>"));
}

TEST_F(LiveStream, AStopWritesTheFileOfWhatCame)
{
    program.beforeStart([] { std::signal(SIGINT, SIG_DFL); });
    const QString file = program.home().path(QStringLiteral("live.json"));
    const QString rejects = program.home().path(QStringLiteral("live.nmea"));
    const QStringList options{QStringLiteral("--force"), QStringLiteral("-o"), file,
                              QStringLiteral("--rejects"), rejects};
    QStringList words = arguments(options);
    words.removeAll(QStringLiteral("--no-header"));
    const QByteArray noFix = "GNGGA,123457.20,,,,,0,04,4.10,,M,,M,,";
    {
        RunningProgram running(program, words);
        running.send(log({rmc, gga, noFix}));
        ASSERT_TRUE(running.waitForError(":3: the receiver has no fix"));
        running.send(log({ggaAt("123458.20")}) + "$GNGGA,123459.20,5231.0");
        running.signal(SIGINT);
        EXPECT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.endedBy(), SIGINT);
        EXPECT_TRUE(running.err().contains("stopped behind line ")) << running.err().toStdString();
        EXPECT_FALSE(running.err().contains("is not written")) << running.err().toStdString();
    }
    const QByteArray written = test::readFile(file);
    const QList<QByteArray> lines = written.trimmed().split('\n');
    ASSERT_GE(lines.size(), 1);
    EXPECT_TRUE(lines.first().contains("\"2024-02-29T12:34:56.20Z\"")) << written.toStdString();
    EXPECT_TRUE(written.endsWith("}\n"));
    EXPECT_EQ(test::readFile(rejects), log({noFix}).replace("\r\n", "\n"));
    // Of a stream that gave nothing, an earlier file stays.
    RunningProgram running(program, words);
    running.send("{\"class\":\"VERSION\"}\n" + log({noFix}));
    ASSERT_TRUE(running.waitForError("the receiver has no fix"));
    running.signal(SIGINT);
    EXPECT_TRUE(running.waitForEnd());
    EXPECT_TRUE(running.err().contains("live.json is not written")) << running.err().toStdString();
    EXPECT_EQ(test::readFile(file), written);
}

} // namespace
} // namespace KelStd
