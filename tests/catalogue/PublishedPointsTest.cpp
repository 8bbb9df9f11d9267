// Check points that agencies and the EPSG Guidance Note publish, from the import by code to the
// conversion.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <QtCore/QSet>
#include <QtCore/QStringList>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

class PublishedPoints : public CatalogueTest
{};

enum class From
{
    Local,
    Wgs84
};

/// Longitude from Greenwich and latitude as they are published (degrees:minutes:seconds); easting
/// and northing in the system's own unit, in the directions of its axes.
struct PointRow
{
    const char *country;
    const char *code;
    const char *source;
    From from;
    const char *longitude;
    const char *latitude;
    double easting;
    double northing;
    double tolerance; ///< half a unit of the last printed digit, of what is printed shortest
};

constexpr const char *note = "EPSG Guidance Note 7-2";
constexpr const char *gigs = "IOGP GIGS tests";
constexpr const char *lantmateriet =
    "Lantmateriet, check points of the Gauss conformal projection, SWEREF 99 TM";
/// The projection's origin and what the coordinates are there are printed in its definition.
constexpr const char *origin = "the origin in the definition, as the EPSG Dataset prints it";

constexpr PointRow rows[] = {
    {"Netherlands", "EPSG:28992", note, From::Local, "6", "53", 196105.283, 557057.739, 0.0005},
    {"United Kingdom", "EPSG:27700", "Ordnance Survey, A guide to coordinate systems", From::Local,
     "1:43:04.5177", "52:39:27.2531", 651409.903, 313177.270, 0.002},
    {"Ireland", "EPSG:29903", "OSI and OSNI, Making maps compatible with GPS", From::Local,
     "-6:20:52.9181", "53:21:50.5441", 309958.26, 236141.93, 0.005},
    {"Belgium", "EPSG:31370", gigs, From::Local, "5", "53", 192504.921, 410490.433, 0.0005},
    {"Belgium", "EPSG:31300", note, From::Local, "5:48:26.533", "50:40:46.461", 251763.20,
     153034.13, 0.02},
    {"Switzerland", "EPSG:2056", "swisstopo, Formulas and constants, Rigi", From::Local,
     "8:29:11.11127154", "47:03:28.95659233", 2679520.05, 1212273.44, 0.005},
    {"Switzerland", "EPSG:21781", "swisstopo, Formulas and constants, Rigi", From::Local,
     "8:29:11.11127154", "47:03:28.95659233", 679520.05, 212273.44, 0.005},
    {"Czechia", "EPSG:5514", note, From::Local, "16:50:59.179", "50:12:32.442", -568990.997,
     -1050538.643, 0.02},
    {"Czechia", "EPSG:5513", note, From::Local, "16:50:59.179", "50:12:32.442", 568990.997,
     1050538.643, 0.02},
    {"France", "EPSG:27561", "IGN, NTG 71, example of ALG0004 (angles in radians)", From::Local,
     "8.33722914079", "50.00000000016245", 1029705.083, 272723.849, 0.01},
    {"Finland", "EPSG:3067", "JUHTA, JHS 197, station G4", From::Local, "19:50:53.29237",
     "60:23:06.38474", 106256.35958, 6715706.37705, 0.0002},
    {"Australia", "EPSG:28354", gigs, From::Local, "146", "-40", 926893.302, 5560253.083, 0.0005},
    {"Australia", "EPSG:7855", "ICSM, GDA2020 Technical Manual, Flinders Peak", From::Local,
     "144:25:29.52440", "-37:57:03.72030", 273741.297, 5796489.777, 0.0005},
    {"New Zealand", "EPSG:27200", "test vectors of circular 1973/32", From::Local, "172.723106",
     "-40.512409", 2486533.395, 6077263.661, 0.06},
    {"South Africa", "EPSG:2053", note, From::Wgs84, "28:16:57.479", "-25:43:55.302", 71984.49,
     2847342.74, 0.02},
    {"Namibia and South Africa", "EPSG:2049", gigs, From::Wgs84, "21.5", "-25", -50475.46,
     2766147.25, 0.005},
    {"Japan", "EPSG:6677", "GSI, bl2xy, zone IX", From::Local, "140.08785504166664",
     "36.103774791666666", 22916.2436, 11543.6883, 0.0001},
    {"Hong Kong", "EPSG:2326", "Lands Department, transformation tool", From::Local,
     "114.138734989", "22.323701767", 832591.320, 820351.389, 0.001},
    {"Brazil", "EPSG:5880", gigs, From::Local, "-45", "-6", 5996378.70982, 9328349.94408, 1e-5},
    {"Argentina", "EPSG:22175", gigs, From::Local, "-58.9999426", "-39.9996182", 5585400.0,
     5572000.0, 0.02},
    {"Colombia", "EPSG:6247", note, From::Local, "-74:15:00", "4:48:00", 80859.033, 122543.174,
     0.0005},
    {"Indonesia", "EPSG:3002", note, From::Local, "120", "-3", 5009726.58, 569150.82, 0.005},
    {"Azerbaijan", "EPSG:3388", note, From::Local, "53", "53", 165704.29, 5171848.07, 0.005},
    {"Brunei", "EPSG:29873", note, From::Local, "115:48:19.8196", "5:23:14.1129", 679245.73,
     596562.78, 0.005},
    {"Trinidad", "EPSG:30200", note, From::Local, "-62", "10", 66644.94, 82536.22, 0.005},
    {"Jamaica", "EPSG:24200", note, From::Local, "-76:56:37.26", "17:55:55.80", 255966.58,
     142493.51, 0.005},
    {"United States", "EPSG:32040", note, From::Local, "-96", "28:30", 2963503.91, 254759.80,
     0.005},
    {"United States and Canada", "EPSG:3174", note, From::Local, "-78:45", "42:45", 1466493.492,
     702903.006, 0.0005},
    {"Germany and Europe", "EPSG:3035", note, From::Local, "5", "50", 3962799.45, 2999718.85,
     0.005},
    {"Norway", "EPSG:32631", gigs, From::Wgs84, "8", "60", 778711.230, 6661953.041, 0.0005},
    {"Antarctica", "EPSG:3032", note, From::Local, "120", "-75", 7255380.79, 7053389.56, 0.005},
    {"Guam", "EPSG:3993", "Snyder, USGS Professional Paper 1395; EPSG Guidance Note 7-2",
     From::Local, "144:38:07.19265", "13:20:20.53846", 37712.48, 35242.00, 0.005},
    {"Fiji", "EPSG:3139", note, From::Local, "179:59:39.6115", "-16:50:29.2435", 1601528.90,
     1336966.01, 0.01},
    {"Micronesia", "EPSG:3295", note, From::Local, "138:11:34.908", "9:35:47.493", 42665.90,
     65509.82, 0.01},
    {"Sweden", "EPSG:3006", lantmateriet, From::Local, "12:45", "55", 356083.438, 6097106.672,
     0.001},
    {"Sweden", "EPSG:3006", lantmateriet, From::Local, "19:30", "57", 773251.054, 6326392.707,
     0.001},
    {"Sweden", "EPSG:3006", lantmateriet, From::Local, "11:15", "59", 284626.066, 6546096.724,
     0.001},
    {"Madagascar", "EPSG:29701", note, From::Local, "44:27:27.260", "-16:11:23.280", 188333.848,
     1098841.091, 0.02},
    {"Mexico, on the web's maps", "EPSG:3857", note, From::Wgs84, "-100:20:00", "24:22:54.433",
     -11169055.58, 2800000.00, 0.02},
    {"Luxembourg", "EPSG:2169", origin, From::Local, "6:10", "49:50", 80000, 100000, 1e-4},
    {"Portugal", "EPSG:3763", origin, From::Local, "-8:07:59.19", "39:40:05.73", 0, 0, 1e-4},
    {"Israel", "EPSG:2039", origin, From::Local, "35:12:16.261", "31:44:03.817", 219529.584,
     626907.39, 1e-3},
    {"Iceland", "EPSG:3057", origin, From::Local, "-19", "65", 500000, 500000, 1e-4},
    {"Estonia", "EPSG:3301", origin, From::Local, "24", "57:31:03.19415", 500000, 6375000, 1e-3},
    {"Hungary", "EPSG:23700", origin, From::Local, "19:02:54.8584", "47:08:39.8174", 650000, 200000,
     1e-3},
    {"Romania", "EPSG:3844", origin, From::Local, "25", "46", 500000, 500000, 1e-4},
    {"Poland", "EPSG:2180", origin, From::Local, "19", "0", 500000, -5300000, 1e-4},
};

