// The file of the lines that failed.

#include "cli/ProgramRun.h"
#include "cli/RunningProgram.h"
#include "location/PublishedFigures.h"
#include "support/FullDisk.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::readFile;
using test::RunningProgram;

const QString system = QStringLiteral("rd_new.xml");
const QByteArray twoGood = "A,5.25,52.5,1\nB,5.5,52.5,2\n";

class ConvertRejects : public testing::Test
{
protected:
    QString path(const QString &name) const { return program.home().path(name); }

    QStringList into(const QString &file, const QStringList &more = {}) const
    {
        return QStringList{QStringLiteral("--rejects"), file} + more;
    }

    ProgramResult convert(const QByteArray &input, const QStringList &more = {}) const
    {
        return program.convert(system, input, into(rejects, more));
    }

    ProgramRun program;
    const QString rejects = path(QStringLiteral("rejects.csv"));
};

TEST_F(ConvertRejects, HasTheLinesAsTheyStandInTheirOrder)
{
    const auto result = convert("A,5,52,1\n"
                                "  B , x ,52, 1 \n"
                                "# a comment\n"
                                "\n"
                                "C;5;95;1\r\n"
                                "D 5 52\n"
                                "\"E, e\",5,52,\n"
                                "F,5,52,1\n"
                                "\x8D,5,52,1\n"
                                "last,5,52");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(readFile(rejects), QByteArray("  B , x ,52, 1 \n"
                                            "C;5;95;1\n"
                                            "D 5 52\n"
                                            "\"E, e\",5,52,\n"
                                            "\x8D,5,52,1\n"
                                            "last,5,52\n"));
    EXPECT_EQ(result.outLines().size(), 3);
    EXPECT_EQ(result.errLines().size(), 7);
}

TEST_F(ConvertRejects, HasTheHeaderOnTop)
{
    convert("\xEF\xBB\xBF# a comment\nh; lat;lon ;id\n1;52;5;A\n1;52;x;B\n2;52;5;C\n1;y;5;D\n");
    EXPECT_EQ(readFile(rejects), QByteArray("h; lat;lon ;id\n1;52;x;B\n1;y;5;D\n"));
}

TEST_F(ConvertRejects, MendedItIsAnInputOfTheSameKind)
{
    const QByteArray header = "h;lat;lon;id\n";
    const auto whole = convert(header + "1;52;5;A\n1;52;6;B\n2;52;5;C\n1;51;5;D\n");
    ASSERT_EQ(whole.status, 0) << whole.err;
    const auto first = convert(header + "1;52;5;A\n1;52;x6;B\n2;52;5;C\n1;y51;5;D\n");
    EXPECT_EQ(first.status, 1);
    const QByteArray mended = readFile(rejects).replace("x", "").replace("y", "");
    const auto second = convert(mended);
    EXPECT_EQ(second.status, 0) << second.err;
    EXPECT_EQ(readFile(rejects), QByteArray());
    QStringList lines = first.outLines() + second.outLines().mid(1);
    QStringList expected = whole.outLines();
    lines.sort();
    expected.sort();
    EXPECT_EQ(lines, expected);
}

/// The same command reads it: the first rejected line must not be what is passed over.
TEST_F(ConvertRejects, HasTheLinesOnTopThatArePassedOver)
{
    struct Row
    {
        const char *skip;
        QByteArray top;
        QStringList more;
    };
    const Row rows[] = {
        {"--skip=1", "Baustelle 7\n", {}},
        {"--skip=3", "first\r\n\n\"open,5,52\n", {}},
        {"--skip=2", "\xEF\xBB\xBFlat,lon,h\n\x8D 7\nlon,lat,h\n", {}},
        {"--skip=1", "units: ft\n[m],[deg],[deg]\nh,lat,lon\n", {"--columns=3,2,1"}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.top.toStdString());
        const bool isTurned = !row.more.isEmpty();
        const QStringList options = QStringList(QString::fromLatin1(row.skip)) + row.more;
        const auto first = convert(
            row.top + (isTurned ? "1,52,5\n" : "5,52,1\n") + "x,52,2\n" + "5.75,x,3\n", options);
        EXPECT_EQ(first.status, 1) << first.err;
        const QByteArray top = QByteArray(row.top).replace('\r', "");
        EXPECT_EQ(readFile(rejects), top + "x,52,2\n5.75,x,3\n");
        const QByteArray mended =
            readFile(rejects).replace("x,52,2", "6,52,6").replace("5.75,x,3", "7,52,7");
        const auto second = convert(mended, options);
        EXPECT_EQ(second.status, 0) << second.err;
        EXPECT_EQ(second.outLines().size(), 3) << second.out;
    }
}

