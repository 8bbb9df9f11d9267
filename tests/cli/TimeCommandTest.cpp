#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

ProgramResult runTime(const QList<const char *> &arguments, const QByteArray &input = {})
{
    ProgramRun program;
    program.setVariable(QStringLiteral("TZ"), QStringLiteral("Asia/Kolkata"));
    QStringList words{QStringLiteral("time")};
    for (const char *argument : arguments)
        words += QString::fromUtf8(argument);
    return program.run(words, input);
}

/// The only line of the output, read as a JSON object.
QJsonObject object(const ProgramResult &result)
{
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.outLines().size(), 1) << result.out;
    return QJsonDocument::fromJson(result.out.toUtf8()).object();
}

TEST(TimeCommand, ShowsAnInstantInAllFourScales)
{
    const auto result = runTime({"--offset", "3600", "2024-02-29T12:34:56.789Z"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.outLines(),
              QStringList({QStringLiteral("2024-02-29T12:34:56.789Z"),
                           QStringLiteral("  UTC                     2024-02-29 12:34:56.789"),
                           QStringLiteral("  GPS time                2024-02-29 12:35:14.789"),
                           QStringLiteral("  GPS week and seconds    2303 390914.789"),
                           QStringLiteral("  local time              2024-02-29 13:34:56.789 "
                                          "(UTC+01:00)"),
                           QStringLiteral("  leap seconds            18 (GPS minus UTC)")}));
}

/// One epoch, 2024-02-29 12:34:56 UTC, where the system's offset is 5:30. Week 2303 began on
/// 2024-02-25, four days and 12:35:14 earlier.
TEST(TimeCommand, ShowsTheSameEpochFromEveryScale)
{
    for (const auto &arguments : QList<QList<const char *>>{
             {"2024-02-29 12:34:56"},
             {"--from", "utc", "2024-02-29T12:34:56Z"},
             {"--from", "gpsw", "2303 390914"},
             {"--from", "local", "2024-02-29 18:04:56"},
             {"--from", "local", "--offset", "-18000", "2024-02-29 07:34:56"},
         }) {
        SCOPED_TRACE(arguments.last());
        const QJsonObject shown = object(runTime(QList<const char *>{"--json"} + arguments));
        EXPECT_EQ(shown.value(QStringLiteral("utc")).toString(),
                  QStringLiteral("2024-02-29T12:34:56.000Z"));
        EXPECT_EQ(shown.value(QStringLiteral("gpst")).toString(),
                  QStringLiteral("2024-02-29T12:35:14.000"));
        EXPECT_EQ(shown.value(QStringLiteral("gps_week")).toInt(), 2303);
        EXPECT_EQ(shown.value(QStringLiteral("gps_seconds")).toInt(), 390914);
        EXPECT_EQ(shown.value(QStringLiteral("leap_seconds")).toInt(), 18);
        EXPECT_FALSE(shown.value(QStringLiteral("is_leap_second")).toBool(true));
        // date -u -d '2024-02-29 12:34:56' +%s
        EXPECT_EQ(shown.value(QStringLiteral("milliseconds_since_1970")).toDouble(),
                  1709210096000.0);
        const bool isWest = arguments.size() > 3;
        EXPECT_EQ(shown.value(QStringLiteral("offset")).toInt(), isWest ? -18000 : 19800);
        EXPECT_EQ(shown.value(QStringLiteral("local")).toString(),
                  isWest ? QStringLiteral("2024-02-29T07:34:56.000")
                         : QStringLiteral("2024-02-29T18:04:56.000"));
    }
}

TEST(TimeCommand, KeepsFractionsOfASecond)
{
    const char *values[][3] = {
        {"utc", "2024-02-29T12:34:56.05Z", ".050"},
        {"gpst", "2024-02-29 12:35:14.2000000", ".200"},
        {"gpsw", "2303:390914.999", ".999"},
        {"local", "2024-02-29 18:04:56.4", ".400"},
    };
    for (const auto &[scale, value, fraction] : values) {
        SCOPED_TRACE(value);
        const QString end = QString::fromLatin1(fraction);
        const auto shown = object(runTime({"--json", "--from", scale, value}));
        EXPECT_EQ(shown.value(QStringLiteral("utc")).toString(),
                  QStringLiteral("2024-02-29T12:34:56%1Z").arg(end));
        EXPECT_EQ(shown.value(QStringLiteral("gpst")).toString(),
                  QStringLiteral("2024-02-29T12:35:14%1").arg(end));
        EXPECT_EQ(shown.value(QStringLiteral("gps_seconds")).toDouble(),
                  (QStringLiteral("390914") + end).toDouble());
        EXPECT_THAT(runTime({"--from", scale, value}).out,
                    Mentions((QByteArray("2303 390914") + fraction).constData()));
    }
}

TEST(TimeCommand, BothSidesOfALeapSecondAndTheSecondItself)
{
    const auto last = object(runTime({"--json", "--from", "gpst", "2017-01-01 00:00:16.999"}));
    EXPECT_EQ(last.value(QStringLiteral("utc")), QStringLiteral("2016-12-31T23:59:59.999Z"));
    EXPECT_EQ(last.value(QStringLiteral("leap_seconds")), 17);
    EXPECT_EQ(last.value(QStringLiteral("is_leap_second")), false);

    // What was given is shown again, although its UTC is also that of the next second.
    const auto inserted = object(runTime({"--json", "--from", "gpst", "2017-01-01 00:00:17.5"}));
    EXPECT_EQ(inserted.value(QStringLiteral("gpst")), QStringLiteral("2017-01-01T00:00:17.500"));
    EXPECT_EQ(inserted.value(QStringLiteral("gps_seconds")), 17.5);
    EXPECT_EQ(inserted.value(QStringLiteral("is_leap_second")), true);
    EXPECT_THAT(runTime({"--from", "gpsw", "1930:17"}).out,
                Mentions("2017-01-01 00:00:00.000 (in the leap second 23:59:60)"));

    const auto first = object(runTime({"--json", "2017-01-01 00:00:00"}));
    EXPECT_EQ(first.value(QStringLiteral("gpst")), QStringLiteral("2017-01-01T00:00:18.000"));
    EXPECT_EQ(first.value(QStringLiteral("leap_seconds")), 18);
    EXPECT_EQ(first.value(QStringLiteral("is_leap_second")), false);
}

TEST(TimeCommand, NowIsTheSystemsTime)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const auto shown = object(runTime({"--json", "--from", "gpsw", "now"}));
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    const auto now =
        static_cast<qint64>(shown.value(QStringLiteral("milliseconds_since_1970")).toDouble());
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(TimeCommand, TakesSeveralValues)
{
    const auto result = runTime({"2024-01-01 00:00:00", "2024-01-02 00:00:00"});
    EXPECT_EQ(result.status, 0);
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 13);
    EXPECT_EQ(lines.at(0), QStringLiteral("2024-01-01 00:00:00"));
    EXPECT_EQ(lines.at(6), QString());
    EXPECT_EQ(lines.at(7), QStringLiteral("2024-01-02 00:00:00"));
}

