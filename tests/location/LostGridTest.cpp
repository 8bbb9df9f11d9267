// Grids that a builder finds gone, or cannot open for a while: PROJ opens one that it knows already
// only with the first position, and passes the next ones through as they are where that fails.

#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"
#include "support/TemporaryHome.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <ostream>

#include <sys/resource.h>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;

const Pos place = Pos::fromLongLatH(6.0, 51.0, 100.0);

struct Row
{
    const char *name;
    const char *file;
    QByteArray (*grid)();
    void (*use)(Coord &coord, const QString &file);

    friend void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }
};

QByteArray slope()
{
    return test::gtxBytes(test::slopingGrid()); // 50 to 54 N, 3 to 7 E
}

QByteArray shifts()
{
    return test::ntv2Bytes();
}

const Row rows[] = {
    {"Shift", "a.gsb", &shifts,
     [](Coord &coord, const QString &file) {
         coord.ellipsoid.proj4EllpsName = QStringLiteral("bessel +nadgrids=") + file;
     }},
    {"Heights", "a.gtx", &slope,
     [](Coord &coord, const QString &file) {
         coord.ellipsoid.proj4EllpsName =
             QStringLiteral("WGS84 +vunits=m +geoidgrids=\"%1\"").arg(file);
     }},
    {"Model", "a.gtx", &slope,
     [](Coord &coord, const QString &file) { coord.geoidModel.modelFileName = file; }},
};

/// With the two frames that positions are measured or staked out in.
class LostGrid : public testing::TestWithParam<Row>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(home.path()).mkpath("geoid_model_list"));
        Coord::CreateDefaultTMercCoordination(coord);
        GetParam().use(coord, isModel() ? QLatin1String(GetParam().file) : file());
        putBack();
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        // From here on PROJ knows the grid.
        LocationBuilder builder(coord);
        QString error;
        ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, place, whole, &error));
        ASSERT_EQ(error, "");
    }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    /// Without its model, a position is above the ellipsoid.
    static bool isModel() { return GetParam().name == QByteArray("Model"); }

    QString file() const
    {
        return home.path(QStringLiteral("geoid_model_list/") + QLatin1String(GetParam().file));
    }
    void putBack() const { test::writeFile(file(), GetParam().grid()); }
    void remove() const { ASSERT_TRUE(QFile::remove(file())); }

    Pos startIn(Frame frame) const
    {
        Pos start = place;
        if (frame == Frame::LocalProjected)
            start.setENU(whole.get_NEH_E(), whole.get_NEH_N(), whole.get_NEH_H());
        return start;
    }

    /// No position, or, where a model alone is missing, one above the ellipsoid with the reason.
    void expectLost(LocationBuilder &builder, Frame frame) const
    {
        for (int time = 0; time < 3; ++time) {
            SCOPED_TRACE(time);
            Location location;
            LocationBuilder::Outcome outcome;
            const Pos start = startIn(frame);
            builder.make(frame, &start, 1, &location, &outcome);
            EXPECT_NE(outcome.reason, "");
            EXPECT_EQ(outcome.isMade, isModel());
            if (outcome.isMade) {
                EXPECT_EQ(outcome.projectedHeight, LocationBuilder::Height::Ellipsoidal);
            }
        }
    }

    void expectWhole(LocationBuilder &builder, Frame frame) const
    {
        Location location;
        QString error;
        ASSERT_TRUE(builder.make(frame, startIn(frame), location, &error)) << error.toStdString();
        EXPECT_EQ(error, "");
        EXPECT_NEAR(location.get_NEH_N(), whole.get_NEH_N(), 1e-4);
        EXPECT_NEAR(location.get_NEH_E(), whole.get_NEH_E(), 1e-4);
        EXPECT_NEAR(location.get_NEH_H(), whole.get_NEH_H(), 1e-4);
        EXPECT_NEAR(location.get_WGS84_LLH_Long(), place.getLongLatH().longitude, 1e-9);
        EXPECT_NEAR(location.get_WGS84_LLH_Lat(), place.getLongLatH().latitude, 1e-9);
        EXPECT_NEAR(location.get_WGS84_LLH_Height(), place.getLongLatH().height, 1e-4);
    }

    const test::LogCapture log;
    test::TemporaryHome home{test::TemporaryHome::PreparedProj};
    Coord coord;
    Location whole;
};

TEST_P(LostGrid, FailsAtEveryPositionUntilItIsBack)
{
    for (const Frame frame : {Frame::Wgs84Geographic, Frame::LocalProjected}) {
        LocationBuilder builder(coord);
        remove();
        expectLost(builder, frame);
        putBack();
        expectWhole(builder, frame);
    }
}

/// The way back opens the grid by itself.
TEST_P(LostGrid, IsMissedInTheOtherDirectionOfABuilderThatHasUsedIt)
{
    LocationBuilder builder(coord);
    expectWhole(builder, Frame::Wgs84Geographic);
    remove();
    expectLost(builder, Frame::LocalProjected);
    expectWhole(builder, Frame::Wgs84Geographic); // has it open
    putBack();
    expectWhole(builder, Frame::LocalProjected);
}

/// A host that has as many files open as it may.
TEST_P(LostGrid, IsNotPassedOverForWantOfDescriptors)
{
    rlimit allowed = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &allowed), 0);
    rlimit none = allowed;
    none.rlim_cur = 1;
    for (const bool isInUse : {false, true}) {
        SCOPED_TRACE(isInUse);
        LocationBuilder builder(coord);
        if (isInUse)
            expectWhole(builder, Frame::Wgs84Geographic);
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
        expectLost(builder, Frame::LocalProjected);
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &allowed), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Grids, LostGrid, testing::ValuesIn(rows),
                         [](const auto &row) { return row.param.name; });

} // namespace
} // namespace KelStd
