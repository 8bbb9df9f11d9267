// The PROJ context that a builder has of its own, by a stand-in and by PROJ.

#include "proj/FakeProjHome.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <ostream>
#include <set>
#include <utility>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;

Coord someSystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    return coord;
}

/// A stand-in with everything that PROJ has.
class BuilderContext : public testing::Test
{
protected:
    void SetUp() override
    {
        test::writeFile(home.path("proj/share/proj.db"), "a database");
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    test::FakeProjHome home{test::fakeProjBytes(QStringLiteral("whole"))};
};

TEST_F(BuilderContext, IsOneOfItsOwnWithPathsOfItsOwn)
{
    home.fake().calls.clear();
    home.fake().searchPaths.clear();
    LocationBuilder builder(someSystem());
    builder.requireDefinitions();
    Location location;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, Pos(), location));

    const std::vector<std::string> resources{home.path("proj/share").toStdString()};
    const std::vector<std::string> database{home.path("proj/share/proj.db").toStdString()};
    EXPECT_EQ(home.fake().searchPaths, std::vector<std::vector<std::string>>{resources});
    EXPECT_EQ(home.fake().databases, database);

    std::set<const PJ_CONTEXT *> contexts;
    for (const auto &call : home.fake().calls) {
        if (call.function == "proj_create_crs_to_crs" || call.function.find("proj_context_set") == 0
            || call.function == "proj_log_func")
            contexts.insert(call.context);
    }
    EXPECT_EQ(contexts.size(), 1U);
    EXPECT_EQ(contexts.count(nullptr), 0U);
    EXPECT_EQ(home.fake().count("proj_create_crs_to_crs"), 3);
}

/// The default context may be in use on another thread while it would be copied.
TEST_F(BuilderContext, IsNoCopyOfTheDefaultOne)
{
    home.fake().calls.clear();
    LocationBuilder builder(someSystem());
    Location location;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, Pos(), location));
    EXPECT_EQ(home.fake().count("proj_context_create"), 0);
    ASSERT_EQ(home.fake().count("proj_context_clone"), 1);
    for (const auto &call : home.fake().calls) {
        if (call.function == "proj_context_clone") {
            EXPECT_NE(call.context, nullptr);
        }
    }
}

TEST_F(BuilderContext, LeavesTheCurrentDirectoryAlone)
{
    home.fake().calls.clear();
    LocationBuilder builder(someSystem());
    Location location;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, Pos(), location));
    ASSERT_FALSE(home.fake().calls.empty());
    const QString current = QDir::current().canonicalPath();
    for (const auto &call : home.fake().calls)
        EXPECT_EQ(QString::fromStdString(call.directory), current) << call.function;
}

/// While another thread converts in the private directory.
TEST_F(BuilderContext, WaitsForNoConversion)
{
    test::FakeProj &fake = home.fake();
    std::future<bool> building; // outlives the wait where it is in vain
    bool isMade = false;
    bool isFirst = true;
    fake.duringTransformation = [&] {
        if (!std::exchange(isFirst, false))
            return; // the builder's
        building = std::async(std::launch::async, [] {
            LocationBuilder builder(someSystem());
            Location location;
            return builder.make(Frame::Wgs84Geographic, Pos(), location);
        });
        constexpr std::chrono::seconds patience(10);
        isMade = building.wait_for(patience) == std::future_status::ready && building.get();
    };
    Pos pos;
    EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, ProjLib::WGS84LatLongH_to_WGS84XYZ));
    EXPECT_TRUE(isMade);
}

// --- Grids by relative names ---------------------------------------------------------------------

/// A system whose heights pass through a grid: in both of its definitions.
Coord systemWithGrid(const QString &grid)
{
    Coord coord = someSystem();
    coord.ellipsoid.proj4EllpsName = QStringLiteral("WGS84 +vunits=m +geoidgrids=\"%1\"").arg(grid);
    return coord;
}

struct GridRow
{
    const char *name;
    QString grid; ///< %1 is the home
    double separation;

    friend void PrintTo(const GridRow &row, std::ostream *out) { *out << row.name; }
};

/// PROJ in a home whose path a definition could not hold as it stands.
class BuilderGrid : public testing::TestWithParam<GridRow>
{
protected:
    void SetUp() override
    {
        home = m_parent.path(QStringLiteral("a home, of \"mine\""));
        ASSERT_TRUE(QDir().mkpath(home + "/proj/share"));
        const QString staged = QStringLiteral(KELSTD_TEST_STAGED_PROJ);
        for (const QString &name :
             {QStringLiteral("/" KELSTD_PROJ_LIBRARY_NAME), QStringLiteral("/share/proj.db"),
              QStringLiteral("/share/proj.ini")})
            ASSERT_TRUE(QFile::link(staged + name, home + "/proj" + name));
        test::writeFile(home + "/proj/proj_enviroment", test::markerBytes(3));
        AppConfig::setHomeDir(QDir(home));
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    void writeGrid(const QString &path, float separation) const
    {
        test::Grid grid = test::slopingGrid(); // 50 to 54 N, 3 to 7 E
        for (float &value : grid.values)
            value = separation;
        test::writeFile(path, test::gtxBytes(grid));
    }

    QString home;

private:
    test::TemporaryHome m_parent;
};

TEST_P(BuilderGrid, IsFoundWhereTheSinglePositionOperationsFindIt)
{
    writeGrid(home + "/proj/here.gtx", 10.0F);
    writeGrid(home + "/proj/deeper/there.gtx", 20.0F);
    writeGrid(home + "/geoid_model_list/above.gtx", 30.0F);
    writeGrid(home + "/proj/share/resource.gtx", 40.0F);
    // A file of that name in the caller's directory is another one.
    const QString before = QDir::currentPath();
    writeGrid(home + "/elsewhere/here.gtx", 99.0F);
    ASSERT_TRUE(QDir::setCurrent(home + "/elsewhere"));

    const Coord coord = systemWithGrid(GetParam().grid.arg(home));
    const Pos start = Pos::fromLongLatH(5.0, 52.0, 100.0);
    Location expected;
    Location made;
    QString expectedError;
    QString error;
    const bool isExpected =
        Coord::MakeLocation_byWGS84LatLongH(start, expected, nullptr, &coord, &expectedError);
    LocationBuilder builder(coord);
    EXPECT_EQ(builder.make(Frame::Wgs84Geographic, start, made, &error), isExpected);
    ASSERT_TRUE(QDir::setCurrent(before));

    EXPECT_TRUE(isExpected) << expectedError;
    EXPECT_EQ(error, expectedError);
    EXPECT_TRUE(made == expected);
    EXPECT_NEAR(made.get_NEH_H(), 100.0 - GetParam().separation, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Names, BuilderGrid,
                         testing::Values(GridRow{"InThePrivateDirectory", "./here.gtx", 10.0},
                                         GridRow{"BelowIt", "./deeper/there.gtx", 20.0},
                                         GridRow{"BesideIt", "../geoid_model_list/above.gtx", 30.0},
                                         GridRow{"AmongTheResources", "resource.gtx", 40.0},
                                         GridRow{"Optional", "@./here.gtx", 10.0},
                                         GridRow{"SecondOfAList", "@./missing.gtx,./here.gtx",
                                                 10.0}),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
} // namespace KelStd