/// [deg] of degrees, or degrees:minutes:seconds with the sign in front.
double degrees(const char *text)
{
    const QStringList parts = QString::fromLatin1(text).split(QLatin1Char(':'));
    const double sign = parts.at(0).startsWith(QLatin1Char('-')) ? -1.0 : 1.0;
    return sign
           * (std::abs(parts.at(0).toDouble()) + parts.value(1).toDouble() / 60.0
              + parts.value(2).toDouble() / 3600.0);
}

TEST_F(PublishedPoints, ComeOutOfImportedSystems)
{
    QSet<QString> countries;
    for (const PointRow &row : rows) {
        // What is published here is the projection: systems without a shift to WGS 84 count, too.
        ImportOptions consent;
        consent.takeAsWgs84 = true;
        const ImportedSystem imported = import(row.code, consent);
        ASSERT_TRUE(imported.system) << row.code;
        const Coord &coord = *imported.system;
        // The local frame of a southern system counts as its plane does.
        const bool isTurned =
            coord.ellipsoid.positiveDir == EllipsoidDirection_WSU && row.from == From::Local;
        const double sign = isTurned ? -1.0 : 1.0;
        const Pos place =
            Pos::fromLongLatH(sign * degrees(row.longitude), sign * degrees(row.latitude), 0.0);
        Location location;
        QString error;
        ASSERT_TRUE(
            row.from == From::Local
                ? Coord::MakeLocation_byLocalLatLongH(place, location, nullptr, &coord, &error)
                : Coord::MakeLocation_byWGS84LatLongH(place, location, nullptr, &coord, &error))
            << row.code << ' ' << error.toStdString();
        const double unit = imported.report.metresPerUnit;
        EXPECT_NEAR(location.get_NEH_E() / unit, row.easting, row.tolerance)
            << row.code << ' ' << row.source;
        EXPECT_NEAR(location.get_NEH_N() / unit, row.northing, row.tolerance)
            << row.code << ' ' << row.source;
        if (row.source != origin)
            countries += QString::fromLatin1(row.country);
    }
    EXPECT_GE(countries.size(), 30);
}

} // namespace
} // namespace KelStd::catalogue
