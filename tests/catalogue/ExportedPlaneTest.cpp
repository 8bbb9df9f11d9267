// Directions of axes, units and ellipsoids of exported systems, by PROJ's own programs cs2cs, cct
// and projinfo; signs, feet and sites by hand.

#include "calibration/SiteRecords.h"
#include "catalogue/CatalogueTest.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"

#include <QtCore/QProcess>

#include <cmath>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

constexpr double tolerance = 1e-5; ///< [m], of numbers with 15 digits

const ExportForm formsOfShift[] = {ExportForm::Wkt2, ExportForm::ProjJson, ExportForm::Proj};
const ExportForm formsOfSite[] = {ExportForm::Wkt2, ExportForm::ProjJson};

class ExportedPlane : public CatalogueTest
{
protected:
    ExportedSystem exported(const Coord &coord, ExportForm form, const QString &code = QString(),
                            const std::optional<SystemOrigin::PlaneUnit> &unit = {})
    {
        CatalogueFailure failure;
        const auto text = catalogue().exportSystem(coord, form, code, &failure, unit);
        EXPECT_TRUE(text.has_value()) << failure.text;
        return text.value_or(ExportedSystem());
    }

    QString refusalOf(const Coord &coord, ExportForm form)
    {
        CatalogueFailure failure;
        EXPECT_FALSE(catalogue().exportSystem(coord, form, QString(), &failure).has_value());
        return failure.text;
    }
};

struct Projected
{
    const char *name;
    const char *definition;
    double longitude; ///< of a place [deg]
    double latitude;
};

class ExportedAxes : public ExportedPlane, public testing::WithParamInterface<Projected>
{};

INSTANTIATE_TEST_SUITE_P(
    Projections, ExportedAxes,
    testing::Values(
        Projected{"tmerc", "+proj=tmerc +lat_0=0 +lon_0=29 +k_0=1", 29.5, -25.5},
        Projected{"shiftedTmerc", "+proj=tmerc +lat_0=1 +lon_0=29 +k_0=0.9996 +x_0=5000", 29.5,
                  -25.5},
        Projected{"lcc", "+proj=lcc +lat_1=-25 +lat_0=-25 +lon_0=29 +k_0=1 +x_0=1000 +y_0=-500",
                  29.5, -25.5},
        Projected{"krovak",
                  "+proj=krovak +lat_0=49.5 +lon_0=24.833333333333333 "
                  "+alpha=30.288139752777778 +k_0=0.9999",
                  15.0, 50.0},
        Projected{"cass", "+proj=cass +lat_0=5 +lon_0=103 +x_0=100 +y_0=200", 103.5, 4.5},
        Projected{"somerc", "+proj=somerc +lat_0=46.95 +lon_0=7.44 +k_0=1 +x_0=600000", 8.0, 46.5},
        Projected{"sterea", "+proj=sterea +lat_0=52.1 +lon_0=5.4 +k_0=0.9999 +x_0=155000", 6.0,
                  52.5},
        Projected{"omerc", "+proj=omerc +lat_0=4 +lonc=115 +alpha=53.3 +gamma=53.1 +k=0.99984",
                  115.5, 4.5},
        Projected{"poly", "+proj=poly +lat_0=0 +lon_0=-54 +x_0=5000000", -53.0, -10.0},
        Projected{"merc", "+proj=merc +lon_0=110 +k_0=0.997 +x_0=3900000", 111.0, -5.0}),
    [](const auto &row) { return std::string(row.param.name); });

/// The way that the axes of a system point, as signs of its numbers.
struct Directions
{
    EEllipsoidDirection word;
    double east;
    double north;
};
const Directions unusual[] = {{EllipsoidDirection_WSU, -1.0, -1.0},
                              {EllipsoidDirection_ESU, 1.0, -1.0},
                              {EllipsoidDirection_WNU, -1.0, 1.0}};

/// PROJ reads it as another method, whose text it does not write with a false easting.
bool isKnownToNobody(const Projected &row, const Directions &directions)
{
    return std::string(row.name) == "shiftedTmerc" && directions.word == EllipsoidDirection_WSU;
}

TEST_P(ExportedAxes, AreThoseOfTheSystem)
{
    const QString plain = QString::fromLatin1(GetParam().definition)
                          + QStringLiteral(" +ellps=bessel +towgs84=598.1,73.7,418.2");
    const QList<Pos> place = {Pos::fromLongLatH(GetParam().longitude, GetParam().latitude, 0.0)};
    const stXYZ enu = test::runCs2csTo(plain, place).value(0).getXYZ();
    Coord coord = *import(plain.toLatin1() + " +type=crs").system;
    for (const Directions &directions : unusual) {
        coord.ellipsoid.positiveDir = directions.word;
        if (isKnownToNobody(GetParam(), directions)) {
            for (const ExportForm form : formsOfShift)
                refusalOf(coord, form);
            continue;
        }
        for (const ExportForm form : formsOfShift) {
            const QString text = exported(coord, form).text;
            const stXYZ read = test::runCs2csTo(text, place).value(0).getXYZ();
            EXPECT_NEAR(read.x, directions.east * enu.x, tolerance) << text;
            EXPECT_NEAR(read.y, directions.north * enu.y, tolerance) << text;
        }
    }
}

