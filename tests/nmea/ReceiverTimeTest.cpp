#include <KelStd/nmea/ReceiverTime.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using nmea::DateKeeper;
using nmea::ReceivedDate;
using nmea::TimeOfDay;

TimeOfDay at(const char *text)
{
    const auto time = TimeOfDay::read(text);
    EXPECT_TRUE(time) << text;
    return time.value_or(TimeOfDay());
}

TEST(NmeaTime, IsReadToItsLastDigit)
{
    EXPECT_EQ(at("000000").second, 0);
    EXPECT_EQ(at("123456.20").second, 45296);
    EXPECT_EQ(at("123456.20").fraction, "20");
    EXPECT_EQ(at("123456.").fraction, "");
    EXPECT_EQ(at("123456.123456789012").fraction, "123456789012");
    EXPECT_EQ(at("235960").second, TimeOfDay::leapSecond);
    for (const char *text :
         {"", "1", "12345", "1234567", "240000", "126000", "120060", "235860", "225960", "235961",
          "12:34:56", "123456,5", "-12345", "123456.5x", "123456.-5"})
        EXPECT_FALSE(TimeOfDay::read(text)) << text;
}

TEST(NmeaTime, ZerosAtTheEndMakeNoOtherTime)
{
    EXPECT_EQ(at("123519"), at("123519.00"));
    EXPECT_EQ(at("123519.2"), at("123519.20"));
    EXPECT_NE(at("123519.2"), at("123519.02"));
    EXPECT_NE(at("123519.2"), at("123520.2"));
}

struct GpsRow
{
    QDate date;
    const char *time;
    const char *utc;
    int week;
    const char *seconds;
};

// 2024-02-29 12:34:56 is four days and 12:35:14 (18 leap seconds) into week 2303. Weeks end 18 s
// before Sunday's midnight of UTC (2024-03-02 is a Saturday; 6 * 86400 + 86399 + 18 - 604800 = 17).
// Of 2016-12-31 the leap second is the GPS second 17 of week 1930, which began 17 s before it.
TEST(NmeaTime, GpsTimesHaveTheDigitsOfUtc)
{
    const GpsRow rows[] = {
        {{2024, 2, 29}, "123456.20", "2024-02-29T12:34:56.20Z", 2303, "390914.20"},
        {{2024, 2, 29}, "123456", "2024-02-29T12:34:56Z", 2303, "390914"},
        {{2024, 3, 2}, "235941.95", "2024-03-02T23:59:41.95Z", 2303, "604799.95"},
        {{2024, 3, 2}, "235942.00", "2024-03-02T23:59:42.00Z", 2304, "0.00"},
        {{2024, 3, 2}, "235959.999999999", "2024-03-02T23:59:59.999999999Z", 2304, "17.999999999"},
        {{2024, 3, 3}, "000000.00", "2024-03-03T00:00:00.00Z", 2304, "18.00"},
        {{2016, 12, 31}, "235959.50", "2016-12-31T23:59:59.50Z", 1930, "16.50"},
        {{2016, 12, 31}, "235960.50", "2016-12-31T23:59:60.50Z", 1930, "17.50"},
        {{2017, 1, 1}, "000000.50", "2017-01-01T00:00:00.50Z", 1930, "18.50"},
        {{1980, 1, 6}, "000000", "1980-01-06T00:00:00Z", 0, "0"},
    };
    for (const GpsRow &row : rows) {
        SCOPED_TRACE(row.utc);
        EXPECT_EQ(nmea::utcText(row.date, at(row.time)), row.utc);
        const auto gps = nmea::gpsTime(row.date, at(row.time));
        ASSERT_TRUE(gps);
        EXPECT_EQ(gps->week, row.week);
        EXPECT_EQ(gps->seconds, row.seconds);
    }
}

TEST(NmeaTime, ThereIsNoGpsTimeThatNobodyKnows)
{
    EXPECT_FALSE(nmea::gpsTime({1980, 1, 5}, at("235959")));
    EXPECT_FALSE(nmea::gpsTime({2023, 12, 31}, at("235960"))); // there was no leap second
    EXPECT_EQ(nmea::utcText({2023, 12, 31}, at("235960")), "2023-12-31T23:59:60Z");
}

struct DateStep
{
    const char *time;
    std::optional<ReceivedDate> given;
    QDate date; ///< a null one for none
};

void expectDates(const char *what, const std::vector<DateStep> &steps)
{
    SCOPED_TRACE(what);
    DateKeeper keeper;
    for (const DateStep &step : steps) {
        SCOPED_TRACE(step.time);
        EXPECT_EQ(keeper.dateOf(at(step.time), step.given).value_or(QDate()), step.date);
    }
}

