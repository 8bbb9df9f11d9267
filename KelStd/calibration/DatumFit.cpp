#include <KelStd/calibration/DatumFit.h>

#include <KelStd/calibration/ControlChecks.h>
#include <KelStd/calibration/DatumSolution.h>
#include <KelStd/calibration/DatumWarnings.h>
#include <KelStd/calibration/SiteFit.h>
#include <KelStd/calibration/SiteRecordsOfFit.h>
#include <KelStd/coord/AxisDirections.h>
#include <KelStd/io/ProjEllipsoid.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

/// Axis [m] and inverse flattening of WGS 84, and the smallest that an ellipsoid may have here.
constexpr double wgs84Axis = 6378137.0;
constexpr double wgs84Reciprocal = 298.257223563;
constexpr double leastAxis = 1000.0;

constexpr double onePlace = 0.001; // [m]
constexpr double nearest = 6e6;    // [m], from the earth's centre; 0 stands for what is not known
constexpr double farthest = 1e8;   // [m]

struct Size
{
    double axis;        ///< [m]
    double reciprocal;  ///< 0 of a sphere
    double east = 1.0;  ///< -1 where longitudes count to the west
    double north = 1.0; ///< -1 where latitudes count to the south
};

Pos onEllipsoid(const Size &size, const Pos &geographic)
{
    constexpr double radiansPerDegree = 3.14159265358979323846 / 180.0;
    const stLongLatH &at = geographic.getLongLatH();
    const double longitude = size.east * at.longitude * radiansPerDegree;
    const double latitude = size.north * at.latitude * radiansPerDegree;
    const double flattening = size.reciprocal > 0.0 ? 1.0 / size.reciprocal : 0.0;
    const double squaredEccentricity = flattening * (2.0 - flattening);
    const double sine = std::sin(latitude);
    const double radius = size.axis / std::sqrt(1.0 - squaredEccentricity * sine * sine);
    const double across = (radius + at.height) * std::cos(latitude);
    return Pos::fromXYZ(across * std::cos(longitude), across * std::sin(longitude),
                        (radius * (1.0 - squaredEccentricity) + at.height) * sine);
}

/// The size and the axes of an ellipsoid, by PROJ's name where it has one, as definitions are
/// written.
CalibrationFailure sizeOf(const Ellipsoid &ellipsoid, Size &size)
{
    const QString name = ellipsoid.proj4EllpsName.trimmed();
    Ellipsoid numbers = ellipsoid;
    if (!name.isEmpty()) {
        const auto found = io::ellipsoidOfProj(name);
        if (!found) {
            return {CalibrationFault::BadRecords,
                    QObject::tr("the ellipsoid \"%1\" of the system is none of PROJ's; take a "
                                "system whose ellipsoid is a plain one, without a grid")
                        .arg(name)};
        }
        numbers = *found;
    }
    const EEllipsoidDirection axes = ellipsoid.positiveDir;
    size = {numbers.biggerHalfAxle.value.toDouble(), numbers.reciprocal,
            countsWest(axes) ? -1.0 : 1.0, countsSouth(axes) ? -1.0 : 1.0};
    if (numbers.biggerHalfAxle.unit != Unit_Meter || !(size.axis > leastAxis)
        || !std::isfinite(size.axis) || !(size.reciprocal == 0.0 || size.reciprocal > 1.0)) {
        return {CalibrationFault::BadRecords,
                QObject::tr("the ellipsoid of the system has no size in metres; correct it")};
    }
    return {};
}

Eigen::Vector3d vectorOf(const Pos &position)
{
    const stXYZ &xyz = position.getXYZ();
    return {xyz.x, xyz.y, xyz.z};
}

