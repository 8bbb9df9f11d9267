// The program killed at random moments of what it does: nothing that was there is lost, what it
// makes is whole or missing, and the next start goes on as if nothing had happened.
//
// KELSTD_TEST_KILLS says how many times in all (50 when it is not set), KELSTD_TEST_SEED the first
// number of the random moments.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <iostream>
#include <random>

namespace KelStd {
namespace {

using test::ProgramResult;
using test::ProgramRun;
using test::readFile;

constexpr int patience = 60000; // [ms], for a machine under load

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

int numberFrom(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

int allKills()
{
    return numberFrom("KELSTD_TEST_KILLS", 50);
}

/// One of the four things that the program is killed at; each gets a quarter of the kills, the
/// first start what remains, too.
class KilledProgram : public testing::Test
{
protected:
    KilledProgram()
    {
        std::cout << "KELSTD_TEST_KILLS=" << allKills() << " KELSTD_TEST_SEED=" << m_seed << '\n';
        // What a killed program leaves among the system's temporary files goes with the test.
        const QString temporary = program.home().path(QStringLiteral("tmp"));
        EXPECT_TRUE(QDir().mkpath(temporary));
        program.setVariable(QStringLiteral("TMPDIR"), temporary);
    }

    /// Runs the program to its end, which has to be good, and learns how long that takes.
    void learnDuration(const QStringList &arguments)
    {
        QElapsedTimer clock;
        clock.start();
        const ProgramResult result = program.run(arguments);
        m_duration = clock.nsecsElapsed() / 1000;
        ASSERT_EQ(result.status, expectedStatus) << result.err;
    }

    /// Starts the program and kills it at a moment of its run.
    void killAtRandom(const QStringList &arguments)
    {
        const auto process = program.process(arguments);
        process->setStandardInputFile(QProcess::nullDevice());
        process->setStandardOutputFile(QProcess::nullDevice());
        process->setStandardErrorFile(QProcess::nullDevice());
        process->start();
        ASSERT_TRUE(process->waitForStarted(patience));
        std::uniform_int_distribution<qint64> moment(0, m_duration);
        QThread::usleep(static_cast<unsigned long>(moment(m_random)));
        process->kill();
        ASSERT_TRUE(process->waitForFinished(patience));
        const bool isInTime = process->exitStatus() == QProcess::CrashExit;
        ++m_attempts;
        m_inTime += isInTime ? 1 : 0;
        // What a run takes depends on what else the machine does: some kills are to be late.
        m_duration += isInTime ? m_duration / 16 : -m_duration / 8;
    }

    /// Until there were as many kills in time as are wanted.
    bool isToGoOn() const { return m_inTime < m_kills && m_attempts < 4 * m_kills; }

    void TearDown() override
    {
        // Otherwise the moments were not those of the run.
        EXPECT_GE(2 * m_inTime, m_kills);
        std::cout << m_inTime << " kills in time of " << m_attempts << '\n';
    }

    void addKills(int more) { m_kills += more; }

    ProgramRun program;
    int expectedStatus = 0;

private:
    int m_kills = allKills() / 4;
    int m_seed = numberFrom("KELSTD_TEST_SEED", 20260613);
    std::mt19937 m_random{static_cast<std::mt19937::result_type>(m_seed)};
    qint64 m_duration = 0; ///< [µs]
    int m_attempts = 0;
    int m_inTime = 0;
};

/// The bytes of a file; empty when there is none.
QByteArray bytesOf(const QString &file)
{
    return QFileInfo::exists(file) ? readFile(file) : QByteArray();
}

// --- A first start -------------------------------------------------------------------------------

class FirstStartKilled : public KilledProgram
{
protected:
    FirstStartKilled() { addKills(allKills() % 4); }

    /// A home in which PROJ was never prepared, with files of the user's.
    void makeHome()
    {
        QDir(m_home).removeRecursively();
        test::writeFile(m_own, "the user's");
        program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), m_home);
    }

