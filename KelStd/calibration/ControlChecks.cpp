#include <KelStd/calibration/ControlChecks.h>

#include <KelStd/coord/GeographicProjections.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/location/SystemNotes.h>

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace KelStd::calibration {

namespace {

constexpr double onePlace = 0.001; // [m]

bool isFinite(const std::optional<double> &value)
{
    return !value || std::isfinite(*value);
}

bool hasFiniteCoordinates(const ControlPoint &point)
{
    const stXYZ &wgs84 = point.wgs84.getXYZ();
    return std::isfinite(wgs84.x) && std::isfinite(wgs84.y) && std::isfinite(wgs84.z)
           && std::isfinite(point.north) && std::isfinite(point.east) && isFinite(point.height);
}

CalibrationFailure unusualPlane(const QString &text)
{
    return {CalibrationFault::UnusualAxes, text};
}

} // namespace

bool isDeviation(double sigma)
{
    constexpr double smallest = 1e-6; // [m]
    constexpr double largest = 1e3;   // [m]
    return sigma >= smallest && sigma <= largest;
}

CalibrationFailure faultOfNames(const QStringList &names)
{
    QSet<QString> seen;
    for (int i = 0; i < names.size(); ++i) {
        const QString &name = names.at(i);
        if (name.trimmed().isEmpty()) {
            return {CalibrationFault::MissingName,
                    QObject::tr("the point number %1 has no name; give each one of its own")
                        .arg(i + 1)};
        }
        if (seen.contains(name)) {
            return {CalibrationFault::DuplicateName,
                    QObject::tr("the name \"%1\" is there twice; give each point a name of its "
                                "own, or the mean of a point that was measured twice")
                        .arg(name)};
        }
        seen.insert(name);
    }
    return {};
}

CalibrationFailure faultOfPoints(const ControlPoints &points)
{
    QStringList names;
    for (const ControlPoint &point : points)
        names += point.name;
    if (CalibrationFailure failure = faultOfNames(names))
        return failure;
    for (const ControlPoint &point : points) {
        if (!hasFiniteCoordinates(point)) {
            return {CalibrationFault::NotFinite,
                    QObject::tr("a coordinate of the point \"%1\" is no finite number; correct it, "
                                "or take the point out of the list")
                        .arg(point.name)};
        }
        if ((point.sigmaH && !isDeviation(*point.sigmaH))
            || (point.sigmaV && !isDeviation(*point.sigmaV))) {
            return {CalibrationFault::BadSigma,
                    QObject::tr("a standard deviation of the point \"%1\" is not between 0.000001 "
                                "and 1000; give it in metres, or none")
                        .arg(point.name)};
        }
    }
    return {};
}

CalibrationFailure faultOfPlane(const Coord &coord)
{
    const QString axes = location::unusualAxes(coord.ellipsoid);
    if (!axes.isEmpty()) {
        return unusualPlane(QObject::tr("the axes of the system point %1; a site is fitted to a "
                                        "system whose axes point east and north: take such a one")
                                .arg(axes));
    }
    const Projection &projection = coord.projection;
    if (isGeographicProjection(projection.proj4Projection.trimmed())) {
        return unusualPlane(QObject::tr("the system gives longitudes and latitudes; a site is "
                                        "fitted to a plane: take a system with a projection"));
    }
    if (projection.loc_or_height_unit != Unit_Meter) {
        return unusualPlane(QObject::tr("the plane of the system is not in metres; take a system "
                                        "in metres"));
    }
    const QStringList keys = projection.paramProj4.values();
    for (const QString &key : keys) {
        if (key.trimmed().compare(QLatin1String("axis"), Qt::CaseInsensitive) == 0) {
            return unusualPlane(QObject::tr("the projection has a parameter for the order of its "
                                            "axes; take a system whose axes point east and "
                                            "north"));
        }
    }
    return {};
}

CalibrationFailure toBase(const Coord &coord, const ControlPoints &points, std::vector<stENU> &base)
{
    if (CalibrationFailure failure = faultOfPlane(coord))
        return failure;
    LocationBuilder builder(coord);
    builder.requireOneToOne();
    const bool hasModel = !coord.geoidModel.modelFileName.isEmpty();
    base.clear();
    for (const ControlPoint &point : points) {
        Location location;
        LocationBuilder::Outcome outcome;
        if (!builder.make(LocationBuilder::Frame::Wgs84Geographic, point.wgs84, location,
                          outcome)) {
            return {CalibrationFault::NotConverted,
                    QObject::tr("the position of the point \"%1\" cannot be converted: %2; correct "
                                "it, or take the point out of the list")
                        .arg(point.name, outcome.reason)};
        }
        if (hasModel && point.height && point.isUsedInHeight
            && outcome.projectedHeight != LocationBuilder::Height::AboveGeoid) {
            return {CalibrationFault::MissingGeoidModel,
                    QObject::tr("the geoid model \"%1\" of the system cannot be used for the point "
                                "\"%2\"%3; install the model, or take a system without one")
                        .arg(coord.geoidModel.modelFileName, point.name,
                             outcome.reason.isEmpty() ? QString()
                                                      : QStringLiteral(": ") + outcome.reason)};
        }
        base.push_back(location.localNEH.getENU());
    }
    return {};
}

CalibrationFailure faultOfPlaces(const QStringList &names, const std::vector<stENU> &places,
                                 const QString &what)
{
    std::vector<int> order(places.size());
    std::iota(order.begin(), order.end(), 0);
    const auto at = [&places](int index) -> const stENU & {
        return places[static_cast<std::size_t>(index)];
    };
    std::sort(order.begin(), order.end(),
              [&at](int left, int right) { return at(left).n < at(right).n; });
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            const stENU &one = at(order[i]);
            const stENU &other = at(order[j]);
            if (other.n - one.n >= onePlace)
                break;
            if (std::hypot(other.n - one.n, other.e - one.e) < onePlace) {
                return {CalibrationFault::CoincidentPoints,
                        QObject::tr("the points \"%1\" and \"%2\" are %3 in one place; use one of "
                                    "them, or their mean")
                            .arg(names.at(std::min(order[i], order[j])),
                                 names.at(std::max(order[i], order[j])), what)};
            }
        }
    }
    return {};
}

bool areInLine(const std::vector<stENU> &places)
{
    if (places.size() < 3)
        return true;
    double north = 0.0;
    double east = 0.0;
    for (const stENU &place : places) {
        north += (place.n - places[0].n) / static_cast<double>(places.size());
        east += (place.e - places[0].e) / static_cast<double>(places.size());
    }
    double nn = 0.0;
    double ee = 0.0;
    double ne = 0.0;
    for (const stENU &place : places) {
        const double n = place.n - places[0].n - north;
        const double e = place.e - places[0].e - east;
        nn += n * n;
        ee += e * e;
        ne += n * e;
    }
    // The eigenvalues of the scatter: squares along and across the best line.
    const double half = (nn + ee) / 2.0;
    const double root = std::hypot((nn - ee) / 2.0, ne);
    constexpr double thinnest = 1e-6; // a thousandth, squared
    return half - root <= thinnest * (half + root);
}

} // namespace KelStd::calibration
