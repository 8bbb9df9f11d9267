// Builders that are told to make a location only where the projection is one-to-one.

#include "location/LocationOperations.h"
#include "location/PointsOfSystem.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;
using test::sameBits;

const QString refusal = QStringLiteral("outside where the projection is one-to-one");
const QString lambertNord = QStringLiteral("standard/NTF_Paris_Lambert_Nord_France.xml");
const QString newZealand = QStringLiteral("standard/NZGD49_New_Zealand_Map_Grid.xml");
const QString utm31 = QStringLiteral("standard/WGS_84_UTM_zone_31N.xml");

struct FrameRow
{
    Frame frame;
    Pos Location::*position;
};

constexpr FrameRow frameRows[] = {
    {Frame::Wgs84Geographic, &Location::wgs84LLH},
    {Frame::Wgs84Cartesian, &Location::wgs84XYZ},
    {Frame::LocalGeographic, &Location::localLLH},
    {Frame::LocalProjected, &Location::localNEH},
};

Coord delivered(const QString &document)
{
    Coord coord;
    QString error;
    EXPECT_TRUE(Coord_IO::xml_read(QStringLiteral(KELSTD_TEST_BIN_DIR "/library/") + document,
                                   coord, &error))
        << error;
    return coord;
}

Coord published(const QString &document)
{
    Coord coord;
    EXPECT_TRUE(Coord_IO::xml_read(test::systemPath(document), coord));
    return coord;
}

/// A system on WGS 84 of one projection and its parameters.
Coord onWgs84(const QString &projection, const QMap<QString, double> &parameters = {})
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.projection = Projection();
    coord.projection.proj4Projection = projection;
    for (auto row = parameters.begin(); row != parameters.end(); ++row) {
        coord.projection.param[row.key()] = Param(ValueType_Double, Unit_None, row.value());
        coord.projection.paramProj4[row.key()] = row.key();
    }
    return coord;
}

LocationBuilder strictBuilder(const Coord &coord)
{
    LocationBuilder builder(coord);
    builder.requireOneToOne();
    return builder;
}

using OneToOne = test::ProjTest;

// --- What is refused -----------------------------------------------------------------------------

struct Position
{
    const char *what;
    Coord coord;
    Frame frame;
    Pos position;
};

