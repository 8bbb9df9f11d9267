// Inputs of many lines, which several threads convert: nobody can tell how many.

#include "cli/ProgramRun.h"
#include "cli/RunningProgram.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>

#include <cmath>
#include <random>

#include <fcntl.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;
using test::RunningProgram;

const QString system = QStringLiteral("rd_new.xml");
constexpr int patience = 60000; // [ms]

QStringList convertArguments(const QStringList &more = {})
{
    return QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                       test::systemPath(system)}
           + more;
}

QStringList onThreads(int threads, const QStringList &more = {})
{
    return QStringList{QStringLiteral("--threads"), QString::number(threads)} + more;
}

/// Lines of positions with names, and among them some that fail, comments and blank lines.
struct ManyLines
{
    struct Position
    {
        int line; ///< from 1
        QString name;
        Pos position;
    };

    QByteArray bytes;
    QList<Position> positions;
    QList<int> failing; ///< the numbers of their lines
    int count = 0;

    void add(const QByteArray &line)
    {
        bytes += line + '\n';
        ++count;
    }
};

ManyLines manyLines(int count)
{
    ManyLines lines;
    std::mt19937 random(20260301);
    const auto millionths = [&random](int from, int to) {
        return QByteArray::number(from + static_cast<int>(random() % 1000000) * 1e-6 * (to - from),
                                  'f', 9);
    };
    while (lines.count < count) {
        const int number = lines.count + 1;
        const QByteArray text = QByteArray::number(number);
        if (number % 97 == 13) {
            lines.add("# " + text + QByteArray(number % 700, '.'));
        } else if (number % 401 == 7) {
            lines.add({});
        } else if (number % 101 == 50 || number % 211 == 100 || number % 307 == 5) {
            lines.failing += number;
            lines.add(number % 101 == 50    ? "P" + text + ",abc,52,1"
                      : number % 211 == 100 ? "P" + text + ",5,95,1"
                                            : QByteArray("5,52,1"));
        } else {
            const QByteArray numbers[] = {millionths(3, 8), millionths(50, 54),
                                          millionths(-20, 400)};
            lines.positions += {number, QStringLiteral("P%1").arg(number),
                                Pos::fromLongLatH(numbers[0].toDouble(), numbers[1].toDouble(),
                                                  numbers[2].toDouble())};
            // A name in quotation marks goes another way.
            lines.add((number % 89 == 0 ? "\"P" + text + '"' : "P" + text) + ',' + numbers[0] + ','
                      + numbers[1] + ',' + numbers[2]);
        }
    }
    return lines;
}

/// The number of the line that a line of output or a report is about; -1 for another line.
int lineOf(const QString &text, const QString &input)
{
    const QString report = QStringLiteral("kelstd: %1:").arg(input);
    if (text.startsWith(report))
        return text.mid(report.size()).section(QLatin1Char(':'), 0, 0).toInt();
    return text.startsWith(QLatin1Char('P')) ? text.mid(1).section(QLatin1Char(','), 0, 0).toInt()
                                             : -1;
}

QString expectedLine(const QString &name, const Location &location)
{
    const double values[] = {location.get_WGS84_LLH_Long(),
                             location.get_WGS84_LLH_Lat(),
                             location.get_WGS84_LLH_Height(),
                             location.get_WGS84_XYZ_X(),
                             location.get_WGS84_XYZ_Y(),
                             location.get_WGS84_XYZ_Z(),
                             location.get_Local_LLH_Long(),
                             location.get_Local_LLH_Lat(),
                             location.get_Local_LLH_Height(),
                             location.get_NEH_N(),
                             location.get_NEH_E(),
                             location.get_NEH_H()};
    constexpr bool isAngle[] = {true, true, false, false, false, false,
                                true, true, false, false, false, false};
    QString line = name;
    for (std::size_t i = 0; i < std::size(values); ++i)
        line += QLatin1Char(',') + QString::number(values[i], 'f', isAngle[i] ? 11 : 5);
    return line + QLatin1String(",ellipsoid");
}

class ConvertMany : public test::ProjTest
{
protected:
    const ManyLines m_lines = manyLines(20000);
};

TEST_F(ConvertMany, EveryLineIsAnsweredInItsPlace)
{
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("many.csv"), m_lines.bytes);
    const auto result = program.convert(system, {}, onThreads(3, {file}));
    EXPECT_EQ(result.status, 1);

    const QStringList out = result.outLines();
    ASSERT_EQ(out.size(), 1 + m_lines.positions.size());
    for (int i = 0; i < m_lines.positions.size(); ++i)
        ASSERT_EQ(lineOf(out.at(i + 1), file), m_lines.positions.at(i).line);

    const QStringList err = result.errLines();
    ASSERT_EQ(err.size(), m_lines.failing.size() + 1);
    for (int i = 0; i < m_lines.failing.size(); ++i)
        ASSERT_EQ(lineOf(err.at(i), file), m_lines.failing.at(i));
    EXPECT_EQ(err.last(), QStringLiteral("kelstd: %1 of %2 positions failed")
                              .arg(m_lines.failing.size())
                              .arg(m_lines.failing.size() + m_lines.positions.size()));
}

