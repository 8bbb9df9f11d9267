#include "proj/FakeProjHome.h"
#include "proj/ProjPrograms.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <string>

namespace KelStd {
namespace {

const ProjLib::EConvertType allTypes[] = {
    ProjLib::WGS84LatLongH_to_WGS84XYZ, ProjLib::WGS84XYZ_to_WGS84LatLongH,
    ProjLib::WGS84XYZ_to_LocalLatLongH, ProjLib::LocalLatLongH_to_WGS84XYZ,
    ProjLib::LocalLatLongH_to_LocalNEH, ProjLib::LocalNEH_to_LocalLatLongH,
};

TEST(ConvertType, HasItsNumbers)
{
    for (int number = 0; number < 6; ++number)
        EXPECT_EQ(allTypes[number], number);
}

// --- What PROJ is asked, by its stand-in
// ----------------------------------------------------------

using Conversion = test::FakeProjTest;

TEST_F(Conversion, HandsDefinitionsAndComponentsToProjAsTheyStand)
{
    Pos pos = Pos::fromXYZ(10.5, -20.25, 1e-300);
    QString error = "before";
    ASSERT_TRUE(ProjLib::ConvertPosList(QStringLiteral(u" +from=é "), "+to", pos,
                                        ProjLib::LocalLatLongH_to_LocalNEH, &error));
    const std::vector<std::string> definitions{" +from=\xC3\xA9 ", "+to"};
    EXPECT_EQ(fake().definitions, definitions);
    ASSERT_EQ(fake().positions.size(), 1U);
    EXPECT_EQ(fake().positions[0].v[0], 10.5);
    EXPECT_EQ(fake().positions[0].v[1], -20.25);
    EXPECT_EQ(fake().positions[0].v[2], 1e-300);
    EXPECT_EQ(fake().positions[0].v[3], 0.0);
    EXPECT_EQ(fake().directions, std::vector<PJ_DIRECTION>{PJ_FWD});
    EXPECT_EQ(fake().areas, std::vector<const PJ_AREA *>{nullptr});
    for (const test::FakeProj::Call &call : fake().calls)
        EXPECT_EQ(call.context, nullptr) << call.function;
    EXPECT_EQ(error, "before");
}

TEST_F(Conversion, CreatesOneTransformationForTheWholeList)
{
    QList<Pos> list;
    for (int i = 0; i < 1000; ++i)
        list << Pos::fromXYZ(i, 2.0 * i, 3.0 * i);
    fake().calls.clear();
    ASSERT_TRUE(ProjLib::ConvertPosList("a", "b", list, ProjLib::LocalLatLongH_to_LocalNEH));
    EXPECT_EQ(fake().count("proj_create_crs_to_crs"), 1);
    EXPECT_EQ(fake().count("proj_trans"), 1000);
    EXPECT_EQ(fake().count("proj_destroy"), 1);
    EXPECT_EQ(fake().calls.size(), 1002U);
    EXPECT_EQ(fake().livingObjects, 0);
    // In the list's order: the stand-in adds 1, 2 and 3.
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(list[i], Pos::fromXYZ(i + 1.0, 2.0 * i + 2.0, 3.0 * i + 3.0));
}

TEST_F(Conversion, TypeSelectsTheViewAndNotTheArithmetic)
{
    for (const ProjLib::EConvertType type : allTypes) {
        SCOPED_TRACE(type);
        Pos pos = Pos::fromXYZ(10.0, 20.0, 30.0);
        EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, type));
        EXPECT_EQ(pos, Pos::fromXYZ(11.0, 22.0, 33.0));
        QList<Pos> list{Pos::fromXYZ(10.0, 20.0, 30.0)};
        EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", list, type));
        EXPECT_EQ(list.first(), Pos::fromXYZ(11.0, 22.0, 33.0));
    }
}

TEST_F(Conversion, UnknownTypeLeavesPositionsUnreadAndUnwritten)
{
    for (const int number : {-1, 6, 7, 100, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(number);
        const auto type = static_cast<ProjLib::EConvertType>(number);
        QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0), Pos::fromXYZ(4.0, 5.0, 6.0)};
        const QList<Pos> before = list;
        EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", list, type));
        EXPECT_EQ(list, before);
        Pos pos = Pos::fromXYZ(std::nan(""), HUGE_VAL, 1e30);
        EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, type));
        EXPECT_TRUE(std::isnan(pos.getXYZ().x));
        EXPECT_EQ(pos.getXYZ().y, HUGE_VAL);
        EXPECT_EQ(pos.getXYZ().z, 1e30);
    }
    // Definitions are still checked.
    const test::LogCapture log;
    fake().refusesDefinitions = true;
    Pos pos;
    QString error;
    EXPECT_FALSE(
        ProjLib::ConvertPosList("a", "b", pos, static_cast<ProjLib::EConvertType>(6), &error));
    EXPECT_EQ(error, "Error format.");
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST_F(Conversion, LeavesCopiesOfTheListAlone)
{
    QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0)};
    const QList<Pos> copy = list;
    ASSERT_TRUE(ProjLib::ConvertPosList("a", "b", list, ProjLib::LocalLatLongH_to_LocalNEH));
    EXPECT_EQ(copy.first(), Pos::fromXYZ(1.0, 2.0, 3.0));
    EXPECT_EQ(list.first(), Pos::fromXYZ(2.0, 4.0, 6.0));
}

TEST_F(Conversion, OfAnEmptyListStillCreatesTheTransformation)
{
    QList<Pos> list;
    EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", list, ProjLib::LocalLatLongH_to_LocalNEH));
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(fake().count("proj_create_crs_to_crs"), 1);
    EXPECT_EQ(fake().count("proj_destroy"), 1);
}

