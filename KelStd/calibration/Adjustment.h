#pragma once

#include <KelStd/calibration/FitStatistics.h>

#include <Eigen/Core>

#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// Least squares by an orthogonal decomposition, with what the residuals tell of the observations.
namespace KelStd::calibration {

/// Rows of one point follow each other and have one standard deviation.
struct LinearModel
{
    Eigen::MatrixXd design;
    Eigen::VectorXd observed;
    Eigen::VectorXd sigma; ///< of each row; ones where none is known
    int rowsPerPoint = 1;
    bool isWeighted = false; ///< whether `sigma` was given
};

struct Adjustment
{
    Eigen::VectorXd parameters;
    Eigen::VectorXd residuals;    ///< calculated minus observed
    Eigen::VectorXd redundancies; ///< of each row, 0 to 1
    Eigen::MatrixXd basis;        ///< orthonormal, of the weighted design's columns: hat = b b^T
    Eigen::MatrixXd cofactors;    ///< of the parameters
    double sumOfSquares = 0.0;    ///< of the residuals, each over its standard deviation
    int redundancy = 0;
    /// The smallest singular value of the design with columns of length 1 over the largest one: 0
    /// where the points do not determine the parameters, and then nothing but the redundancy is
    /// set.
    double condition = 0.0;
};

/// The weights of so many points, whose standard deviations may be unknown: `sigma` is empty then,
/// and the weights are ones.
std::vector<double> weightsOf(const std::vector<double> &sigma, std::size_t points);

Adjustment adjusted(const LinearModel &model);

/// The residuals of a point in the adjustment without it. Nothing where the others do not
/// determine the parameters.
std::optional<Eigen::VectorXd> leftOutResiduals(const LinearModel &model,
                                                const Adjustment &adjustment, int point);

/// What the residuals tell, of all and of each point.
struct Judgement
{
    FitStatistics statistics;
    std::vector<PointStatistics> points;
    bool isTied = false; ///< the critical value is exceeded, by several points equally
    /// The standard deviation of unit weight that standard deviations of parameters are taken by:
    /// 1 where standard deviations were given, else s0. Nothing without redundancy.
    std::optional<double> unitDeviation;
};

/// `names`: of the points in the order of their rows.
Judgement judged(const LinearModel &model, const Adjustment &adjustment, const QStringList &names);

/// What is shorter [m] is noise of the arithmetic: no point is suspected for it.
inline constexpr double arithmeticNoise = 1e-6;

/// The critical value of Pope's tau at the level 0.001; nothing below a redundancy of 2, where
/// every tau is 1.
std::optional<double> criticalTau(int redundancy);

} // namespace KelStd::calibration