TEST_F(OneToOne, RefusesPositionsThatBelongToNoPlaceOfTheProjection)
{
    const Coord lambert = delivered(lambertNord);
    const Coord nzmg = delivered(newZealand);
    const Coord utm = delivered(utm31);
    const Coord mercatorOfTheEquator = onWgs84(QStringLiteral("merc"));
    const Position rows[] = {
        {"beyond the apex of the cone", lambert, Frame::LocalProjected,
         Pos::fromENU(600'000.0, 6'000'000.0, 100.0)},
        {"the New Zealand series in Europe", nzmg, Frame::Wgs84Geographic,
         Pos::fromLongLatH(10.0, 50.0, 0.0)},
        {"and in Asia, local", nzmg, Frame::LocalGeographic, Pos::fromLongLatH(100.0, 20.0, 0.0)},
        {"and far in the plane", nzmg, Frame::LocalProjected, Pos::fromENU(9e6, 1e6, 0.0)},
        {"the middle of the Earth", lambert, Frame::Wgs84Cartesian, Pos()},
        {"the middle of the Earth in New Zealand", nzmg, Frame::Wgs84Cartesian, Pos()},
        {"the middle of the Earth in UTM", utm, Frame::Wgs84Cartesian, Pos()},
        {"a metre beside it", utm, Frame::Wgs84Cartesian, Pos::fromXYZ(1.0, 0.0, 0.0)},
        {"in kilometres", utm, Frame::Wgs84Cartesian, Pos::fromXYZ(3904.0, 323.0, 5014.0)},
        {"without a component", utm, Frame::Wgs84Cartesian, Pos::fromXYZ(3.904e6, 3.2e5, 0.0)},
        {"a height of that kind", utm, Frame::Wgs84Geographic,
         Pos::fromLongLatH(3.0, 52.0, -6.3e6)},
        {"a local height of that kind", utm, Frame::LocalGeographic,
         Pos::fromLongLatH(3.0, 52.0, -6.3e6)},
        {"a plane height of that kind", utm, Frame::LocalProjected,
         Pos::fromENU(500'000.0, 5.7e6, -6.3e6)},
        // A point of Belgium.
        {"in centimetres", utm, Frame::Wgs84Cartesian,
         Pos::fromXYZ(390'404'610.0, 36'816'130.0, 501'344'940.0)},
        {"in millimetres", utm, Frame::Wgs84Cartesian,
         Pos::fromXYZ(3'904'046'100.0, 368'161'300.0, 5'013'449'400.0)},
        {"a height beyond satellites", utm, Frame::Wgs84Geographic,
         Pos::fromLongLatH(3.0, 52.0, 50'000'001.0)},
        {"a plane height beyond satellites", utm, Frame::LocalProjected,
         Pos::fromENU(500'000.0, 5.7e6, 50'000'100.0)},
        // cs2cs: easting -1,299,693 m, northing -419,086,900 m.
        {"near the pole that is at infinity", lambert, Frame::Wgs84Geographic,
         Pos::fromLongLatH(2.0, -89.0, 0.0)},
        {"a northing beyond every zone", mercatorOfTheEquator, Frame::LocalProjected,
         Pos::fromENU(0.0, 130'000'001.0, 0.0)},
        {"an easting of that kind", mercatorOfTheEquator, Frame::LocalProjected,
         Pos::fromENU(-130'000'001.0, 0.0, 0.0)},
        {"just too deep", utm, Frame::Wgs84Geographic, Pos::fromLongLatH(3.0, 52.0, -20'001.0)},
    };
    for (const Position &row : rows) {
        SCOPED_TRACE(row.what);
        LocationBuilder builder = strictBuilder(row.coord);
        Location location;
        location.localNEH = Pos::fromENU(1.0, 2.0, 3.0);
        const Location before = location;
        QString error;
        EXPECT_FALSE(builder.make(row.frame, row.position, location, &error));
        EXPECT_EQ(error, refusal);
        EXPECT_TRUE(location == before);
        EXPECT_FALSE(builder.make(row.frame, row.position, location, nullptr));
    }
}

TEST_F(OneToOne, IsNotRequiredAtFirst)
{
    LocationBuilder builder(delivered(lambertNord));
    const Pos beyond = Pos::fromENU(600'000.0, 6'000'000.0, 100.0);
    Location location;
    EXPECT_TRUE(builder.make(Frame::LocalProjected, beyond, location));
    builder.requireOneToOne();
    EXPECT_FALSE(builder.make(Frame::LocalProjected, beyond, location));
    builder.requireOneToOne(false);
    EXPECT_TRUE(builder.make(Frame::LocalProjected, beyond, location));
}

TEST_F(OneToOne, OfAnArrayTellsOfEachPosition)
{
    LocationBuilder builder = strictBuilder(delivered(lambertNord));
    const std::vector<Pos> positions{Pos::fromENU(600'000.0, 200'000.0, 1.0),
                                     Pos::fromENU(600'000.0, 6'000'000.0, 1.0),
                                     Pos::fromENU(650'000.0, 250'000.0, 1.0)};
    std::vector<Location> locations(positions.size());
    std::vector<LocationBuilder::Outcome> outcomes(positions.size());
    EXPECT_EQ(builder.make(Frame::LocalProjected, positions.data(), positions.size(),
                           locations.data(), outcomes.data()),
              2U);
    EXPECT_TRUE(outcomes[0].isMade && !outcomes[1].isMade && outcomes[2].isMade);
    EXPECT_EQ(outcomes[1].reason, refusal);
    EXPECT_TRUE(outcomes[2].reason.isEmpty());
}

// --- What is not ---------------------------------------------------------------------------------

TEST_F(OneToOne, AcceptsWhatOnlyLooksElsewhere)
{
    const Coord utm = delivered(utm31);
    const Coord mercator = onWgs84(QStringLiteral("merc"));
    const Coord stereographic = published(QStringLiteral("ups_north.xml"));
    const Coord geographic = onWgs84(QStringLiteral("longlat"));
    const Coord zoned = onWgs84(QStringLiteral("tmerc"), {{"lon_0", 177.0}, {"x_0", 60'500'000.0}});
    // Half of a Mercator map is pi times the axis wide.
    constexpr double halfWidth = 3.14159265358979323846 * 6378137.0;
    const Position rows[] = {
        {"a longitude beyond a half turn", mercator, Frame::LocalGeographic,
         Pos::fromLongLatH(181.0, 10.0, 0.0)},
        {"of WGS 84", mercator, Frame::Wgs84Geographic, Pos::fromLongLatH(181.0, 10.0, 0.0)},
        {"the same the other way", mercator, Frame::Wgs84Geographic,
         Pos::fromLongLatH(-181.0, 10.0, 0.0)},
        {"a turn and a half", mercator, Frame::LocalGeographic,
         Pos::fromLongLatH(540.0, 12.0, 0.0)},
        {"the antimeridian", mercator, Frame::Wgs84Geographic, Pos::fromLongLatH(180.0, 10.0, 0.0)},
        {"the eastern end of the map", mercator, Frame::LocalProjected,
         Pos::fromENU(halfWidth, 0.0, 0.0)},
        {"the western end of the map", mercator, Frame::LocalProjected,
         Pos::fromENU(-halfWidth, 1e6, 0.0)},
        {"a longitude that is the result", geographic, Frame::LocalProjected,
         Pos::fromENU(181.0, 10.0, 0.0)},
        {"a longitude that stays one", geographic, Frame::LocalGeographic,
         Pos::fromLongLatH(181.0, 10.0, 0.0)},
        {"the pole", stereographic, Frame::Wgs84Geographic, Pos::fromLongLatH(77.0, 90.0, 0.0)},
        {"the pole of the plane", stereographic, Frame::LocalProjected,
         Pos::fromENU(2e6, 2e6, 0.0)},
        {"the pole in UTM", utm, Frame::Wgs84Geographic, Pos::fromLongLatH(77.0, 90.0, 0.0)},
        {"UTM from far beside", utm, Frame::Wgs84Geographic, Pos::fromLongLatH(60.0, 52.0, 0.0)},
        {"the equator at Greenwich", utm, Frame::Wgs84Cartesian, Pos::fromXYZ(6378137.0, 0.0, 0.0)},
        {"the deepest borehole", utm, Frame::Wgs84Geographic,
         Pos::fromLongLatH(3.0, 52.0, -12'262.0)},
        {"a geostationary satellite", utm, Frame::Wgs84Cartesian,
         Pos::fromXYZ(42'164'000.0, 0.0, 0.0)},
        {"a satellite of navigation in its highest orbit", utm, Frame::Wgs84Geographic,
         Pos::fromLongLatH(3.0, 52.0, 40'000'000.0)},
        // Zone 60 before the easting, as the zones of Gauss and Krueger are written.
        {"an easting with its zone", zoned, Frame::LocalProjected,
         Pos::fromENU(60'900'000.0, 5.7e6, 0.0)},
        {"the same from its place", zoned, Frame::Wgs84Geographic,
         Pos::fromLongLatH(179.0, 52.0, 0.0)},
        {"in an aeroplane", utm, Frame::Wgs84Geographic, Pos::fromLongLatH(3.0, 52.0, 12'000.0)},
    };
    for (const Position &row : rows) {
        SCOPED_TRACE(row.what);
        LocationBuilder builder = strictBuilder(row.coord);
        Location location;
        QString error;
        EXPECT_TRUE(builder.make(row.frame, row.position, location, &error)) << error;
    }
}

TEST_F(OneToOne, IsThereInTheUnitOfThePlane)
{
    // A plane in kilometres: a millionth of its unit is a millimetre.
    Coord coord = published(QStringLiteral("etrs89_laea_europe.xml")); // its inverse misses 0.3 mm
    coord.projection.param[QStringLiteral("units")] = Param(ValueType_String, Unit_None, "km");
    coord.projection.paramProj4[QStringLiteral("units")] = QStringLiteral("units");
    LocationBuilder builder = strictBuilder(coord);
    Location location;
    QString error;
    EXPECT_TRUE(builder.make(Frame::LocalProjected, Pos::fromENU(3962.799, 2999.718, 0.0), location,
                             &error))
        << error;
    // The map of the whole Earth ends some 12,740 km from its middle at 4,321 and 3,210 km.
    EXPECT_FALSE(
        builder.make(Frame::LocalProjected, Pos::fromENU(4321.0, 17000.0, 0.0), location, &error));
}

/// The same in every frame of its location, bit for bit.
void expectAccepted(const Coord &coord, Frame from, const Pos &start)
{
    LocationBuilder plain(coord);
    LocationBuilder strict = strictBuilder(coord);
    Location location;
    QString error;
    ASSERT_TRUE(plain.make(from, start, location, &error)) << error;
    for (const FrameRow &row : frameRows) {
        Location expected;
        Location made;
        QString expectedError;
        ASSERT_TRUE(plain.make(row.frame, location.*row.position, expected, &expectedError));
        EXPECT_TRUE(strict.make(row.frame, location.*row.position, made, &error))
            << error << ' ' << testing::PrintToString(location);
        EXPECT_TRUE(sameBits(made, expected));
        EXPECT_EQ(error, expectedError);
    }
}

TEST_F(OneToOne, AcceptsEveryPublishedFigureInEveryFrame)
{
    for (const test::PublishedCase &figure : test::publishedFigures().cases) {
        SCOPED_TRACE(figure.source.toStdString());
        expectAccepted(published(figure.system), test::operationFrom(figure.from).ofBuilder,
                       figure.start);
    }
    const auto deliveredFigures =
        test::readPublishedFigures(QStringLiteral(KELSTD_TEST_DATA_DIR "/delivered_figures.txt"));
    ASSERT_FALSE(deliveredFigures.cases.empty());
    for (const test::PublishedCase &figure : deliveredFigures.cases) {
        SCOPED_TRACE(figure.source.toStdString());
        expectAccepted(delivered("standard/" + figure.system),
                       test::operationFrom(figure.from).ofBuilder, figure.start);
    }
}

TEST_F(OneToOne, AcceptsHeightsAboveTheGeoid)
{
    // The plane's height is another one than that which the way back has.
    test::deliverEgm96();
    Coord coord = published(QStringLiteral("rd_new.xml"));
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    expectAccepted(coord, Frame::Wgs84Geographic, Pos::fromLongLatH(5.81, 52.18, 90.0));
}

/// Areas of use as the EPSG Dataset has them: west, south, east, north [deg].
struct Area
{
    const char *system;
    double west, south, east, north;

    friend void PrintTo(const Area &area, std::ostream *out) { *out << area.system; }
};

constexpr Area areas[] = {
    {"Amersfoort_RD_New", 3.2, 50.75, 7.22, 53.7},
    {"BD72_Belgian_Lambert_72", 2.5, 49.5, 6.4, 51.51},
    {"CH1903_LV03", 5.96, 45.82, 10.49, 47.81},
    {"CH1903+_LV95", 5.96, 45.82, 10.49, 47.81},
    {"ETRS89_TM35FIN", 19.08, 58.84, 31.59, 70.09},
    {"GDA94_MGA_zone_54", 138.0, -48.19, 144.0, -9.08},
    {"GDA2020_MGA_zone_55", 144.0, -50.89, 150.01, -9.23},
    {"GDM2000_East_Malaysia_BRSO", 109.31, 0.85, 119.61, 7.67},
    {"Hartebeesthoek94_Lo21", 19.99, -34.88, 22.01, -22.13},
    {"Hartebeesthoek94_Lo29", 27.99, -33.03, 30.0, -22.09},
    {"Hong_Kong_1980_Grid_System", 113.76, 22.13, 114.51, 22.58},
    {"JGD2011_Japan_Plane_Rectangular_CS_IX", 138.4, 29.31, 141.11, 37.98},
    {"MAGNA_SIRGAS_Bogota_urban_grid", -74.27, 4.45, -73.98, 4.85},
    {"NTF_Paris_Lambert_Nord_France", -4.87, 48.14, 8.23, 51.14},
    {"NZGD49_New_Zealand_Map_Grid", 166.37, -47.33, 178.63, -34.1},
    {"OSGB36_British_National_Grid", -9.01, 49.75, 2.01, 61.01},
    {"POSGAR_98_Argentina_5", -61.5, -39.06, -58.5, -23.37},
    {"SIRGAS_2000_Brazil_Polyconic", -74.01, -35.71, -25.28, 7.04},
    {"S_JTSK_Krovak_East_North_Czechia", 12.09, 48.58, 18.86, 51.06},
    {"TM75_Irish_Grid", -10.56, 51.39, -5.34, 55.43},
    {"WGS_84_UTM_zone_1N", -180.0, 0.0, -174.0, 84.0},
    {"WGS_84_UTM_zone_31N", 0.0, 0.0, 6.0, 84.0},
    {"WGS_84_UTM_zone_31S", 0.0, -80.0, 6.0, 0.0},
    {"WGS_84_UTM_zone_60S", 174.0, -80.0, 180.0, 0.0},
};

class UsableArea : public test::ProjTest, public testing::WithParamInterface<Area>
{};

/// Some way beyond its edges, too, and at any height.
TEST_P(UsableArea, IsAcceptedWholeFromEveryFrame)
{
    const Area &area = GetParam();
    const Coord coord = delivered(QStringLiteral("standard/%1.xml").arg(area.system));
    LocationBuilder plain(coord);
    LocationBuilder strict = strictBuilder(coord);
    constexpr double margin = 0.02; // of the extent
    constexpr int steps = 12;
    for (int i = 0; i <= steps; ++i) {
        for (int k = 0; k <= steps; ++k) {
            const auto along = [](double low, double high, int step) {
                return low + (high - low) * (-margin + (1.0 + 2.0 * margin) * step / steps);
            };
            const Pos start =
                Pos::fromLongLatH(along(area.west, area.east, i), along(area.south, area.north, k),
                                  (i + k) % 2 == 0 ? -400.0 : 6000.0);
            Location location;
            QString error;
            ASSERT_TRUE(plain.make(Frame::Wgs84Geographic, start, location, &error)) << error;
            for (const FrameRow &row : frameRows) {
                Location made;
                ASSERT_TRUE(strict.make(row.frame, location.*row.position, made, &error))
                    << error << ' ' << testing::PrintToString(location);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Delivered, UsableArea, testing::ValuesIn(areas), [](const auto &row) {
    return test::testName(QString::fromUtf8(row.param.system));
});

// --- What PROJ's own program says ----------------------------------------------------------------

/// Where cs2cs leads between two definitions; a NaN where it has no result.
std::vector<Pos> cs2cs(const QString &from, const QString &to, const std::vector<Pos> &positions)
{
    QByteArray input;
    for (const Pos &pos : positions) {
        input += QByteArray::number(pos.getXYZ().x, 'g', 17) + ' '
                 + QByteArray::number(pos.getXYZ().y, 'g', 17) + " 0\n";
    }
    const auto asReferenceSystem = [](const QString &definition) {
        return definition.split(QLatin1Char(' '), Qt::SkipEmptyParts)
               << QStringLiteral("+type=crs");
    };
    QProcess process;
    process.start(QStringLiteral("cs2cs"),
                  QStringList{QStringLiteral("-f"), QStringLiteral("%.14g")}
                      + asReferenceSystem(from) + QStringList{QStringLiteral("+to")}
                      + asReferenceSystem(to));
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
    std::vector<Pos> results;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() < 2)
            continue;
        bool hasX = false;
        bool hasY = false;
        const double x = words[0].toDouble(&hasX);
        const double y = words[1].toDouble(&hasY);
        const double none = std::numeric_limits<double>::quiet_NaN();
        results.push_back(Pos::fromXYZ(hasX ? x : none, hasY ? y : none, 0.0));
    }
    EXPECT_EQ(results.size(), positions.size());
    return results;
}

/// On a sphere of the Earth's size [m]; NaN where one of the two is none.
double groundDistance(const Pos &a, const Pos &b)
{
    constexpr double radians = 3.14159265358979323846 / 180.0;
    constexpr double radius = 6'371'000.0;
    const stLongLatH &p = a.getLongLatH();
    const stLongLatH &q = b.getLongLatH();
    const double north = std::sin((p.latitude - q.latitude) * radians / 2.0);
    const double east = std::sin((p.longitude - q.longitude) * radians / 2.0);
    return 2.0 * radius
           * std::asin(std::sqrt(north * north
                                 + std::cos(p.latitude * radians) * std::cos(q.latitude * radians)
                                       * east * east));
}

double planeDistance(const Pos &a, const Pos &b)
{
    return std::hypot(a.getENU().e - b.getENU().e, a.getENU().n - b.getENU().n);
}

struct Definitions
{
    explicit Definitions(const Coord &coord)
    {
        char geographic[512] = {};
        char cartesian[512] = {};
        char local[512] = {};
        char plane[512] = {};
        Coord::__MakeCoordStrings(nullptr, &coord, geographic, cartesian, local, plane);
        localGeographic = QString::fromUtf8(local);
        localProjected = QString::fromUtf8(plane);
    }
    QString localGeographic;
    QString localProjected;
};

class OneToOneByProjsProgram : public test::ProjTest,
                               public testing::WithParamInterface<const char *>
{};

/// Expects what `miss` [m] says of each position; nothing where it is about the tolerance.
void expectByMisses(const Coord &coord, Frame frame, const std::vector<Pos> &positions,
                    const std::vector<double> &misses, double sure)
{
    LocationBuilder builder = strictBuilder(coord);
    int decided = 0;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (misses[i] > 0.001 / sure && misses[i] < 0.001 * sure)
            continue;
        const bool isExpected = misses[i] <= 0.001; // not where it is no number
        ++decided;
        Location location;
        EXPECT_EQ(builder.make(frame, positions[i], location), isExpected)
            << testing::PrintToString(positions[i]) << " misses by " << misses[i];
    }
    EXPECT_GT(decided, 0);
}

TEST_P(OneToOneByProjsProgram, IsWhereItsTwoDirectionsMeet)
{
    const Coord coord = delivered(QStringLiteral("standard/%1.xml").arg(GetParam()));
    const Definitions definitions(coord);
    std::vector<Pos> places;
    for (int longitude = -175; longitude < 180; longitude += 10) {
        for (int latitude = -85; latitude < 90; latitude += 10)
            places.push_back(Pos::fromLongLatH(longitude, latitude, 0.0));
    }
    const auto plane = cs2cs(definitions.localGeographic, definitions.localProjected, places);
    const auto back = cs2cs(definitions.localProjected, definitions.localGeographic, plane);
    std::vector<double> misses;
    for (std::size_t i = 0; i < places.size(); ++i) {
        // A plane ends beyond the eastings of its last zone.
        const bool isInPlane =
            std::max(std::abs(plane[i].getXYZ().x), std::abs(plane[i].getXYZ().y)) <= 1.3e8;
        misses.push_back(isInPlane ? groundDistance(places[i], back[i])
                                   : std::numeric_limits<double>::infinity());
    }
    expectByMisses(coord, Frame::LocalGeographic, places, misses, 2.0);
}

TEST_P(OneToOneByProjsProgram, IsWhereThePlaneLeadsBackToItself)
{
    const Coord coord = delivered(QStringLiteral("standard/%1.xml").arg(GetParam()));
    const Definitions definitions(coord);
    std::vector<Pos> points;
    for (int e = -9; e <= 9; e += 2) {
        for (int n = -9; n <= 9; n += 2)
            points.push_back(Pos::fromENU(e * 1e6, n * 1e6, 0.0));
    }
    const auto places = cs2cs(definitions.localProjected, definitions.localGeographic, points);
    const auto back = cs2cs(definitions.localGeographic, definitions.localProjected, places);
    std::vector<double> misses;
    for (std::size_t i = 0; i < points.size(); ++i)
        misses.push_back(planeDistance(points[i], back[i]));
    // The scale of the plane, by which a miss in it is another one on the ground, is far from 1.
    expectByMisses(coord, Frame::LocalProjected, points, misses, 1000.0);
}

INSTANTIATE_TEST_SUITE_P(
    Systems, OneToOneByProjsProgram,
    testing::Values("NTF_Paris_Lambert_Nord_France", "NZGD49_New_Zealand_Map_Grid", "CH1903+_LV95",
                    "S_JTSK_Krovak_East_North_Czechia", "SIRGAS_2000_Brazil_Polyconic",
                    "Amersfoort_RD_New", "WGS_84_UTM_zone_31N"),
    [](const auto &row) { return test::testName(QString::fromUtf8(row.param)); });

} // namespace
} // namespace KelStd
