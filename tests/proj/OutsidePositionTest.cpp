#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QLibrary>

#include <gtest/gtest.h>

#include <proj.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>

namespace KelStd {
namespace {

const char *const wgs84LatLong = "+proj=longlat +datum=WGS84 +axis=enu";
const char *const wgs84XYZ = "+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m";
const char *const localLatLong = "+proj=longlat +ellps=bessel +axis=enu "
                                 "+towgs84=598.1,73.7,418.2,0.202,0.045,-2.455,6.7 +units=m";
const char *const localProjected =
    "+proj=tmerc +lat_0=0 +lon_0=9 +k_0=1 +x_0=3500000 +ellps=bessel +axis=enu "
    "+towgs84=598.1,73.7,418.2,0.202,0.045,-2.455,6.7 +units=m";

bool sameBits(const Pos &a, const Pos &b)
{
    return std::memcmp(&a.getXYZ(), &b.getXYZ(), sizeof(stXYZ)) == 0;
}

bool isFinite(const Pos &pos)
{
    const stXYZ &p = pos.getXYZ();
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

struct Stage
{
    std::string name;
    const char *from;
    const char *to;
    ProjLib::EConvertType type;
    Pos good;
};

void PrintTo(const Stage &stage, std::ostream *out)
{
    *out << stage.name;
}

class OutsidePosition : public test::ProjTest, public testing::WithParamInterface<Stage>
{};

TEST_P(OutsidePosition, ThatIsNotFiniteFailsAndStays)
{
    const Stage &stage = GetParam();
    const test::LogCapture log;
    for (const double bad : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        for (int component = 0; component < 3; ++component) {
            SCOPED_TRACE(std::to_string(bad) + " in component " + std::to_string(component));
            double values[] = {stage.good.getXYZ().x, stage.good.getXYZ().y, stage.good.getXYZ().z};
            values[component] = bad;
            const Pos start = Pos::fromXYZ(values[0], values[1], values[2]);
            Pos pos = start;
            QString error;
            EXPECT_FALSE(ProjLib::ConvertPosList(stage.from, stage.to, pos, stage.type, &error));
            EXPECT_NE(error, "");
            EXPECT_TRUE(sameBits(pos, start));
        }
    }
    EXPECT_TRUE(log.entries().isEmpty()); // a failed position is not logged

    Pos pos = stage.good;
    EXPECT_TRUE(ProjLib::ConvertPosList(stage.from, stage.to, pos, stage.type));
}

/// Whatever PROJ makes of impossible positions: success is finite, failure leaves the position.
TEST_P(OutsidePosition, IsNeverReportedAsAnInfiniteSuccess)
{
    const Stage &stage = GetParam();
    const double extremes[] = {0.0,   -0.0,    90.0,     90.000001, -91.0, 180.0,
                               360.0, 1e4,     -1e9,     1e16,      1e30,  -1e30,
                               1e154, DBL_MAX, -DBL_MAX, DBL_MIN,   5e-324};
    int failures = 0;
    for (const double x : extremes) {
        for (const double y : extremes) {
            for (const double z : {0.0, 1e30, DBL_MAX}) {
                const Pos start = Pos::fromXYZ(x, y, z);
                SCOPED_TRACE(testing::PrintToString(start));
                Pos pos = start;
                QString error;
                if (ProjLib::ConvertPosList(stage.from, stage.to, pos, stage.type, &error)) {
                    EXPECT_TRUE(isFinite(pos)) << testing::PrintToString(pos);
                } else {
                    ++failures;
                    EXPECT_TRUE(sameBits(pos, start));
                    EXPECT_NE(error, "");
                }
            }
        }
    }
    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Stages, OutsidePosition,
    testing::Values(
        Stage{"GeographicToCartesian", wgs84LatLong, wgs84XYZ, ProjLib::WGS84LatLongH_to_WGS84XYZ,
              Pos::fromLongLatH(9.5, 48.5, 100.0)},
        Stage{"CartesianToGeographic", wgs84XYZ, wgs84LatLong, ProjLib::WGS84XYZ_to_WGS84LatLongH,
              Pos::fromXYZ(4000000.0, 700000.0, 4900000.0)},
        Stage{"CartesianToLocal", wgs84XYZ, localLatLong, ProjLib::WGS84XYZ_to_LocalLatLongH,
              Pos::fromXYZ(4000000.0, 700000.0, 4900000.0)},
        Stage{"LocalToCartesian", localLatLong, wgs84XYZ, ProjLib::LocalLatLongH_to_WGS84XYZ,
              Pos::fromLongLatH(9.5, 48.5, 100.0)},
        Stage{"LocalToProjected", localLatLong, localProjected, ProjLib::LocalLatLongH_to_LocalNEH,
              Pos::fromLongLatH(9.5, 48.5, 100.0)},
        Stage{"ProjectedToLocal", localProjected, localLatLong, ProjLib::LocalNEH_to_LocalLatLongH,
              Pos::fromENU(3536000.0, 5374000.0, 100.0)}),
    [](const auto &row) { return row.param.name; });

// --- PROJ's own words ----------------------------------------------------------------------------

/// The text of PROJ's error for one position, from PROJ itself without anything of ours between.
QString projsOwnText(const char *from, const char *to, const Pos &pos)
{
    QLibrary library(QStringLiteral(KELSTD_TEST_STAGED_PROJ "/" KELSTD_PROJ_LIBRARY_NAME));
    const auto function = [&library](const char *name) {
        const QFunctionPointer address = library.resolve(name);
        EXPECT_NE(address, nullptr) << name;
        return address;
    };
    const auto create =
        reinterpret_cast<decltype(&::proj_create_crs_to_crs)>(function("proj_create_crs_to_crs"));
    const auto transform = reinterpret_cast<decltype(&::proj_trans)>(function("proj_trans"));
    const auto number = reinterpret_cast<decltype(&::proj_errno)>(function("proj_errno"));
    const auto text =
        reinterpret_cast<decltype(&::proj_errno_string)>(function("proj_errno_string"));
    const auto destroy = reinterpret_cast<decltype(&::proj_destroy)>(function("proj_destroy"));

    const std::unique_ptr<PJ, decltype(destroy)> transformation(create(nullptr, from, to, nullptr),
                                                                destroy);
    EXPECT_NE(transformation, nullptr);
    const stXYZ &p = pos.getXYZ();
    const PJ_COORD result = transform(transformation.get(), PJ_FWD, PJ_COORD{{p.x, p.y, p.z, 0.0}});
    EXPECT_EQ(result.v[0], HUGE_VAL);
    EXPECT_NE(number(transformation.get()), 0);
    return QString::fromUtf8(text(number(transformation.get())));
}

using ProjsText = test::ProjTest;

TEST_F(ProjsText, IsHandedOnForALatitudeBeyondThePole)
{
    const Pos start = Pos::fromLongLatH(9.0, 91.0, 0.0);
    Pos pos = start;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(wgs84LatLong, wgs84XYZ, pos,
                                         ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    EXPECT_EQ(error, "Invalid coordinate"); // PROJ 9.1's words
    EXPECT_EQ(error, projsOwnText(wgs84LatLong, wgs84XYZ, start));
    EXPECT_TRUE(sameBits(pos, start));
}

TEST_F(ProjsText, IsHandedOnForAPointOutsideTheProjection)
{
    // A quarter of the globe from the central meridian, on the equator.
    const Pos start = Pos::fromLongLatH(99.0, 0.0, 0.0);
    QList<Pos> list{start};
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(localLatLong, localProjected, list,
                                         ProjLib::LocalLatLongH_to_LocalNEH, &error));
    EXPECT_EQ(error, "Point outside of projection domain");
    EXPECT_EQ(error, projsOwnText(localLatLong, localProjected, start));
    EXPECT_TRUE(sameBits(list.first(), start));
}

/// PROJ accepts the definition and then refuses every point: a system to be put right by its
/// author.
TEST_F(ProjsText, IsHandedOnForASouthOrientatedGridWithAFalseEasting)
{
    const char *const grid = "+proj=tmerc +lat_0=0 +lon_0=29 +k_0=1 +x_0=1000 +y_0=0 +ellps=WGS84 "
                             "+axis=wsu +towgs84=0,0,0 +units=m";
    const char *const geographic = "+proj=longlat +ellps=WGS84 +axis=enu +towgs84=0,0,0 +units=m";
    const Pos start = Pos::fromLongLatH(28.0, -25.0, 0.0);
    Pos pos = start;
    QString error;
    EXPECT_FALSE(
        ProjLib::ConvertPosList(geographic, grid, pos, ProjLib::LocalLatLongH_to_LocalNEH, &error));
    EXPECT_NE(error, "");
    EXPECT_EQ(error, projsOwnText(geographic, grid, start));
    EXPECT_TRUE(sameBits(pos, start));

    // There is a transformation, so an empty list has nothing to fail with.
    QList<Pos> none;
    EXPECT_TRUE(
        ProjLib::ConvertPosList(geographic, grid, none, ProjLib::LocalLatLongH_to_LocalNEH));
}

TEST_F(ProjsText, IsOursWhereProjHasNone)
{
    // PROJ sets no error number for an infinite latitude.
    Pos pos = Pos::fromLongLatH(9.0, HUGE_VAL, 0.0);
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(wgs84LatLong, wgs84XYZ, pos,
                                         ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    EXPECT_GT(error.size(), 10) << error;
}

TEST_F(ProjsText, SaysNothingAboutTheNextPosition)
{
    Pos bad = Pos::fromLongLatH(9.0, 91.0, 0.0);
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(wgs84LatLong, wgs84XYZ, bad,
                                         ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    Pos good = Pos::fromLongLatH(0.0, 0.0, 0.0);
    EXPECT_TRUE(ProjLib::ConvertPosList(wgs84LatLong, wgs84XYZ, good,
                                        ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    // The equator at Greenwich is one semi-major axis from the centre.
    EXPECT_NEAR(good.getXYZ().x, 6378137.0, 1e-8);
}

TEST_F(ProjsText, ComesWithAListPartlyConverted)
{
    QList<Pos> list{Pos::fromLongLatH(0.0, 0.0, 0.0), Pos::fromLongLatH(90.0, 0.0, 0.0),
                    Pos::fromLongLatH(0.0, 91.0, 1.0), Pos::fromLongLatH(180.0, 0.0, 0.0)};
    const QList<Pos> before = list;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(wgs84LatLong, wgs84XYZ, list,
                                         ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    EXPECT_EQ(error, "Invalid coordinate");
    ASSERT_EQ(list.size(), 4);
    EXPECT_NEAR(list[0].getXYZ().x, 6378137.0, 1e-8);
    EXPECT_NEAR(list[1].getXYZ().y, 6378137.0, 1e-8);
    EXPECT_TRUE(sameBits(list[2], before[2]));
    EXPECT_TRUE(sameBits(list[3], before[3]));
}

} // namespace
} // namespace KelStd