TEST_F(ConvertRejects, IsEmptyWhenNoneFail)
{
    for (const QByteArray &input : {QByteArray(), twoGood, "lon,lat,h\n5,52,1\n" + QByteArray()}) {
        test::writeFile(rejects, "of the last time\n");
        EXPECT_EQ(convert(input).status, 0);
        EXPECT_EQ(readFile(rejects), QByteArray());
    }
}

TEST_F(ConvertRejects, AppearsWholeAtTheEnd)
{
    test::writeFile(rejects, "of the last time\n");
    RunningProgram running(
        program,
        QStringList{QStringLiteral("convert"), QStringLiteral("--system"), test::systemPath(system)}
            + into(rejects));
    running.send("A,5,52,1\nB,x,52,1\n" + QByteArray("C,x,52,1\n").repeated(10000) + "D,5,52,1\n");
    EXPECT_TRUE(running.waitForOutput("\nD,"));
    EXPECT_EQ(readFile(rejects), QByteArray("of the last time\n"));
    running.send("E,x,52,1\n");
    running.closeInput();
    ASSERT_TRUE(running.waitForEnd());
    EXPECT_EQ(running.status(), 1);
    EXPECT_EQ(readFile(rejects),
              "B,x,52,1\n" + QByteArray("C,x,52,1\n").repeated(10000) + "E,x,52,1\n");
    // Nothing else is left beside it.
    EXPECT_EQ(QDir(program.home().path()).entryList(QDir::Files),
              QStringList(QStringLiteral("rejects.csv")));
}

TEST_F(ConvertRejects, AnOldOneIsKeptWhenTheRunCannotStart)
{
    const QByteArray old = "of the last time\n";
    struct Row
    {
        QByteArray input;
        QStringList options;
        int status;
    };
    const Row rows[] = {
        {"lon,lat,height,height\n5,52,1,1\n", {}, 2},
        {"east,north\n5,x\n", {}, 2},
        {"A,x,52,1\n", {QStringLiteral("--threads=0")}, 2},
        {"lon,lat\n5,x\n", {QStringLiteral("--columns=lon,lat,h")}, 2},
        {{}, {path(QStringLiteral("missing.csv"))}, 2},
    };
    for (const Row &row : rows) {
        test::writeFile(rejects, old);
        const auto result = convert(row.input, row.options);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_EQ(readFile(rejects), old);
    }
}

TEST_F(ConvertRejects, IsInOrderOnAnyNumberOfThreads)
{
    QByteArray input;
    QByteArray expected;
    for (int i = 0; i < 12000; ++i) {
        const QByteArray number = QByteArray::number(i);
        const bool fails = i % 7 == 3 || (i > 5000 && i < 7000);
        const QByteArray line = number + (fails ? ",5,y52.25,1\n" : ",5.123456,52.654321,-1.25\n");
        input += line;
        expected += fails ? line : QByteArray();
    }
    const QString file = program.file(QStringLiteral("input.csv"), input);
    for (const char *threads : {"--threads=1", "--threads=4"}) {
        EXPECT_EQ(convert({}, {QString::fromLatin1(threads), file}).status, 1);
        EXPECT_TRUE(readFile(rejects) == expected) << threads;
    }
}

/// The input under each of its names; it must not be replaced by what is wrong in it.
TEST_F(ConvertRejects, TheInputIsNotOverwritten)
{
    const QByteArray input = twoGood + "C,x,52,1\n";
    const QString file = program.file(QStringLiteral("input.csv"), input);
    const QString link = path(QStringLiteral("link.csv"));
    ASSERT_TRUE(QFile::link(file, link));
    const QString detour = path(QStringLiteral("proj/../input.csv"));
    for (const QStringList &names :
         {QStringList{file, file}, {link, file}, {file, link}, {link, link}, {detour, file}}) {
        const auto result = program.convert(system, {}, into(names.first(), {names.last()}));
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err,
                    Mentions(("cannot write " + names.first() + ": it is the input").toUtf8()));
        EXPECT_EQ(readFile(file), input);
        EXPECT_TRUE(QFileInfo(link).isSymLink());
    }
}

