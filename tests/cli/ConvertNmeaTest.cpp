// What receivers say, converted: kelstd convert --nmea.

#include "cli/ProgramRun.h"
#include "house/SourceFiles.h"
#include "location/PublishedFigures.h"
#include "nmea/Sentences.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <fcntl.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::log;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

const QByteArray rmc = "GNRMC,123456.20,A,5231.2345678,N,00524.5678901,E,0.01,45.0,290224,,,R,V";
const QByteArray gga =
    "GNGGA,123456.20,5231.2345678,N,00524.5678901,E,4,17,0.62,34.5678,M,39.8765,M,1.0,0001";
const QByteArray gst = "GNGST,123456.20,8.5,0.012,0.009,77.1,0.0107,0.0095,0.0182";

QByteArray ggaAt(const char *time, const char *quality = "4")
{
    return QByteArray("GNGGA,") + time + ",5231.0,N,00524.0,E," + quality
           + ",17,0.6,30.0,M,40.0,M,,";
}

QByteArray rmcAt(const char *time, const char *date)
{
    return QByteArray("GNRMC,") + time + ",A,5231.0,N,00524.0,E,,," + date + ",,,R,V";
}

ProgramResult convert(const QByteArray &input, const QStringList &more = {})
{
    const ProgramRun program;
    return program.convert(system, input, QStringList{QStringLiteral("--nmea")} + more);
}

QStringList column(const ProgramResult &result, const char *name)
{
    QStringList values;
    for (const auto &row : test::csvRows(result.out))
        values += row.value(QString::fromLatin1(name));
    return values;
}

TEST(ConvertNmea, AnEpochIsALineWithAllThatItsSentencesSaid)
{
    const ProgramResult result = convert(log({rmc, gga, gst, ggaAt("123456.40")}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errLines(),
              QStringList(QStringLiteral("kelstd: note: ellipsoidal height = mean-sea-level height "
                                         "+ separation, as the receiver gives them")));
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines.at(0).endsWith(
        QStringLiteral(",local_height_reference,utc,gps_week,gps_seconds,quality,satellites,hdop,"
                       "undulation_m,sd_latitude_m,sd_longitude_m,sd_height_m")));
    // 2024-02-29 12:34:56 is four days and 12:35:14 of GPS time into week 2303.
    EXPECT_TRUE(lines.at(1).endsWith(
        QStringLiteral(",ellipsoid,2024-02-29T12:34:56.20Z,2303,390914.20,4,17,0.62,39.8765,0.0107,"
                       "0.0095,0.0182")))
        << lines.at(1);
    EXPECT_TRUE(lines.at(2).endsWith(
        QStringLiteral(",ellipsoid,2024-02-29T12:34:56.40Z,2303,390914.40,4,17,0.6,40.0,,,")))
        << lines.at(2);
    EXPECT_EQ(column(result, "point"), QStringList({QStringLiteral("1"), QStringLiteral("2")}));
    const auto row = test::csvRows(result.out).at(0);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_latitude_deg")), 52 + 31.2345678 / 60,
                6e-12);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_longitude_deg")), 5 + 24.5678901 / 60,
                6e-12);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_height_m")), 74.4443, 6e-6);
}

TEST(ConvertNmea, IsWhatTheSamePositionIsAsText)
{
    const ProgramResult nmea =
        convert(log({"GNGGA,,5230.0,N,00515.0,E,4,17,0.6,30.5,M,40.25,M,,"}));
    const ProgramRun program;
    const ProgramResult text = program.convert(system, "1,5.25,52.5,70.75\n");
    ASSERT_EQ(text.outLines().size(), 2);
    EXPECT_TRUE(nmea.out.contains(text.outLines().at(1)));
}

