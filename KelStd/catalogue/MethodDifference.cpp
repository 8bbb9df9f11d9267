#include <KelStd/catalogue/MethodDifference.h>

#include <KelStd/catalogue/ProjectionRecords.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double radians = 3.14159265358979323846 / 180.0;

/// The arc of the meridian [m] from the equator to a latitude [rad], by the series of EPSG's method
/// 9807 in the squared eccentricity, whose error on the earth's ellipsoids is below 1 mm.
double meridianArc(double a, double e2, double latitude)
{
    const double e4 = e2 * e2;
    const double e6 = e4 * e2;
    const double e8 = e4 * e4;
    return a
           * ((1.0 - e2 / 4.0 - 3.0 * e4 / 64.0 - 5.0 * e6 / 256.0 - 175.0 * e8 / 16384.0)
                  * latitude
              - (3.0 * e2 / 8.0 + 3.0 * e4 / 32.0 + 45.0 * e6 / 1024.0 + 105.0 * e8 / 4096.0)
                    * std::sin(2.0 * latitude)
              + (15.0 * e4 / 256.0 + 45.0 * e6 / 1024.0 + 525.0 * e8 / 16384.0)
                    * std::sin(4.0 * latitude)
              - (35.0 * e6 / 3072.0 + 175.0 * e8 / 12288.0) * std::sin(6.0 * latitude));
}

/// How far the plate carree of a sphere with the ellipsoid's axis is from that of the ellipsoid,
/// EPSG's method 1028, at most [m]: northings by the arc of the meridian, eastings by the radius of
/// the standard parallel.
double cylindricalDifference(const std::vector<MethodValue> &values, const Ellipsoid &ellipsoid,
                             const SystemArea &area)
{
    double parallel = 0.0;
    double meridian = 0.0;
    for (const MethodValue &value : values) {
        if (value.code == 8823) // first standard parallel
            parallel = value.value * radians;
        else if (value.code == 8802) // longitude of the natural origin
            meridian = value.value;
    }
    const double a = ellipsoid.biggerHalfAxle.value.toDouble();
    const double f = 1.0 / ellipsoid.reciprocal;
    const double e2 = f * (2.0 - f);
    const double south = area.isKnown ? area.south : -90.0;
    const double north = area.isKnown ? area.north : 90.0;
    double northing = 0.0;
    constexpr int steps = 1000;
    for (int step = 0; step <= steps; ++step) {
        const double latitude = (south + (north - south) * step / steps) * radians;
        northing = std::max(northing, std::abs(a * latitude - meridianArc(a, e2, latitude)));
    }
    double longitude = 180.0;
    if (area.isKnown && area.west <= area.east)
        longitude = std::max(std::abs(area.west - meridian), std::abs(area.east - meridian));
    const double radius = a / std::sqrt(1.0 - e2 * std::pow(std::sin(parallel), 2));
    const double easting = (radius - a) * std::cos(parallel) * std::min(longitude, 180.0) * radians;
    return std::max(northing, std::abs(easting));
}

} // namespace

double missingTurn(const ProjSession &session, const PJ *projected)
{
    const ProjObject conversion(
        session.functions().proj_crs_get_coordoperation(session.context(), projected));
    const auto ellipsoid = ellipsoidOf(session, projected);
    if (conversion == nullptr || !ellipsoid
        || session.methodOf(conversion.get())
               != QLatin1String("Lambert Conic Conformal (2SP Belgium)"))
        return 0.0;
    double parallels[2] = {};
    for (const MethodValue &value : session.valuesOf(conversion.get())) {
        if (value.code == 8823 || value.code == 8824) // first and second standard parallel
            parallels[value.code - 8823] = value.value;
    }
    // The formulas of EPSG's method 9803: theta is n times the longitude, and less by the turn.
    const double f = 1.0 / ellipsoid->reciprocal;
    const double e = std::sqrt(f * (2.0 - f));
    const auto m = [e](double latitude) {
        return std::cos(latitude) / std::sqrt(1.0 - std::pow(e * std::sin(latitude), 2));
    };
    const auto t = [e](double latitude) {
        const double sine = e * std::sin(latitude);
        return std::tan(45.0 * radians - latitude / 2.0)
               / std::pow((1.0 - sine) / (1.0 + sine), e / 2.0);
    };
    const double first = parallels[0] * radians;
    const double second = parallels[1] * radians;
    const double n = std::log(m(first) / m(second)) / std::log(t(first) / t(second));
    constexpr double turn = 29.2985 / 3600.0; // [deg]
    return std::isfinite(n) && n != 0.0 ? turn / n : 0.0;
}

MethodDifference methodDifference(const ProjSession &session, const PJ *projected,
                                  const SystemArea &area)
{
    const ProjObject conversion(
        session.functions().proj_crs_get_coordoperation(session.context(), projected));
    const QString method = conversion == nullptr ? QString() : session.methodOf(conversion.get());
    const auto ellipsoid = ellipsoidOf(session, projected);
    if (missingTurn(session, projected) != 0.0)
        return {QStringLiteral("PROJ leaves out the turn by 29.2985\" of the method \"%1\"; the "
                               "system has it in the longitude of its origin.")
                    .arg(method),
                0.0};
    const bool isOfEllipsoid = ellipsoid && ellipsoid->reciprocal != 0.0;
    if (isOfEllipsoid && method == QLatin1String("Equidistant Cylindrical")) {
        const double metres =
            cylindricalDifference(session.valuesOf(conversion.get()), *ellipsoid, area);
        return {QStringLiteral("THE COORDINATES ARE NOT THOSE OF THE PUBLISHED METHOD: PROJ "
                               "computes \"%1\" on a sphere, which differs by up to %2 m within "
                               "the system's area. Do not use them beside those of programs that "
                               "compute it on the ellipsoid.")
                    .arg(method)
                    .arg(metres, 0, 'f', 0),
                metres};
    }
    if (isOfEllipsoid && method.endsWith(QLatin1String("(Spherical)")))
        return {QStringLiteral("The method \"%1\" is for a sphere, and the system's figure is an "
                               "ellipsoid: what PROJ makes of it can differ from other programs by "
                               "kilometres.")
                    .arg(method),
                0.0};
    return {};
}

} // namespace KelStd::catalogue
