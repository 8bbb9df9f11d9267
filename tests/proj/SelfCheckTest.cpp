#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <cmath>

namespace KelStd {
namespace {

class SelfCheck : public test::FakeProjTest
{
protected:
    void SetUp() override
    {
        FakeProjTest::SetUp();
        fake().calls.clear();
    }
};

TEST_F(SelfCheck, ConvertsOneFixedPointToMercator)
{
    const test::LogCapture log;
    ProjLib::test();
    const std::vector<std::string> definitions{
        "+proj=longlat +datum=WGS84 ",
        "+proj=merc +a=6378137 +b=6378137 +lat_ts=0.0 +lon_0=0.0 +x_0=0.0 +y_0=0 +k=1.0 +units=m"};
    EXPECT_EQ(fake().definitions, definitions);
    ASSERT_EQ(fake().directions.size(), 1U);
    EXPECT_EQ(fake().directions[0], PJ_FWD);
    EXPECT_TRUE(log.entries().isEmpty());
    for (const test::FakeProj::Call &call : fake().calls)
        EXPECT_EQ(call.context, nullptr) << call.function;

    // The same point every time.
    ProjLib::test();
    ASSERT_EQ(fake().positions.size(), 2U);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(fake().positions[0].v[i], fake().positions[1].v[i]);
}

TEST_F(SelfCheck, AsksForTheWholeEarth)
{
    ProjLib::test();
    const std::vector<double> wholeEarth{-180.0, -90.0, 180.0, 90.0};
    EXPECT_EQ(fake().box, wholeEarth);
    ASSERT_EQ(fake().areas.size(), 1U);
    EXPECT_NE(fake().areas[0], nullptr);
}

TEST_F(SelfCheck, DestroysWhatItCreates)
{
    ProjLib::test();
    EXPECT_EQ(fake().count("proj_create_crs_to_crs"), 1);
    EXPECT_EQ(fake().count("proj_destroy"), 1);
    EXPECT_EQ(fake().livingObjects, 0);
    EXPECT_EQ(fake().count("proj_area_destroy"), fake().count("proj_area_create"));
}

TEST_F(SelfCheck, WithoutATransformationConvertsNothing)
{
    fake().refusesDefinitions = true;
    ProjLib::test();
    EXPECT_EQ(fake().count("proj_trans"), 0);
    EXPECT_EQ(fake().count("proj_destroy"), 0);
}

TEST_F(SelfCheck, FetchesTheTextOfAFailureOnly)
{
    struct Row
    {
        PJ_COORD result;
        bool failure;
    };
    const Row rows[] = {
        {{{1.0, 2.0, 3.0, 4.0}}, false},         {{{1e30, 0.0, 0.0, 0.0}}, true},
        {{{0.0, HUGE_VAL, 0.0, 0.0}}, true},     {{{0.0, 0.0, -HUGE_VAL, 0.0}}, true},
        {{{0.0, std::nan(""), 0.0, 0.0}}, true}, {{{0.0, 0.0, 0.0, HUGE_VAL}}, false},
    };
    fake().errorNumber = 2050;
    fake().errorText = "text";
    int failures = 0;
    for (const Row &row : rows) {
        failures += row.failure ? 1 : 0;
        fake().results = {row.result};
        ProjLib::test();
        EXPECT_EQ(fake().count("proj_errno"), failures);
        EXPECT_EQ(fake().explainedNumbers,
                  std::vector<int>(static_cast<std::size_t>(failures), 2050));
    }
}

TEST(SelfCheckOfALibrary, WithoutAreaFunctionsEndsQuietly)
{
    const test::FakeProjHome home(test::fakeProjBytes(QStringLiteral("without_area_functions")));
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    ProjLib::test();
    EXPECT_EQ(home.fake().livingObjects, 0);
    EXPECT_FALSE(test::projIsMissing());
    ProjLib::___unloadEnviroment();
}

using SelfCheckOfProj = test::ProjTest;

TEST_F(SelfCheckOfProj, LeavesTheLibraryUsable)
{
    ProjLib::test();
    Pos pos = Pos::fromLongLatH(3.0, 0.0, 0.0);
    ASSERT_TRUE(ProjLib::ConvertPosList("+proj=longlat +datum=WGS84",
                                        "+proj=utm +zone=31 +datum=WGS84", pos,
                                        ProjLib::LocalLatLongH_to_LocalNEH));
    EXPECT_NEAR(pos.getENU().e, 500000.0, 1e-6); // a micrometre: the arithmetic's last bits
}

} // namespace
} // namespace KelStd