TEST_P(ExportedAxes, AreThoseOfTheSite)
{
    const QString plain = QString::fromLatin1(GetParam().definition)
                          + QStringLiteral(" +ellps=bessel +towgs84=598.1,73.7,418.2");
    const QList<Pos> place = {Pos::fromLongLatH(GetParam().longitude, GetParam().latitude, 0.0)};
    const stXYZ enu = test::runCs2csTo(plain, place).value(0).getXYZ();
    Coord coord = *import(plain.toLatin1() + " +type=crs").system;
    coord.planeTransform = test::similarity(2000.25, -1000.5, 108000.0, 1.0001); // 30 degrees
    const double cosine = std::sqrt(3.0) / 2.0;
    for (const Directions &directions : unusual) {
        coord.ellipsoid.positiveDir = directions.word;
        if (isKnownToNobody(GetParam(), directions))
            continue;
        const double e = directions.east * enu.x;
        const double n = directions.north * enu.y;
        for (const ExportForm form : formsOfSite) {
            const QString text = exported(coord, form).text;
            const stXYZ read = test::runCs2csTo(text, place).value(0).getXYZ();
            EXPECT_NEAR(read.x, 2000.25 + 1.0001 * (e * cosine + n * 0.5), tolerance) << text;
            EXPECT_NEAR(read.y, -1000.5 + 1.0001 * (-e * 0.5 + n * cosine), tolerance) << text;
        }
    }
}

/// The word of the axes in PROJ's own text of a system.
QString axisOf(const QString &code)
{
    QProcess process;
    process.start(QStringLiteral("projinfo"),
                  {QStringLiteral("-q"), QStringLiteral("-o"), QStringLiteral("PROJ"), code});
    EXPECT_TRUE(process.waitForFinished());
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    return text.mid(text.indexOf(QLatin1String("+axis=")), 9);
}

TEST_F(ExportedPlane, KeepsTheAxesOfSystemsOfTheDatabaseInAPROJString)
{
    const Pos prague = Pos::fromLongLatH(15.0, 50.0, 0.0);
    for (const char *name : {"EPSG:2065", "EPSG:5513", "ESRI:102065"}) {
        const QString code = QString::fromLatin1(name);
        const ImportedSystem imported = import(name);
        ASSERT_TRUE(imported.system) << name;
        const QString text = exported(*imported.system, ExportForm::Proj, code).text;
        EXPECT_TRUE(text.contains(axisOf(code))) << text;
        // By another of several shifts, metres apart.
        const stXYZ known = test::runCs2csTo(code, {prague}).value(0).getXYZ();
        const stXYZ read = test::runCs2csTo(text, {prague}).value(0).getXYZ();
        EXPECT_NEAR(read.x, known.x, 10.0) << text;
        EXPECT_NEAR(read.y, known.y, 10.0) << text;
    }
}

TEST_F(ExportedPlane, HasNoEsriTextOfAxesThatPointElsewhere)
{
    Coord coord =
        *import("+proj=lcc +lat_1=-25 +lat_0=-25 +lon_0=29 +datum=WGS84 +type=crs").system;
    EXPECT_TRUE(catalogue().exportSystem(coord, ExportForm::Esri));
    for (const Directions &directions : unusual) {
        coord.ellipsoid.positiveDir = directions.word;
        EXPECT_TRUE(refusalOf(coord, ExportForm::Esri).contains(QLatin1String("which way axes")));
    }
}

// 6378137 m times half the difference of the squared eccentricities, 0.006694380 of WGS 84 and
// 0.006674372 of Bessel's ellipsoid: 63.8 m. That of GRS 80 differs by 0.1 mm.
TEST_F(ExportedPlane, SaysThatAnEsriTextLosesTheShiftFromAnotherEllipsoid)
{
    const struct
    {
        const char *ellipsoid;
        const char *words;
    } rows[] = {{"bessel", "some 64 m"}, {"sphere", "some 21349 m"}, {"GRS80", ""}, {"WGS84", ""}};
    for (const auto &row : rows) {
        Coord coord = *import(QByteArray("+proj=tmerc +lon_0=9 +x_0=500000 +towgs84=0,0,0 +ellps=")
                              + row.ellipsoid + " +type=crs")
                           .system;
        coord.coord_name = QStringLiteral("cb");
        const ExportedSystem text = exported(coord, ExportForm::Esri);
        EXPECT_TRUE(text.text.startsWith(QLatin1String("PROJCS[\"cb\",")));
        const QString lost = text.lost.join(QLatin1Char(' '));
        EXPECT_TRUE(lost.contains(QLatin1String(row.words)));
        EXPECT_EQ(lost.isEmpty(), *row.words == '\0') << lost;
    }
}