CalibrationFailure faultOfPairs(const QVector<DatumPair> &pairs, DatumMethod method,
                                DatumVectors &vectors)
{
    for (const DatumPair &pair : pairs)
        vectors.names += pair.name;
    if (CalibrationFailure failure = faultOfNames(vectors.names))
        return failure;
    for (const DatumPair &pair : pairs) {
        vectors.local.push_back(vectorOf(pair.local));
        vectors.wgs84.push_back(vectorOf(pair.wgs84));
        const auto isNearEarth = [](const Eigen::Vector3d &position) {
            return position.norm() > nearest && position.norm() < farthest;
        };
        if (!isNearEarth(vectors.local.back()) || !isNearEarth(vectors.wgs84.back())) {
            return {CalibrationFault::NotFinite,
                    QObject::tr("a coordinate of \"%1\" is no finite number, or the position is "
                                "not near the earth; correct it, or take the pair out of the list")
                        .arg(pair.name)};
        }
        if (pair.sigma && !isDeviation(*pair.sigma)) {
            return {
                CalibrationFault::BadSigma,
                QObject::tr("the standard deviation of \"%1\" is not between 0.000001 and 1000; "
                            "give it in metres, or none")
                    .arg(pair.name)};
        }
        if (pair.sigma)
            vectors.sigma.push_back(*pair.sigma);
    }
    if (!vectors.sigma.empty() && vectors.sigma.size() != vectors.local.size()) {
        return {CalibrationFault::MissingSigma,
                QObject::tr("some pairs have no standard deviation while others have; give one for "
                            "all pairs, or none")};
    }
    const int least = method == DatumMethod::Seven ? 3 : 1;
    if (pairs.size() < least) {
        return {CalibrationFault::TooFewPoints,
                QObject::tr("too few pairs: the method has to have at least %1, and there are %2; "
                            "measure more points%3")
                    .arg(least)
                    .arg(pairs.size())
                    .arg(method == DatumMethod::Seven ? QObject::tr(", or fit three parameters")
                                                      : QString())};
    }
    return {};
}

/// Two pairs in one place, and for seven parameters all of them in one line.
CalibrationFailure faultOfPlaces(const DatumVectors &vectors, DatumMethod method)
{
    // Along one axis the positions are put in order, so that few are compared.
    std::vector<int> order;
    for (std::size_t i = 0; i < vectors.local.size(); ++i)
        order.push_back(static_cast<int>(i));
    const auto at = [&vectors](int index) -> const Eigen::Vector3d & {
        return vectors.local[static_cast<std::size_t>(index)];
    };
    std::sort(order.begin(), order.end(),
              [&at](int left, int right) { return at(left)(2) < at(right)(2); });
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            if (at(order[j])(2) - at(order[i])(2) >= onePlace)
                break;
            if ((at(order[j]) - at(order[i])).norm() < onePlace) {
                return {CalibrationFault::CoincidentPoints,
                        QObject::tr("\"%1\" and \"%2\" are in one place; use one of them, or their "
                                    "mean")
                            .arg(vectors.names.at(std::min(order[i], order[j])),
                                 vectors.names.at(std::max(order[i], order[j])))};
            }
        }
    }
    if (method == DatumMethod::Seven && areInLine(vectors.local)) {
        return {CalibrationFault::CollinearPoints,
                QObject::tr("all pairs are in one line, about which the rotation is not known; "
                            "measure a point off the line, or fit three parameters")};
    }
    return {};
}

void setShift(const DatumParameters &parameters, DatumMethod method, stEllipsoinTransform &record)
{
    record = stEllipsoinTransform();
    record.fuction = method == DatumMethod::Seven ? EllipsoinTransformFunction_Seven
                                                  : EllipsoinTransformFunction_Three;
    record.x_translate.value = -parameters.x;
    record.y_translate.value = -parameters.y;
    record.z_translate.value = -parameters.z;
    record.x_rotate.value = parameters.rx;
    record.y_rotate.value = parameters.ry;
    record.z_rotate.value = parameters.rz;
    record.ratio_ppm.value = -parameters.scale;
}