TEST(TimeCommand, ReadsLinesOfStandardInput)
{
    const auto result = runTime({"--json", "-"}, "2024-01-01 00:00:00\n"
                                                 "\n"
                                                 "# a note\n"
                                                 "  2024-01-02 00:00:00 \r\n"
                                                 "2024-01-03 00:00:00");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    ASSERT_EQ(result.outLines().size(), 3);
    EXPECT_THAT(result.outLines().at(2), Mentions("\"utc\":\"2024-01-03T00:00:00.000Z\""));
}

TEST(TimeCommand, ABadLineIsReportedAndTheRunGoesOn)
{
    const auto result = runTime({"--json", "-"}, "2024-01-01 00:00:00\nnoon\n2024-01-02 00:00:00\n"
                                                     + QByteArray(10000, '1') + '\n');
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.outLines().size(), 2);
    ASSERT_EQ(result.errLines().size(), 2);
    EXPECT_THAT(result.errLines().at(0), Mentions("<stdin>:2: \"noon\" is no UTC"));
    EXPECT_THAT(result.errLines().at(1), Mentions("<stdin>:4: "));
    EXPECT_LT(result.errLines().at(1).size(), 250);
}

struct BadValue
{
    const char *scale;
    const char *value;
    const char *reason;
};

// Each with the accepted forms, on one line.
TEST(TimeCommand, AValueThatCannotBeReadIsShownTheForms)
{
    for (const BadValue &row : QList<BadValue>{
             {"utc", "bad", "it is not written as one"},
             {"utc", "2016-12-31 23:59:60", "a leap second has no UTC here; give its GPS time"},
             {"utc", "9999-12-31 23:59:59", "not between the years 1 and 9999"},
             {"gpst", "2016-12-31 23:59:60", "there is no such date or time of day"},
             {"local", "2024-01-01T00:00:00Z", "it is not written as one"},
             {"utc", "2024-01-01 00:00:00.0001",
              "times are kept to the millisecond; its decimals go beyond that"},
             {"gpsw", "65536:0", "weeks are 0 to 65535, seconds 0 to 604799"},
         }) {
        SCOPED_TRACE(row.value);
        const auto result = runTime({"--from", row.scale, row.value});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        ASSERT_EQ(result.errLines().size(), 1);
        EXPECT_THAT(result.err, Mentions(row.reason));
        EXPECT_THAT(result.err, Mentions(qstrcmp(row.scale, "gpsw") == 0 ? "; write 2303:390914, "
                                                                         : "; write 2024-02-29 "));
    }
}

TEST(TimeCommand, ShowsTheSecondsOfAnOffset)
{
    EXPECT_THAT(runTime({"--offset", "-12345", "2024-01-01 00:00:00"}).out,
                Mentions("2023-12-31 20:34:15.000 (UTC-03:25:45)"));
}

TEST(TimeCommand, MistakesOnTheCommandLine)
{
    const auto expectMistake = [](const QList<const char *> &arguments, const char *message) {
        const auto result = runTime(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(message));
    };
    expectMistake({}, "a VALUE is missing; 'kelstd time --help' tells more");
    expectMistake({"--from", "tai", "now"},
                  "--from 'tai' is no time scale; there are utc, gpst, gpsw, local");
    expectMistake({"--offset", "1.5", "now"}, "--offset '1.5' is no whole number of seconds");
    expectMistake({"--offset", "2147483648", "now"}, "is no whole number of seconds");
    for (const char *offset : {"86401", "-86401", "-2147483648"})
        expectMistake({"--offset", offset, "now"}, "between -86400 and 86400");
}

TEST(TimeCommand, DigitsAreLatinWhateverTheLocale)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("LC_ALL"), QStringLiteral("ar_EG.UTF-8"));
    const auto result = program.run({QStringLiteral("time"), QStringLiteral("--offset"),
                                     QStringLiteral("0"), QStringLiteral("2024-02-29 12:34:56")});
    EXPECT_EQ(result.status, 0);
    for (const QChar character : result.out)
        EXPECT_LT(character.unicode(), 128) << result.out;
}

TEST(TimeCommand, NeedsNoProj)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/no/such/home"));
    EXPECT_EQ(program.run({QStringLiteral("time"), QStringLiteral("now")}).status, 0);
}

} // namespace
} // namespace KelStd
