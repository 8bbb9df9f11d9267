#include <KelStd/nmea/Message.h>
#include <KelStd/nmea/SentenceScanner.h>

#include "nmea/Sentences.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KelStd {
namespace {

using nmea::Message;
using nmea::MessageKind;
using nmea::SentenceFailure;
using nmea::SentenceFault;
using test::Mentions;
using test::sentence;

// As manuals of receivers print them, with their checksums.
constexpr const char *printedSentences[] = {
    "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47",
    "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A",
    "$GPGGA,172814.0,3723.46587704,N,12202.26957864,W,2,6,1.2,18.893,M,-25.669,M,2.0,0031*4F",
    "$GPGST,172814.0,0.006,0.023,0.020,273.6,0.023,0.020,0.031*6A",
    "$GPZDA,201530.00,04,07,2002,00,00*60",
    "$GNGNS,014035.00,4332.69262,S,17235.48549,E,RR,13,0.9,25.63,11.24,,*70",
    "$GPGNS,014035.00,,,,,,8,,,,1.0,23*76",
    "$GLGNS,014035.00,,,,,,5,,,,1.0,23*67",
};

TEST(NmeaSentence, PrintedOnesHaveTheirPrintedChecksums)
{
    for (const char *text : printedSentences) {
        SCOPED_TRACE(text);
        SentenceFailure failure{SentenceFault::Malformed, QStringLiteral("of the call before")};
        const auto read = nmea::readSentence(text, failure);
        ASSERT_TRUE(read) << failure.text;
        EXPECT_FALSE(failure);
        EXPECT_EQ(std::string(read->talker), std::string(text).substr(1, 2));
        EXPECT_EQ(std::string(read->type), std::string(text).substr(3, 3));
        EXPECT_TRUE(Message::read(*read, failure)) << failure.text;
        EXPECT_FALSE(failure);
    }
}

struct Broken
{
    QByteArray text;
    SentenceFault fault;
};

TEST(NmeaSentence, WhatIsBrokenHasAKind)
{
    const Broken rows[] = {
        {"", SentenceFault::NotASentence},
        {"$", SentenceFault::NotASentence},
        {"$G", SentenceFault::NotASentence},
        {"$\x01\x02*00", SentenceFault::NotASentence},
        {"{\"class\":\"VERSION\"}", SentenceFault::NotASentence},
        {"$GPGGA", SentenceFault::NoChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,",
         SentenceFault::NoChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*",
         SentenceFault::BadChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*4",
         SentenceFault::BadChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*48",
         SentenceFault::BadChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*4G",
         SentenceFault::BadChecksum},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*477",
         SentenceFault::TextBehind},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47 12:35:19",
         SentenceFault::TextBehind},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*48 12:35:19",
         SentenceFault::BadChecksum},
        // One digit of the latitude is another.
        {"$GPGGA,123519,4807.138,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47",
         SentenceFault::BadChecksum},
        {sentence("GPG\x01,1"), SentenceFault::Malformed},
        {sentence("GPgga,1"), SentenceFault::Malformed},
        {sentence("GPTXT," + QByteArray(250, 'x')), SentenceFault::Malformed},
    };
    for (const Broken &row : rows) {
        SCOPED_TRACE(row.text.constData());
        SentenceFailure failure;
        EXPECT_FALSE(nmea::readSentence(row.text.toStdString(), failure));
        EXPECT_EQ(failure.kind, row.fault);
        EXPECT_NE(failure.text, QString());
    }
}

TEST(NmeaSentence, OthersArePassedOver)
{
    for (const char *text : {"$PUBX,40,GLL,0,0,0,0*5C", "$GPGSV,3,1,11,03,03,111,00*4A"}) {
        SentenceFailure failure;
        const auto read = nmea::readSentence(text, failure);
        ASSERT_TRUE(read) << text;
        EXPECT_FALSE(Message::read(*read, failure));
        EXPECT_FALSE(failure);
    }
}

TEST(NmeaSentence, AChecksumMayBeInSmallLettersAndBlanksBehindIt)
{
    SentenceFailure failure;
    EXPECT_TRUE(nmea::readSentence("$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,"
                                   "003.1,W*6a",
                                   failure));
    EXPECT_TRUE(nmea::readSentence("$GPZDA,201530.00,04,07,2002,00,00*60 \t", failure));
}

struct Mistake
{
    const char *body;
    const char *reason;
};

