#include <KelStd/time/LeapSeconds.h>

#include <KelStd/time/Calendar.h>
#include <KelStd/time/LeapSecondTable.h>

#include <array>

namespace KelStd::leapSeconds {

namespace {

/// The count that holds from a UTC date on, 00:00:00.
struct Row
{
    int year;
    int month;
    int day;
    int gpsMinusUtc; ///< [s], negative where GPS is behind UTC
};

// IERS Bulletin C and its predecessors (TAI-UTC, minus the 19 s that GPS is behind TAI). A leap
// second that is announced is a row here, a row in tests/time/LeapSecondRows.h, and nothing else.
constexpr Row rows[] = {
    {1972, 1, 1, -9}, {1972, 7, 1, -8}, {1973, 1, 1, -7}, {1974, 1, 1, -6}, {1975, 1, 1, -5},
    {1976, 1, 1, -4}, {1977, 1, 1, -3}, {1978, 1, 1, -2}, {1979, 1, 1, -1}, {1980, 1, 1, 0},
    {1981, 7, 1, 1},  {1982, 7, 1, 2},  {1983, 7, 1, 3},  {1985, 7, 1, 4},  {1988, 1, 1, 5},
    {1990, 1, 1, 6},  {1991, 1, 1, 7},  {1992, 7, 1, 8},  {1993, 7, 1, 9},  {1994, 7, 1, 10},
    {1996, 1, 1, 11}, {1997, 7, 1, 12}, {1999, 1, 1, 13}, {2006, 1, 1, 14}, {2009, 1, 1, 15},
    {2012, 7, 1, 16}, {2015, 7, 1, 17}, {2017, 1, 1, 18},
};

/// The validity of what IERS Bulletin C 70 of 2025-07-07 says: no leap second before it.
constexpr int knownUntil[] = {2026, 6, 28}; // year, month, day

constexpr std::size_t rowCount = sizeof rows / sizeof *rows;

constexpr qint64 instantOf(const Row &row)
{
    return calendar::daysSince1970(row.year, row.month, row.day) * calendar::msPerDay;
}

/// Every row is later than the one before it, and a leap second adds or takes away one second.
constexpr bool areInOrder()
{
    for (std::size_t i = 1; i < rowCount; ++i) {
        const int step = rows[i].gpsMinusUtc - rows[i - 1].gpsMinusUtc;
        if (instantOf(rows[i]) <= instantOf(rows[i - 1]) || (step != 1 && step != -1))
            return false;
    }
    return true;
}

static_assert(areInOrder(), "the leap-second table is out of order");

constexpr std::array<qint64, rowCount> makeInstants()
{
    std::array<qint64, rowCount> made{};
    for (std::size_t i = 0; i < rowCount; ++i)
        made[i] = instantOf(rows[i]);
    return made;
}

constexpr std::array<qint64, rowCount> instants = makeInstants();
constexpr const Row &lastRow = rows[rowCount - 1];

qint64 minusSeconds(qint64 instant, int seconds)
{
    return calendar::difference(instant, seconds * calendar::msPerSecond);
}

bool isBeyondTable(qint64 utc, int suppliedCount)
{
    return utc > instants.back() && suppliedCount > lastRow.gpsMinusUtc;
}

} // namespace

int atUtc(qint64 utc)
{
    // From the end: the times that are asked for are mostly recent.
    std::size_t i = rowCount - 1;
    while (i > 0 && instants[i] > utc)
        --i;
    return rows[i].gpsMinusUtc;
}

int atGps(qint64 gps)
{
    return atUtc(minusSeconds(gps, atUtc(gps)));
}

int judged(qint64 gps, int suppliedCount)
{
    return isBeyondTable(minusSeconds(gps, suppliedCount), suppliedCount) ? suppliedCount
                                                                          : atGps(gps);
}

int judgedAtUtc(qint64 utc, int suppliedCount)
{
    return isBeyondTable(utc, suppliedCount) ? suppliedCount : atUtc(utc);
}

} // namespace KelStd::leapSeconds

namespace KelStd {

QList<LeapSecondRow> leapSecondTable()
{
    QList<LeapSecondRow> table;
    for (std::size_t i = 0; i < leapSeconds::rowCount; ++i)
        table += LeapSecondRow{TimeUtc(leapSeconds::instants[i]), leapSeconds::rows[i].gpsMinusUtc};
    return table;
}

TimeUtc leapSecondTableKnownUntil()
{
    const auto &[year, month, day] = leapSeconds::knownUntil;
    return TimeUtc(calendar::daysSince1970(year, month, day) * calendar::msPerDay);
}

} // namespace KelStd
