#include <KelStd/time/LeapSecondList.h>

#include "support/Printers.h"
#include "support/TemporaryHome.h"
#include "time/LeapSecondListText.h"
#include "time/TimePrinters.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Mistake = LeapSecondListMistake;
using test::listEndingWith;

LeapSecondList parsed(const QByteArray &bytes)
{
    LeapSecondListFailure failure{Mistake::BadRow, QStringLiteral("of the call before"), 1};
    const auto list = LeapSecondList::parse(bytes, &failure);
    EXPECT_FALSE(failure);
    EXPECT_EQ(failure.text, QString());
    EXPECT_EQ(failure.line, 0);
    return list.value_or(LeapSecondList());
}

// Seconds since 1900-01-01: 2272060800 is 1972-01-01, 2287785600 1972-07-01, 3692217600 2017-01-01,
// 3896899200 2023-06-28.
TEST(LeapSecondList, HasItsRowsAndItsExpiry)
{
    const LeapSecondList list = parsed("# a comment\n"
                                       "#$\t3896899200\n"
                                       "#@\t3896899200\n"
                                       "\n"
                                       "2272060800\t10\t# 1 Jan 1972\n"
                                       "  2287785600 11 \r\n"
                                       "#h\t0 1 2 3 4");
    ASSERT_EQ(list.rows.size(), 2);
    EXPECT_EQ(list.rows.at(0).from, test::utc(1972, 1, 1));
    EXPECT_EQ(list.rows.at(0).gpsMinusUtc, -9);
    EXPECT_EQ(list.rows.at(1).from, test::utc(1972, 7, 1));
    EXPECT_EQ(list.rows.at(1).gpsMinusUtc, -8);
    EXPECT_EQ(list.expiry, test::utc(2023, 6, 28));
    EXPECT_EQ(parsed("2272060800 10").expiry, std::nullopt);
}

TEST(LeapSecondList, OfTheTimeZoneDatabaseIsRead)
{
    const auto list =
        parsed(test::readFile(QStringLiteral("/usr/share/zoneinfo/leap-seconds.list")));
    EXPECT_GE(list.rows.size(), 28);
    ASSERT_TRUE(list.expiry);
    EXPECT_GT(*list.expiry, list.rows.last().from);
}

struct Refusal
{
    QByteArray bytes;
    Mistake mistake;
    int line;
};

TEST(LeapSecondList, BytesThatAreNoneAreRefused)
{
    QList<Refusal> rows = {
        {{}, Mistake::NoLeapSeconds, 0},
        {"# nothing\n", Mistake::NoLeapSeconds, 0},
        {"2272060800\n", Mistake::BadRow, 1},
        {"# a note\nsoon 10\n", Mistake::BadRow, 2},
        {"-5 10\n", Mistake::BadRow, 1},
        {"99999999999999 10\n", Mistake::BadRow, 1},
        {"2287785600 11\n2272060800 10\n", Mistake::NotInOrder, 2},
        {"2287785600 11\n\n2287785600 11\n", Mistake::NotInOrder, 3},
        {"2272060800 10\n#@ soon\n", Mistake::BadExpiry, 2},
        {"#@\n2272060800 10\n", Mistake::BadExpiry, 1},
        // Of a row nothing is left out, and no number is guessed.
        {QByteArray("2272060800\0junk 10\n", 19), Mistake::BadRow, 1},
        {QByteArray("2272060800 10\0junk\n", 19), Mistake::BadRow, 1},
    };
    for (const char *row :
         {"2272060800 10 11", "2272060800 10x", "+2272060800 10", "2272060800 +10",
          "2272060800 -2147483648", "2272060800 1001", "2272060800 10.0"})
        rows += {row, Mistake::BadRow, 1};
    for (const Refusal &row : rows) {
        SCOPED_TRACE(row.bytes.constData());
        LeapSecondListFailure failure;
        EXPECT_FALSE(LeapSecondList::parse(row.bytes, &failure));
        EXPECT_EQ(failure.kind, row.mistake);
        EXPECT_EQ(failure.line, row.line);
        EXPECT_NE(failure.text, QString());
        EXPECT_FALSE(LeapSecondList::parse(row.bytes)) << "no failure is asked for";
    }
}

TEST(LeapSecondDifferences, AreEveryRowThatOnlyOneHasOrThatCountsOtherwise)
{
    const auto table = leapSecondTable();
    const auto differences = [&table](const QByteArray &last) {
        return leapSecondDifferences(table, parsed(listEndingWith(last)).rows);
    };
    EXPECT_EQ(differences("3692217600 37\n").size(), 0);

    const auto counted = differences("3692217600 36\n");
    ASSERT_EQ(counted.size(), 1);
    EXPECT_EQ(counted.at(0).from, test::utc(2017, 1, 1));
    EXPECT_EQ(counted.at(0).firstCount, 18);
    EXPECT_EQ(counted.at(0).otherCount, 17);

    const auto moved = differences("3692304000 37\n3896899200 38");
    ASSERT_EQ(moved.size(), 3);
    EXPECT_EQ(moved.at(0).from, test::utc(2017, 1, 1));
    EXPECT_EQ(moved.at(0).firstCount, 18);
    EXPECT_EQ(moved.at(0).otherCount, std::nullopt);
    EXPECT_EQ(moved.at(1).from, test::utc(2017, 1, 2));
    EXPECT_EQ(moved.at(1).firstCount, std::nullopt);
    EXPECT_EQ(moved.at(1).otherCount, 18);
    EXPECT_EQ(moved.at(2).from, test::utc(2023, 6, 28));
    EXPECT_EQ(moved.at(2).otherCount, 19);
}

} // namespace
} // namespace KelStd