// The checksum is right: a receiver or a program has written it so.
TEST(NmeaMessage, AFieldThatCannotBeIsNamed)
{
    const Mistake rows[] = {
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08", "GGA has 7 fields, not 12"},
        {"GPGGA,12351,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,",
         "GGA: field 1 is no time of day"},
        {"GPGGA,246060,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,",
         "field 1 is no time of day"},
        {"GPGGA,120060,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,",
         "field 1 is no time of day"},
        {"GPGGA,123519,4867.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 2 is no latitude"},
        {"GPGGA,123519,9000.001,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 2 is no latitude"},
        {"GPGGA,123519,48-7.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 2 is no latitude"},
        {"GPGGA,123519,-4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,",
         "field 2 is no latitude"},
        {"GPGGA,123519,4.807e3,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 2 is no latitude"},
        {"GPGGA,123519,.5,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 2 is no latitude"},
        {"GPGGA,123519,4807.038,E,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 3 is no letter"},
        {"GPGGA,123519,4807.038,,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", "field 3 is no N or S"},
        {"GPGGA,123519,4807.038,N,18000.001,E,1,08,0.9,545.4,M,46.9,M,,",
         "field 4 is no longitude"},
        {"GPGGA,123519,4807.038,N,,,1,08,0.9,545.4,M,46.9,M,,", "field 4 is no longitude"},
        {"GPGGA,123519,4807.038,N,01131.000,E,A,08,0.9,545.4,M,46.9,M,,", "field 6 is no digit"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,x,0.9,545.4,M,46.9,M,,",
         "field 7 is no number of satellites"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,-0.9,545.4,M,46.9,M,,",
         "field 8 is no number from 0 up"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,5a5.4,M,46.9,M,,", "field 9 is no number"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,1e3,M,46.9,M,,", "field 9 is no number"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,nan,M,46.9,M,,", "field 9 is no number"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,1789.4,F,46.9,M,,",
         "field 10 is no M for metres"},
        {"GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,153.9,F,,",
         "field 12 is no M for metres"},
        {"GPRMC,123519,X,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W",
         "RMC: field 2 is no letter"},
        {"GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,310294,003.1,W", "field 9 is no date"},
        {"GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,2303194,003.1,W", "field 9 is no date"},
        {"GPZDA,201530.00,31,06,2002,00,00", "ZDA: field 2 is no date"},
        {"GPZDA,201530.00,04,07,02,00,00", "field 2 is no date"},
        {"GPZDA,201530.00,04,,2002,00,00", "field 2 is no date"},
        {"GNGNS,014035.00,4332.69262,S,17235.48549,E,RX,13,0.9,25.63,11.24,,",
         "GNS: field 6 is no row of modes"},
        {"GPGST,172814.0,0.006,0.023,0.020,273.6,0.023,-0.020,0.031",
         "field 7 is no number from 0"},
    };
    for (const Mistake &row : rows) {
        SCOPED_TRACE(row.body);
        SentenceFailure failure;
        const QByteArray text = sentence(row.body);
        const std::string kept = text.toStdString();
        const auto read = nmea::readSentence(kept, failure);
        ASSERT_TRUE(read) << failure.text;
        EXPECT_FALSE(Message::read(*read, failure));
        EXPECT_EQ(failure.kind, SentenceFault::Malformed);
        EXPECT_THAT(failure.text, Mentions(row.reason));
    }
}

Message messageOf(const QByteArray &body)
{
    SentenceFailure failure;
    const std::string text = sentence(body).toStdString();
    const auto read = nmea::readSentence(text, failure);
    const auto message = read ? Message::read(*read, failure) : std::nullopt;
    EXPECT_TRUE(message) << body.constData() << ": " << failure.text;
    return message.value_or(Message());
}

// 48 degrees 7.038' = 48.1173, 11 degrees 31.000' = 11.516666...
TEST(NmeaMessage, PositionsAreDegreesAndMinutes)
{
    const Message gga = messageOf("GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,");
    EXPECT_EQ(gga.kind, MessageKind::Gga);
    EXPECT_DOUBLE_EQ(*gga.latitude, 48.1173);
    EXPECT_DOUBLE_EQ(*gga.longitude, 11 + 31 / 60.0);
    EXPECT_EQ(gga.quality, 1);
    EXPECT_EQ(gga.satellites, 8);
    EXPECT_EQ(gga.hdop->text, "0.9");
    EXPECT_EQ(gga.height->value, 545.4);
    EXPECT_EQ(gga.undulation->text, "46.9");

    const Message south =
        messageOf("GNGGA,000000,0000.60000000001,S,17959.99999999999,W,4,,,,,,,,");
    EXPECT_DOUBLE_EQ(*south.latitude, -0.60000000001 / 60);
    EXPECT_DOUBLE_EQ(*south.longitude, -(179 + 59.99999999999 / 60));
    EXPECT_FALSE(south.height || south.undulation || south.hdop || south.satellites);
    EXPECT_DOUBLE_EQ(*messageOf("GPGGA,,9000,N,18000.0,W,1,,,,,,,,").latitude, 90);
    // Without the zeros in front, as some write them.
    EXPECT_DOUBLE_EQ(*messageOf("GPGGA,,807.5,N,5.25,W,1,,,,,,,,").latitude, 8.125);
    EXPECT_DOUBLE_EQ(*messageOf("GPGGA,,807.5,N,5.25,W,1,,,,,,,,").longitude, -0.0875);
}

