#pragma once

#include <KelStd/calibration/SiteFit.h>
#include <KelStd/location/LocationBuilder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

/// Control points whose coordinates in the plane of the system are chosen.
namespace KelStd::test {

/// A transverse Mercator system in metres, without a datum shift.
inline Coord planeSystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.coord_name = QStringLiteral("base");
    return coord;
}

/// The position that is at these coordinates of the system's plane.
inline Pos measuredAt(const Coord &coord, double east, double north, double height)
{
    LocationBuilder builder(coord);
    Location location;
    QString error;
    EXPECT_TRUE(builder.make(LocationBuilder::Frame::LocalProjected,
                             Pos::fromENU(east, north, height), location, &error))
        << error.toStdString();
    return location.wgs84LLH;
}

inline QString pointName(int number)
{
    return QStringLiteral("P%1").arg(number);
}

/// Places of control points of a site of about a kilometre, in no order of their own [m].
inline const std::vector<stENU> &places()
{
    static const std::vector<stENU> list = {
        {0.0, 0.0, 12.0},    {812.0, 43.0, 25.0},   {640.0, 871.0, 18.0}, {-35.0, 934.0, 30.0},
        {410.0, 388.0, 9.0}, {-203.0, 455.0, 22.0}, {955.0, 512.0, 41.0}, {288.0, -160.0, 15.0},
    };
    return list;
}

/// Errors of about 5 mm without a pattern, with mean nearly zero [m]: east, north, height.
inline const std::vector<stENU> &errors()
{
    static const std::vector<stENU> list = {
        {0.0041, -0.0023, 0.0062},  {-0.0057, 0.0034, -0.0048}, {0.0012, 0.0049, 0.0035},
        {-0.0018, -0.0061, -0.007}, {0.0053, 0.0007, 0.0021},   {-0.0044, 0.0026, 0.0054},
        {0.0029, -0.0052, -0.0039}, {-0.0016, 0.002, -0.0015},
    };
    return list;
}

/// A site as its maker knows it.
struct TrueSite
{
    double baseEast = 500000.0; ///< of the first place, in the system's plane
    double baseNorth = 5200000.0;
    double east = 1000.0; ///< of the same at the site
    double north = 2000.0;
    double turn = 0.0; ///< [rad]
    double scale = 1.0;
    double a = 0.0; ///< heights, about the first place
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    double e = 0.0;
    double f = 0.0;

    /// What coordinates in the plane of the system are at the site.
    stENU at(double baseE, double baseN, double height) const
    {
        const double x = baseE - baseEast;
        const double y = baseN - baseNorth;
        const double siteE = scale * (x * std::cos(turn) + y * std::sin(turn));
        const double siteN = scale * (y * std::cos(turn) - x * std::sin(turn));
        return {east + siteE, north + siteN,
                height + a + b * siteN + c * siteE + d * siteN * siteN + e * siteE * siteE
                    + f * siteN * siteE};
    }
};

/// Control points of the site at `places`, with `errors` times a factor.
inline ControlPoints controlOf(const Coord &coord, const TrueSite &site, double factor = 0.0,
                               std::size_t count = 8)
{
    ControlPoints control;
    for (std::size_t i = 0; i < count; ++i) {
        const stENU &place = places()[i];
        const double east = site.baseEast + place.e;
        const double north = site.baseNorth + place.n;
        const stENU at = site.at(east, north, place.u);
        ControlPoint point;
        point.name = pointName(static_cast<int>(i) + 1);
        point.wgs84 = measuredAt(coord, east, north, place.u);
        point.east = at.e + factor * errors()[i].e;
        point.north = at.n + factor * errors()[i].n;
        point.height = at.u + factor * errors()[i].u;
        control += point;
    }
    return control;
}

/// The fit; a refused one fails the test.
inline calibration::SiteFit fitted(const Coord &coord, const ControlPoints &control,
                                   const calibration::SiteFitOptions &options = {})
{
    calibration::CalibrationFailure failure;
    const auto fit = calibration::fitSite(coord, control, options, &failure);
    EXPECT_TRUE(fit.has_value()) << failure.text.toStdString();
    return fit.value_or(calibration::SiteFit());
}

} // namespace KelStd::test
