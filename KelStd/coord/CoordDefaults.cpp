#include <KelStd/coord/Coord.h>

#include <cmath>
#include <limits>

namespace KelStd {

namespace {

constexpr double zoneWidth = 6.0;       ///< [deg], of a UTM zone
constexpr double firstZoneEdge = 180.0; ///< [deg west], where zone 1 begins

struct DefaultParameter
{
    const char *key;
    EValueType valType;
    EUnit unit;
    double value;
    const char *projName;
};

constexpr DefaultParameter tmercParameters[] = {
    {"FalseEast", ValueType_Double, Unit_None, 0.0, "x_0"},
    {"FalseNorth", ValueType_Double, Unit_None, 0.0, "y_0"},
    {"k", ValueType_Double, Unit_None, 1.0, "k"},
    {"lat_0", ValueType_Latitude, Unit_Degree, 0.0, "lat_0"},
    {"lon_0", ValueType_Longitude, Unit_Degree, 0.0, "lon_0"},
};

} // namespace

void Coord::CreateDefaultTMercCoordination(Coord &coord)
{
    coord = Coord();
    coord.coord_name = QStringLiteral("default_tmerc_coodination"); // spelled so in existing files

    coord.ellipsoid.ellipsoid_name = QStringLiteral("default_wgs84_ellipsoid");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("WGS84");
    coord.ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Meter, 6378137.0);
    // This library's fixed default; WGS84 itself has 298.257223563.
    coord.ellipsoid.reciprocal = 298.25772236;

    coord.projection.projection_name = QStringLiteral("default_tmerc_projection");
    coord.projection.proj4Projection = QStringLiteral("tmerc");
    for (const DefaultParameter &row : tmercParameters) {
        const QString key = QString::fromLatin1(row.key);
        coord.projection.param.insert(key, Param(row.valType, row.unit, row.value));
        coord.projection.paramProj4.insert(key, QString::fromLatin1(row.projName));
    }
}

int Coord::DegreedLogitude_to_UtmZone(double longitude)
{
    const double zone = 1.0 - std::trunc((longitude + firstZoneEdge) / -zoneWidth);
    if (std::isnan(zone))
        return 0;
    constexpr int minZone = std::numeric_limits<int>::min();
    constexpr int maxZone = std::numeric_limits<int>::max();
    if (zone <= static_cast<double>(minZone))
        return minZone;
    return zone >= static_cast<double>(maxZone) ? maxZone : static_cast<int>(zone);
}

double Coord::UtmZone_to_DegreedLogitude(int zone)
{
    return (static_cast<double>(zone) - 1.0) * zoneWidth - firstZoneEdge + zoneWidth / 2.0;
}

} // namespace KelStd