/// Runs each WGS84 position through the chain, and holds its local one against the shift's.
CalibrationFailure faultOfChain(const Coord &coord, const Size &size, const DatumVectors &vectors,
                                const QVector<DatumPair> &pairs, const DatumParameters &parameters)
{
    constexpr double tolerance = 1e-4; // [m]
    LocationBuilder builder(coord);
    for (int i = 0; i < pairs.size(); ++i) {
        Location location;
        LocationBuilder::Outcome outcome;
        if (!builder.make(LocationBuilder::Frame::Wgs84Cartesian, pairs.at(i).wgs84, location,
                          outcome)) {
            return {CalibrationFault::NotConverted,
                    QObject::tr("the position of \"%1\" cannot be converted: %2; correct it, or "
                                "take the pair out of the list")
                        .arg(pairs.at(i).name, outcome.reason)};
        }
        const Eigen::Vector3d byChain = vectorOf(onEllipsoid(size, location.localLLH));
        const Eigen::Vector3d byShift =
            localOf(parameters, vectors.wgs84[static_cast<std::size_t>(i)]);
        if (!((byChain - byShift).norm() < tolerance)) {
            return {
                CalibrationFault::NotReproduced,
                QObject::tr("the system with the datum shift takes \"%1\" %2 m away from where "
                            "the shift takes it; the parameters are too large for a datum "
                            "shift: check the pairs")
                    .arg(pairs.at(i).name, QString::number((byChain - byShift).norm(), 'g', 3))};
        }
    }
    return {};
}

} // namespace

std::optional<DatumFit> fitDatum(const Coord &base, const QVector<DatumPair> &pairs,
                                 DatumMethod method, CalibrationFailure *failure)
{
    const auto fail = [failure](CalibrationFailure found) -> std::optional<DatumFit> {
        if (failure != nullptr)
            *failure = std::move(found);
        return std::nullopt;
    };
    DatumVectors vectors;
    Size size{};
    if (CalibrationFailure found = sizeOf(base.ellipsoid, size))
        return fail(std::move(found));
    if (CalibrationFailure found = faultOfPairs(pairs, method, vectors))
        return fail(std::move(found));
    if (CalibrationFailure found = faultOfPlaces(vectors, method))
        return fail(std::move(found));

    const DatumSolution solution = solveDatum(vectors, method);
    DatumFit fit;
    fit.coord = base;
    // The site was fitted to what the former datum shift made of its control points.
    clearSite(fit.coord, fit.warnings, QObject::tr("left out; fit the site again on this system"));
    fit.method = method;
    fit.rigorous = solution.rigorous;
    fit.linear = solution.linear;
    fit.statistics = solution.judgement.statistics;
    setShift(solution.rigorous, method, fit.coord.ellipsoidTransform);
    if (CalibrationFailure found = faultOfChain(fit.coord, size, vectors, pairs, solution.rigorous))
        return fail(std::move(found));
    for (int i = 0; i < pairs.size(); ++i) {
        const PointStatistics &own = solution.judgement.points[static_cast<std::size_t>(i)];
        fit.points += DatumPoint{pairs.at(i).name,
                                 solution.residuals(3 * i),
                                 solution.residuals(3 * i + 1),
                                 solution.residuals(3 * i + 2),
                                 own.test,
                                 own.isSuspect};
    }
    if (solution.judgement.unitDeviation)
        fit.deviations = scaled(solution.cofactors, *solution.judgement.unitDeviation);
    warnOfShift(fit.rigorous, fit.warnings);
    if (method == DatumMethod::Seven)
        warnOfExtent(solution, fit.warnings);
    warnOfPairs(solution.judgement, fit.warnings);
    return fit;
}

SystemOrigin datumOrigin(const SystemOrigin &base)
{
    SystemOrigin origin = siteOrigin(base, {});
    origin.operation.reset();
    return origin;
}

std::optional<Pos> cartesianOf(const Ellipsoid &ellipsoid, const Pos &geographic,
                               CalibrationFailure *failure)
{
    Size size{};
    CalibrationFailure found = sizeOf(ellipsoid, size);
    if (!found)
        return onEllipsoid(size, geographic);
    if (failure != nullptr)
        *failure = std::move(found);
    return std::nullopt;
}

Pos wgs84CartesianOf(const Pos &geographic)
{
    return onEllipsoid({wgs84Axis, wgs84Reciprocal}, geographic);
}

} // namespace KelStd::calibration
