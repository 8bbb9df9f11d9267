// The examples in comments of public headers that need no PROJ, as they stand there.

#include "support/Printers.h"

#include <KelStd/KelStd.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(CommentValues, OfPositionsAndAreas)
{
    EXPECT_TRUE(Pos::fromXYZ(1, 2, 3).getLongLatH().latitude == 2);
    AreaOfUse fiji{176.81, -20.81, -178.15, -12.42};
    const bool isIn = fiji.contains(179.5, -17.0) && fiji.contains(-179.5, -17.0); // true
    EXPECT_TRUE(isIn);
}

TEST(CommentValues, OfTimes)
{
    EXPECT_TRUE(Epoch::read("2303:390914", TimeScale::GpsW, 0)->utc.toString()
                == "2024-02-29 12:34:56");
    EXPECT_TRUE(TimeGpsT(2017, 1, 1, 0, 0, 18, 0).toUtc() == TimeUtc(2017, 1, 1, 0, 0, 0, 0));
    EXPECT_TRUE(TimeGpsW(2300, 345600).toString() == "2300week 345600sec");
    EXPECT_TRUE(TimeLocal(TimeUtc(2024, 1, 1, 0, 0, 0, 0), 28800).toString()
                == "2024-01-01 08:00:00");
    EXPECT_TRUE(TimeSpan(90061001).toString() == "1 day 1 hour 1 minute 1 sec ");
    EXPECT_TRUE(TimeSpan::toTimeSpanString(3723004) == "01:02:03.004");
    EXPECT_TRUE(TimeUtc(2024, 2, 28, 12, 0, 0, 0) + 86400000 == TimeUtc(2024, 2, 29, 12, 0, 0, 0));
}

TEST(CommentValues, OfALeapSecondList)
{
    const QByteArray bytes = "2272060800 10\n";
    QList<LeapSecondDifference> differences;
    LeapSecondListFailure failure;
    if (const auto list = LeapSecondList::parse(bytes, &failure))
        differences = leapSecondDifferences(leapSecondTable(), list->rows);
    EXPECT_FALSE(failure) << failure.text;
    EXPECT_FALSE(differences.isEmpty());
}

TEST(CommentValues, OfWordsAndNames)
{
    const QStringList systems = {"Amersfoort / RD New", "WGS 84 / UTM zone 32N",
                                 "WGS 84 / UTM zone 32S"};
    nearNames("WGS84 / utm 32n", systems); // {"WGS 84 / UTM zone 32N", ...}
    nearNames("Amersfort", systems);       // {"Amersfoort / RD New"}
    hintAt({"dms", "degree"});             // "did you mean dms or degree?"
    EXPECT_EQ(nearNames("WGS84 / utm 32n", systems).value(0), systems.at(1));
    EXPECT_EQ(nearNames("Amersfort", systems), QStringList(systems.at(0)));
    EXPECT_EQ(hintAt({"dms", "degree"}), QStringLiteral("did you mean dms or degree?"));
    using namespace library;
    RecordFilter filter({"utm", "31N"});
    const bool isMet = filter.matches(RecordKind::Standard, "WGS 84 / UTM zone 31N"); // true
    EXPECT_TRUE(isMet);
}

TEST(CommentValues, OfADisplayConfiguration)
{
    const Param longitude(ValueType_Longitude, Unit_Degree, 116.5);
    stShowConfig config;
    config.getParamValueString(longitude, -1); // of 116.5 degrees: "116°30′00.000000″E"
    EXPECT_EQ(config.getParamValueString(longitude, -1),
              QString::fromUtf16(u"116\u00b030\u203200.000000\u2033E"));
}

TEST(CommentEpochs, AreCombined)
{
    using namespace nmea;
    QList<std::string_view> input = {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,",
                                     "M,,*47\r\n"};
    std::string_view bytes;
    const auto read = [&input](std::string_view &next) {
        if (input.isEmpty())
            return false;
        next = input.takeFirst();
        return true;
    };
    int epochs = 0;
    const auto use = [&epochs](const ReceiverEpoch &) { ++epochs; };
    EpochCombiner combiner;
    while (read(bytes)) {
        combiner.feed(bytes);
        while (auto epoch = combiner.next())
            use(*epoch);
    }
    combiner.finish();
    while (auto epoch = combiner.next())
        use(*epoch);
    EXPECT_EQ(epochs, 1);
}

} // namespace
} // namespace KelStd
