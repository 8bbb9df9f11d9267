#include <KelStd/calibration/Adjustment.h>

#include <Eigen/Eigenvalues>
#include <Eigen/QR>
#include <Eigen/SVD>

#include <boost/math/distributions/students_t.hpp>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double significance = 0.001;
constexpr double criticalW = 3.2905;     // the normal distribution's at that level, both sides
constexpr double noncentrality = 4.1321; // found with a probability of 0.8 at that level
constexpr double noRedundancy = 1e-9;    // what of 1 is left by rounding
constexpr double tieTolerance = 1e-6;    // relative

/// The largest of a point's rows, by the absolute value.
double largestOf(const Eigen::VectorXd &values, int point, int rows)
{
    return values.segment(point * rows, rows).cwiseAbs().maxCoeff();
}

void summarise(const LinearModel &model, const Adjustment &adjustment, const QStringList &names,
               FitStatistics &statistics)
{
    const int rows = model.rowsPerPoint;
    statistics.points = static_cast<int>(names.size());
    statistics.redundancy = adjustment.redundancy;
    statistics.test = model.isWeighted ? OutlierTest::Baarda : OutlierTest::Pope;
    if (adjustment.redundancy > 0)
        statistics.s0 = std::sqrt(adjustment.sumOfSquares / adjustment.redundancy);
    if (names.isEmpty())
        return;
    statistics.rms =
        std::sqrt(adjustment.residuals.squaredNorm() / static_cast<double>(names.size()));
    for (int i = 0; i < names.size(); ++i) {
        const double length = adjustment.residuals.segment(i * rows, rows).norm();
        if (!statistics.max || length > *statistics.max) {
            statistics.max = length;
            statistics.maxPoint = names.at(i);
        }
    }
    if (adjustment.redundancy > 0)
        statistics.criticalValue =
            model.isWeighted ? std::optional(criticalW) : criticalTau(adjustment.redundancy);
}

/// Names the one point whose test is largest, unless others have the same.
void suspectOne(const LinearModel &model, const Adjustment &adjustment, const QStringList &names,
                Judgement &judgement)
{
    int worst = -1;
    const auto testOf = [&judgement](int point) {
        return judgement.points[static_cast<std::size_t>(point)].test.value_or(0.0);
    };
    for (int i = 0; i < names.size(); ++i) {
        if (worst < 0 || testOf(i) > testOf(worst))
            worst = i;
    }
    FitStatistics &statistics = judgement.statistics;
    if (worst < 0 || !statistics.criticalValue || !(testOf(worst) > *statistics.criticalValue)
        || !(largestOf(adjustment.residuals, worst, model.rowsPerPoint) > arithmeticNoise))
        return;
    for (int i = 0; i < names.size(); ++i) {
        if (i != worst && testOf(i) >= testOf(worst) * (1.0 - tieTolerance))
            judgement.isTied = true;
    }
    if (judgement.isTied)
        return;
    statistics.suspect = names.at(worst);
    judgement.points[static_cast<std::size_t>(worst)].isSuspect = true;
}

} // namespace

std::optional<double> criticalTau(int redundancy)
{
    if (redundancy < 2)
        return std::nullopt;
    const boost::math::students_t student(redundancy - 1);
    const double t = boost::math::quantile(boost::math::complement(student, significance / 2.0));
    return std::sqrt(redundancy) * t / std::sqrt(redundancy - 1 + t * t);
}

std::vector<double> weightsOf(const std::vector<double> &sigma, std::size_t points)
{
    std::vector<double> weights(points, 1.0);
    std::transform(sigma.begin(), sigma.end(), weights.begin(),
                   [](double each) { return 1.0 / (each * each); });
    return weights;
}

