#include <KelStd/calibration/PlaneSolution.h>

#include <KelStd/calibration/StoredNumber.h>

#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double arcSecondsPerRadian = 180.0 * 3600.0 / pi;
constexpr double partsPerMillion = 1e6;

/// The sums of a similarity, about the weighted centroids: of weights, of squares of the base, and
/// of the products whose quotient is the tangent of the rotation.
struct Sums
{
    double weight = 0.0;
    double along = 0.0;  ///< E E' + N N'
    double across = 0.0; ///< N E' - E N'
    double square = 0.0; ///< E^2 + N^2
};

/// Coordinates about their weighted centroids.
struct Centred
{
    std::vector<stENU> base;
    std::vector<stENU> control;
    std::vector<double> weight;
    stENU baseCentroid{};
    stENU controlCentroid{};
    Sums sums;
};

stENU weightedMean(const std::vector<stENU> &points, const std::vector<double> &weights)
{
    // Differences to the first one, which are small, keep their digits.
    stENU mean{};
    double sum = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        sum += weights[i];
        mean.e += weights[i] * (points[i].e - points[0].e);
        mean.n += weights[i] * (points[i].n - points[0].n);
    }
    return {points[0].e + mean.e / sum, points[0].n + mean.n / sum, 0.0};
}

Sums sumsOf(const stENU &base, const stENU &control, double weight)
{
    return {weight, weight * (base.e * control.e + base.n * control.n),
            weight * (base.n * control.e - base.e * control.n),
            weight * (base.e * base.e + base.n * base.n)};
}

Sums difference(const Sums &left, const Sums &right)
{
    return {left.weight - right.weight, left.along - right.along, left.across - right.across,
            left.square - right.square};
}

Centred centred(const PlanePairs &pairs)
{
    Centred result;
    result.weight = weightsOf(pairs.sigma, pairs.base.size());
    result.baseCentroid = weightedMean(pairs.base, result.weight);
    result.controlCentroid = weightedMean(pairs.control, result.weight);
    for (std::size_t i = 0; i < pairs.base.size(); ++i) {
        const stENU base{pairs.base[i].e - result.baseCentroid.e,
                         pairs.base[i].n - result.baseCentroid.n, 0.0};
        const stENU control{pairs.control[i].e - result.controlCentroid.e,
                            pairs.control[i].n - result.controlCentroid.n, 0.0};
        result.base.push_back(base);
        result.control.push_back(control);
        const Sums own = sumsOf(base, control, result.weight[i]);
        result.sums = {result.sums.weight + own.weight, result.sums.along + own.along,
                       result.sums.across + own.across, result.sums.square + own.square};
    }
    return result;
}

stENU turned(const stENU &point, double angle)
{
    return {point.e * std::cos(angle) + point.n * std::sin(angle),
            point.n * std::cos(angle) - point.e * std::sin(angle), 0.0};
}

/// The linear model about the centroids: shifts east and north, then those of the method.
/// `rotation`: where the scale is held, the angle at which the rotation is linear.
LinearModel modelOf(const Centred &points, const PlanePairs &pairs, PlanMethod method,
                    double rotation)
{
    const auto count = static_cast<Eigen::Index>(points.base.size());
    const Eigen::Index parameters = method == PlanMethod::Four       ? 4
                                    : method == PlanMethod::Rotation ? 3
                                                                     : 2;
    LinearModel model;
    model.rowsPerPoint = 2;
    model.isWeighted = !pairs.sigma.empty();
    model.design = Eigen::MatrixXd::Zero(2 * count, parameters);
    model.observed = Eigen::VectorXd(2 * count);
    model.sigma = Eigen::VectorXd::Ones(2 * count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const stENU &base = points.base[index];
        const stENU &control = points.control[index];
        const Eigen::Index east = 2 * i;
        const Eigen::Index north = east + 1;
        model.design(east, 0) = 1.0;
        model.design(north, 1) = 1.0;
        stENU held{};
        if (method == PlanMethod::Four) {
            model.design(east, 2) = base.e;
            model.design(east, 3) = base.n;
            model.design(north, 2) = base.n;
            model.design(north, 3) = -base.e;
        } else if (method == PlanMethod::Rotation) {
            held = turned(base, rotation);
            model.design(east, 2) = held.n;
            model.design(north, 2) = -held.e;
        } else {
            held = base;
        }
        model.observed(east) = control.e - held.e;
        model.observed(north) = control.n - held.n;
        if (model.isWeighted)
            model.sigma(east) = model.sigma(north) = pairs.sigma[index];
    }
    return model;
}

/// The residuals of a point in a fit with the scale held to 1 to all the others.
std::optional<PlaneResidual> leftOutOfRotation(const Centred &points, std::size_t point)
{
    const stENU &base = points.base[point];
    const stENU &control = points.control[point];
    const double weight = points.weight[point];
    const double rest = points.sums.weight - weight;
    // Without the point the centroids of the others are off zero by its share.
    const double share = -weight / rest;
    const stENU baseCentroid{base.e * share, base.n * share, 0.0};
    const stENU controlCentroid{control.e * share, control.n * share, 0.0};
    const Sums sums = difference(difference(points.sums, sumsOf(base, control, weight)),
                                 sumsOf(baseCentroid, controlCentroid, rest));
    constexpr double noExtent = 1e-9;
    if (!(sums.square > noExtent * points.sums.square))
        return std::nullopt;
    const double angle = std::atan2(sums.across, sums.along);
    const stENU found = turned({base.e - baseCentroid.e, base.n - baseCentroid.n, 0.0}, angle);
    PlaneResidual residual;
    residual.leftOutEast = found.e + controlCentroid.e - control.e;
    residual.leftOutNorth = found.n + controlCentroid.n - control.n;
    return residual;
}

