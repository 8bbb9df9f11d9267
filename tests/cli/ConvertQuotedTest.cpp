// Lists whose quoted fields hold line breaks and other separators, through the program.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "nmea/Sentences.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/Utf16.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::readFile;
using test::utf16;

const QString system = QStringLiteral("rd_new.xml");
const QByteArray headings = "point,northing,easting,height,remark\n";

QStringList options(const QStringList &more = {})
{
    return QStringList{QStringLiteral("--from"),
                       QStringLiteral("local-neh"),
                       QStringLiteral("--csv"),
                       QStringLiteral("--fields"),
                       QStringLiteral("point,local_northing_m,local_easting_m,remark"),
                       QStringLiteral("--precision"),
                       QStringLiteral("0")}
           + more;
}

const QString printed = QStringLiteral("point,local_northing_m,local_easting_m,remark\n");

TEST(ConvertQuoted, TheSecondHalfOfAFieldIsNoPosition)
{
    const auto result = ProgramRun().convert(
        system,
        headings
            + "1,463000,155000,1,\"moved, was:\n1,463010,155010,9,old\"\n2,463001,155001,2,ok\n",
        options());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, printed
                              + QStringLiteral("1,463000,155000,\"moved, was:\n"
                                               "1,463010,155010,9,old\"\n2,463001,155001,ok\n"));
    EXPECT_EQ(result.errLines(), QStringList(QStringLiteral(
                                     "kelstd: <stdin>:3: warning: the line looks like a position "
                                     "and is none: it stands in quotation marks that a line "
                                     "before it opens")));
}

TEST(ConvertQuoted, NumbersOfLinesAreThoseOfTheFirst)
{
    const auto result = ProgramRun().convert(
        system, headings + "1,463000,155000,1,\"a\n\nb\"\n2,x,155001,\"2\n3\",c\n4,463001,y,2,d\n",
        options());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errLines().mid(0, 2),
              QStringList({QStringLiteral("kelstd: <stdin>:5: northing \"x\" is not a number"),
                           QStringLiteral("kelstd: <stdin>:7: easting \"y\" is not a number")}));
}

TEST(ConvertQuoted, AMarkThatIsNotClosedCostsItsLineAlone)
{
    const ProgramRun program;
    const QString rejects = program.home().path(QStringLiteral("rejects.csv"));
    const auto result =
        program.convert(system,
                        headings
                            + "1,463000,155000,1,2\" pipe\n2,463001,155001,2,\"3 pipe\n"
                              "3,463002,155002,3,ok\n4,463003,155003,4,ok\n",
                        options({QStringLiteral("--rejects"), rejects}));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, printed
                              + QStringLiteral("1,463000,155000,\"2\"\" pipe\"\n"
                                               "3,463002,155002,ok\n4,463003,155003,ok\n"));
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: <stdin>:3: a quotation mark is not closed"));
    EXPECT_EQ(readFile(rejects), headings + "2,463001,155001,2,\"3 pipe\n");
}

TEST(ConvertQuoted, WhatMayBeHalfOfAFieldIsRejected)
{
    const ProgramRun program;
    const QString rejects = program.home().path(QStringLiteral("rejects.csv"));
    const QByteArray cut = "1,463000,155000,1,\"moved, was:\n1,463010,155010,9,ol";
    const auto result = program.convert(system, headings + "0,463000,155000,1,x\n" + cut,
                                        options({QStringLiteral("--rejects"), rejects}));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, printed + QStringLiteral("0,463000,155000,x\n"));
    EXPECT_THAT(result.err, Mentions("<stdin>:4: the line may be a piece of the field that line 3 "
                                     "opens, whose quotation mark is not closed"));
    EXPECT_EQ(readFile(rejects), headings + cut + '\n');
}

/// Carried texts with line breaks come back as they were, through CSV and what spreadsheets open.
TEST(ConvertQuoted, WhatIsPrintedIsReadBack)
{
    const ProgramRun program;
    const QByteArray input = "point,northing,easting,height,remark\r\n"
                             "\"A\nB\",463000,155000,1,\"a, \"\"b\"\";\r\n\tc\"\r\n"
                             "2,463001,155001,2,\"\n\"\r\n"
                             "3,463002,155002,3,\"0012\n\"\r\n";
    const auto json =
        QStringList{QStringLiteral("--json"), QStringLiteral("--from"), QStringLiteral("local-neh"),
                    QStringLiteral("--fields"), QStringLiteral("point,local_northing_m,remark")};
    const auto expected = program.convert(system, input, json);
    EXPECT_EQ(expected.status, 0) << expected.err;
    EXPECT_THAT(expected.out, Mentions("{\"point\":\"A\\nB\","));
    EXPECT_THAT(expected.out, Mentions("\"remark\":\"a, \\\"b\\\";\\r\\n\\tc\"}"));
    for (const char *form : {"--csv", "--excel"}) {
        for (const char *locale : {"en_US.UTF-8", "de_DE.UTF-8"}) {
            ProgramRun own;
            own.setVariable(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
            const auto written = own.convert(
                system, input,
                {QStringLiteral("--from"), QStringLiteral("local-neh"), QString::fromLatin1(form)});
            EXPECT_EQ(written.status, 0) << written.err;
            const auto back = own.convert(system, written.out.toUtf8(), json);
            EXPECT_EQ(back.out, expected.out) << form << locale << back.err;
        }
    }
}

/// Some 200 KB of records of one to five lines, so that borders of blocks lie within them.
TEST(ConvertQuoted, TheNumberOfThreadsIsNotSeen)
{
    const ProgramRun program;
    QByteArray input = headings;
    QString expected = printed;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray number = QByteArray::number(460000 + i);
        const QByteArray remark = '"' + QByteArray("x\n1,2,3,4,5\n,\"\"\n").repeated(i % 3)
                                  + QByteArray(i % 7, 'y') + '"';
        input += QByteArray::number(i) + ',' + number + ",155000,1," + remark + '\n';
        const bool needsMarks = i % 3 > 0;
        expected += QStringLiteral("%1,%2,155000,").arg(i).arg(460000 + i)
                    + QString::fromLatin1(needsMarks ? remark : remark.mid(1, remark.size() - 2))
                    + QLatin1Char('\n');
    }
    const QString file = program.file(QStringLiteral("list.csv"), input);
    QString messages;
    for (const int threads : {1, 2, 5}) {
        const auto result = program.convert(
            system, {}, options({QStringLiteral("--threads"), QString::number(threads), file}));
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(result.out == expected) << threads;
        EXPECT_TRUE(messages.isEmpty() || messages == result.err) << threads;
        messages = result.err;
    }
    EXPECT_EQ(messages.count(QLatin1String("looks like a position and is none")), 3333);
}