Adjustment adjusted(const LinearModel &model)
{
    const Eigen::Index parameters = model.design.cols();
    const Eigen::VectorXd rootWeights = model.sigma.cwiseInverse();
    Eigen::MatrixXd weighted = rootWeights.asDiagonal() * model.design;
    // Columns of length 1, so that shifts and slopes are of one size.
    Eigen::VectorXd lengths = weighted.colwise().norm().transpose();
    for (double &length : lengths)
        length = length > 0.0 ? length : 1.0;
    weighted *= lengths.cwiseInverse().asDiagonal();

    Adjustment result;
    result.redundancy = static_cast<int>(model.design.rows() - parameters);
    if (!weighted.allFinite())
        return result;
    const Eigen::HouseholderQR<Eigen::MatrixXd> qr(weighted);
    result.basis = qr.householderQ() * Eigen::MatrixXd::Identity(weighted.rows(), parameters);
    const Eigen::MatrixXd triangle =
        qr.matrixQR().topRows(parameters).triangularView<Eigen::Upper>();
    const Eigen::JacobiSVD<Eigen::MatrixXd> singular(triangle);
    const auto &values = singular.singularValues();
    result.condition = values(0) > 0.0 ? values(parameters - 1) / values(0) : 0.0;
    if (!(result.condition > 0.0))
        return result;

    const Eigen::VectorXd right =
        result.basis.transpose() * rootWeights.cwiseProduct(model.observed);
    const auto upper = triangle.triangularView<Eigen::Upper>();
    result.parameters = upper.solve(right).cwiseQuotient(lengths);
    const Eigen::MatrixXd inverse =
        lengths.cwiseInverse().asDiagonal()
        * upper.solve(Eigen::MatrixXd::Identity(parameters, parameters)).eval();
    result.cofactors = inverse * inverse.transpose();
    result.residuals = model.design * result.parameters - model.observed;
    result.sumOfSquares = rootWeights.cwiseProduct(result.residuals).squaredNorm();
    result.redundancies = 1.0 - result.basis.rowwise().squaredNorm().array();
    for (double &redundancy : result.redundancies)
        redundancy = redundancy > noRedundancy ? redundancy : 0.0;
    return result;
}

std::optional<Eigen::VectorXd> leftOutResiduals(const LinearModel &model,
                                                const Adjustment &adjustment, int point)
{
    const int rows = model.rowsPerPoint;
    const auto own = adjustment.basis.middleRows(point * rows, rows);
    const Eigen::MatrixXd block = Eigen::MatrixXd::Identity(rows, rows) - own * own.transpose();
    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(block);
    if (!(solver.eigenvalues()(0) > noRedundancy))
        return std::nullopt;
    const auto &vectors = solver.eigenvectors();
    return vectors * solver.eigenvalues().cwiseInverse().asDiagonal() * vectors.transpose()
           * adjustment.residuals.segment(point * rows, rows);
}

Judgement judged(const LinearModel &model, const Adjustment &adjustment, const QStringList &names)
{
    Judgement judgement;
    summarise(model, adjustment, names, judgement.statistics);
    if (model.isWeighted)
        judgement.unitDeviation = 1.0;
    else
        judgement.unitDeviation = judgement.statistics.s0;
    const int rows = model.rowsPerPoint;
    for (int i = 0; i < names.size(); ++i) {
        PointStatistics point;
        point.isUsed = true;
        point.redundancy = adjustment.redundancies.segment(i * rows, rows).minCoeff();
        const double unit = judgement.unitDeviation.value_or(0.0);
        for (int row = i * rows; unit > 0.0 && row < (i + 1) * rows; ++row) {
            const double root = std::sqrt(adjustment.redundancies(row));
            if (!(root > 0.0))
                continue;
            const double sigma = unit * model.sigma(row);
            point.test = std::max(point.test.value_or(0.0),
                                  std::abs(adjustment.residuals(row)) / (sigma * root));
            point.detectable =
                std::max(point.detectable.value_or(0.0), noncentrality * sigma / root);
        }
        judgement.points.push_back(point);
    }
    suspectOne(model, adjustment, names, judgement);
    return judgement;
}

} // namespace KelStd::calibration
