// Separations of the delivered EGM96 grid, beside what others make of the same model.

#include "proj/ProjPrograms.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace KelStd {
namespace {

constexpr double micrometre = 1e-6;

const test::GridReader &egm96()
{
    static const test::GridReader reader(test::readFile(test::egm96Path()));
    return reader;
}

double differenceAt(double latitude, double longitude, double height)
{
    double diff = std::nan("");
    QString error;
    EXPECT_TRUE(
        ProjLib::Calc_geoid_diff(latitude, longitude, height, test::egm96Path(), diff, &error))
        << latitude << ' ' << longitude << ": " << error;
    EXPECT_EQ(error, QString());
    return diff;
}

double inverseAt(double latitude, double longitude, double height)
{
    double diff = std::nan("");
    QString error;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff_inverse(latitude, longitude, height, test::egm96Path(),
                                                 diff, &error))
        << latitude << ' ' << longitude << ": " << error;
    return diff;
}

/// What PROJ's program makes of the heights of positions [deg, deg, m].
QList<Pos> byCct(const QList<Pos> &positions, bool inverse)
{
    return test::runCct(QStringLiteral("+proj=vgridshift +grids=") + test::egm96Path()
                            + (inverse ? QStringLiteral(" +inv") : QString()),
                        positions);
}

QList<Pos> randomPositions(int count)
{
    std::mt19937 random(96);
    std::uniform_real_distribution<double> longitude(-180.0, 180.0);
    std::uniform_real_distribution<double> latitude(-90.0, 90.0);
    std::uniform_real_distribution<double> height(-500.0, 9000.0);
    QList<Pos> positions;
    for (int i = 0; i < count; ++i) {
        const double l = longitude(random);
        const double b = latitude(random);
        positions << Pos::fromLongLatH(l, b, height(random));
    }
    return positions;
}

using GeoidSeparation = test::ProjTest;