TEST(NmeaDates, AreCarriedOn)
{
    const ReceivedDate given{24, 2, 28, false};
    expectDates("over midnight", {{"235958.0", std::nullopt, {}},
                                  {"235958.5", given, {2024, 2, 28}},
                                  {"235959.5", std::nullopt, {2024, 2, 28}},
                                  {"000000.0", std::nullopt, {2024, 2, 29}},
                                  {"120000", std::nullopt, {2024, 2, 29}},
                                  {"235959", std::nullopt, {2024, 2, 29}},
                                  {"000000", std::nullopt, {2024, 3, 1}}});
    expectDates("over a leap second", {{"235959", ReceivedDate{16, 12, 31, false}, {2016, 12, 31}},
                                       {"235960", std::nullopt, {2016, 12, 31}},
                                       {"000000", std::nullopt, {2017, 1, 1}}});
    expectDates("over a night without sentences",
                {{"200000", given, {2024, 2, 28}}, {"070000", std::nullopt, {2024, 2, 29}}});
    expectDates("with one that came late", {{"120000.2", given, {2024, 2, 28}},
                                            {"120000.0", std::nullopt, {2024, 2, 28}},
                                            {"120000.4", std::nullopt, {2024, 2, 28}}});
    expectDates("with one that came late over midnight",
                {{"000000.2", given, {2024, 2, 28}},
                 {"235959.8", std::nullopt, {2024, 2, 27}},
                 {"000000.4", std::nullopt, {2024, 2, 28}}});
    expectDates("until the time goes back", {{"120000", given, {2024, 2, 28}},
                                             {"110000", std::nullopt, {}},
                                             {"120000", std::nullopt, {}},
                                             {"120001", given, {2024, 2, 28}}});
}

TEST(NmeaDates, AreCarriedIntoALogThatGoesOn)
{
    const std::pair<const char *, QDate> rows[] = {
        {"235959.5", {2024, 2, 28}},
        {"000001", {2024, 2, 29}},
        {"000100", {}},
        {"235800", {}},
        {"120000", {}},
    };
    for (const auto &[time, date] : rows) {
        SCOPED_TRACE(time);
        DateKeeper keeper;
        keeper.dateOf(at("235959"), ReceivedDate{24, 2, 28, false});
        keeper.beginLog();
        EXPECT_EQ(keeper.dateOf(at(time), std::nullopt).value_or(QDate()), date);
    }
}

TEST(NmeaDates, GivenLateOrEarlyAtMidnightAreNotBelieved)
{
    const ReceivedDate last{24, 2, 28, false};
    const ReceivedDate next{24, 2, 29, false};
    expectDates("late", {{"235959.95", last, {2024, 2, 28}},
                         {"000000.00", last, {2024, 2, 29}},
                         {"000000.05", last, {2024, 2, 29}},
                         {"000000.10", next, {2024, 2, 29}},
                         {"000000.15", std::nullopt, {2024, 2, 29}}});
    expectDates("early, as that of GPS time is", {{"235941.00", last, {2024, 2, 28}},
                                                  {"235942.00", next, {2024, 2, 28}},
                                                  {"235959.00", next, {2024, 2, 28}},
                                                  {"000000.00", next, {2024, 2, 29}}});
    expectDates("late behind a leap second",
                {{"235960", ReceivedDate{2016, 12, 31, true}, {2016, 12, 31}},
                 {"000000", ReceivedDate{16, 12, 31, false}, {2017, 1, 1}}});
    expectDates("of one that came late", {{"000000.2", next, {2024, 2, 29}},
                                          {"235959.8", last, {2024, 2, 28}},
                                          {"000000.4", next, {2024, 2, 29}}});
    // The first one cannot be held against another.
    expectDates("from the beginning",
                {{"000000.0", last, {2024, 2, 28}}, {"000000.2", next, {2024, 2, 29}}});
    expectDates("of another log", {{"200000", next, {2024, 2, 29}},
                                   {"070000", last, {2024, 2, 28}},
                                   {"070001", next, {2024, 2, 29}}});
}

TEST(NmeaDates, ThatContradictTheTimeAreTold)
{
    DateKeeper keeper;
    keeper.dateOf(at("235959"), ReceivedDate{24, 2, 28, false});
    EXPECT_EQ(keeper.contradiction(), QString());
    keeper.dateOf(at("000000"), ReceivedDate{24, 2, 28, false});
    EXPECT_EQ(
        keeper.contradiction(),
        QStringLiteral("2024-02-28 where the time goes on at 2024-02-29; the latter was taken"));
    keeper.dateOf(at("000001"), ReceivedDate{24, 3, 5, false});
    EXPECT_EQ(
        keeper.contradiction(),
        QStringLiteral("2024-03-05 where the time goes on at 2024-02-29; the former was taken"));
    keeper.dateOf(at("000002"), std::nullopt);
    EXPECT_EQ(keeper.contradiction(), QString());
    keeper.dateOf(at("120000"), ReceivedDate{24, 3, 7, false});
    EXPECT_EQ(keeper.contradiction(), QString());
}

TEST(NmeaDates, TwoDigitsOfAYearAreCompleted)
{
    expectDates("by GPS time", {{"000000", ReceivedDate{80, 1, 6, false}, {1980, 1, 6}},
                                {"000000", ReceivedDate{99, 12, 31, false}, {1999, 12, 31}},
                                {"000000", ReceivedDate{0, 1, 1, false}, {2000, 1, 1}},
                                {"000000", ReceivedDate{79, 1, 1, false}, {2079, 1, 1}}});
    expectDates("by a full year", {{"000000", ReceivedDate{2079, 12, 31, true}, {2079, 12, 31}},
                                   {"000000", ReceivedDate{80, 1, 1, false}, {2080, 1, 1}},
                                   {"000000", ReceivedDate{1999, 1, 1, true}, {1999, 1, 1}},
                                   {"000000", ReceivedDate{0, 1, 1, false}, {2000, 1, 1}}});
    // 2100 is no leap year.
    expectDates("to a date that is none", {{"000000", ReceivedDate{2099, 1, 1, true}, {2099, 1, 1}},
                                           {"000000", ReceivedDate{0, 2, 29, false}, {}}});
}

} // namespace
} // namespace KelStd