TEST_F(ExportedPlane, SaysThatEastingsBeginAnewBeyondHalfATurn)
{
    const Coord coord = *import("+proj=merc +lon_0=150 +datum=WGS84 +over +type=crs").system;
    // Half a turn from 150 is 30 west; 170 degrees to the west of it lies 20 west.
    const QList<Pos> place = {Pos::fromLongLatH(-40.0, 0.0, 0.0)};
    const double metresPerDegree = 6378137.0 * std::acos(-1.0) / 180.0;
    for (const ExportForm form :
         {ExportForm::Wkt2, ExportForm::ProjJson, ExportForm::Proj, ExportForm::Esri}) {
        const ExportedSystem text = exported(coord, form);
        const bool isLost = text.lost.join(QLatin1Char(' ')).contains(QLatin1String("\"over\""));
        EXPECT_EQ(isLost, form == ExportForm::Esri);
        EXPECT_NEAR(test::runCs2csTo(text.text, place).value(0).getXYZ().x,
                    (isLost ? 170.0 : -190.0) * metresPerDegree, 1e-3);
    }
}

TEST_F(ExportedPlane, CountsASiteInTheUnitOfItsSystem)
{
    const ImportedSystem imported = import("EPSG:2263");
    Coord coord = *imported.system;
    const Pos place = Pos::fromLongLatH(-73.94, 40.71, 20.0);
    const double foot = 1200.0 / 3937.0; // [m], of the U.S. survey
    const SystemOrigin::PlaneUnit unit{QStringLiteral("US survey foot"), foot};
    // In feet, with the ellipsoid of WGS 84 by its numbers, since cs2cs takes it for GRS 80.
    const stXYZ plane =
        test::runCct(QStringLiteral("+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad "
                                    "+step +proj=cart +a=6378137 +rf=298.257223563 "
                                    "+step +inv +proj=cart +ellps=GRS80 "
                                    "+step +proj=lcc +lat_0=40.166666666666667 +lon_0=-74 "
                                    "+lat_1=41.033333333333333 +lat_2=40.666666666666667 "
                                    "+x_0=300000 +y_0=0 +ellps=GRS80 +units=us-ft"),
                     {place})
            .value(0)
            .getXYZ();
    // By a quarter of a turn, in metres: E' = x + s N, N' = y - s E.
    coord.planeTransform = test::similarity(-92736.5, -17997.25, 324000.0, 1.0002);
    coord.elevationFitting = test::fixedHeight(1.5);
    const double east = -92736.5 / foot + 1.0002 * plane.y;
    const double north = -17997.25 / foot - 1.0002 * plane.x;
    for (const ExportForm form : formsOfSite) {
        const ExportedSystem text = exported(coord, form, QString(), unit);
        const stXYZ read = test::runCs2csTo(text.text, {place}).value(0).getXYZ();
        EXPECT_NEAR(read.x, east, 1e-3) << text.text; // cs2cs leaves GRS 80 out of it
        EXPECT_NEAR(read.y, north, 1e-3);
        EXPECT_TRUE(text.text.contains(QLatin1String("0.3048006")));
    }
    const ExportedSystem pipeline = exported(coord, ExportForm::Proj, QString(), unit);
    const stXYZ read = test::runCct(pipeline.text, {place}).value(0).getXYZ();
    EXPECT_NEAR(read.x, east, tolerance) << pipeline.text;
    EXPECT_NEAR(read.y, north, tolerance);
    EXPECT_NEAR(read.z, plane.z * foot + 1.5, tolerance);
    // Without a unit it counts in metres.
    const stXYZ metres =
        test::runCct(exported(coord, ExportForm::Proj).text, {place}).value(0).getXYZ();
    EXPECT_NEAR(metres.x, east * foot, tolerance);
}

// Positions are computed in metres whatever unit the projection's record has.
TEST_F(ExportedPlane, CountsInTheUnitThatPositionsAreGivenIn)
{
    Coord coord = *import("+proj=tmerc +lon_0=9 +datum=WGS84 +type=crs").system;
    coord.projection.loc_or_height_unit = Unit_Foot;
    const QList<Pos> place = {Pos::fromLongLatH(9.5, 47.0, 0.0)};
    const stXYZ metres =
        test::runCs2csTo(QStringLiteral("+proj=tmerc +lon_0=9 +datum=WGS84"), place)
            .value(0)
            .getXYZ();
    const SystemOrigin::PlaneUnit foot{QStringLiteral("foot"), 0.3048};
    for (const auto &shift : {stPlaneTransform(), test::similarity(100.0, 200.0, 0.0, 1.0)}) {
        coord.planeTransform = shift;
        const double east = metres.x + shift.east_translate.value.toDouble();
        for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
            const auto read = [&](const ExportedSystem &text) {
                EXPECT_TRUE(text.lost.isEmpty()) << text.lost.join(QLatin1Char(' '));
                return test::runCs2csTo(text.text, place).value(0).getXYZ().x;
            };
            EXPECT_NEAR(read(exported(coord, form)), east, tolerance);
            EXPECT_NEAR(read(exported(coord, form, QString(), foot)), east / 0.3048, tolerance);
        }
    }
}

} // namespace
} // namespace KelStd::catalogue
