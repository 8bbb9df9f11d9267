#pragma once

namespace KelStd::test {

struct LeapSecondRow
{
    int year;
    int month;
    int gpsMinusUtc; ///< [s], from the first day of the month, 00:00:00 UTC
};

/// IERS, "Relationship between TAI and UTC": TAI-UTC less the 19 s that GPS is behind TAI.
constexpr LeapSecondRow leapSecondRows[] = {
    {1972, 1, -9}, {1972, 7, -8}, {1973, 1, -7}, {1974, 1, -6}, {1975, 1, -5}, {1976, 1, -4},
    {1977, 1, -3}, {1978, 1, -2}, {1979, 1, -1}, {1980, 1, 0},  {1981, 7, 1},  {1982, 7, 2},
    {1983, 7, 3},  {1985, 7, 4},  {1988, 1, 5},  {1990, 1, 6},  {1991, 1, 7},  {1992, 7, 8},
    {1993, 7, 9},  {1994, 7, 10}, {1996, 1, 11}, {1997, 7, 12}, {1999, 1, 13}, {2006, 1, 14},
    {2009, 1, 15}, {2012, 7, 16}, {2015, 7, 17}, {2017, 1, 18},
};

} // namespace KelStd::test