TEST(ConvertNmea, JsonHasNumbersAndNulls)
{
    const ProgramResult result =
        convert(log({rmc, gga, gst, "GNGGA,123456.40,5231.0,N,00524.0,E,4,,,30.0,M,40.0,M,,"}),
                {QStringLiteral("--json")});
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 2);
    const QJsonObject first = QJsonDocument::fromJson(lines.at(0).toUtf8()).object();
    EXPECT_EQ(first.value(QStringLiteral("utc")), QStringLiteral("2024-02-29T12:34:56.20Z"));
    EXPECT_EQ(first.value(QStringLiteral("gps_week")), 2303);
    EXPECT_EQ(first.value(QStringLiteral("gps_seconds")), 390914.2);
    EXPECT_EQ(first.value(QStringLiteral("sd_height_m")), 0.0182);
    EXPECT_EQ(first.value(QStringLiteral("point")), QStringLiteral("1"));
    const QJsonObject second = QJsonDocument::fromJson(lines.at(1).toUtf8()).object();
    for (const char *name :
         {"satellites", "hdop", "sd_latitude_m", "sd_longitude_m", "sd_height_m"})
        EXPECT_TRUE(second.value(QString::fromLatin1(name)).isNull()) << name;
}

TEST(ConvertNmea, GeoJsonIsWhole)
{
    const ProgramResult result =
        convert(log({rmc, gga, ggaAt("123456.40")}), {QStringLiteral("--geojson")});
    const QJsonObject collection = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QJsonArray features = collection.value(QStringLiteral("features")).toArray();
    ASSERT_EQ(features.size(), 2);
    EXPECT_EQ(features.at(1)
                  .toObject()
                  .value(QStringLiteral("properties"))
                  .toObject()
                  .value(QStringLiteral("quality")),
              4);
}

TEST(ConvertNmea, ATableHasItsColumnsBelowTheirHeadings)
{
    const ProgramResult result = convert(log({rmc, gga, gst}), {QStringLiteral("--table")});
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 4);
    for (const auto &[heading, value] :
         {std::pair("utc", "2024-02-29T12:34:56.20Z"), std::pair("gps_week", "2303"),
          std::pair("hdop", "0.62"), std::pair("sd_height_m", "0.0182")})
        EXPECT_EQ(lines.at(1).indexOf(QString::fromLatin1(heading)),
                  lines.at(3).indexOf(QString::fromLatin1(value)))
            << result.out;
}