TEST(ConvertQuoted, SkippedLinesAreCountedAsTheyStand)
{
    const auto result =
        ProgramRun().convert(system, "\"title\n" + headings + "1,463000,155000,1,\"a\nb\"\n",
                             options({QStringLiteral("--skip"), QStringLiteral("1")}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, printed + QStringLiteral("1,463000,155000,\"a\nb\"\n"));
}

TEST(ConvertQuoted, SeparationsAndSitesAreReadAlike)
{
    const ProgramRun program;
    program.file(QStringLiteral("geoid_model_list/small.gtx"), test::gtxBytes(test::slopingGrid()));
    const auto heights =
        program.run({QStringLiteral("geoid"), QStringLiteral("height"), QStringLiteral("--model"),
                     QStringLiteral("small.gtx"), QStringLiteral("--csv")},
                    "point,lat,lon,h,remark\n\"A\nB\",52.5,3.5,100,\"old:\n"
                    "C,52.5,3.5,9,x\"\nD,52.5,3.5,100,y\n");
    EXPECT_EQ(heights.status, 0) << heights.err;
    EXPECT_THAT(heights.out, Mentions("\"A\nB\","));
    EXPECT_FALSE(heights.out.contains(QLatin1String("\nC,"))) << heights.out;

    const QByteArray points = "name,longitude,latitude,height,northing,easting,remark\n"
                              "A,5,52,1,463000,155000,\"x\nB,5,52,1,463000,155000,y\"\n";
    const auto fit = [&program](const QByteArray &list) {
        return program.run({QStringLiteral("site"), QStringLiteral("fit"),
                            QStringLiteral("--system"), test::systemPath(system),
                            QStringLiteral("--points"),
                            program.file(QStringLiteral("points.csv"), list)});
    };
    EXPECT_EQ(fit(points).err,
              fit("name,longitude,latitude,height,northing,easting\n"
                  "A,5,52,1,463000,155000\n")
                  .err.prepend(QStringLiteral("kelstd: note: columns that are not read: "
                                              "remark\n")));
    EXPECT_THAT(fit(points.chopped(3)).err, Mentions("points.csv:3: the line may be a piece"));
}

TEST(ConvertQuoted, MixedDecimalMarksAreWarnedOfOnce)
{
    const auto result =
        ProgramRun().convert(system,
                             "P1;463000;155000;2\nP2;463000,5;155000,5;1,2\n"
                             "P3;463000.5;155000.5;1.2\nP4;463000,5;155000,5;1,2\n",
                             {QStringLiteral("--from"), QStringLiteral("local-neh")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errLines(), QStringList(QStringLiteral(
                                     "kelstd: warning: <stdin> has decimal commas (line 2) and "
                                     "decimal points (line 3); a point before thousands is read "
                                     "as one before decimals")));
}

/// Of columns with other headings the headings help, and nothing is left of a list behind its end.
TEST(ConvertQuoted, NobodyIsToldToPassOverAllLines)
{
    const QByteArray row = ",463000,155000,1,ok\n";
    const auto result =
        ProgramRun().convert(system, "point,HW,RW,h,remark\n1" + row + "2" + row + "\n# end\n",
                             {QStringLiteral("--from"), QStringLiteral("local-neh")});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, Mentions("--columns picks columns with other headings of these: "
                                     "\"point\", \"HW\", \"RW\", \"h\", \"remark\""));
    EXPECT_FALSE(result.err.contains(QLatin1String("--skip"))) << result.err;
}

/// As a shell of Windows writes what it is given with ">".
TEST(ConvertQuoted, ReceiversTextMayBeUtf16)
{
    const QByteArray log = test::log(
        {"GNRMC,123456.20,A,5231.2345678,N,00524.5678901,E,0.01,45.0,290224,,,R,V",
         "GNGGA,123456.20,5231.2345678,N,00524.5678901,E,4,17,0.62,34.5678,M,39.8765,M,1.0,0001"});
    const QStringList nmea = {QStringLiteral("--nmea"), QStringLiteral("--csv")};
    const auto expected = ProgramRun().convert(system, log, nmea);
    EXPECT_EQ(csvRows(expected.out).size(), 1);
    for (const bool isBigEndian : {false, true}) {
        const QByteArray text = utf16(QString::fromLatin1(log), isBigEndian);
        const QByteArray mark = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
        const auto result = ProgramRun().convert(system, mark + text, nmea);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, expected.out);
        const auto noMark = ProgramRun().convert(system, text, nmea);
        EXPECT_EQ(noMark.status, 1);
        EXPECT_THAT(noMark.err, Mentions("<stdin> is UTF-16 text without a byte-order mark"));
    }
}

} // namespace
} // namespace KelStd
