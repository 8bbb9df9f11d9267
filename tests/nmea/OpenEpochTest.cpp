// Several positions of one time: which one is taken, and which contradict each other.

#include <KelStd/nmea/EpochCombiner.h>

#include "nmea/Sentences.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <string>

namespace KelStd {
namespace {

using nmea::SentenceTally;
using test::epochsOf;

QByteArray gnsAt(const char *talker, const char *modes, const char *latitude, const char *height,
                 const char *separation)
{
    return QByteArray(talker) + "GNS,120000," + latitude + ",N,01300.0,E," + modes + ",8,1.0,"
           + height + ',' + separation + ",,";
}

QByteArray ggaAt(const char *talker, int quality, const char *latitude = "5200.00000",
                 const char *height = "30.0", const char *separation = "40.0")
{
    return QByteArray(talker) + "GGA,120000," + latitude + ",N,01300.00000,E,"
           + QByteArray::number(quality) + ",8,1.0," + height + ",M," + separation + ",M,,";
}

QByteArray rmcAt(const char *talker, const char *latitude, char status = 'A')
{
    return QByteArray(talker) + "RMC,120000," + status + ',' + latitude
           + ",N,01300.00000,E,0,0,290224,,,A";
}

// Fixed ambiguities (4), floating (5), differential (2) or precise (3), single (1), estimated (6),
// typed in or simulated (7, 8).
TEST(NmeaEpochs, TakeTheBestQuality)
{
    const int best[][2] = {{4, 5}, {4, 1}, {5, 2}, {2, 1}, {3, 1}, {1, 6}, {6, 7}, {6, 8}, {4, 8}};
    for (const auto &[better, worse] : best) {
        SCOPED_TRACE(std::to_string(better) + " before " + std::to_string(worse));
        // GN with the worse one, and in both orders.
        const QList<QByteArray> bodies = {ggaAt("GL", better), ggaAt("GN", worse)};
        for (const auto &each : {bodies, QList<QByteArray>{bodies[1], bodies[0]}}) {
            SentenceTally tally;
            const auto epochs = epochsOf(test::log(each), &tally);
            ASSERT_EQ(epochs.size(), 1);
            EXPECT_EQ(epochs.front().position.quality, better);
            EXPECT_EQ(epochs.front().position.talker, "GL");
            EXPECT_EQ(tally.contradicting.count, 0) << "the positions are the same";
        }
    }
}

// A minute of latitude is 1,852 m, and 0.00054 of it some metre.
TEST(NmeaEpochs, CountPositionsThatContradictEachOther)
{
    const struct
    {
        const char *what;
        QList<QByteArray> bodies;
        int count;
    } rows[] = {
        {"the same again", {ggaAt("GP", 4), ggaAt("GP", 4)}, 0},
        {"another latitude", {ggaAt("GP", 1), ggaAt("GP", 1, "5200.00001")}, 1},
        {"another height", {ggaAt("GP", 4), ggaAt("GP", 4, "5200.00000", "30.1")}, 1},
        {"a height in other digits", {ggaAt("GP", 4), ggaAt("GP", 4, "5200.00000", "30.00")}, 0},
        {"no height", {ggaAt("GP", 4), ggaAt("GP", 4, "5200.00000", "")}, 0},
        {"another separation", {ggaAt("GP", 4), ggaAt("GP", 4, "5200.00000", "30.0", "40.1")}, 1},
        {"another system, 185 m away", {ggaAt("GP", 4), ggaAt("GN", 1, "5200.10000")}, 1},
        {"another system, 185 m away in few digits",
         {ggaAt("GP", 4, "5200.0"), ggaAt("GN", 1, "5200.1")},
         1},
        {"another system, 18.5 m away", {ggaAt("GP", 4), ggaAt("GN", 1, "5200.01000")}, 0},
        {"fixed both, 18.5 m away", {ggaAt("GP", 4), ggaAt("GN", 4, "5200.01000")}, 1},
        {"fixed both, 0.9 m away", {ggaAt("GP", 4), ggaAt("GN", 4, "5200.00050")}, 0},
        {"fixed both, heights 9 m apart",
         {ggaAt("GP", 4), ggaAt("GN", 4, "5200.00000", "39.0")},
         1},
        {"the same above the ellipsoid",
         {ggaAt("GP", 4), ggaAt("GN", 4, "5200.00000", "50.0", "20.0")},
         0},
        {"estimated, 185 m away", {ggaAt("GP", 4), ggaAt("GN", 6, "5200.10000")}, 0},
        {"without a fix", {ggaAt("GP", 4), ggaAt("GN", 0, "5200.10000")}, 0},
        {"another type, 3.7 m away",
         {ggaAt("GN", 1), gnsAt("GN", "A", "5200.00200", "30", "40")},
         1},
        {"another type, heights 9 m apart",
         {ggaAt("GN", 1), gnsAt("GN", "A", "5200.00000", "39.0", "40.0")},
         1},
        {"another type in fewer digits",
         {ggaAt("GN", 4, "5200.00481"), gnsAt("GN", "RR", "5200.00", "30", "40")},
         0},
        {"RMC 185 m away", {ggaAt("GN", 4), rmcAt("GN", "5200.10000")}, 1},
        {"RMC in fewer digits", {ggaAt("GN", 4, "5200.00481"), rmcAt("GN", "5200.00")}, 0},
        {"RMC void, 185 m away", {ggaAt("GN", 4), rmcAt("GN", "5200.10000", 'V')}, 0},
        {"RMC of another system, 185 m away", {ggaAt("GP", 4), rmcAt("GN", "5200.10000")}, 1},
        {"RMC of another system, 18.5 m away", {ggaAt("GP", 4), rmcAt("GN", "5200.01000")}, 0},
        {"beyond a third", {ggaAt("GP", 1), ggaAt("GL", 1), ggaAt("GA", 4, "5200.10000")}, 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        SentenceTally tally;
        EXPECT_EQ(epochsOf(test::log(row.bodies), &tally).size(), 1);
        EXPECT_EQ(tally.contradicting.count, row.count);
        EXPECT_EQ(tally.contradicting.firstLine, row.count > 0 ? row.bodies.size() : 0);
    }
}

TEST(NmeaEpochs, OnTheDateLineAreNextToEachOther)
{
    SentenceTally tally;
    epochsOf(test::log({"GPGGA,120000,1800.0,S,17959.99999,E,4,8,1.0,30.0,M,40.0,M,,",
                        "GNGGA,120000,1800.0,S,17959.99999,W,4,8,1.0,30.0,M,40.0,M,,"}),
             &tally);
    EXPECT_EQ(tally.contradicting.count, 0);
}

} // namespace
} // namespace KelStd
