// What PROJ says of its own accord: it is the host's log that hears it, not standard error.

#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Entry = test::LogCapture::Entry;
using testing::HasSubstr;

const QString module = QStringLiteral("proj");
constexpr auto type = ProjLib::LocalLatLongH_to_LocalNEH;

/// Everything that asks PROJ for a transformation, once.
struct Asking
{
    const char *name;
    void (*ask)();

    friend void PrintTo(const Asking &asking, std::ostream *out) { *out << asking.name; }
};

const Asking askings[] = {
    {"ConvertPosList",
     [] {
         Pos pos;
         ProjLib::ConvertPosList("a", "b", pos, type);
     }},
    {"GeoidSeparation",
     [] {
         double diff = 0.0;
         ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "./a.gtx", diff);
     }},
    {"GetProjectionString",
     [] {
         const Projection projection;
         QString out;
         ProjLib::GetProjectionString_proj4(&projection, nullptr, out);
     }},
    {"LocationBuilder",
     [] {
         Coord coord;
         Coord::CreateDefaultTMercCoordination(coord);
         LocationBuilder builder(coord);
         Location location;
         builder.make(LocationBuilder::Frame::LocalProjected, Pos(), location);
     }},
};

/// A stand-in that says something.
class SpokenMessage : public testing::TestWithParam<Asking>
{
protected:
    void SetUp() override { ASSERT_TRUE(ProjLib::___InitializeEnviroment()); }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    static std::string standardErrorOf(void (*ask)())
    {
        testing::internal::CaptureStderr();
        ask();
        return testing::internal::GetCapturedStderr();
    }

    test::FakeProjHome home{test::fakeProjBytes(QStringLiteral("whole"))};
};

TEST_P(SpokenMessage, OfARefusalIsLoggedAsAWarning)
{
    home.fake().messageOfCreation = "b\xC3\xB6se: unknown projection";
    home.fake().refusesDefinitions = true;
    const test::LogCapture log;
    EXPECT_EQ(standardErrorOf(GetParam().ask), "");
    const QList<Entry> entries = log.entriesOf(module);
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].text, QStringLiteral(u"böse: unknown projection"));
    EXPECT_EQ(entries[0].type, LogType_Warning);
    EXPECT_FALSE(entries[0].flag);
    EXPECT_EQ(log.entries().last().module, module); // behind what the operation itself has to say
}

TEST_P(SpokenMessage, OfASuccessIsLoggedToo)
{
    home.fake().messageOfCreation = "a note";
    home.fake().messageLevel = PJ_LOG_DEBUG;
    const test::LogCapture log;
    EXPECT_EQ(standardErrorOf(GetParam().ask), "");
    ASSERT_FALSE(log.entries().isEmpty());
    for (const Entry &entry : log.entries()) {
        EXPECT_EQ(entry.module, module);
        EXPECT_EQ(entry.text, "a note");
        EXPECT_EQ(entry.type, LogType_Message);
    }
}

TEST_P(SpokenMessage, OfAPositionIsNot)
{
    home.fake().messageOfPosition = "Invalid latitude";
    home.fake().results = {PJ_COORD{{HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL}}};
    const test::LogCapture log;
    EXPECT_EQ(standardErrorOf(GetParam().ask), "");
    EXPECT_TRUE(log.entriesOf(module).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Operations, SpokenMessage, testing::ValuesIn(askings),
                         [](const auto &row) { return std::string(row.param.name); });

// --- PROJ itself ---------------------------------------------------------------------------------

using ProjsMessage = test::ProjTest;

const char *const geographic = "+proj=longlat +datum=WGS84 +axis=enu";
const char *const plane = "+proj=tmerc +lon_0=9 +ellps=bessel";

TEST_F(ProjsMessage, TellsWhyADefinitionIsRefused)
{
    const test::LogCapture log;
    testing::internal::CaptureStderr();
    Pos pos;
    EXPECT_FALSE(ProjLib::ConvertPosList(geographic, "+proj=nosuch +ellps=bessel", pos, type));
    double diff = 0.0;
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "/no/such/grid.gtx", diff));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    const QList<Entry> entries = log.entriesOf(module);
    ASSERT_GE(entries.size(), 2);
    // PROJ 9.1's words
    EXPECT_THAT(entries.first().text.toStdString(), HasSubstr("Unknown projection"));
    EXPECT_THAT(entries.last().text.toStdString(), HasSubstr("could not find required grid"));
}

TEST_F(ProjsMessage, IsNoLineForEachRefusedPosition)
{
    constexpr int count = 10'000;
    const test::LogCapture log;
    testing::internal::CaptureStderr();
    for (int i = 0; i < 20; ++i) {
        Pos pos = Pos::fromLongLatH(9.0, 91.0, 0.0);
        EXPECT_FALSE(ProjLib::ConvertPosList(geographic, plane, pos, type));
    }
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    LocationBuilder builder(coord);
    const std::vector<Pos> positions(count, Pos::fromLongLatH(9.0, 91.0, 0.0));
    std::vector<Location> locations(count);
    EXPECT_EQ(builder.make(LocationBuilder::Frame::LocalGeographic, positions.data(), count,
                           locations.data()),
              0U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(log.entries().isEmpty());
}

} // namespace
} // namespace KelStd