    /// Whatever a marker of this release promises is there.
    void expectNoFalsePromise() const
    {
        EXPECT_EQ(readFile(m_own), "the user's");
        if (bytesOf(path("proj/proj_enviroment")) != test::markerBytes(3))
            return;
        const QString staged = QStringLiteral(KELSTD_TEST_STAGED_PROJ);
        for (const char *file : {"/" KELSTD_PROJ_LIBRARY_NAME, "/share/proj.db"}) {
            EXPECT_EQ(QFileInfo(m_home + QStringLiteral("/proj") + QLatin1String(file)).size(),
                      QFileInfo(staged + QLatin1String(file)).size())
                << file;
        }
        EXPECT_EQ(QFileInfo(path("geoid_model_list/egm96_15.gtx")).size(),
                  QFileInfo(test::egm96Path()).size());
    }

    QString path(const char *name) const { return m_home + QLatin1Char('/') + QLatin1String(name); }

    const QString m_home = program.home().path(QStringLiteral("first"));
    const QString m_own = path("geoid_model_list/own.gtx");
};

TEST_F(FirstStartKilled, IsMadeGoodByTheNext)
{
    const QString system =
        program.file(QStringLiteral("system.xml"),
                     test::editedSystem(QStringLiteral("ed50_utm_31n.xml"),
                                        {{QStringLiteral("modelFileName=\"\""),
                                          QStringLiteral("modelFileName=\"egm96_15.gtx\"")}}));
    const QString input = program.file(QStringLiteral("points.csv"), "A,3,50,100\n");
    const QStringList convert = {QStringLiteral("convert"), QStringLiteral("--system"), system,
                                 input};
    makeHome();
    ASSERT_NO_FATAL_FAILURE(learnDuration(convert));
    const QString expected = program.run(convert).out;
    ASSERT_TRUE(expected.contains(QStringLiteral("geoid egm96_15.gtx")));
    for (int i = 0; isToGoOn(); ++i) {
        SCOPED_TRACE(i);
        // Every third one starts where killed ones have left off.
        if (i % 3 != 2)
            makeHome();
        ASSERT_NO_FATAL_FAILURE(killAtRandom(convert));
        expectNoFalsePromise();
        if (i % 3 == 1)
            continue;
        const ProgramResult next = program.run(convert);
        EXPECT_EQ(next.status, 0);
        EXPECT_EQ(next.err, QString());
        EXPECT_EQ(next.out, expected);
        expectNoFalsePromise();
        EXPECT_EQ(QDir(m_home).entryList(everything, QDir::Name),
                  (QStringList{QStringLiteral("geoid_model_list"), QStringLiteral("proj")}));
    }
}

// --- A change of a library -----------------------------------------------------------------------

TEST_F(KilledProgram, LeavesALibraryOldOrNew)
{
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    // Qt writes the attributes of an element in another order in each process, unless told so.
    program.setVariable(text("QT_HASH_SEED"), text("0"));
    const QString directory = program.home().path(text("lib"));
    const auto library = [&](const QStringList &words) {
        return QStringList{text("library"), text("--dir"), directory} + words;
    };
    const auto document = [&](const char *file, const char *scale) {
        return program.file(
            text(file),
            test::editedSystem(text("rd_new.xml"), {{text("Amersfoort / RD New"), text("Harbour")},
                                                    {text("0.9999079"), text(scale)}}));
    };
    const QString one = document("one.xml", "0.9999079");
    const QString other = document("other.xml", "0.9998");
    const QString file = directory + text("/custom/Harbour.xml");
    const QString neighbour = directory + text("/custom/Neighbour.xml");

    ASSERT_EQ(program.run(library({text("add"), text("--create"), one})).status, 0);
    ASSERT_EQ(program.run(library({text("add"), text("--as"), text("Neighbour"), one})).status, 0);
    const QByteArray oneBytes = readFile(file);
    const QByteArray neighbourBytes = readFile(neighbour);
    ASSERT_NO_FATAL_FAILURE(learnDuration(library({text("replace"), text("Harbour"), other})));
    const QByteArray otherBytes = readFile(file);
    ASSERT_NE(oneBytes, otherBytes);
    for (int i = 0; isToGoOn(); ++i) {
        SCOPED_TRACE(i);
        const bool isOther = i % 2 == 0;
        ASSERT_NO_FATAL_FAILURE(
            killAtRandom(library({text("replace"), text("Harbour"), isOther ? one : other})));
        const QByteArray bytes = readFile(file);
        EXPECT_TRUE(bytes == oneBytes || bytes == otherBytes) << bytes.constData();
        // The next change does not wait for the dead, and finds all that there was.
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(
            program.run(library({text("replace"), text("Harbour"), isOther ? one : other})).status,
            0);
        EXPECT_LT(clock.elapsed(), 8000); // the patience with living programs is ten seconds
        EXPECT_EQ(readFile(file), isOther ? oneBytes : otherBytes);
        EXPECT_EQ(readFile(neighbour), neighbourBytes);
        EXPECT_FALSE(QFileInfo::exists(directory + text("/.changing.lock")));
    }
    EXPECT_EQ(program.run(library({text("list"), text("--names")})).outLines(),
              (QStringList{text("Harbour"), text("Neighbour")}));
}

// --- A geoid conversion --------------------------------------------------------------------------

TEST_F(KilledProgram, LeavesAGeoidModelOldOrNew)
{
    test::Grid grid = test::slopingGrid();
    grid.latitudeSpacing = grid.longitudeSpacing = 0.01;
    grid.rows = 600;
    grid.columns = 600;
    grid.values.clear();
    for (int i = 0; i < grid.rows * grid.columns; ++i)
        grid.values.push_back(40.0F + static_cast<float>(i) / 1024.0F);
    const QByteArray source = test::ggfBytes(grid, test::RowOrder::OutputOrder);
    const QByteArray made = test::gtxBytes(grid);
    const QByteArray old = test::gtxBytes(test::slopingGrid());
    const QString in = program.file(QStringLiteral("in.ggf"), source);
    const QString out = program.file(QStringLiteral("out.gtx"), old);
    const QStringList convert = {QStringLiteral("geoid"), QStringLiteral("convert"),
                                 QStringLiteral("--force"), in, out};
    ASSERT_NO_FATAL_FAILURE(learnDuration(convert));
    ASSERT_EQ(readFile(out), made);
    for (int i = 0; isToGoOn(); ++i) {
        SCOPED_TRACE(i);
        test::writeFile(out, old);
        ASSERT_NO_FATAL_FAILURE(killAtRandom(convert));
        const QByteArray bytes = readFile(out);
        EXPECT_TRUE(bytes == old || bytes == made) << bytes.size();
        EXPECT_EQ(readFile(in), source);
    }
    EXPECT_EQ(program.run(convert).status, 0);
    EXPECT_EQ(readFile(out), made);
}

// --- A run with rejects --------------------------------------------------------------------------

TEST_F(KilledProgram, LeavesTheRejectsOldOrNew)
{
    QByteArray lines;
    QByteArray bad;
    for (int i = 0; i < 20000; ++i) {
        const QByteArray name = QByteArray::number(i);
        const bool isBad = i % 10 == 3;
        const QByteArray line = name + (isBad ? ",5.25,north,1\n" : ",5.25,52.5,1\n");
        lines += line;
        bad += isBad ? line : QByteArray();
    }
    const QByteArray old = "7,5.2x,52.5,1\n";
    const QString input = program.file(QStringLiteral("points.csv"), lines);
    const QString rejects = program.file(QStringLiteral("rejects.csv"), old);
    const QStringList convert = {QStringLiteral("convert"),
                                 QStringLiteral("--system"),
                                 test::systemPath(QStringLiteral("rd_new.xml")),
                                 QStringLiteral("--rejects"),
                                 rejects,
                                 input};
    expectedStatus = 1;
    ASSERT_NO_FATAL_FAILURE(learnDuration(convert));
    ASSERT_EQ(readFile(rejects), bad);
    for (int i = 0; isToGoOn(); ++i) {
        SCOPED_TRACE(i);
        test::writeFile(rejects, old);
        ASSERT_NO_FATAL_FAILURE(killAtRandom(convert));
        const QByteArray bytes = readFile(rejects);
        EXPECT_TRUE(bytes == old || bytes == bad) << bytes.size();
        EXPECT_EQ(readFile(input), lines);
    }
    EXPECT_EQ(program.run(convert).status, 1);
    EXPECT_EQ(readFile(rejects), bad);
}

} // namespace
} // namespace KelStd
