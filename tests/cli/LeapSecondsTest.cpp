#include "cli/ProgramRun.h"
#include "support/Printers.h"
#include "time/LeapSecondListText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd {
namespace {

using test::listEndingWith;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QString systemList = QStringLiteral("/usr/share/zoneinfo/leap-seconds.list");

ProgramResult leapSeconds(const QStringList &options = {})
{
    return ProgramRun().run(QStringList{QStringLiteral("time"), QStringLiteral("leap-seconds")}
                            + options);
}

/// Compares with a list of these bytes.
ProgramResult compareWith(const QByteArray &list)
{
    const ProgramRun program;
    return program.run({QStringLiteral("time"), QStringLiteral("leap-seconds"),
                        QStringLiteral("--list"), program.file(QStringLiteral("list"), list)});
}

QString rowText(const test::LeapSecondRow &row)
{
    return QStringLiteral("%1-%2-01").arg(row.year).arg(row.month, 2, 10, QLatin1Char('0'));
}

TEST(LeapSecondsCommand, PrintsTheTable)
{
    const QStringList lines = leapSeconds().outLines();
    ASSERT_GT(lines.size(), 28);
    int i = 1;
    for (const test::LeapSecondRow &row : test::leapSecondRows)
        EXPECT_EQ(lines.at(i++).simplified(),
                  QStringLiteral("%1 %2").arg(rowText(row)).arg(row.gpsMinusUtc));
    EXPECT_EQ(lines.at(i), QString());
}

TEST(LeapSecondsCommand, SaysHowOldTheTableIs)
{
    const qint64 days = QDate(2017, 1, 1).daysTo(QDateTime::currentDateTimeUtc().date());
    const QString out = leapSeconds().out;
    EXPECT_TRUE(out.contains(QStringLiteral("2017-01-01, %1 days ago").arg(days))
                || out.contains(QStringLiteral("2017-01-01, %1 days ago").arg(days + 1)))
        << out;
}

TEST(LeapSecondsCommand, AgreesWithTheTimeZoneDatabase)
{
    const auto result = leapSeconds();
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_EQ(result.err, QString());
    EXPECT_TRUE(result.out.contains(systemList));
    const QStringList lines = result.outLines();
    EXPECT_EQ(lines.last().simplified(), QStringLiteral("differences none"));
    EXPECT_THAT(lines.at(lines.size() - 2), Mentions("valid until"));
}

TEST(LeapSecondsCommand, AsJson)
{
    const auto result = leapSeconds({QStringLiteral("--json")});
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(result.outLines().size(), 1);
    const QJsonObject shown = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QJsonArray table = shown.value(QStringLiteral("table")).toArray();
    ASSERT_EQ(table.size(), 28);
    EXPECT_EQ(table.last().toObject().value(QStringLiteral("from")), QStringLiteral("2017-01-01"));
    EXPECT_EQ(table.last().toObject().value(QStringLiteral("gps_minus_utc")), 18);
    EXPECT_EQ(shown.value(QStringLiteral("list")), systemList);
    EXPECT_TRUE(shown.value(QStringLiteral("differences")).toArray().isEmpty());
    EXPECT_EQ(shown.value(QStringLiteral("list_expiry")).toString().size(), 10);
}

// Seconds since 1900-01-01: 3692217600 is 2017-01-01, 3896899200 is 2023-06-28.
TEST(LeapSecondsCommand, ReportsEveryDifference)
{
    const auto same = compareWith(listEndingWith("3692217600 37\n"));
    EXPECT_EQ(same.status, 0) << same.out;

    const auto moved = compareWith(listEndingWith("3692304000 37\n3896899200 38"));
    EXPECT_EQ(moved.status, 1);
    EXPECT_THAT(moved.out, Mentions("differences             3\n"));
    EXPECT_THAT(moved.out, Mentions("  2017-01-01 00:00:00: 18 here, no row in the list\n"));
    EXPECT_THAT(moved.out, Mentions("  2017-01-02 00:00:00: no row here, 18 in the list\n"));
    EXPECT_THAT(moved.out, Mentions("  2023-06-28 00:00:00: no row here, 19 in the list\n"));
    EXPECT_THAT(moved.err, Mentions("the table of leap seconds and the list "));
    EXPECT_THAT(moved.err, Mentions(" differ\n"));

    const auto counted = compareWith(listEndingWith("3692217600\t36\n"));
    EXPECT_EQ(counted.status, 1);
    EXPECT_THAT(counted.out, Mentions("  2017-01-01 00:00:00: 18 here, 17 in the list\n"));
}

TEST(LeapSecondsCommand, ShowsTheListsExpiry)
{
    const auto past = compareWith("#@\t3896899200\n2272060800 10\n");
    EXPECT_THAT(past.out, Mentions("valid until             2023-06-28, "));
    EXPECT_THAT(past.out, Mentions(" days ago\n"));
    // 9466934400 is 2199-12-30.
    const auto future = compareWith("#@ 9466934400\n2272060800 10\n");
    EXPECT_THAT(future.out, Mentions("valid until             2199-12-30, in "));
    EXPECT_THAT(compareWith("2272060800 10\n").out, Mentions("valid until             (not said)"));
}

TEST(LeapSecondsCommand, AFileThatIsNoListIsRefused)
{
    const auto expectRefused = [](const ProgramResult &result, const char *reason) {
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("cannot read the list "));
        EXPECT_THAT(result.err, Mentions(reason));
    };
    expectRefused(compareWith({}), "it has no leap seconds");
    expectRefused(compareWith("# a note\nsoon 10\n"), "line 2 is no leap second");
    // The rows beyond what is read might be the ones that differ.
    expectRefused(compareWith(listEndingWith("#" + QByteArray(1 << 20, ' ') + "\n3692217600 36\n")),
                  "it is longer than a list of leap seconds can be");
    expectRefused(leapSeconds({QStringLiteral("--list"), QStringLiteral("/no/such/list")}),
                  "No such file or directory");
    expectRefused(leapSeconds({QStringLiteral("--list"), QStringLiteral("/")}),
                  "it is a directory");
}

} // namespace
} // namespace KelStd