// --- What comes out of PROJ ----------------------------------------------------------------------

using ConversionInProj = test::ProjTest;

TEST_F(ConversionInProj, EmptyListDependsOnTheDefinitionsAlone)
{
    const test::LogCapture log;
    QList<Pos> list;
    QString error;
    EXPECT_TRUE(ProjLib::ConvertPosList("+proj=longlat +datum=WGS84",
                                        "+proj=utm +zone=32 +datum=WGS84", list,
                                        ProjLib::LocalLatLongH_to_LocalNEH, &error));
    EXPECT_EQ(error, "");
    EXPECT_FALSE(ProjLib::ConvertPosList("+proj=longlat +datum=WGS84", "+proj=nonsense", list,
                                         ProjLib::LocalLatLongH_to_LocalNEH, &error));
    EXPECT_EQ(error, "Error format.");
}

const char *const wgs84LatLong = "+proj=longlat +datum=WGS84 +axis=enu";
const char *const wgs84XYZ = "+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m";

struct Pair
{
    std::string name;
    const char *from;
    const char *to;
};

void PrintTo(const Pair &pair, std::ostream *out)
{
    *out << pair.name;
}

/// Geographic definitions in the middle of Germany, and what they are converted to.
class AgainstCs2cs : public test::ProjTest, public testing::WithParamInterface<Pair>
{};

TEST_P(AgainstCs2cs, AgreesBothWays)
{
    std::mt19937 random(42);
    std::uniform_real_distribution<double> longitude(8.0, 11.0);
    std::uniform_real_distribution<double> latitude(47.0, 54.0);
    std::uniform_real_distribution<double> height(-100.0, 3000.0);
    QList<Pos> positions;
    for (int i = 0; i < 100; ++i)
        positions << Pos::fromLongLatH(longitude(random), latitude(random), height(random));

    // Both read the same doubles and compute with the same library; cs2cs prints 12 decimals, and
    // the doubles beside 6,000,000 m are 1e-9 apart.
    constexpr double tolerance = 2e-9;
    QList<Pos> list = positions;
    QString error;
    ASSERT_TRUE(ProjLib::ConvertPosList(GetParam().from, GetParam().to, list,
                                        ProjLib::LocalLatLongH_to_LocalNEH, &error))
        << error;
    test::expectNear(list, test::runCs2cs(GetParam().from, GetParam().to, positions), tolerance);

    QList<Pos> back = list;
    ASSERT_TRUE(ProjLib::ConvertPosList(GetParam().to, GetParam().from, back,
                                        ProjLib::LocalNEH_to_LocalLatLongH, &error))
        << error;
    test::expectNear(back, test::runCs2cs(GetParam().to, GetParam().from, list), tolerance);

    for (int i = 0; i < positions.size(); ++i) {
        Pos one = positions[i];
        ASSERT_TRUE(ProjLib::ConvertPosList(GetParam().from, GetParam().to, one,
                                            ProjLib::LocalLatLongH_to_LocalNEH));
        EXPECT_EQ(one, list[i]); // one by one is the same as all at once
    }
}

INSTANTIATE_TEST_SUITE_P(
    Definitions, AgainstCs2cs,
    testing::Values(
        Pair{"GeographicToCartesian", wgs84LatLong, wgs84XYZ},
        Pair{"DatumShift",
             "+proj=longlat +ellps=bessel +axis=enu "
             "+towgs84=598.1,73.7,418.2,0.202,0.045,-2.455,6.7 +units=m",
             wgs84XYZ},
        Pair{"TransverseMercator", "+proj=longlat +ellps=bessel +axis=enu +towgs84=0,0,0 +units=m",
             "+proj=tmerc +lat_0=0 +lon_0=9 +k_0=1 +x_0=3500000 +ellps=bessel +axis=enu "
             "+towgs84=0,0,0 +units=m"},
        Pair{"Utm", wgs84LatLong, "+proj=utm +zone=32 +datum=WGS84 +units=m"},
        Pair{"LambertConic", wgs84LatLong,
             "+proj=lcc +lat_1=48.5 +lat_2=53.5 +lat_0=51 +lon_0=10 +ellps=GRS80 +axis=enu "
             "+towgs84=0,0,0 +units=m"},
        Pair{"Feet", wgs84LatLong, "+proj=utm +zone=32 +datum=WGS84 +units=us-ft"},
        Pair{"WestSouth", wgs84LatLong, "+proj=tmerc +lon_0=9 +datum=WGS84 +axis=wsu +units=m"},
        Pair{"EastSouth", wgs84LatLong, "+proj=tmerc +lon_0=9 +datum=WGS84 +axis=esu +units=m"},
        Pair{"WestNorth", wgs84LatLong, "+proj=tmerc +lon_0=9 +datum=WGS84 +axis=wnu +units=m"}),
    [](const auto &row) { return row.param.name; });

TEST_F(ConversionInProj, AgreesWithCctOnABareProjection)
{
    const QString projection = "+proj=tmerc +lat_0=0 +lon_0=9 +k_0=0.9996 +x_0=500000 +ellps=GRS80";
    const QList<Pos> positions{Pos::fromLongLatH(9.0, 0.0, 0.0),
                               Pos::fromLongLatH(10.5, 51.5, 100.0),
                               Pos::fromLongLatH(6.25, -33.75, -20.0)};
    QList<Pos> list = positions;
    ASSERT_TRUE(ProjLib::ConvertPosList("+proj=longlat +ellps=GRS80", projection, list,
                                        ProjLib::LocalLatLongH_to_LocalNEH));
    test::expectNear(list, test::runCct(projection, positions), 2e-9); // as above
}

} // namespace
} // namespace KelStd
