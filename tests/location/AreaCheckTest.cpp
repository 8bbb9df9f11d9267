// Positions outside the area of use of their system, and what would put them inside.

#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/AreaCheck.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;

class AreaChecks : public test::ProjTest
{
protected:
    static Coord stored(const char *name)
    {
        Coord coord;
        EXPECT_TRUE(Coord_IO::xml_read(
            QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/") + QString::fromLatin1(name), coord));
        return coord;
    }

    /// A system without a position at (0, 0): the false origin is far away.
    static Coord dutchGrid() { return stored("rd_new.xml"); }

    static Location at(double longitude, double latitude)
    {
        Location location;
        location.wgs84LLH = Pos::fromLongLatH(longitude, latitude, 0.0);
        return location;
    }
};

// As the EPSG Dataset has them.
constexpr AreaOfUse netherlands{3.2, 50.75, 7.22, 53.7};       // EPSG:28992
constexpr AreaOfUse fiji{176.81, -20.81, -178.15, -12.42};     // EPSG:3460
constexpr AreaOfUse southAfrica{19.99, -34.88, 22.01, -24.76}; // EPSG:2049

TEST_F(AreaChecks, AskForTheWgs84Position)
{
    const AreaCheck check(dutchGrid(), netherlands);
    EXPECT_TRUE(check.isInside(at(5.0, 52.0)));
    EXPECT_FALSE(check.isInside(at(52.0, 5.0)));
    const AreaCheck pacific(dutchGrid(), fiji);
    EXPECT_TRUE(pacific.isInside(at(179.9, -17.0)));
    EXPECT_TRUE(pacific.isInside(at(-179.9, -17.0)));
    EXPECT_FALSE(pacific.isInside(at(0.0, -17.0)));
}

TEST_F(AreaChecks, SayNothingOfAnAreaThatIsNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const AreaOfUse &none : {AreaOfUse{0.0, 10.0, 1.0, 5.0}, AreaOfUse{nan, 0.0, 1.0, 1.0}}) {
        AreaCheck check(dutchGrid(), none);
        EXPECT_TRUE(check.isInside(at(100.0, 50.0)));
        EXPECT_EQ(check.mistakeIn(Frame::Wgs84Geographic, Pos::fromLongLatH(100.0, 50.0, 0.0)),
                  PositionMistake::None);
        EXPECT_EQ(check.mistakeIn(Frame::LocalProjected, Pos::fromENU(463000.0, 155000.0, 0.0)),
                  PositionMistake::None);
    }
}

struct Row
{
    const AreaOfUse &area;
    double first;
    double second;
    PositionMistake mistake;
};

TEST_F(AreaChecks, FindMistakesInLongitudesAndLatitudes)
{
    const Row rows[] = {
        {netherlands, 52.0, 5.0, PositionMistake::Swapped},
        {netherlands, -5.0, 52.0, PositionMistake::FirstSign},
        {netherlands, 5.0, -52.0, PositionMistake::SecondSign},
        {netherlands, -5.0, -52.0, PositionMistake::BothSigns},
        {netherlands, 5.0, 52.0, PositionMistake::None}, // inside
        {netherlands, 10.0, 52.0, PositionMistake::None},
        {netherlands, -52.0, 5.0, PositionMistake::None}, // two mistakes
        {netherlands, 0.0, 0.0, PositionMistake::None},
        {fiji, -17.0, 179.0, PositionMistake::Swapped},
        {fiji, -17.0, -179.0, PositionMistake::Swapped},
        {fiji, -177.5, -17.0, PositionMistake::FirstSign},
        {fiji, 179.0, 17.0, PositionMistake::SecondSign},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.area.west << ": " << row.first << ' ' << row.second);
        AreaCheck check(dutchGrid(), row.area);
        const Pos given = Pos::fromLongLatH(row.first, row.second, 0.0);
        EXPECT_EQ(check.mistakeIn(Frame::Wgs84Geographic, given), row.mistake);
        EXPECT_EQ(check.mistakeIn(Frame::LocalGeographic, given), row.mistake);
        EXPECT_EQ(check.mistakeIn(Frame::Wgs84Cartesian, given), PositionMistake::None);
    }
}

