// Point scale, elevation and combined factor, meridian convergence.
//
// Rows without a further citation: derivatives, taken with 40 digits, of the published formulas of
// each method (IOGP Publication 373-7-2; the transverse Mercator projection as the analytic
// continuation of its central meridian, Lee, Geographical Review 35 (1945)).

#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/GridFactors.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace KelStd {
namespace {

using Missing = GridFactors::Missing;

Coord stored(const char *name)
{
    Coord coord;
    EXPECT_TRUE(Coord_IO::xml_read(
        QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/") + QString::fromLatin1(name), coord));
    return coord;
}

/// A location of which only the local frames are known, as the factors need no other.
Location at(const Coord &coord, double longitude, double latitude, double height)
{
    LocationBuilder builder(coord);
    Location location;
    QString error;
    EXPECT_TRUE(builder.make(LocationBuilder::Frame::LocalGeographic,
                             Pos::fromLongLatH(longitude, latitude, height), location, &error))
        << error;
    return location;
}

GridFactors::Values valuesAt(const Coord &coord, double longitude, double latitude, double height)
{
    return GridFactors(coord).at(at(coord, longitude, latitude, height));
}

void addFlag(Coord &coord, const char *name)
{
    const QString key = QString::fromLatin1(name);
    coord.projection.paramProj4[key] = key;
    coord.projection.param[key] = {ValueType_Proj4_Param_Bool, Unit_None, true};
}

void addText(Coord &coord, const char *name, const char *value)
{
    const QString key = QString::fromLatin1(name);
    coord.projection.paramProj4[key] = key;
    coord.projection.param[key] = {ValueType_String, Unit_None, QString::fromLatin1(value)};
}

struct Row
{
    const char *name;
    const char *system;
    double longitude; ///< in the local frame, which counts as the system's axes do
    double latitude;
    double height;
    double pointScale;
    double elevationFactor;
    double combinedFactor;
    double convergence;
};

constexpr Row rows[] = {
    {"Utm31WestOfTheMeridian", "ed50_utm_31n.xml", 0.5, 52.25, 150.0, 0.9999575173917,
     0.9999765033636, 0.9999340217535, -1.9771977262663},
    {"Utm31South", "ed50_utm_31n.xml", 5.75, -33.5, 1800.0, 1.000404741713, 0.9997175033663,
     1.000122130741, -1.5186490695165},
    {"CaisterWaterTower", "british_national_grid.xml", 1.71792158333333, 52.6575703055556, 24.7,
     1.000377315439, 0.9999961304641, 1.000373444443, 2.9573766868879},
    {"RdNew", "rd_new.xml", 6.0, 53.0, 43.5, 0.9999725589576, 0.999993185339, 0.9999657444836,
     0.48634139097747},
    {"TexasSouthCentralBelowTheEllipsoid", "texas_south_central.xml", -96.0, 28.5, -25.0,
     0.9999685594445, 1.000003926885, 0.9999724862056, 1.4697378906819},
    {"BelgianLambert72", "belge_lambert_72.xml", 5.8, 50.7, 260.0, 0.99993847925, 0.999959265951,
     0.999897747707, 1.1053877207568},
    {"KrovakEastNorth", "s_jtsk_krovak_east_north.xml", 14.5, 50.0, 300.0, 0.9999016015553,
     0.9999529881632, 0.9998545943443, -7.7730474335019},
    {"Lo29WhoseAxesAreWestAndSouth", "hartebeesthoek94_lo29.xml", -28.25, 25.75, 1400.0,
     1.000069886692, 0.999780088397, 0.9998499597199, 0.32584929006891},
    {"CaspianSeaMercator", "caspian_sea_mercator.xml", 53.0, 53.0, -20.0, 1.234051113759,
     1.000003132784, 1.234054979775, 0.0},
    {"UpsNorth", "ups_north.xml", 44.0, 73.0, 100.0, 1.016195052727, 0.9999843652501,
     1.016179164771, 44.0},
    {"AntarcticPolarStereographic", "australian_antarctic_ps.xml", 120.0, -75.0, 2500.0,
     0.989625544501, 0.9996093265177, 0.9892389240434, -50.0},
    {"Lv95", "ch1903plus_lv95.xml", 8.75, 46.5, 2000.0, 1.000030045149, 0.9996865439182,
     0.9997165796497, 0.95762511503474},
    {"RsoBorneo", "timbalai_rso_borneo.xml", 116.0, 5.0, 10.0, 0.9998462531111, 0.9999984267894,
     0.9998446801423, 0.26171070918586},
};

class GridFactorsOf : public test::ProjTest, public testing::WithParamInterface<Row>
{};

TEST_P(GridFactorsOf, AreThoseOfTheFormulas)
{
    const Row &row = GetParam();
    const auto values = valuesAt(stored(row.system), row.longitude, row.latitude, row.height);
    // Derivatives of PROJ are numerical, with a step of 1e-5.
    constexpr double ofScales = 1e-9;
    constexpr double ofAngles = 1e-7; // [deg]
    ASSERT_TRUE(values.pointScale && values.elevationFactor && values.combinedFactor
                && values.convergence);
    EXPECT_NEAR(*values.pointScale, row.pointScale, ofScales);
    EXPECT_NEAR(*values.elevationFactor, row.elevationFactor, 1e-12);
    EXPECT_NEAR(*values.combinedFactor, row.combinedFactor, ofScales);
    EXPECT_NEAR(*values.convergence, row.convergence, ofAngles);
    EXPECT_EQ(values.missing, Missing::Nothing);
}

INSTANTIATE_TEST_SUITE_P(Systems, GridFactorsOf, testing::ValuesIn(rows),
                         [](const auto &row) { return row.param.name; });

class GridFactorsAt : public test::ProjTest
{};

/// Sets the parameters that have these names for PROJ, in the units that they are stored in.
void set(Coord &coord, std::initializer_list<std::pair<const char *, double>> parameters)
{
    for (const auto &[name, value] : parameters) {
        const QString key = coord.projection.paramProj4.key(QLatin1String(name));
        ASSERT_FALSE(key.isEmpty()) << name;
        coord.projection.param[key].value = value;
    }
}

double pointScale(const Coord &coord, double longitude, double latitude)
{
    return valuesAt(coord, longitude, latitude, 0.0).pointScale.value_or(0.0);
}

// Snyder, Map Projections: A Working Manual (USGS Professional Paper 1395), numerical examples on
// Clarke 1866.
TEST_F(GridFactorsAt, HaveTheScalesThatSnyderPrints)
{
    constexpr double halfDigit = 0.5e-7;
    const Ellipsoid clarke1866 = stored("texas_south_central.xml").ellipsoid;

    Coord utm = stored("ed50_utm_31n.xml");
    utm.ellipsoid = clarke1866;
    set(utm, {{"lon_0", -75.0}});
    EXPECT_NEAR(pointScale(utm, -73.5, 40.5), 0.9997989, halfDigit);

    Coord cone = stored("texas_south_central.xml");
    set(cone, {{"lat_1", 33.0}, {"lat_2", 45.0}, {"lat_0", 23.0}, {"lon_0", -96.0}});
    EXPECT_NEAR(pointScale(cone, -75.0, 35.0), 0.9970171, halfDigit);

    Coord mercator = stored("caspian_sea_mercator.xml");
    mercator.ellipsoid = clarke1866;
    set(mercator, {{"lat_ts", 0.0}, {"lon_0", 180.0}});
    EXPECT_NEAR(pointScale(mercator, -75.0, 35.0), 1.2194146, halfDigit);
}

TEST_F(GridFactorsAt, AreThereInHighLatitudes)
{
    const Coord mercator = stored("caspian_sea_mercator.xml");
    EXPECT_NEAR(pointScale(mercator, 53.0, 80.0), 4.272093450738, 1e-8);
    EXPECT_NEAR(pointScale(mercator, 53.0, 85.0), 8.511026890259, 3e-7);
}

// The constant of the cone of Lambert-93 is published with ten digits (IGN, Projections
// cartographiques en usage en France, NT/G 71): the convergence is as many times the longitude from
// the central meridian.
TEST_F(GridFactorsAt, HaveTheConvergenceOfAPublishedCone)
{
    constexpr double ofTheCone = 0.7256077650;
    Coord lambert93 = stored("texas_south_central.xml");
    lambert93.ellipsoid = stored("etrs89_laea_europe.xml").ellipsoid;
    set(lambert93, {{"lat_1", 44.0}, {"lat_2", 49.0}, {"lat_0", 46.5}, {"lon_0", 3.0}});
    for (const double longitude : {-4.5, 3.0, 7.25}) {
        EXPECT_NEAR(valuesAt(lambert93, longitude, 45.0, 0.0).convergence.value_or(-1.0),
                    ofTheCone * (longitude - 3.0), 1e-7);
    }
}

// Shapes without the same scale in all directions: equal-area, equidistant and polyconic ones.
TEST_F(GridFactorsAt, HaveNoPointScaleWhereItDependsOnTheDirection)
{
    struct
    {
        const char *system;
        double longitude;
        double latitude;
    } const nonConformal[] = {
        {"great_lakes_albers.xml", -80.0, 44.0}, {"etrs89_laea_europe.xml", 5.0, 50.0},
        {"trinidad_grid.xml", -60.9, 10.6},      {"usgs_polyconic_96w.xml", -90.0, 40.0},
        {"clarke66_bonne_75w.xml", -80.0, 30.0}, {"clarke66_eqdc_96w.xml", -75.0, 36.0},
        {"guam_1963_spcs.xml", 145.5, 14.0},
    };
    for (const auto &row : nonConformal) {
        const auto values = valuesAt(stored(row.system), row.longitude, row.latitude, 180.0);
        EXPECT_FALSE(values.pointScale) << row.system << ' ' << *values.pointScale;
        EXPECT_FALSE(values.combinedFactor) << row.system;
        EXPECT_TRUE(values.elevationFactor) << row.system;
        EXPECT_EQ(values.missing, Missing::NotConformal) << row.system;
        EXPECT_TRUE(values.convergence) << row.system;
    }
    // Albers: the constant of the cone times the longitude from the central meridian.
    EXPECT_NEAR(*valuesAt(stored("great_lakes_albers.xml"), -80.0, 44.0, 180.0).convergence,
                3.1762659229151, 1e-7);
}

TEST_F(GridFactorsAt, HaveNoPlaneWhereTheSystemIsGeographic)
{
    Coord coord = stored("rd_new.xml");
    coord.projection = Projection();
    coord.projection.proj4Projection = QStringLiteral("longlat");
    const auto values = valuesAt(coord, 6.0, 53.0, 43.5);
    EXPECT_FALSE(values.pointScale || values.combinedFactor || values.convergence);
    EXPECT_NEAR(values.elevationFactor.value_or(0.0), 0.999993185339, 1e-12);
    EXPECT_EQ(values.missing, Missing::NoPlane);
}

TEST_F(GridFactorsAt, HaveNoConvergenceAtThePole)
{
    Coord coord = stored("ups_north.xml");
    Location pole;
    pole.localLLH = Pos::fromLongLatH(0.0, 90.0, 0.0);
    const auto values = GridFactors(coord).at(pole);
    EXPECT_NEAR(values.pointScale.value_or(0.0), 0.994, 1e-9);
    EXPECT_FALSE(values.convergence);
    EXPECT_EQ(values.missing, Missing::Pole);
}

// The first place that is asked for is where the plane is cut open, opposite of 99 degrees west.
TEST_F(GridFactorsAt, AreKnownWhereThePlaneIsCut)
{
    const Coord coord = stored("texas_south_central.xml");
    EXPECT_TRUE(valuesAt(coord, 81.0, 28.5, 0.0).pointScale);
    EXPECT_TRUE(valuesAt(coord, 80.9999, 28.5, 0.0).pointScale);
}

// PROJ gives factors as if a prime meridian of the projection were Greenwich's. Convergence and
// scale are those of the same cone with its central meridian at Paris, 2.33722917 east of
// Greenwich.
TEST_F(GridFactorsAt, KnowAPrimeMeridianOfTheProjection)
{
    Coord coord = stored("texas_south_central.xml");
    addText(coord, "pm", "paris");
    const double paris = 2.337229166667;
    const auto values = valuesAt(coord, -96.0 + paris, 28.5, -25.0);
    EXPECT_NEAR(values.pointScale.value_or(0.0), 0.9999685594445, 1e-9);
    EXPECT_NEAR(values.convergence.value_or(0.0), 1.4697378906819, 1e-7);
}

// In a definition with axes PROJ takes no notice of it, neither for northings nor here.
TEST_F(GridFactorsAt, AreThoseOfKrovakWithItsFlag)
{
    Coord coord = stored("s_jtsk_krovak_east_north.xml");
    addFlag(coord, "czech");
    const auto values = valuesAt(coord, 14.5, 50.0, 300.0);
    EXPECT_NEAR(values.pointScale.value_or(0.0), 0.9999016015553, 1e-9);
    EXPECT_NEAR(values.convergence.value_or(0.0), -7.7730474335019, 1e-7);
}

// The grid file does not even have to be there.
TEST_F(GridFactorsAt, DoNotNeedTheGridOfTheDatumShift)
{
    const Coord coord = stored("rd_new.xml");
    Location location = at(coord, 6.0, 53.0, 43.5);
    Coord withGrid = coord;
    withGrid.ellipsoid.proj4EllpsName = QStringLiteral("bessel +nadgrids=@no_such_file.gsb,null");
    const auto values = GridFactors(withGrid).at(location);
    EXPECT_NEAR(values.pointScale.value_or(0.0), 0.9999725589576, 1e-9);
    EXPECT_NEAR(values.elevationFactor.value_or(0.0), 0.999993185339, 1e-12);
    EXPECT_NEAR(values.convergence.value_or(0.0), 0.48634139097747, 1e-7);
}

TEST_F(GridFactorsAt, AreUnknownForAProjectionThatProjRefuses)
{
    const Location location = at(stored("rd_new.xml"), 6.0, 53.0, 43.5);
    Coord coord = stored("rd_new.xml");
    coord.projection.proj4Projection = QStringLiteral("no_such_projection");
    const auto values = GridFactors(coord).at(location);
    EXPECT_FALSE(values.pointScale || values.combinedFactor || values.convergence);
    EXPECT_TRUE(values.elevationFactor);
    EXPECT_EQ(values.missing, Missing::Unknown);
}

TEST_F(GridFactorsAt, ComeBackWithPROJ)
{
    const Coord coord = stored("rd_new.xml");
    const Location location = at(coord, 6.0, 53.0, 43.5);
    GridFactors factors(coord);
    EXPECT_TRUE(factors.at(location).combinedFactor);
    ProjLib::___unloadEnviroment();
    const auto without = factors.at(location);
    EXPECT_FALSE(without.pointScale || without.elevationFactor || without.convergence);
    EXPECT_EQ(without.missing, Missing::Unknown);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(factors.at(location).combinedFactor);
}

} // namespace
} // namespace KelStd