/// The numbers of a line, to a unit of their last decimals.
void expectNear(const QString &line, const QString &expected)
{
    const QStringList fields = line.split(QLatin1Char(','));
    const QStringList others = expected.split(QLatin1Char(','));
    ASSERT_EQ(fields.size(), others.size());
    for (int i = 1; i + 1 < fields.size(); ++i) {
        const int decimals = fields.at(i).size() - fields.at(i).indexOf(QLatin1Char('.')) - 1;
        EXPECT_NEAR(fields.at(i).toDouble(), others.at(i).toDouble(),
                    1.01 * std::pow(10.0, -decimals))
            << line.toStdString();
    }
}

/// What the library makes of one position at a time is what stands in the output.
TEST_F(ConvertMany, TheNumbersAreThoseOfTheLibrary)
{
    const ProgramRun program;
    const auto result = program.convert(system, m_lines.bytes, onThreads(3));
    const QStringList out = result.outLines();
    ASSERT_EQ(out.size(), 1 + m_lines.positions.size());
    Coord coord;
    QString error;
    ASSERT_TRUE(Coord_IO::xml_read(test::systemPath(system), coord, &error)) << error;
    LocationBuilder builder(coord);
    for (int i = 0; i < m_lines.positions.size(); i += 83) {
        const ManyLines::Position &position = m_lines.positions.at(i);
        Location location;
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(position.position, location, nullptr,
                                                        &coord, &error))
            << error;
        expectNear(out.at(i + 1), expectedLine(position.name, location));
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic, position.position,
                                 location, &error))
            << error;
        EXPECT_EQ(out.at(i + 1), expectedLine(position.name, location));
    }
}

TEST_F(ConvertMany, AnyNumberOfThreadsGivesTheSameBytes)
{
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("many.csv"), m_lines.bytes);
    const auto expected = program.convert(system, {}, onThreads(1, {file}));
    EXPECT_EQ(expected.status, 1);
    EXPECT_EQ(expected.outLines().size(), 1 + m_lines.positions.size());
    for (const int threads : {2, 5}) {
        const auto result = program.convert(system, {}, onThreads(threads, {file}));
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.out == expected.out) << threads;
        EXPECT_TRUE(result.err == expected.err) << threads;
    }
}

TEST_F(ConvertMany, APipeInOddPiecesGivesTheSameAsAFile)
{
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("many.csv"), m_lines.bytes);
    const auto expected = program.convert(system, {}, onThreads(2, {file}));
    RunningProgram piped(program, convertArguments(onThreads(2)));
    std::mt19937 random(20260302);
    for (int at = 0; at < m_lines.bytes.size();) {
        const int size = 1 + static_cast<int>(random() % (at % 3 == 0 ? 50 : 20000));
        piped.send(m_lines.bytes.mid(at, size));
        at += size;
    }
    piped.closeInput();
    ASSERT_TRUE(piped.waitForEnd());
    EXPECT_EQ(piped.status(), 1);
    EXPECT_TRUE(QString::fromUtf8(piped.out()) == expected.out);
    EXPECT_TRUE(QString::fromUtf8(piped.err()).replace(QLatin1String("<stdin>"), file)
                == expected.err);
}

TEST_F(ConvertMany, AHeaderHoldsForEveryBlockOfLines)
{
    QByteArray permuted = "height;lat;lon;code;id\n";
    for (const QByteArray &line : m_lines.bytes.split('\n')) {
        const QList<QByteArray> fields = line.split(',');
        permuted += fields.size() == 4 ? fields.at(3) + ';' + fields.at(2) + ';' + fields.at(1)
                                             + ";x;" + fields.at(0)
                                       : line;
        permuted += '\n';
    }
    const ProgramRun program;
    const auto expected = program.convert(system, m_lines.bytes, onThreads(1));
    const auto result = program.convert(system, permuted, onThreads(3));
    EXPECT_EQ(result.status, 1);
    QString withCode = expected.out;
    withCode.replace(QLatin1String("\n"), QLatin1String(",x\n"));
    withCode.replace(QLatin1String("local_height_reference,x"),
                     QLatin1String("local_height_reference,code"));
    EXPECT_TRUE(result.out == withCode);
}

/// Forms of output that have something between the positions.
TEST(ConvertManyForms, AreTheSameOnAnyNumberOfThreads)
{
    const ManyLines lines = manyLines(6000);
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("many.csv"), lines.bytes);
    for (const char *option : {"--table", "--json", "--geojson"}) {
        SCOPED_TRACE(option);
        const QStringList more = {QString::fromLatin1(option), file};
        const auto expected = program.convert(system, {}, onThreads(1, more));
        EXPECT_GE(expected.outLines().size(), lines.positions.size());
        const auto result = program.convert(system, {}, onThreads(4, more));
        EXPECT_TRUE(result.out == expected.out);
        EXPECT_TRUE(result.err == expected.err);
    }
}