TEST(ConvertNmea, PointsAreCalledByTheirTimes)
{
    const ProgramResult result = convert(
        log({ggaAt("235959.9"), rmcAt("235959.9", "311223"), ggaAt("000000.0"), ggaAt("000000.1")}),
        {QStringLiteral("--names"), QStringLiteral("utc")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(column(result, "point"), QStringList({QStringLiteral("2023-12-31T23:59:59.9Z"),
                                                    QStringLiteral("2024-01-01T00:00:00.0Z"),
                                                    QStringLiteral("2024-01-01T00:00:00.1Z")}));
}

// The week ends 18 s before Saturday's midnight of UTC; 2024-03-02 is a Saturday.
TEST(ConvertNmea, TheWeekEndsAndMidnightPass)
{
    const ProgramResult result =
        convert(log({rmcAt("235941.80", "020324"), ggaAt("235941.80"), ggaAt("235942.00"),
                     ggaAt("235959.80"), ggaAt("000000.00"), ggaAt("000000.20")}));
    EXPECT_EQ(column(result, "gps_week"),
              QStringList({QStringLiteral("2303"), QStringLiteral("2304"), QStringLiteral("2304"),
                           QStringLiteral("2304"), QStringLiteral("2304")}));
    EXPECT_EQ(
        column(result, "gps_seconds"),
        QStringList({QStringLiteral("604799.80"), QStringLiteral("0.00"), QStringLiteral("17.80"),
                     QStringLiteral("18.00"), QStringLiteral("18.20")}));
    EXPECT_EQ(column(result, "utc").last(), QStringLiteral("2024-03-03T00:00:00.20Z"));
}

TEST(ConvertNmea, WithoutADateTheTimesStayEmpty)
{
    const ProgramResult result = convert(
        log({ggaAt("123456"), ggaAt("123457"), ggaAt("123458"), rmcAt("123458", "290224")}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(column(result, "utc"),
              QStringList({QString(), QString(), QStringLiteral("2024-02-29T12:34:58Z")}));
    EXPECT_EQ(column(result, "gps_seconds").first(), QString());
    EXPECT_THAT(result.err, Mentions("note: the time of 2 positions is empty: no date (RMC, ZDA)"));
}

TEST(ConvertNmea, EpochsWithoutAFixFailAndAreKept)
{
    const ProgramRun program;
    const QString rejects = program.home().path(QStringLiteral("rejects.nmea"));
    const QByteArray voidRmc = "GNRMC,123457.00,V,,,,,,,290224,,,N,V";
    const ProgramResult result =
        program.convert(system,
                        log({ggaAt("123456.00", "0"), ggaAt("123457.00"), voidRmc,
                             ggaAt("123458.00"), rmcAt("123459.00", "290224"),
                             "GNGGA,123500.00,5231.0,N,00524.0,E,4,17,0.6,30.0,M,,M,,"}),
                        {QStringLiteral("--nmea"), QStringLiteral("--rejects"), rejects});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(column(result, "point"), QStringList(QStringLiteral("3")));
    EXPECT_THAT(result.err, Mentions("<stdin>:1: the receiver has no fix (quality 0)\n"));
    EXPECT_THAT(result.err, Mentions("<stdin>:2: the receiver has no fix (RMC says void)\n"));
    EXPECT_THAT(result.err, Mentions("<stdin>:5: it has no height: RMC alone, without GGA or GNS"));
    EXPECT_THAT(result.err, Mentions("<stdin>:6: it has no geoid separation: its height is above "
                                     "mean sea level, not above the ellipsoid"));
    EXPECT_THAT(result.err, Mentions("4 of 5 positions failed"));
    EXPECT_EQ(
        test::readFile(rejects),
        log({ggaAt("123456.00", "0"), ggaAt("123457.00"), voidRmc, rmcAt("123459.00", "290224"),
             "GNGGA,123500.00,5231.0,N,00524.0,E,4,17,0.6,30.0,M,,M,,"})
            .replace("\r\n", "\n"));
}

TEST(ConvertNmea, BrokenSentencesAreCountedAndNotUsed)
{
    const ProgramResult result =
        convert("{\"class\":\"VERSION\"}\r\n" + log({rmc, gga})
                + "$GNGGA,123456.40,5231.0,N,00524.0,E,4,17,0.6,30.0,M,40.0,M,,*00\n"
                  "$GNGGA,123456.60,5231.0,N,00524.0,E,4,17\n"
                + log({"GNGGA,123456.80,5261.0,N,00524.0,E,4,17,0.6,30.0,M,40.0,M,,"}));
    EXPECT_EQ(result.status, 1) << "positions may be missing";
    EXPECT_EQ(result.outLines().size(), 2);
    EXPECT_EQ(
        result.errLines().mid(1),
        QStringList({
            QStringLiteral("kelstd: warning: broken: 1 sentence without a checksum, the first "
                           "in line 5; nothing of them was used"),
            QStringLiteral("kelstd: warning: broken: 1 sentence with a wrong checksum, the "
                           "first in line 4; nothing of them was used"),
            QStringLiteral("kelstd: warning: broken: 1 sentence with a field that cannot be, "
                           "the first in line 6 (GGA: field 2 is no latitude); nothing of "
                           "them was used"),
            QStringLiteral("kelstd: note: 1 line of <stdin> without a sentence"),
        }));
}

TEST(ConvertNmea, TextBehindAChecksumIsSaid)
{
    const ProgramResult result = convert(log({gga}).trimmed() + " 12:34:56\r\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, Mentions("warning: broken: 1 sentence with text behind the checksum, "
                                     "the first in line 1; nothing of them was used"));
}

TEST(ConvertNmea, AFileMayMixTwoEpochs)
{
    const QByteArray mixed =
        log({ggaAt("123456.00"), ggaAt("123456.05"), rmcAt("123456.00", "290224"),
             rmcAt("123456.05", "290224"), "GNGST,123456.05,,,,,0.1,0.2,0.3"});
    const ProgramRun program;
    const QString file = program.home().path(QStringLiteral("mixed.nmea"));
    test::writeFile(file, mixed);
    const ProgramResult result = program.convert(system, {}, {QStringLiteral("--nmea"), file});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(column(result, "utc"), QStringList({QStringLiteral("2024-02-29T12:34:56.00Z"),
                                                  QStringLiteral("2024-02-29T12:34:56.05Z")}));
    EXPECT_EQ(column(result, "sd_height_m"), QStringList({QString(), QStringLiteral("0.3")}));
    const ProgramResult stream = convert(mixed);
    EXPECT_EQ(column(stream, "utc").last(), QStringLiteral("2024-02-29T12:34:56.05Z"));
    EXPECT_THAT(stream.err, Mentions("warning: late: 1 sentence of an epoch that had ended before, "
                                     "not used; the first in line 3"));
}

TEST(ConvertNmea, SeveralFilesAreReadOneBehindTheOther)
{
    const ProgramRun program;
    const QString rejects = program.home().path(QStringLiteral("rejects.nmea"));
    const QByteArray broken = "$GNGGA,000002,5231.0,N*00\n";
    const QStringList files{
        program.file(QStringLiteral("h23.nmea"),
                     log({rmcAt("235959", "280224"), ggaAt("235959"), ggaAt("235958", "0")})),
        program.file(QStringLiteral("none.nmea"), "nothing\n"),
        program.file(QStringLiteral("h00.nmea"),
                     log({ggaAt("000000"), ggaAt("000001", "0")}) + broken),
        program.file(QStringLiteral("h12.nmea"),
                     log({ggaAt("120000"), ggaAt("120001"), rmcAt("120001", "050324")}))};
    const QStringList options{QStringLiteral("--nmea"), QStringLiteral("--rejects"), rejects};
    const ProgramResult result = program.convert(system, {}, options + files);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(column(result, "point"), QStringList({QStringLiteral("1"), QStringLiteral("3"),
                                                    QStringLiteral("5"), QStringLiteral("6")}));
    EXPECT_EQ(column(result, "utc"), QStringList({QStringLiteral("2024-02-28T23:59:59Z"),
                                                  QStringLiteral("2024-02-29T00:00:00Z"), QString(),
                                                  QStringLiteral("2024-03-05T12:00:01Z")}));
    for (const char *message :
         {"h23.nmea:3: the receiver has no fix", "h00.nmea:2: the receiver has no fix",
          "1 sentence with a wrong checksum, the first in line 3 of ", "h00.nmea; nothing of them",
          "none.nmea has no sentence of NMEA 0183", "2 of 6 positions failed"})
        EXPECT_THAT(result.err, Mentions(message));
    EXPECT_EQ(test::readFile(rejects),
              log({ggaAt("235958", "0"), ggaAt("000001", "0")}).replace("\r\n", "\n"));
    const ProgramResult same =
        program.convert(system, {},
                        {QStringLiteral("--nmea"), QStringLiteral("--rejects"), files.last(),
                         files.first(), files.last()});
    EXPECT_EQ(same.status, 3);
    EXPECT_THAT(same.err, Mentions("it is the input"));
}

TEST(ConvertNmea, WhatMayMisleadIsSaid)
{
    const ProgramResult doubtful = convert(log({ggaAt("123456", "8"), ggaAt("123457", "6")}));
    EXPECT_EQ(doubtful.status, 0);
    EXPECT_THAT(doubtful.err,
                Mentions("warning: 2 positions are estimated, typed in or simulated"));
    EXPECT_THAT(convert(log({"GNDTM,P90,,0.0,N,0.0,E,0.0,W84", ggaAt("123456")})).err,
                Mentions("warning: 1 sentence (DTM) naming another datum of the positions than "
                         "WGS84, the first in line 1 (\"P90\")"));
    const ProgramResult twice =
        convert(log({ggaAt("123456"), "GNGGA,123456,5232.0,N,00524.0,E,4,17,0.6,30.0,M,40.0,M,,"}));
    EXPECT_EQ(twice.outLines().size(), 2);
    EXPECT_EQ(twice.status, 1) << "a position is lost";
    EXPECT_THAT(twice.err, Mentions("warning: contradicting: 1 sentence with another position of "
                                    "the same time, the first in line 2"));
    // The single one of all systems is 185 m off the fixed one of GPS.
    const ProgramResult two =
        convert(log({"GPGGA,123456,5230.0,N,00524.0,E,4,17,0.6,30.0,M,40.0,M,,",
                     "GNGGA,123456,5230.1,N,00524.0,E,1,17,0.6,30.0,M,40.0,M,,"}));
    EXPECT_EQ(two.status, 1);
    EXPECT_THAT(two.err, Mentions("warning: contradicting: 1 sentence with another position"));
    EXPECT_EQ(test::csvRows(two.out).value(0).value(QStringLiteral("wgs84_latitude_deg")),
              "52.50000000000");
    EXPECT_THAT(convert(log({ggaAt("235959"), rmcAt("235959", "280224"), ggaAt("000000"),
                             rmcAt("000000", "280224")}))
                    .err,
                Mentions("warning: dates: 1 sentence with one that contradicts another or the "
                         "time, the first of the epoch in line 3 (2024-02-28 where the time goes "
                         "on at 2024-02-29; the latter was taken)"));
    EXPECT_THAT(convert(log({ggaAt("123456"), rmcAt("123456", "010140")})).err,
                Mentions("note: leap seconds are known until 20"));
}

struct InputRow
{
    const char *what;
    QByteArray bytes;
    int status;
    const char *message;
};

TEST(ConvertNmea, InputsWithoutPositions)
{
    const InputRow rows[] = {
        {"empty", "", 0, "has no sentence of NMEA 0183 that tells a position"},
        {"another form", "id,lat,lon\n1,5.25,52.5\n", 1, "note: 2 lines of <stdin> without a"},
        {"dates alone", log({"GNZDA,123456,29,02,2024,,"}), 1, "that tells a position"},
        {"one byte without an end", QByteArray(10000000, '\0'), 1, "note: 1 line of <stdin>"},
        {"a sentence without an end", "$GPGGA," + QByteArray(10000000, '1'), 1,
         "with a field that cannot be, the first in line 1 (it is longer than 255 bytes)"},
    };
    for (const InputRow &row : rows) {
        SCOPED_TRACE(row.what);
        const ProgramResult result = convert(row.bytes);
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.outLines().size(), 1) << "the header";
        EXPECT_THAT(result.err, Mentions(row.message));
    }
}

TEST(ConvertNmea, OptionsWithoutAMeaningAreRefused)
{
    const std::pair<QStringList, const char *> rows[] = {
        {{QStringLiteral("--from"), QStringLiteral("local-neh")},
         "--from 'local-neh' does not go with --nmea, whose positions are wgs84-llh"},
        {{QStringLiteral("--columns"), QStringLiteral("1,2,3")}, "--columns does not go with"},
        {{QStringLiteral("--skip"), QStringLiteral("1")}, "--skip does not go with --nmea"},
        {{QStringLiteral("--height"), QStringLiteral("40")}, "--height does not go with --nmea"},
        {{QStringLiteral("--names"), QStringLiteral("station")},
         "--names 'station' is none; there are number, utc"},
    };
    for (const auto &[options, message] : rows) {
        const ProgramResult result = convert(log({gga}), options);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(message));
    }
    const ProgramRun program;
    EXPECT_THAT(
        program.convert(system, "1,5,52,0\n", {QStringLiteral("--names"), QStringLiteral("utc")})
            .err,
        Mentions("--names is for --nmea"));
    EXPECT_EQ(convert(log({gga}), {QStringLiteral("--from"), QStringLiteral("wgs84-llh")}).status,
              0);
    // Lengths are printed in another unit; what a receiver says is in metres.
    const ProgramResult feet =
        convert(log({gga}), {QStringLiteral("--length-unit"), QStringLiteral("ft")});
    EXPECT_EQ(feet.status, 0);
    EXPECT_EQ(column(feet, "undulation_m"), QStringList(QStringLiteral("39.8765")));
}

TEST(ConvertNmea, AFullDiskIsReported)
{
    ProgramRun program;
    program.beforeStart([] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    const ProgramResult result = program.convert(system, log({gga}), {QStringLiteral("--nmea")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot write standard output"));
}

// What docs/receivers.md shows.
TEST(ConvertNmea, ThePageShowsWhatIsPrinted)
{
    const QString page = test::sourceText(QStringLiteral("docs/receivers.md"));
    EXPECT_TRUE(page.contains(QStringLiteral("```text\n")
                              + test::sourceText(QStringLiteral("examples/receiver.nmea"))
                              + QStringLiteral("```")));
    const QString command =
        QStringLiteral("convert --nmea --system examples/rd_new.xml examples/receiver.nmea");
    const ProgramRun program;
    const auto process = program.process(command.split(QLatin1Char(' ')));
    process->setWorkingDirectory(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    process->start();
    ASSERT_TRUE(process->waitForFinished(60000));
    const QString printed =
        QString::fromUtf8(process->readAllStandardOutput() + process->readAllStandardError());
    EXPECT_TRUE(page.contains(QStringLiteral("```console\n$ kelstd ") + command + QLatin1Char('\n')
                              + printed + QStringLiteral("```")))
        << printed;
}

// The whole program against gpsd on the log of a walk.
TEST(ConvertNmea, GpsdHasTheSamePositions)
{
    QByteArray bytes;
    for (int i = 0; i < 300; ++i) {
        const QByteArray clock = QTime(23, 59)
                                     .addMSecs(i * 200)
                                     .addSecs(30)
                                     .toString(QStringLiteral("HHmmss.zzz"))
                                     .toLatin1()
                                     .chopped(1);
        const QByteArray minutes = QByteArray::number(10 + i / 7.0, 'f', 8);
        bytes += log({"GNGGA," + clock + ",52" + minutes + ",N,005" + minutes
                          + ",E,4,17,0.6,30.125,M,40.25,M,1.0,0001",
                      "GNRMC," + clock + ",A,52" + minutes + ",N,005" + minutes + ",E,0.0,0.0,"
                          + (i < 150 ? "290224" : "010324") + ",,,R,V"});
    }
    QProcess gpsd;
    gpsd.start(QStringLiteral("gpsdecode"), {QStringLiteral("-j")});
    ASSERT_TRUE(gpsd.waitForStarted());
    gpsd.write(bytes);
    gpsd.closeWriteChannel();
    ASSERT_TRUE(gpsd.waitForFinished());
    QMap<QString, QJsonObject> peer;
    for (const QByteArray &line : gpsd.readAllStandardOutput().split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (object.contains(QStringLiteral("altHAE")))
            peer.insert(object.value(QStringLiteral("time")).toString(), object);
    }
    const ProgramResult result = convert(bytes);
    EXPECT_EQ(result.status, 0);
    int compared = 0;
    for (const auto &row : test::csvRows(result.out)) {
        const QString time = QString(row.value(QStringLiteral("utc")))
                                 .replace(QLatin1Char('Z'), QLatin1String("0Z"));
        if (!peer.contains(time))
            continue;
        ++compared;
        const QJsonObject &other = peer[time];
        // gpsd prints nine decimals of a degree and four of a metre.
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_latitude_deg")),
                    other.value(QStringLiteral("lat")).toDouble(), 6e-10);
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_longitude_deg")),
                    other.value(QStringLiteral("lon")).toDouble(), 6e-10);
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("wgs84_height_m")),
                    other.value(QStringLiteral("altHAE")).toDouble(), 6e-5);
    }
    EXPECT_EQ(compared, peer.size());
    EXPECT_GE(compared, 297);
}

} // namespace
} // namespace KelStd
