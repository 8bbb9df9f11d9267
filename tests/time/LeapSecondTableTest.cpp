#include <KelStd/time/LeapSecondTable.h>

#include "support/Printers.h"
#include "time/LeapSecondRows.h"
#include "time/TimePrinters.h"
#include "time/WalkedCalendar.h"

#include <gtest/gtest.h>

#include <iterator>

namespace KelStd {
namespace {

TEST(LeapSecondTable, HasThePublishedRows)
{
    const auto table = leapSecondTable();
    ASSERT_EQ(table.size(), static_cast<int>(std::size(test::leapSecondRows)));
    for (int i = 0; i < table.size(); ++i) {
        const test::LeapSecondRow &published = test::leapSecondRows[i];
        EXPECT_EQ(table.at(i).from, test::utc(published.year, published.month, 1));
        EXPECT_EQ(table.at(i).gpsMinusUtc, published.gpsMinusUtc);
    }
}

TEST(LeapSecondTable, IsTheOneThatTimesConvertBy)
{
    for (const LeapSecondRow &row : leapSecondTable())
        EXPECT_EQ(row.from.toGpsT().leapSeconds(), row.gpsMinusUtc);
}

// Bulletin C 70 of 2025-07-07, which the list of the tz database of that day repeats: the count is
// 37 s (TAI minus UTC) until further notice, and the next bulletin is out before 2026-06-28.
TEST(LeapSecondTable, IsKnownToBeWholeUntilTheLastBulletinEnds)
{
    EXPECT_EQ(leapSecondTableKnownUntil(), test::utc(2026, 6, 28));
    EXPECT_GT(leapSecondTableKnownUntil(), leapSecondTable().last().from);
}

} // namespace
} // namespace KelStd
