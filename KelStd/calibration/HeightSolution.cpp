#include <KelStd/calibration/HeightSolution.h>

#include <KelStd/calibration/SiteMethods.h>
#include <KelStd/calibration/StoredNumber.h>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

double sigmaOf(const HeightPairs &pairs, std::size_t point)
{
    return pairs.sigma.empty() ? 1.0 : pairs.sigma[point];
}

/// Weighted, with the height of the system.
stENU centroidOf(const HeightPairs &pairs)
{
    const stENU &first = pairs.site.front();
    stENU sum{};
    double weights = 0.0;
    for (std::size_t i = 0; i < pairs.site.size(); ++i) {
        const double weight = 1.0 / (sigmaOf(pairs, i) * sigmaOf(pairs, i));
        weights += weight;
        sum.e += weight * (pairs.site[i].e - first.e);
        sum.n += weight * (pairs.site[i].n - first.n);
        sum.u += weight * (pairs.site[i].u - first.u);
    }
    return {first.e + sum.e / weights, first.n + sum.n / weights, first.u + sum.u / weights};
}

/// The farthest point's distance along an axis, which slopes are computed in units of [m].
double extentOf(const HeightPairs &pairs, const stENU &origin)
{
    double extent = 0.0;
    for (const stENU &point : pairs.site) {
        extent = std::max({extent, std::abs(point.n - origin.n), std::abs(point.e - origin.e)});
    }
    return extent > 0.0 ? extent : 1.0;
}

LinearModel modelOf(const HeightPairs &pairs, HeightMethod method, const stENU &origin,
                    double extent)
{
    const auto count = static_cast<Eigen::Index>(pairs.site.size());
    const int parameters = leastPoints(method);
    LinearModel model;
    model.isWeighted = !pairs.sigma.empty();
    model.design = Eigen::MatrixXd::Zero(count, parameters);
    model.observed = Eigen::VectorXd(count);
    model.sigma = Eigen::VectorXd::Ones(count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const double x = (pairs.site[index].n - origin.n) / extent;
        const double y = (pairs.site[index].e - origin.e) / extent;
        const double terms[] = {1.0, x, y, x * x, y * y, x * y};
        for (int column = 0; column < parameters; ++column)
            model.design(i, column) = terms[column];
        model.observed(i) = pairs.control[index] - pairs.site[index].u;
        model.sigma(i) = sigmaOf(pairs, index);
    }
    return model;
}

/// The surface as a document keeps it. A plane is stored in absolute coordinates: its constant
/// comes last and makes up for the digits that the slopes lose.
HeightSurface storedSurface(const Eigen::VectorXd &found, HeightMethod method, const stENU &origin,
                            double extent)
{
    HeightSurface surface;
    const auto slope = [&](int index) { return asStored(found(index) / extent); };
    const auto bend = [&](int index) { return asStored(found(index) / (extent * extent)); };
    surface.a = found(0);
    if (method == HeightMethod::Plane) {
        surface.b = slope(1);
        surface.c = slope(2);
        surface.a -= surface.b * origin.n + surface.c * origin.e;
    } else if (method == HeightMethod::Curve) {
        surface.b = slope(1);
        surface.c = slope(2);
        surface.d = bend(3);
        surface.e = bend(4);
        surface.f = bend(5);
        surface.originNorth = origin.n;
        surface.originEast = origin.e;
    }
    surface.a = asStored(surface.a);
    return surface;
}

/// Value and slopes of the surface at the centroid, where it is best known.
void setCentroid(HeightFit &fit, const Adjustment &adjustment, const stENU &origin, double extent,
                 const std::optional<double> &unit)
{
    const int parameters = leastPoints(fit.method);
    const double x = (fit.centroid.n - origin.n) / extent;
    const double y = (fit.centroid.e - origin.e) / extent;
    Eigen::MatrixXd terms(3, 6); // the value, its derivatives to the north and to the east
    terms << 1.0, x, y, x * x, y * y, x * y,                       //
        0.0, 1.0 / extent, 0.0, 2.0 * x / extent, 0.0, y / extent, //
        0.0, 0.0, 1.0 / extent, 0.0, 2.0 * y / extent, x / extent;
    const Eigen::MatrixXd used = terms.leftCols(parameters);
    const Eigen::Vector3d values = used * adjustment.parameters;
    fit.shiftAtCentroid = values(0);
    fit.slopeNorth = values(1);
    fit.slopeEast = values(2);
    if (!unit)
        return;
    const Eigen::Matrix3d variances = used * adjustment.cofactors * used.transpose();
    const auto deviation = [&](int row) { return *unit * std::sqrt(variances(row, row)); };
    fit.shiftDeviation = deviation(0);
    if (fit.method == HeightMethod::Fixed)
        return;
    fit.slopeNorthDeviation = deviation(1);
    fit.slopeEastDeviation = deviation(2);
}

} // namespace

HeightSolution solveHeights(const HeightPairs &pairs, HeightMethod method)
{
    HeightSolution solution;
    HeightFit &fit = solution.fit;
    fit.method = method;
    fit.centroid = centroidOf(pairs);
    stENU origin = fit.centroid;
    if (method == HeightMethod::Curve) // a whole metre, which a document keeps
        origin = {std::round(origin.e), std::round(origin.n), origin.u};
    const double extent = extentOf(pairs, origin);
    const LinearModel model = modelOf(pairs, method, origin, extent);
    const Adjustment adjustment = adjusted(model);
    solution.condition = adjustment.condition;
    if (!(solution.condition > leastCondition))
        return solution;
    fit.surface = storedSurface(adjustment.parameters, method, origin, extent);
    solution.judgement = judged(model, adjustment, pairs.names);
    fit.statistics = solution.judgement.statistics;
    setCentroid(fit, adjustment, origin, extent, solution.judgement.unitDeviation);
    for (int i = 0; i < pairs.names.size(); ++i) {
        HeightResidual residual;
        residual.height = adjustment.residuals(i);
        if (const auto leftOut = leftOutResiduals(model, adjustment, i))
            residual.leftOut = (*leftOut)(0);
        solution.residuals.push_back(residual);
    }
    return solution;
}

} // namespace KelStd::calibration
