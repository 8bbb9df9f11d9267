#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <string>

// Worked examples of the IOGP Guidance Note 7-2 ("Coordinate Conversions and Transformations
// including Formulas", also called EPSG G7-2) where no other source is given, each with the
// definition that its parameters make.

namespace KelStd {
namespace {

constexpr double degrees(double degree, double minute, double second)
{
    return degree + minute / 60.0 + second / 3600.0;
}

struct Published
{
    std::string name;
    const char *from;
    const char *to;
    Pos start;
    Pos end;
    double tolerance; ///< of the first two components [m]: half of the last digit of the result,
                      ///< and what half of the last digit of the start moves it
};

void PrintTo(const Published &row, std::ostream *out)
{
    *out << row.name;
}

class PublishedConversion : public test::ProjTest, public testing::WithParamInterface<Published>
{};

TEST_P(PublishedConversion, ComesOut)
{
    const Published &row = GetParam();
    Pos pos = row.start;
    QString error;
    ASSERT_TRUE(
        ProjLib::ConvertPosList(row.from, row.to, pos, ProjLib::LocalLatLongH_to_LocalNEH, &error))
        << error;
    EXPECT_NEAR(pos.getXYZ().x, row.end.getXYZ().x, row.tolerance);
    EXPECT_NEAR(pos.getXYZ().y, row.end.getXYZ().y, row.tolerance);
    EXPECT_NEAR(pos.getXYZ().z, row.end.getXYZ().z, row.tolerance);
}

TEST_P(PublishedConversion, ComesBack)
{
    const Published &row = GetParam();
    Pos pos = row.start;
    ASSERT_TRUE(ProjLib::ConvertPosList(row.from, row.to, pos, ProjLib::LocalLatLongH_to_LocalNEH));
    ASSERT_TRUE(ProjLib::ConvertPosList(row.to, row.from, pos, ProjLib::LocalNEH_to_LocalLatLongH));
    constexpr double angle = 1e-9;  // [deg], a tenth of a millimetre on the ground
    constexpr double height = 1e-6; // [m]
    EXPECT_NEAR(pos.getLongLatH().longitude, row.start.getLongLatH().longitude, angle);
    EXPECT_NEAR(pos.getLongLatH().latitude, row.start.getLongLatH().latitude, angle);
    EXPECT_NEAR(pos.getLongLatH().height, row.start.getLongLatH().height, height);
}

// Half of the second decimal of a result in metres, and a little for the start's own digits, which
// are exact in these examples.
constexpr double centimetre = 0.005 + 0.001;

INSTANTIATE_TEST_SUITE_P(
    Figures, PublishedConversion,
    testing::Values(
        Published{"Geocentric", "+proj=longlat +ellps=WGS84 +axis=enu",
                  "+proj=cart +ellps=WGS84 +axis=enu +units=m",
                  Pos::fromLongLatH(degrees(2, 7, 46.380), degrees(53, 48, 33.820), 73.0),
                  Pos::fromXYZ(3771793.968, 140253.342, 5124304.349), 0.0005 + 0.0005},
        // Ordnance Survey, "A guide to coordinate systems in Great Britain", annex C. (The guidance
        // note's own example of this grid is computed with a rounded scale factor.)
        Published{"TransverseMercatorBritishNationalGrid", "+proj=longlat +ellps=airy +axis=enu",
                  "+proj=tmerc +lat_0=49 +lon_0=-2 +k_0=0.9996012717 +x_0=400000 +y_0=-100000 "
                  "+ellps=airy +axis=enu +units=m",
                  Pos::fromLongLatH(degrees(1, 43, 4.5177), degrees(52, 39, 27.2531), 0.0),
                  Pos::fromENU(651409.903, 313177.270, 0.0),
                  // 0.00005 arc seconds of the start are 0.0015 m on the ground.
                  0.0005 + 0.0015},
        Published{"TransverseMercatorSouthOrientated", "+proj=longlat +ellps=WGS84 +axis=enu",
                  "+proj=tmerc +lat_0=0 +lon_0=29 +k_0=1 +x_0=0 +y_0=0 +ellps=WGS84 +axis=wsu "
                  "+units=m",
                  Pos::fromLongLatH(degrees(28, 16, 57.479), -degrees(25, 43, 55.302), 0.0),
                  Pos::fromXYZ(71984.49, 2847342.74, 0.0),
                  // 0.0005 arc seconds of the start are 0.0154 m on the ground.
                  0.005 + 0.0154},
        Published{"LambertConicOneParallelJamaica", "+proj=longlat +ellps=clrk66 +axis=enu",
                  "+proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77 +k_0=1 +x_0=250000 +y_0=150000 "
                  "+ellps=clrk66 +axis=enu +units=m",
                  Pos::fromLongLatH(-degrees(76, 56, 37.26), degrees(17, 55, 55.80), 0.0),
                  Pos::fromENU(255966.58, 142493.51, 0.0), centimetre},
        Published{"MercatorMakassar", "+proj=longlat +ellps=bessel +axis=enu",
                  "+proj=merc +lon_0=110 +k_0=0.997 +x_0=3900000 +y_0=900000 +ellps=bessel "
                  "+axis=enu +units=m",
                  Pos::fromLongLatH(120.0, -3.0, 0.0), Pos::fromENU(5009726.58, 569150.82, 0.0),
                  centimetre},
        Published{"ObliqueStereographicAmersfoort", "+proj=longlat +ellps=bessel +axis=enu",
                  "+proj=sterea +lat_0=52.156160556 +lon_0=5.387638889 +k_0=0.9999079 +x_0=155000 "
                  "+y_0=463000 +ellps=bessel +axis=enu +units=m",
                  Pos::fromLongLatH(6.0, 53.0, 0.0), Pos::fromENU(196105.283, 557057.739, 0.0),
                  0.0005 + 0.0001}),
    [](const auto &row) { return row.param.name; });

} // namespace
} // namespace KelStd