TEST_F(ConvertRejects, TheCoordinateSystemIsNotOverwritten)
{
    const QByteArray document = readFile(test::systemPath(system));
    const QString site = program.file(QStringLiteral("site.xml"), document);
    const QString soft = path(QStringLiteral("soft.xml"));
    const QString hard = path(QStringLiteral("hard.xml"));
    ASSERT_TRUE(QFile::link(site, soft));
    ASSERT_EQ(::link(QFile::encodeName(site).constData(), QFile::encodeName(hard).constData()), 0);
    for (const QString &name : {site, soft, hard, path(QStringLiteral("proj/../site.xml"))}) {
        for (const QString &used : {site, soft, hard}) {
            const auto result =
                program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--system"), used}
                                + into(name),
                            "C,x,52,1\n");
            EXPECT_EQ(result.status, 3);
            EXPECT_EQ(result.out, QString());
            EXPECT_EQ(result.err, QStringLiteral("kelstd: cannot write %1: it is the coordinate "
                                                 "system\n")
                                      .arg(name));
            EXPECT_EQ(readFile(site), document);
            EXPECT_EQ(readFile(hard), document);
            EXPECT_TRUE(QFileInfo(soft).isSymLink());
        }
    }
}

/// As 'kelstd convert --rejects FILE < FILE' and '> FILE'.
TEST_F(ConvertRejects, WhatTheStandardStreamsAreIsNotOverwritten)
{
    const QByteArray input = twoGood + "C,x,52,1\n";
    const QString file = program.file(QStringLiteral("file.csv"), input);
    const QStringList arguments =
        QStringList{QStringLiteral("convert"), QStringLiteral("--system"), test::systemPath(system)}
        + into(file);
    const auto reading = program.process(arguments);
    reading->setStandardInputFile(file);
    reading->start();
    ASSERT_TRUE(reading->waitForFinished(60000));
    EXPECT_EQ(reading->exitCode(), 3);
    EXPECT_THAT(QString::fromUtf8(reading->readAllStandardError()),
                Mentions(("cannot write " + file + ": it is the input").toUtf8()));
    EXPECT_EQ(readFile(file), input);

    const auto writing = program.process(arguments);
    writing->setStandardOutputFile(file, QIODevice::Append);
    writing->start();
    writing->write(input);
    writing->closeWriteChannel();
    ASSERT_TRUE(writing->waitForFinished(60000));
    EXPECT_EQ(writing->exitCode(), 3);
    EXPECT_THAT(QString::fromUtf8(writing->readAllStandardError()),
                Mentions(("cannot write " + file + ": it is the output").toUtf8()));
    EXPECT_EQ(readFile(file), input);
}

TEST_F(ConvertRejects, AFolderThatIsNotThereIsAnError)
{
    for (const QString &file : {path(QStringLiteral("no/rejects.csv")), program.home().path()}) {
        const auto result = program.convert(system, twoGood, into(file));
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(("kelstd: cannot write " + file + ": ").toUtf8()));
    }
}

TEST_F(ConvertRejects, AFullDiskIsReportedAndLeavesTheOldFile)
{
    const QByteArray old = "of the last time\n";
    for (const int lines : {100, 20000}) { // less and more than what is held back
        test::writeFile(rejects, old);
        const QString input =
            program.file(QStringLiteral("input.csv"),
                         "A,5,52,1\n" + QByteArray("B,x,52,1\n").repeated(lines) + "C,5,52,1\n");
        ProgramResult result;
        {
            const test::FullDisk limit(500);
            result = convert({}, {input});
        }
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.errLines().last(),
                    Mentions("kelstd: cannot write the rejected lines: File too large"));
        EXPECT_TRUE(result.out.contains(QLatin1String("\nC,")));
        EXPECT_EQ(readFile(rejects), old);
    }
}

TEST_F(ConvertRejects, AFullDeviceIsReported)
{
    const auto result =
        program.convert(system, twoGood + "C,x,52,1\n", into(QStringLiteral("/dev/full")));
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.outLines().size(), 3);
    EXPECT_THAT(result.err, Mentions("cannot write the rejected lines: No space left on device"));
}

TEST_F(ConvertRejects, MayGoNowhere)
{
    const auto result =
        program.convert(system, twoGood + "C,x,52,1\n", into(QStringLiteral("/dev/null")));
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_EQ(result.outLines().size(), 3);
    EXPECT_FALSE(QFileInfo(QStringLiteral("/dev/null")).isFile());
}

} // namespace
} // namespace KelStd
