#include "support/Printers.h"

#include <KelStd/time/TimeSpan.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using ull = unsigned long long;

constexpr long long lowest = std::numeric_limits<long long>::min();
constexpr long long highest = std::numeric_limits<long long>::max();
// 1 day 1 hour 1 minute 1 second 1 millisecond.
constexpr long long oneOfEach = 90061001;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

TEST(TimeSpan, BeginsAtZero)
{
    EXPECT_EQ(TimeSpan().time_span(), 0);
    TimeSpan span(-5);
    EXPECT_EQ(span.time_span(), -5);
    span.clear();
    EXPECT_EQ(span.time_span(), 0);
}

TEST(TimeSpan, AreEqualWhenTheirMillisecondsAre)
{
    EXPECT_TRUE(TimeSpan(1500) == TimeSpan(1500));
    EXPECT_FALSE(TimeSpan(1500) != TimeSpan(1500));
    EXPECT_TRUE(TimeSpan() == TimeSpan(0));
    for (const long long other : {-1500LL, 1501LL, 0LL, 1500LL + (1LL << 32)}) {
        EXPECT_FALSE(TimeSpan(1500) == TimeSpan(other)) << other;
        EXPECT_TRUE(TimeSpan(1500) != TimeSpan(other)) << other;
    }
    EXPECT_TRUE(TimeSpan(lowest) == TimeSpan(lowest));
    EXPECT_TRUE(TimeSpan(lowest) != TimeSpan(highest));
}

TEST(TimeSpan, WholeUnitsAreTruncatedTowardZero)
{
    EXPECT_EQ(TimeSpan(-1500).toSeconds(), -1);
    EXPECT_EQ(TimeSpan(1999).toSeconds(), 1);
    EXPECT_EQ(TimeSpan(-999).toSeconds(), 0);
    EXPECT_EQ(TimeSpan(119999).toMinutes(), 1);
    EXPECT_EQ(TimeSpan(-119999).toMinutes(), -1);
    EXPECT_EQ(TimeSpan(7199999).toHours(), 1);
    EXPECT_EQ(TimeSpan(-7200000).toHours(), -2);
    EXPECT_EQ(TimeSpan(172799999).toDays(), 1);
    EXPECT_EQ(TimeSpan(-172799999).toDays(), -1);
    EXPECT_EQ(TimeSpan(lowest).toDays(), -106751991167);
    EXPECT_EQ(TimeSpan(highest).toSeconds(), 9223372036854775);
}

