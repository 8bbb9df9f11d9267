#include <KelStd/nmea/EpochCombiner.h>

#include "nmea/Sentences.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace KelStd {
namespace {

using nmea::EpochCombiner;
using nmea::EpochFault;
using nmea::ReceiverEpoch;
using nmea::SentenceTally;
using test::epochsOf;
using test::Mentions;

void feed(EpochCombiner &combiner, const QByteArray &bytes)
{
    combiner.feed({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

const QByteArray rmc = "GNRMC,123456.20,A,5231.2345678,N,01324.5678901,E,0.01,45.0,290224,,,R,V";
const QByteArray gga =
    "GNGGA,123456.20,5231.2345678,N,01324.5678901,E,4,17,0.62,34.5678,M,39.8765,M,1.0,0001";
const QByteArray gst = "GNGST,123456.20,8.5,0.012,0.009,77.1,0.0107,0.0095,0.0182";

TEST(NmeaEpochs, SayWhatAllTheirSentencesSaid)
{
    QList<QList<QByteArray>> orders = {{rmc, gga, gst}, {gst, gga, rmc}, {gga, gst, rmc}};
    for (const auto &bodies : orders) {
        SentenceTally tally;
        const auto epochs = epochsOf(test::log(bodies), &tally);
        ASSERT_EQ(epochs.size(), 1);
        const ReceiverEpoch &epoch = epochs.front();
        EXPECT_FALSE(epoch.failure());
        EXPECT_EQ(epoch.number, 1);
        EXPECT_EQ(epoch.line, 1);
        EXPECT_EQ(epoch.utc(), "2024-02-29T12:34:56.20Z");
        EXPECT_EQ(epoch.gps()->week, 2303);
        EXPECT_EQ(epoch.gps()->seconds, "390914.20");
        EXPECT_DOUBLE_EQ(*epoch.position.latitude, 52 + 31.2345678 / 60);
        EXPECT_DOUBLE_EQ(*epoch.position.longitude, 13 + 24.5678901 / 60);
        EXPECT_NEAR(epoch.ellipsoidalHeight(), 74.4443, 1e-12); // 34.5678 + 39.8765
        EXPECT_EQ(epoch.position.quality, 4);
        EXPECT_EQ(epoch.position.satellites, 17);
        EXPECT_EQ(epoch.position.hdop->text, "0.62");
        EXPECT_EQ(epoch.sdLatitude->text, "0.0107");
        EXPECT_EQ(epoch.sdLongitude->text, "0.0095");
        EXPECT_EQ(epoch.sdHeight->text, "0.0182");
        EXPECT_EQ(epoch.sentences.count('\n'), 3);
        EXPECT_EQ(tally.used, 3);
        EXPECT_EQ(tally.broken(), 0);
    }
}

QByteArray ggaOf(const char *talker, int quality, int satellites)
{
    return QByteArray(talker) + "GGA,120000,5200.0,N,01300.0,E," + QByteArray::number(quality) + ','
           + QByteArray::number(satellites) + ",1.0,30.0,M,40.0,M,,";
}

QByteArray gnsOf(const char *talker, const char *modes, int satellites)
{
    return QByteArray(talker) + "GNS,120000,5200.0,N,01300.0,E," + modes + ','
           + QByteArray::number(satellites) + ",1.0,30.0,40.0,,";
}

TEST(NmeaEpochs, TakeTheBestPosition)
{
    const std::tuple<const char *, QList<QByteArray>, int> rows[] = {
        {"GN before others", {ggaOf("GP", 1, 5), ggaOf("GN", 1, 12), ggaOf("GL", 1, 7)}, 12},
        {"the first of equal ones", {ggaOf("GP", 1, 5), ggaOf("GL", 1, 7)}, 5},
        {"GGA before GNS", {gnsOf("GN", "A", 11), ggaOf("GN", 1, 12)}, 12},
        {"GN of GNS before another GGA", {ggaOf("GP", 1, 5), gnsOf("GN", "A", 11)}, 11},
        {"one with a fix", {ggaOf("GN", 0, 12), ggaOf("GP", 1, 5)}, 5},
        {"GNS of single systems say nothing",
         {"GPGNS,120000,,,,,,8,,,,1.0,23", gnsOf("GN", "RR", 13), "GLGNS,120000,,,,,,5,,,,1.0,23"},
         13},
    };
    for (const auto &[what, bodies, satellites] : rows) {
        SCOPED_TRACE(what);
        const auto epochs = epochsOf(test::log(bodies));
        ASSERT_EQ(epochs.size(), 1);
        EXPECT_EQ(epochs.front().position.satellites, satellites);
    }
}

TEST(NmeaEpochs, TakeTheDeviationsOfThePositionsTalker)
{
    const QByteArray gp = "GPGST,120000,,,,,5.0,5.1,5.2";
    const QByteArray gl = "GLGST,120000,,,,,6.0,6.1,6.2";
    const QByteArray gn = "GNGST,120000,,,,,0.01,0.01,0.02";
    const QByteArray silent = "GNGST,120000,,,,,,,";
    const std::tuple<const char *, QList<QByteArray>, const char *> rows[] = {
        {"GN", {ggaOf("GP", 1, 5), ggaOf("GN", 4, 12), gp, gn}, "0.02"},
        {"a single system", {gp, gn, ggaOf("GP", 1, 5)}, "5.2"},
        {"else GN", {gp, gn, ggaOf("GL", 1, 5)}, "0.02"},
        {"else the first", {ggaOf("GN", 1, 5), gp, gl}, "5.2"},
        {"one that says something", {ggaOf("GN", 1, 5), silent, gn}, "0.02"},
        {"not those of another solution", {ggaOf("GN", 1, 5), gp, silent}, ""},
    };
    for (const auto &[what, bodies, height] : rows) {
        SCOPED_TRACE(what);
        const auto epochs = epochsOf(test::log(bodies));
        ASSERT_EQ(epochs.size(), 1);
        EXPECT_EQ(epochs.front().sdHeight.value_or(nmea::Decimal()).text, height);
    }
}

TEST(NmeaEpochs, TakeTheSeparationOfTheSamePositionOnly)
{
    const QByteArray lacking = "GNGGA,120000,5200.0,N,01300.0,E,4,12,1.0,30.0,M,,M,,";
    const std::tuple<const char *, QByteArray, bool> rows[] = {
        {"the same", "GNGNS,120000,5200.0,N,01300.0,E,RR,12,1.0,30.04,40.0,,", true},
        {"without a height", "GNGNS,120000,5200.0,N,01300.0,E,RR,12,1.0,,40.0,,", true},
        {"another latitude", "GNGNS,120000,5201.0,N,01300.0,E,RR,12,1.0,30.0,40.0,,", false},
        {"another height", "GNGNS,120000,5200.0,N,01300.0,E,RR,12,1.0,35.0,40.0,,", false},
        {"another talker", "GPGNS,120000,5200.0,N,01300.0,E,RR,12,1.0,30.0,40.0,,", false},
        {"no position", "GNGNS,120000,,,,,RR,12,1.0,30.0,40.0,,", false},
        {"another time", "GNGNS,120001,5200.0,N,01300.0,E,RR,12,1.0,30.0,40.0,,", false},
    };
    for (const auto &[what, gns, isTaken] : rows) {
        SCOPED_TRACE(what);
        for (const auto &bodies :
             {QList<QByteArray>{lacking, gns}, QList<QByteArray>{gns, lacking}}) {
            for (const ReceiverEpoch &epoch : epochsOf(test::log(bodies))) {
                if (epoch.position.kind != nmea::MessageKind::Gga)
                    continue;
                EXPECT_EQ(epoch.failure().kind,
                          isTaken ? EpochFault::None : EpochFault::NoUndulation);
                EXPECT_EQ(epoch.ellipsoidalHeight(), isTaken ? 70.0 : 0.0);
            }
        }
    }
}

TEST(NmeaEpochs, WithoutAPositionHaveAReason)
{
    const QByteArray validRmc = "GPRMC,120000,A,5200.0,N,01300.0,E,,,290224,,";
    const QByteArray voidRmc = "GPRMC,120000,V,5200.0,N,01300.0,E,,,290224,,";
    const std::tuple<const char *, QList<QByteArray>, EpochFault, const char *> rows[] = {
        {"quality 0", {ggaOf("GP", 0, 0)}, EpochFault::NoFix, "quality 0"},
        {"an empty quality", {"GPGGA,120000,,,,,,,,,,,,,"}, EpochFault::NoFix, "quality 0"},
        {"no mode", {gnsOf("GN", "NN", 0)}, EpochFault::NoFix, "quality 0"},
        {"void", {voidRmc}, EpochFault::Void, "RMC says void"},
        {"void, in spite of GGA", {ggaOf("GP", 1, 9), voidRmc}, EpochFault::Void, "void"},
        {"quality 0, in spite of RMC", {ggaOf("GP", 0, 9), validRmc}, EpochFault::NoFix, "fix"},
        {"RMC alone", {validRmc}, EpochFault::NoHeight, "RMC alone"},
        {"no latitude",
         {"GPGGA,120000,,,,,1,08,0.9,545.4,M,46.9,M,,"},
         EpochFault::NoPosition,
         "no latitude"},
        {"no height",
         {"GPGGA,120000,5200.0,N,01300.0,E,1,08,0.9,,M,46.9,M,,"},
         EpochFault::NoHeight,
         "no height"},
        {"no separation",
         {"GPGGA,120000,5200.0,N,01300.0,E,1,08,0.9,30.0,M,,M,,"},
         EpochFault::NoUndulation,
         "above mean sea level"},
        {"no separation",
         {"GNGNS,120000,5200.0,N,01300.0,E,AA,08,0.9,30.0,,,"},
         EpochFault::NoUndulation,
         "above mean sea level"},
    };
    for (const auto &[what, bodies, fault, reason] : rows) {
        SCOPED_TRACE(what);
        const auto epochs = epochsOf(test::log(bodies));
        ASSERT_EQ(epochs.size(), 1);
        EXPECT_EQ(epochs.front().failure().kind, fault);
        EXPECT_THAT(epochs.front().failure().text, Mentions(reason));
        EXPECT_EQ(epochs.front().sentences.count('\n'), bodies.size());
    }
}

TEST(NmeaEpochs, EndWhenAnotherTimeComes)
{
    EpochCombiner combiner;
    feed(combiner, test::log({rmc, gga}));
    EXPECT_FALSE(combiner.next());
    EXPECT_TRUE(combiner.canFlush());
    feed(combiner, test::log({gst}));
    EXPECT_FALSE(combiner.next());
    feed(combiner, test::log({"GNZDA,123456.4,29,02,2024,00,00"}));
    const auto first = combiner.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->number, 1);
    EXPECT_FALSE(combiner.next());
    combiner.finish();
    EXPECT_FALSE(combiner.next()) << "a date alone is no epoch";
}

TEST(NmeaEpochs, WithoutTimesEndWhenATypeComesAgain)
{
    const auto epochs = epochsOf(test::log({"GPGGA,,,,,,0,,,,,,,,", "GPRMC,,V,,,,,,,,,,N",
                                            "GPGGA,,,,,,0,,,,,,,,", "GPRMC,,V,,,,,,,,,,N"}));
    ASSERT_EQ(epochs.size(), 2);
    EXPECT_EQ(epochs.at(1).number, 2);
    EXPECT_EQ(epochs.at(1).line, 3);
    EXPECT_EQ(epochs.at(1).utc(), "");
    EXPECT_FALSE(epochs.at(1).gps());
}

TEST(NmeaEpochs, OfOneTimeOnTwoDaysAreTwo)
{
    const auto epochs =
        epochsOf(test::log({"GPRMC,120000,A,5200.0,N,01300.0,E,,,280224,,", ggaOf("GP", 1, 5),
                            "GPRMC,120000,A,5200.0,N,01300.0,E,,,290224,,", ggaOf("GP", 1, 6)}));
    ASSERT_EQ(epochs.size(), 2);
    EXPECT_EQ(epochs.at(0).utc(), "2024-02-28T12:00:00Z");
    EXPECT_EQ(epochs.at(1).utc(), "2024-02-29T12:00:00Z");
    EXPECT_EQ(epochs.at(1).position.satellites, 6);
}

QByteArray at(const char *type, const char *time)
{
    const QByteArray rests[] = {
        ",5200.0,N,01300.0,E,1,12,1.0,30.0,M,40.0,M,,",
        ",A,5200.0,N,01300.0,E,,,290224,,",
        ",,,,,0.1,0.2,0.3",
        ",29,02,2024,,",
    };
    const char *const types[] = {"GGA", "RMC", "GST", "ZDA"};
    const auto found = std::find_if(std::begin(types), std::end(types),
                                    [type](const char *each) { return QByteArray(each) == type; });
    return QByteArray("GN") + type + ',' + time + rests[found - std::begin(types)];
}

struct InterleavedRow
{
    const char *what;
    QList<QByteArray> bodies;
    QList<QByteArray> inFile; ///< for each epoch: its second of GST, of its time, or neither
    int lateInFile;
    int lateInStream;
};

TEST(NmeaEpochs, MayInterleaveInAFile)
{
    using Order = EpochCombiner::Order;
    const InterleavedRow rows[] = {
        {"a date of before",
         {at("GGA", "000001"), at("ZDA", "000000"), at("GST", "000001")},
         {"sd"},
         0,
         1},
        {"two by two",
         {at("GGA", "000002"), at("GGA", "000003"), at("GST", "000002"), at("GST", "000003")},
         {"sd", "sd"},
         0,
         1},
        {"dates",
         {at("GGA", "000001.00"), at("GGA", "000001.05"), at("RMC", "000001.00"),
          at("RMC", "000001.05")},
         {"utc", "utc"},
         0,
         1},
        {"too late",
         {at("GGA", "000001"), at("GGA", "000002"), at("GGA", "000003"), at("GST", "000001")},
         {"", "", ""},
         1,
         1},
        {"a position is never too late",
         {at("GST", "000001"), at("GGA", "000002"), at("GGA", "000003"), at("GGA", "000004"),
          at("GGA", "000001")},
         {"", "", "", ""},
         0,
         0},
        {"a day later",
         {at("GGA", "000001"), at("GGA", "000002"), at("GGA", "000001")},
         {"", "", ""},
         0,
         0},
    };
    for (const InterleavedRow &row : rows) {
        SCOPED_TRACE(row.what);
        SentenceTally tally;
        const auto epochs = epochsOf(test::log(row.bodies), &tally, Order::MayInterleave);
        QList<QByteArray> said;
        for (const ReceiverEpoch &epoch : epochs)
            said += epoch.sdHeight ? "sd" : epoch.utc().isEmpty() ? "" : "utc";
        EXPECT_EQ(said, row.inFile);
        EXPECT_EQ(tally.late.count, row.lateInFile);
        EXPECT_EQ(tally.contradicting.count, 0);
        EXPECT_EQ(epochsOf(test::log(row.bodies), &tally).size(), epochs.size());
        EXPECT_EQ(tally.late.count, row.lateInStream);
    }
}

TEST(NmeaEpochs, WithoutHeightsWaitForThem)
{
    SentenceTally tally;
    const auto epochs = epochsOf(test::log({at("RMC", "000001.00"), at("RMC", "000001.05"),
                                            at("GGA", "000001.00"), at("GGA", "000001.05")}),
                                 &tally);
    ASSERT_EQ(epochs.size(), 2);
    EXPECT_EQ(epochs.at(0).utc(), "2024-02-29T00:00:01.00Z");
    EXPECT_FALSE(epochs.at(0).failure());
    EXPECT_FALSE(epochs.at(1).failure());
    EXPECT_EQ(tally.late.count, 0);
}

TEST(NmeaEpochs, SilenceEndsThemAndWhatComesLateIsCounted)
{
    EpochCombiner combiner;
    feed(combiner, test::log({gga}));
    combiner.flush();
    const auto first = combiner.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->utc(), "");
    feed(combiner, test::log({rmc, gst}));
    EXPECT_FALSE(combiner.canFlush());
    EXPECT_EQ(combiner.tally().late.count, 2);
    // The date that came late holds from now on.
    feed(combiner, test::log({"GNGGA,123456.40,5231.0,N,01324.0,E,4,17,0.62,34.5,M,39.8,M,,"}));
    combiner.finish();
    const auto second = combiner.next();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->number, 2);
    EXPECT_EQ(second->utc(), "2024-02-29T12:34:56.40Z");
}

TEST(NmeaEpochs, SilenceWaitsForTheRestOfASentence)
{
    EpochCombiner combiner;
    const QByteArray text = test::log({gga});
    feed(combiner, text.left(20));
    combiner.flush();
    EXPECT_FALSE(combiner.next());
    feed(combiner, text.mid(20));
    combiner.flush();
    EXPECT_TRUE(combiner.next());
    EXPECT_EQ(combiner.tally().broken(), 0);
}

TEST(NmeaEpochs, SilenceWaitsForAHeight)
{
    EpochCombiner combiner;
    feed(combiner, test::log({rmc, gst}));
    combiner.flush();
    EXPECT_FALSE(combiner.next());
    feed(combiner, test::log({gga}));
    combiner.flush();
    const auto epoch = combiner.next();
    ASSERT_TRUE(epoch);
    EXPECT_FALSE(epoch->failure());
    EXPECT_EQ(epoch->sentences.count('\n'), 3);
    EXPECT_FALSE(combiner.tally().late.count);
}

TEST(NmeaEpochs, WhatIsAbandonedLosesHalfASentenceAlone)
{
    EpochCombiner combiner;
    feed(combiner, test::log({rmc}) + "$GNGGA,1234");
    combiner.abandon();
    ASSERT_TRUE(combiner.next());
    EXPECT_EQ(combiner.tally().broken(), 0);
}

TEST(NmeaEpochs, TheFullYearOfZdaGoesBeforeRmc)
{
    const auto epochs = epochsOf(
        test::log({"GPRMC,235959,A,5200.0,N,01300.0,E,,,311299,,", "GPZDA,235959,31,12,2099,,",
                   "GPGGA,235959,5200.0,N,01300.0,E,1,08,0.9,30.0,M,40.0,M,,",
                   "GPGGA,000000,5200.0,N,01300.0,E,1,08,0.9,30.0,M,40.0,M,,",
                   "GPRMC,000001,A,5200.0,N,01300.0,E,,,010100,,",
                   "GPGGA,000001,5200.0,N,01300.0,E,1,08,0.9,30.0,M,40.0,M,,"}));
    ASSERT_EQ(epochs.size(), 3);
    EXPECT_EQ(epochs.at(0).utc(), "2099-12-31T23:59:59Z");
    EXPECT_EQ(epochs.at(1).utc(), "2100-01-01T00:00:00Z");
    EXPECT_EQ(epochs.at(2).utc(), "2100-01-01T00:00:01Z");
}

TEST(NmeaEpochs, ADateThatIsLateAtMidnightIsNotTaken)
{
    const auto at = [](const char *time, const char *date) {
        return QList<QByteArray>{
            QByteArray("GPGGA,") + time + ",5200.0,N,01300.0,E,1,08,0.9,30.0,M,40.0,M,,",
            QByteArray("GPRMC,") + time + ",A,5200.0,N,01300.0,E,,," + date + ",,"};
    };
    SentenceTally tally;
    const auto epochs = epochsOf(test::log(at("235959.95", "280224") + at("000000.00", "280224")
                                           + at("000000.05", "290224")),
                                 &tally);
    ASSERT_EQ(epochs.size(), 3);
    EXPECT_EQ(epochs.at(0).utc(), "2024-02-28T23:59:59.95Z");
    EXPECT_EQ(epochs.at(1).utc(), "2024-02-29T00:00:00.00Z");
    EXPECT_EQ(epochs.at(2).utc(), "2024-02-29T00:00:00.05Z");
    EXPECT_EQ(tally.otherDate.count, 1);
    EXPECT_EQ(tally.otherDate.firstLine, 3);
    epochsOf(test::log(at("120000", "280224") + QList<QByteArray>{"GPZDA,120000,29,02,2024,,"}),
             &tally);
    EXPECT_EQ(tally.otherDate.count, 1);
    EXPECT_THAT(tally.otherDate.firstReason, Mentions("RMC and ZDA"));
}

TEST(NmeaEpochs, TheDateOfAReceiverWithoutAFixIsNone)
{
    const auto epochs =
        epochsOf(test::log({"GPRMC,120000,V,,,,,,,060180,,", ggaOf("GP", 0, 0),
                            "GPGGA,120001,5200.0,N,01300.0,E,1,08,0.9,30.0,M,40.0,M,,"}));
    ASSERT_EQ(epochs.size(), 2);
    EXPECT_EQ(epochs.at(1).utc(), "");
}

TEST(NmeaTally, CountsWhatIsNotUsed)
{
    SentenceTally tally;
    const auto epochs = epochsOf(
        "# a remark\n" + test::log({rmc})
            + "$GNGGA,123456.20,5231.2345678,N,01324.5678901,E,4,17,0.62,34.5678,M,39.8765,M*00\n"
              "$GNGGA,123456.20,5231.2345678,N,01324.5678901,E,4\n"
            + test::log({"GNGGA,123456.20,9931.0,N,01324.0,E,4,17,0.62,34.5,M,39.8,M,,",
                         "GPGSV,3,1,11,03,03,111,00", gga,
                         "GNGGA,123456.20,5231.9,N,01324.5,E,4,17,0.62,34.5,M,39.8,M,,",
                         "GNDTM,P90,,0.0,N,0.0,E,0.0,W84"})
            + "$\x80\n",
        &tally);
    ASSERT_EQ(epochs.size(), 1);
    EXPECT_DOUBLE_EQ(*epochs.front().position.latitude, 52 + 31.2345678 / 60);
    EXPECT_EQ(tally.used, 4);
    EXPECT_EQ(tally.ofOtherTypes, 1);
    EXPECT_EQ(tally.otherLines, 2);
    EXPECT_EQ(tally.badChecksum.count, 1);
    EXPECT_EQ(tally.badChecksum.firstLine, 3);
    EXPECT_EQ(tally.noChecksum.count, 1);
    EXPECT_EQ(tally.noChecksum.firstLine, 4);
    EXPECT_EQ(tally.malformed.count, 1);
    EXPECT_EQ(tally.malformed.firstLine, 5);
    EXPECT_EQ(tally.malformed.firstReason, QStringLiteral("GGA: field 2 is no latitude"));
    EXPECT_EQ(tally.broken(), 3);
    EXPECT_EQ(tally.contradicting.count, 1);
    EXPECT_EQ(tally.contradicting.firstLine, 8);
    EXPECT_EQ(tally.otherDatum.count, 1);
    EXPECT_EQ(tally.otherDatum.firstReason, QStringLiteral("P90"));
}

TEST(NmeaTally, OneSentenceForEverTakesNoMemory)
{
    EpochCombiner combiner;
    const QByteArray text = test::log({gga});
    for (int i = 0; i < 100000; ++i)
        feed(combiner, text);
    combiner.finish();
    const auto epoch = combiner.next();
    ASSERT_TRUE(epoch);
    EXPECT_LT(epoch->sentences.size(), 10000);
    EXPECT_EQ(combiner.tally().used, 100000);
}

} // namespace
} // namespace KelStd