/// Where both streams end in one place, a report stands between what is printed of the lines
/// around it.
TEST(ConvertManyForms, ReportsStandAmongTheOutputInOrder)
{
    const ManyLines lines = manyLines(6000);
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("many.csv"), lines.bytes);
    for (const int threads : {1, 3}) {
        RunningProgram merged(program, convertArguments(onThreads(threads, {file})),
                              RunningProgram::Errors::IntoOutput);
        ASSERT_TRUE(merged.waitForEnd());
        QStringList shown = QString::fromUtf8(merged.out()).split(QLatin1Char('\n'));
        ASSERT_EQ(shown.size(), 1 + lines.positions.size() + lines.failing.size() + 2);
        EXPECT_TRUE(shown.first().startsWith(QLatin1String("point,"))) << shown.first();
        int before = 0;
        for (const QString &text : shown.mid(1, shown.size() - 3)) {
            const int line = lineOf(text, file);
            ASSERT_GT(line, before) << text;
            before = line;
        }
    }
}

TEST(ConvertSlowInput, ALineIsAnsweredBeforeTheNextIsThere)
{
    const ProgramRun program;
    for (const char *form : {"--csv", "--json", "--geojson", "--table"}) {
        SCOPED_TRACE(form);
        RunningProgram running(program, convertArguments({QString::fromLatin1(form)}));
        running.send("first,5,52,1\n");
        EXPECT_TRUE(running.waitForOutput("first"));
        // Some words of it are not all of it.
        EXPECT_TRUE(running.out().endsWith('\n')) << running.out().constData();
        running.send("second,5,52,1\nthird,5,52,1\n");
        EXPECT_TRUE(running.waitForOutput("third"));
        EXPECT_TRUE(running.out().endsWith('\n')) << running.out().constData();
        running.closeInput();
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_EQ(running.status(), 0);
    }
}

/// The beginning of the next line is not yet a line, not even when it comes while the one before is
/// converted.
TEST(ConvertSlowInput, HalfALineDoesNotHoldUpTheAnswerToTheOneBefore)
{
    const ProgramRun program;
    for (const int pause : {0, 2, 5, 10}) {
        SCOPED_TRACE(pause);
        RunningProgram running(program, convertArguments(), RunningProgram::Errors::IntoOutput);
        running.send("5,52\n");
        EXPECT_TRUE(running.waitForOutput("<stdin>:1: ")); // now it waits
        running.send("first,5,52,1\n");
        QThread::msleep(static_cast<unsigned long>(pause));
        running.send("second,5");
        ASSERT_TRUE(running.waitForOutput("\nfirst,5.00000000000,52."));
        running.send("2,52,1\nthird,");
        ASSERT_TRUE(running.waitForOutput("\nsecond,52.00000000000,52."));
        running.send("5,52,1");
        running.closeInput();
        ASSERT_TRUE(running.waitForEnd());
        EXPECT_TRUE(running.out().contains("\nthird,5.00000000000,52."));
    }
}

/// As 'kelstd convert ... | head -1': the rest of an endless input is not waited for.
TEST(ConvertManyForms, AReaderThatHasEnoughEndsTheRun)
{
    int ends[2] = {};
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    ProgramRun program;
    program.beforeStart([end = ends[1]] { dup2(end, STDOUT_FILENO); });
    const auto process = program.process(convertArguments(onThreads(2)));
    process->start();
    ASSERT_TRUE(process->waitForStarted(patience));
    close(ends[1]);
    const QByteArray lines = QByteArray("P,5.25,52.5,1\n").repeated(1000);
    process->write(lines);
    process->waitForBytesWritten(patience);
    char first = '\0';
    EXPECT_EQ(read(ends[0], &first, 1), 1);
    close(ends[0]);
    QElapsedTimer clock;
    clock.start();
    while (process->state() != QProcess::NotRunning && clock.elapsed() < patience) {
        process->write(lines);
        process->waitForBytesWritten(100);
    }
    ASSERT_EQ(process->state(), QProcess::NotRunning);
    EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process->exitCode(), 3);
    EXPECT_EQ(process->readAllStandardError(),
              QByteArray("kelstd: cannot write standard output: Broken pipe\n"));
}

TEST(ConvertThreads, AreANumberFrom1To64)
{
    const ProgramRun program;
    for (const char *threads : {"0", "65", "x", "-1", "1.5", "99999999999999999999"}) {
        const auto result = program.convert(
            system, "5,52,1\n", {QStringLiteral("--threads=%1").arg(QString::fromLatin1(threads))});
        EXPECT_EQ(result.status, 2) << threads;
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err,
                    Mentions("--threads '" + QByteArray(threads) + "' is no number from 1 to 64"));
    }
    for (const int threads : {1, 64}) {
        const auto result = program.convert(system, "5,52,1\n", onThreads(threads));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.outLines().size(), 2);
    }
}

} // namespace
} // namespace KelStd