TEST(TimeSpan, SplitsIntoEveryUnit)
{
    for (const long long sign : {1, -1}) {
        bool positive = sign < 0;
        ull days = 0;
        ull hours = 0;
        ull minutes = 0;
        ull seconds = 0;
        ull milliseconds = 0;
        TimeSpan(sign * (5 * 86400000LL + 4 * 3600000 + 3 * 60000 + 2 * 1000 + 1))
            .time_span(&positive, &days, &hours, &minutes, &seconds, &milliseconds);
        EXPECT_EQ(positive, sign > 0);
        EXPECT_EQ(days, 5U);
        EXPECT_EQ(hours, 4U);
        EXPECT_EQ(minutes, 3U);
        EXPECT_EQ(seconds, 2U);
        EXPECT_EQ(milliseconds, 1U);
    }
    bool positive = false;
    TimeSpan(0).time_span(&positive, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(positive);
}

TEST(TimeSpan, AMissingUnitFlowsIntoTheNextSmallerOne)
{
    ull minutes = 0;
    ull milliseconds = 0;
    TimeSpan(3723004).time_span(nullptr, nullptr, nullptr, &minutes, nullptr, &milliseconds);
    EXPECT_EQ(minutes, 62U);
    EXPECT_EQ(milliseconds, 3004U);

    ull hours = 0;
    TimeSpan(-100 * 3600000LL).time_span(nullptr, nullptr, &hours, nullptr, nullptr, nullptr);
    EXPECT_EQ(hours, 100U);
    ull seconds = 0;
    TimeSpan(oneOfEach).time_span(nullptr, nullptr, nullptr, nullptr, &seconds, nullptr);
    EXPECT_EQ(seconds, 90061U);
    ull days = 0;
    TimeSpan(oneOfEach).time_span(nullptr, &days, nullptr, nullptr, nullptr, &milliseconds);
    EXPECT_EQ(days, 1U);
    EXPECT_EQ(milliseconds, 3661001U);
}

TEST(TimeSpan, TheLowestNumberHasAnAbsoluteValue)
{
    bool positive = true;
    ull milliseconds = 0;
    TimeSpan(lowest).time_span(&positive, nullptr, nullptr, nullptr, nullptr, &milliseconds);
    EXPECT_FALSE(positive);
    EXPECT_EQ(milliseconds, 9223372036854775808ULL);
    EXPECT_EQ(TimeSpan(lowest).toString(true),
              latin("-106751991167 day 7 hour 12 minute 55 sec .808"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(lowest), latin("2562047788015:12:55.808"));
}

struct WordedSpan
{
    long long milliseconds;
    const char *text;
    const char *withMilliseconds;
};

// Each with its final blank; milliseconds are neither padded nor named.
constexpr WordedSpan wordedSpans[] = {
    {0, "0 sec ", "0 sec .0"},
    {5000, "5 sec ", "5 sec .0"},
    {1500, "1 sec ", "1 sec .500"},
    {1005, "1 sec ", "1 sec .5"},
    {999, "0 sec ", "0 sec .999"},
    {-1, "-0 sec ", "-0 sec .1"},
    {60000, "1 minute 0 sec ", "1 minute 0 sec .0"},
    {3600000, "1 hour 0 minute 0 sec ", "1 hour 0 minute 0 sec .0"},
    {86400000, "1 day 0 hour 0 minute 0 sec ", "1 day 0 hour 0 minute 0 sec .0"},
    {90061000, "1 day 1 hour 1 minute 1 sec ", "1 day 1 hour 1 minute 1 sec .0"},
    {-90061001, "-1 day 1 hour 1 minute 1 sec ", "-1 day 1 hour 1 minute 1 sec .1"},
    {86399999, "23 hour 59 minute 59 sec ", "23 hour 59 minute 59 sec .999"},
    {2 * 86400000LL + 1, "2 day 0 hour 0 minute 0 sec ", "2 day 0 hour 0 minute 0 sec .1"},
};

TEST(TimeSpan, InWords)
{
    for (const WordedSpan &row : wordedSpans) {
        EXPECT_EQ(TimeSpan(row.milliseconds).toString(false), latin(row.text));
        EXPECT_EQ(TimeSpan(row.milliseconds).toString(), latin(row.text));
        EXPECT_EQ(TimeSpan(row.milliseconds).toString(true), latin(row.withMilliseconds));
    }
}

TEST(TimeSpan, AsAClockShowsItWithoutItsSign)
{
    EXPECT_EQ(TimeSpan::toTimeSpanString(0), latin("00:00:00.000"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(3723004), latin("01:02:03.004"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(-3723004), latin("01:02:03.004"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(-1), latin("00:00:00.001"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(100 * 3600000LL), latin("100:00:00.000"));
    EXPECT_EQ(TimeSpan::toTimeSpanString(86399999), latin("23:59:59.999"));
}

struct ClockText
{
    const char *text;
    long long milliseconds;
};

constexpr ClockText clockTexts[] = {
    {"1:02:03.004", 3723004},
    {"01:02:03.004", 3723004},
    {"00:00:00.001", 1},
    {"100:00:00.000", 360000000},
    {"0:0:0.5", 5}, // milliseconds are an integer, not a fraction
    {"0:0:0.1234", 1234},
    {"0:90:0.0", 5400000},
    // The sign belongs to the hours alone, and -0 hours have none.
    {"-1:30:00.000", -1800000},
    {"-1:02:03.004", -3600000 + 123004},
    {"-0:00:01.000", 1000},
    {"0:-1:-1.-1", -61001},
    // Without two colons and a point behind them.
    {"", 0},
    {"1:2:3", 0},
    {"1:2.5", 0},
    {"1.2:3:4", 0},
    {"12345", 0},
    {":", 0},
    // Parts that are no integers of 32 bits.
    {"::.", 0},
    {"x:1:y.2", 60002},
    {"1.5:1:1.1", 61001},
    {"1:1:1.1.1", 3661000},
    {"1:2:3:4.5", 3720005},
    {"2147483648:0:1.0", 1000},
    {"0:0:2147483648.7", 7},
    {"0:0:2147483647.0", 2147483647000},
    {"0x10:0:1.0", 1000},
    // 715828 * 3600 = 2576980800 and 35791395 * 60 = 2147483700 do not fit 32 bits.
    {"715828:0:0.0", (2576980800 - 4294967296) * 1000},
    {"0:35791395:0.0", (2147483700 - 4294967296) * 1000},
    {"596523:0:0.0", 2147482800000},
    // The sum of the two has 64 bits.
    {"596523:35791394:0.0", (2147482800LL + 2147483640) * 1000},
};

TEST(TimeSpan, ReadsTheClockForm)
{
    for (const ClockText &row : clockTexts)
        EXPECT_EQ(TimeSpan::fromTimeSpanString(latin(row.text)), row.milliseconds) << row.text;
}

TEST(TimeSpan, TheClockFormReadsBackWithoutItsSign)
{
    for (const long long milliseconds : {0LL, 1LL, 999LL, 1000LL, 3723004LL, 86400000LL * 365}) {
        EXPECT_EQ(TimeSpan::fromTimeSpanString(TimeSpan::toTimeSpanString(milliseconds)),
                  milliseconds);
        EXPECT_EQ(TimeSpan::fromTimeSpanString(TimeSpan::toTimeSpanString(-milliseconds)),
                  milliseconds);
    }
}

} // namespace
} // namespace KelStd