/// The parameters as a document keeps them: shifts last, so that they make up for the digits that
/// the others lose.
PlaneSimilarity storedSimilarity(const PlanFit &fit, double rotation, double scale)
{
    PlaneSimilarity similarity;
    similarity.rotation = asStored(rotation * arcSecondsPerRadian);
    similarity.scale = asStored(scale);
    const stENU at = turned(fit.baseCentroid, similarity.rotation / arcSecondsPerRadian);
    similarity.eastShift = asStored(fit.siteCentroid.e - similarity.scale * at.e);
    similarity.northShift = asStored(fit.siteCentroid.n - similarity.scale * at.n);
    return similarity;
}

void setDeviations(PlaneSolution &solution, PlanMethod method, double scale)
{
    if (!solution.variances)
        return;
    const auto &variances = *solution.variances;
    PlanFit &fit = solution.fit;
    fit.shiftDeviation = std::sqrt(variances(0, 0));
    if (method == PlanMethod::Rotation)
        fit.rotationDeviation = std::sqrt(variances(2, 2)) * arcSecondsPerRadian;
    if (method != PlanMethod::Four)
        return;
    // The two unknowns are scale times cosine and sine, of one variance and without correlation.
    fit.rotationDeviation = std::sqrt(variances(2, 2)) / scale * arcSecondsPerRadian;
    fit.scaleDeviation = std::sqrt(variances(2, 2)) * partsPerMillion;
}

} // namespace

PlaneSolution solvePlane(const PlanePairs &pairs, PlanMethod method)
{
    const Centred points = centred(pairs);
    double rotation =
        method == PlanMethod::Rotation ? std::atan2(points.sums.across, points.sums.along) : 0.0;
    double scale = 1.0;
    const LinearModel model = modelOf(points, pairs, method, rotation);
    const Adjustment adjustment = adjusted(model);
    if (method == PlanMethod::Four) {
        rotation = std::atan2(adjustment.parameters(3), adjustment.parameters(2));
        scale = std::hypot(adjustment.parameters(2), adjustment.parameters(3));
    }

    PlaneSolution solution;
    solution.judgement = judged(model, adjustment, pairs.names);
    solution.design = model.design;
    PlanFit &fit = solution.fit;
    fit.method = method;
    fit.statistics = solution.judgement.statistics;
    fit.baseCentroid = points.baseCentroid;
    fit.siteCentroid = points.controlCentroid;
    fit.similarity = storedSimilarity(fit, rotation, scale);
    if (solution.judgement.unitDeviation) {
        const double unit = *solution.judgement.unitDeviation;
        solution.variances = adjustment.cofactors * unit * unit;
    }
    setDeviations(solution, method, scale);
    for (int i = 0; i < pairs.names.size(); ++i) {
        PlaneResidual residual;
        if (method == PlanMethod::Rotation) {
            const auto leftOut = leftOutOfRotation(points, static_cast<std::size_t>(i));
            residual = leftOut.value_or(PlaneResidual());
        } else if (const auto leftOut = leftOutResiduals(model, adjustment, i)) {
            residual.leftOutEast = (*leftOut)(0);
            residual.leftOutNorth = (*leftOut)(1);
        }
        residual.east = adjustment.residuals(2 * i);
        residual.north = adjustment.residuals(2 * i + 1);
        solution.residuals.push_back(residual);
    }
    return solution;
}

ErrorEllipse ellipseOf(const PlaneSolution &solution, int point)
{
    const auto rows = solution.design.middleRows(2 * point, 2);
    const Eigen::Matrix2d variance = rows * *solution.variances * rows.transpose();
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix2d> solver(variance);
    const auto axis = [&solver](int index) {
        return std::sqrt(std::max(0.0, solver.eigenvalues()(index)));
    };
    const Eigen::Vector2d direction = solver.eigenvectors().col(1); // east, north
    double azimuth = std::atan2(direction(0), direction(1)) * 180.0 / pi;
    if (azimuth < 0.0)
        azimuth += 180.0;
    return {axis(1), axis(0), azimuth};
}

QuickSimilarity quickSimilarity(const PlanePairs &pairs, bool isSwapped)
{
    PlanePairs unweighted = pairs;
    unweighted.sigma.clear();
    if (isSwapped) {
        for (stENU &point : unweighted.control)
            point = {point.n, point.e, point.u};
    }
    const Centred points = centred(unweighted);
    QuickSimilarity result;
    result.rotation = std::atan2(points.sums.across, points.sums.along);
    result.scale = std::hypot(points.sums.across, points.sums.along) / points.sums.square;
    double squares = 0.0;
    for (std::size_t i = 0; i < points.base.size(); ++i) {
        const stENU found = turned(points.base[i], result.rotation);
        const double east = result.scale * found.e - points.control[i].e;
        const double north = result.scale * found.n - points.control[i].n;
        squares += east * east + north * north;
    }
    result.rms = std::sqrt(squares / static_cast<double>(points.base.size()));
    return result;
}

} // namespace KelStd::calibration