TEST_F(GeoidSeparation, AgreesWithProjsOwnProgramAndWithTheGridItself)
{
    const QList<Pos> positions = randomPositions(10'000);
    const QList<Pos> forward = byCct(positions, false);
    const QList<Pos> inverse = byCct(positions, true);
    ASSERT_EQ(forward.size(), positions.size());
    ASSERT_EQ(inverse.size(), positions.size());
    for (int i = 0; i < positions.size(); ++i) {
        const stLongLatH &p = positions[i].getLongLatH();
        SCOPED_TRACE(testing::Message() << p.latitude << ' ' << p.longitude << ' ' << p.height);
        const double diff = differenceAt(p.latitude, p.longitude, p.height);
        const double back = inverseAt(p.latitude, p.longitude, p.height);
        ASSERT_NEAR(p.height + diff, forward[i].getLongLatH().height, micrometre);
        ASSERT_NEAR(p.height + back, inverse[i].getLongLatH().height, micrometre);
        ASSERT_NEAR(-diff, egm96().separation(p.latitude, p.longitude), micrometre);
    }
}

struct Place
{
    double latitude;
    double longitude;
};

/// Where a reader of the grid goes wrong first: the last column's neighbour is the first column,
/// the last row has no neighbour, and longitudes have many names.
TEST_F(GeoidSeparation, AgreesAtTheSeamsOfTheGrid)
{
    constexpr Place places[] = {
        // across the antimeridian, between the last column and the first, and on it
        {10.0, 179.75},
        {10.0, 179.8},
        {10.1, 179.999999},
        {10.1, 180.0},
        {10.1, -180.0},
        {-37.3, -179.999999},
        {-37.3, 180.1},
        {52.1, 365.8},
        // the poles, and beside them
        {90.0, 0.0},
        {90.0, 123.4},
        {89.999, -45.0},
        {-90.0, 0.0},
        {-90.0, 179.9},
        {-89.9, -179.9},
        // a node, the equator, Greenwich
        {45.25, 7.5},
        {0.0, 0.0},
        {-0.000001, -0.000001},
    };
    for (const Place &place : places) {
        SCOPED_TRACE(testing::Message() << place.latitude << ' ' << place.longitude);
        const double separation = egm96().separation(place.latitude, place.longitude);
        EXPECT_NEAR(differenceAt(place.latitude, place.longitude, 100.0), -separation, micrometre);
        EXPECT_NEAR(inverseAt(place.latitude, place.longitude, 100.0), separation, micrometre);
        const QList<Pos> position{Pos::fromLongLatH(place.longitude, place.latitude, 100.0)};
        EXPECT_NEAR(byCct(position, false).value(0).getLongLatH().height, 100.0 - separation,
                    micrometre);
    }
}

/// Every column of the first and of the last row is the pole.
TEST_F(GeoidSeparation, HasOneValueAtAPole)
{
    for (const double pole : {-90.0, 90.0}) {
        for (const double longitude : {-180.0, -77.7, 0.0, 33.3, 180.0})
            EXPECT_NEAR(differenceAt(pole, longitude, 0.0), differenceAt(pole, 0.0, 0.0), 1e-4);
    }
}

TEST_F(GeoidSeparation, DoesNotDependOnTheHeight)
{
    const double expected = -egm96().separation(47.3, 8.5);
    for (const double height : {-11000.0, -0.5, 0.0, 408.0, 8848.0, 2.0e7})
        EXPECT_NEAR(differenceAt(47.3, 8.5, height), expected, micrometre);
}

TEST_F(GeoidSeparation, TheInverseLeadsBack)
{
    for (const Pos &position : randomPositions(200)) {
        const stLongLatH &p = position.getLongLatH();
        const double above = p.height + differenceAt(p.latitude, p.longitude, p.height);
        EXPECT_NEAR(above + inverseAt(p.latitude, p.longitude, above), p.height, 1e-9);
    }
}

// The six test points that NGA publishes with EGM96: INPUT.DAT and the undulations of OUTPUT.DAT,
// computed from the spherical harmonics (program F477) to 0.001 m.
struct Published
{
    double latitude;
    double longitude;
    double undulation; ///< [m]
};

constexpr Published published[] = {
    {38.6281550, 269.7791550, -31.628}, {-14.6212170, 305.0211140, -2.969},
    {46.8743190, 102.4487290, -43.575}, {-23.6174460, 133.8747120, 15.871},
    {38.6254730, 359.9995000, 50.066},  {-0.4667440, 0.0023000, 17.329},
};

/// What a straight line between two nodes can miss: an eighth of the curvature, here the largest
/// second difference of the nodes about the cell, in both directions. The curvature that the nodes
/// themselves do not show, up to the model's degree 360 (half a degree, two spacings), is allowed
/// for by doubling it; the grid's own rounding to 0.01 m comes on top.
double gridAllowance(double latitude, double longitude)
{
    const auto &grid = egm96();
    const int row = grid.rowOf(latitude);
    const int column = grid.columnOf(longitude);
    double northwards = 0.0;
    double eastwards = 0.0;
    for (const int r : {row, row + 1}) {
        for (const int c : {column, column + 1}) {
            const double twice = 2.0 * grid.node(r, c);
            northwards =
                std::max(northwards, std::abs(grid.node(r - 1, c) - twice + grid.node(r + 1, c)));
            eastwards =
                std::max(eastwards, std::abs(grid.node(r, c - 1) - twice + grid.node(r, c + 1)));
        }
    }
    return 2.0 * (northwards + eastwards) / 8.0 + 0.01;
}

TEST_F(GeoidSeparation, ReachesThePublishedUndulationsAsFarAsTheGridAllows)
{
    for (const Published &row : published) {
        SCOPED_TRACE(testing::Message() << row.latitude << ' ' << row.longitude);
        const double allowance = gridAllowance(row.latitude, row.longitude);
        EXPECT_LT(allowance, 0.25);
        EXPECT_NEAR(-differenceAt(row.latitude, row.longitude, 0.0), row.undulation, allowance);
        EXPECT_NEAR(inverseAt(row.latitude, row.longitude, 0.0), row.undulation, allowance);
    }
}

/// A grid that covers a part of the earth, its own west-east and south-north sides told apart.
TEST_F(GeoidSeparation, TakesTheLatitudeFirst)
{
    const test::TemporaryHome home;
    const QString path = home.path(QStringLiteral("sloping.gtx"));
    test::writeFile(path, test::gtxBytes(test::slopingGrid()));
    double diff = 0.0;
    // 2.5 rows of 1 m and half a column of 0.1 m from 40 m.
    ASSERT_TRUE(ProjLib::Calc_geoid_diff(52.5, 3.5, 7.0, path, diff));
    EXPECT_NEAR(diff, -(40.0 + 2.5 + 0.05), 1e-5); // the grid's values are 32-bit numbers
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(3.5, 52.5, 7.0, path, diff));
}

TEST_F(GeoidSeparation, FindsARelativeFileFromThePrivateDirectory)
{
    const test::TemporaryHome other(test::TemporaryHome::PreparedProj);
    test::writeFile(other.path(QStringLiteral("proj/inside.gtx")),
                    test::gtxBytes(test::slopingGrid()));
    test::writeFile(other.path(QStringLiteral("geoid_model_list/beside.gtx")),
                    test::gtxBytes(test::slopingGrid()));
    for (const char *path : {"./inside.gtx", "../geoid_model_list/beside.gtx"}) {
        SCOPED_TRACE(path);
        double diff = 0.0;
        EXPECT_TRUE(ProjLib::Calc_geoid_diff(51.0, 4.0, 0.0, QString::fromUtf8(path), diff));
        EXPECT_NEAR(diff, -41.1, 1e-5);
    }
}

TEST_F(GeoidSeparation, FindsAFileWhosePathHasBlanksAndOtherLetters)
{
    const test::TemporaryHome home;
    for (const char *name : {"a b.gtx", "H\xC3\xB6he.gtx", "+inv.gtx", "'%1'.gtx"}) {
        SCOPED_TRACE(name);
        const QString path = home.path(QString::fromUtf8(name));
        test::writeFile(path, test::gtxBytes(test::slopingGrid()));
        double diff = 0.0;
        QString error;
        EXPECT_TRUE(ProjLib::Calc_geoid_diff(51.0, 4.0, 0.0, path, diff, &error)) << error;
        EXPECT_NEAR(diff, -41.1, 1e-5);
    }
}

} // namespace
} // namespace KelStd