TEST(NmeaMessage, NumbersKeepTheirDigitsInTheFormOfJson)
{
    const std::pair<const char *, const char *> rows[] = {
        {"39.80", "39.80"}, {"-0034.10", "-34.10"}, {".5", "0.5"},    {"7.", "7"},
        {"+5.0", "5.0"},    {"000", "0"},           {"-.25", "-0.25"}};
    for (const auto &[typed, kept] : rows) {
        const Message gga =
            messageOf(QByteArray("GPGGA,,4807,N,01131,E,1,08,0.9,1,M,") + typed + ",M,,");
        EXPECT_EQ(gga.undulation->text, kept);
    }
}

TEST(NmeaMessage, TheModesOfGnsAreAQualityOfGga)
{
    const std::pair<const char *, int> rows[] = {
        {"RR", 4}, {"RN", 4},  {"NNNN", 0}, {"RF", 5}, {"FD", 2},    {"AN", 1},
        {"DA", 1}, {"PPP", 3}, {"RE", 6},   {"MA", 7}, {"RRRRS", 8},
    };
    for (const auto &[modes, quality] : rows) {
        const Message gns = messageOf(QByteArray("GNGNS,014035.00,4332.69262,S,17235.48549,E,")
                                      + modes + ",13,0.9,25.63,11.24,,");
        EXPECT_EQ(gns.quality, quality) << modes;
    }
}

TEST(NmeaMessage, RmcIsVoidByItsStatusOrItsMode)
{
    EXPECT_FALSE(messageOf("GPRMC,123519,A,4807.038,N,01131.000,E,,,230394,,").isVoid);
    EXPECT_FALSE(messageOf("GPRMC,123519,A,4807.038,N,01131.000,E,,,230394,,,R,V").isVoid);
    EXPECT_TRUE(messageOf("GPRMC,123519,V,4807.038,N,01131.000,E,,,230394,,").isVoid);
    EXPECT_TRUE(messageOf("GPRMC,123519,,4807.038,N,01131.000,E,,,230394,,").isVoid);
    EXPECT_TRUE(messageOf("GPRMC,123519,A,4807.038,N,01131.000,E,,,230394,,,N").isVoid);
}

struct Found
{
    std::vector<std::string> texts;
    std::vector<qint64> lines;
    qint64 otherLines = 0;
};

Found found(const std::string &bytes, std::size_t piece)
{
    Found all;
    nmea::SentenceScanner scanner([&all](std::string_view text, qint64 line) {
        all.texts.emplace_back(text);
        all.lines.push_back(line);
    });
    for (std::size_t i = 0; i < bytes.size(); i += piece)
        scanner.feed(std::string_view(bytes).substr(i, piece));
    scanner.finish();
    all.otherLines = scanner.otherLines();
    return all;
}

TEST(NmeaScanner, FindsSentencesHoweverTheyCome)
{
    const std::string bytes = "ZDA,201530.00*60\r\n"               // 1: joined in the middle
                              "$GPGGA,1*00\r\n"                    // 2
                              "\r\n"                               // 3
                              "\\s:a,c:1577*55\\$GPGGA,2*00\n"     // 4: a block in front
                              "$GPGGA,3$GPGGA,4*00\n"              // 5: one is cut
                              "!AIVDM,1*00\n"                      // 6
                              "what! $GPGGA,5*00\r$GPGGA,6*00\r\n" // 7
                              "{\"class\":\"VERSION\"}\n"          // 8
                              "  \t\n"                             // 9
                              "\xB5\x62\x01\x02$GPGGA,7*00";       // 10: behind binary bytes
    for (const std::size_t piece : {std::size_t(1), std::size_t(2), std::size_t(7), bytes.size()}) {
        SCOPED_TRACE(piece);
        const Found all = found(bytes, piece);
        EXPECT_EQ(all.texts, (std::vector<std::string>{"$GPGGA,1*00", "$GPGGA,2*00", "$GPGGA,3",
                                                       "$GPGGA,4*00", "!AIVDM,1*00", "$GPGGA,5*00",
                                                       "$GPGGA,6*00", "$GPGGA,7*00"}));
        EXPECT_EQ(all.lines, (std::vector<qint64>{2, 4, 5, 5, 6, 7, 7, 10}));
        EXPECT_EQ(all.otherLines, 2);
    }
}

TEST(NmeaScanner, ALineWithoutAnEndIsNotKept)
{
    const Found all = found("$GPGGA," + std::string(10000000, '1'), 65536);
    ASSERT_EQ(all.texts.size(), 1U);
    EXPECT_EQ(all.texts.front().size(), nmea::maxSentenceBytes + 1U);
    EXPECT_EQ(found(std::string(10000000, 'x'), 65536).otherLines, 1);
    EXPECT_TRUE(found("", 1).texts.empty());
}

} // namespace
} // namespace KelStd