// Its local frame counts longitudes to the west and latitudes to the south.
TEST_F(AreaChecks, CountAsTheSystemDoes)
{
    AreaCheck check(stored("hartebeesthoek94_lo21.xml"), southAfrica);
    const auto mistake = [&check](double first, double second) {
        return check.mistakeIn(Frame::LocalGeographic, Pos::fromLongLatH(first, second, 0.0));
    };
    EXPECT_EQ(mistake(-21.0, 33.0), PositionMistake::None);
    EXPECT_EQ(mistake(33.0, -21.0), PositionMistake::Swapped);
    EXPECT_EQ(mistake(21.0, 33.0), PositionMistake::FirstSign);
    EXPECT_EQ(mistake(-21.0, -33.0), PositionMistake::SecondSign);
    EXPECT_EQ(mistake(21.0, -33.0), PositionMistake::BothSigns);
}

// The false origin, 155000 east and 463000 north, is at Amersfoort.
TEST_F(AreaChecks, FindMistakesInThePlane)
{
    struct Plane
    {
        double easting;
        double northing;
        PositionMistake mistake;
    };
    const Plane rows[] = {
        {463000.0, 155000.0, PositionMistake::Swapped},
        {-155000.0, 463000.0, PositionMistake::FirstSign},
        {155000.0, -463000.0, PositionMistake::SecondSign},
        {-155000.0, -463000.0, PositionMistake::BothSigns},
        {900000.0, 900000.0, PositionMistake::None},
        {0.0, 0.0, PositionMistake::None},
        {463000.0, 3155000.0, PositionMistake::None},
    };
    AreaCheck check(dutchGrid(), netherlands);
    for (const Plane &row : rows) {
        SCOPED_TRACE(testing::Message() << row.easting << ' ' << row.northing);
        EXPECT_EQ(
            check.mistakeIn(Frame::LocalProjected, Pos::fromENU(row.easting, row.northing, 40.0)),
            row.mistake);
    }
}

TEST_F(AreaChecks, TakeWhatIsNoNumberForNoMistake)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    AreaCheck check(dutchGrid(), netherlands);
    for (const double number : {nan, infinite, 1e300}) {
        for (const Frame frame : {Frame::Wgs84Geographic, Frame::LocalGeographic,
                                  Frame::LocalProjected, Frame::Wgs84Cartesian})
            EXPECT_EQ(check.mistakeIn(frame, Pos::fromXYZ(number, 5.0, number)),
                      PositionMistake::None);
    }
}

TEST_F(AreaChecks, SurviveASystemThatComputesNothing)
{
    Coord coord = dutchGrid();
    coord.projection.proj4Projection = QStringLiteral("none");
    AreaCheck check(coord, netherlands);
    EXPECT_EQ(check.mistakeIn(Frame::LocalProjected, Pos::fromENU(463000.0, 155000.0, 0.0)),
              PositionMistake::None);
    AreaCheck moved = std::move(check);
    EXPECT_EQ(moved.mistakeIn(Frame::Wgs84Geographic, Pos::fromLongLatH(52.0, 5.0, 0.0)),
              PositionMistake::Swapped);
}

TEST_F(AreaChecks, NameTheComponentsOfTheFrame)
{
    EXPECT_EQ(describedMistake(PositionMistake::Swapped, Frame::LocalProjected),
              QStringLiteral("northing and easting swapped"));
    EXPECT_EQ(describedMistake(PositionMistake::Swapped, Frame::Wgs84Geographic),
              QStringLiteral("longitude and latitude swapped"));
    EXPECT_EQ(describedMistake(PositionMistake::FirstSign, Frame::LocalProjected),
              QStringLiteral("the sign of the easting changed"));
    EXPECT_EQ(describedMistake(PositionMistake::SecondSign, Frame::LocalGeographic),
              QStringLiteral("the sign of the latitude changed"));
    EXPECT_EQ(describedMistake(PositionMistake::None, Frame::LocalProjected), QString());
}

} // namespace
} // namespace KelStd
