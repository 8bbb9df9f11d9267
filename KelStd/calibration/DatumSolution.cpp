#include <KelStd/calibration/DatumSolution.h>

#include <KelStd/calibration/StoredNumber.h>

#include <Eigen/Eigenvalues>
#include <Eigen/Geometry>
#include <Eigen/SVD>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

using Eigen::Matrix3d;
using Eigen::Vector3d;

constexpr double arcSecondsPerRadian = 180.0 * 3600.0 / 3.14159265358979323846;
constexpr double partsPerMillion = 1e6;

/// Positions about their weighted centroids.
struct Centred
{
    std::vector<Vector3d> local;
    std::vector<Vector3d> wgs84;
    std::vector<double> weight;
    Vector3d localCentroid = Vector3d::Zero();
    Vector3d wgs84Centroid = Vector3d::Zero();
};

Vector3d weightedMean(const std::vector<Vector3d> &positions, const std::vector<double> &weights)
{
    Vector3d sum = Vector3d::Zero();
    double all = 0.0;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        sum += weights[i] * (positions[i] - positions[0]);
        all += weights[i];
    }
    return positions[0] + sum / all;
}

Centred centred(const DatumVectors &vectors)
{
    Centred result;
    result.weight = weightsOf(vectors.sigma, vectors.local.size());
    result.localCentroid = weightedMean(vectors.local, result.weight);
    result.wgs84Centroid = weightedMean(vectors.wgs84, result.weight);
    for (std::size_t i = 0; i < vectors.local.size(); ++i) {
        result.local.push_back(vectors.local[i] - result.localCentroid);
        result.wgs84.push_back(vectors.wgs84[i] - result.wgs84Centroid);
    }
    return result;
}

/// The rotation and the scale of the least sum of squares, without translations (Umeyama's
/// equations 40 to 42).
void solveRigorously(const Centred &points, DatumParameters &parameters)
{
    Matrix3d products = Matrix3d::Zero();
    double squares = 0.0;
    for (std::size_t i = 0; i < points.local.size(); ++i) {
        products += points.weight[i] * points.wgs84[i] * points.local[i].transpose();
        squares += points.weight[i] * points.local[i].squaredNorm();
    }
    const Eigen::JacobiSVD<Matrix3d> svd(products, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Vector3d signs(1.0, 1.0, 1.0);
    if (svd.matrixU().determinant() * svd.matrixV().determinant() < 0.0)
        signs(2) = -1.0; // a rotation, and no mirror
    const Matrix3d rotation = svd.matrixU() * signs.asDiagonal() * svd.matrixV().transpose();
    const double scale = svd.singularValues().dot(signs) / squares;
    // Rx Ry Rz by its elements: the chain builds the matrix in this order.
    parameters.ry = std::asin(std::clamp(rotation(0, 2), -1.0, 1.0)) * arcSecondsPerRadian;
    parameters.rx = std::atan2(-rotation(1, 2), rotation(2, 2)) * arcSecondsPerRadian;
    parameters.rz = std::atan2(-rotation(0, 1), rotation(0, 0)) * arcSecondsPerRadian;
    parameters.scale = (scale - 1.0) * partsPerMillion;
}

/// Rounds what is kept and takes the translations from it.
void store(const Centred &points, DatumParameters &parameters)
{
    for (double *value : {&parameters.rx, &parameters.ry, &parameters.rz, &parameters.scale})
        *value = asStored(*value);
    const Vector3d translation = points.wgs84Centroid
                                 - (1.0 + parameters.scale / partsPerMillion)
                                       * (rotationOf(parameters) * points.localCentroid);
    parameters.x = asStored(translation(0));
    parameters.y = asStored(translation(1));
    parameters.z = asStored(translation(2));
}

/// Translations, and with seven parameters rotations and scale, each by its derivative at the
/// positions `at` about their centroid.
LinearModel modelOf(const DatumVectors &vectors, DatumMethod method,
                    const std::vector<Vector3d> &at, const std::vector<Vector3d> &observed)
{
    const auto count = static_cast<Eigen::Index>(at.size());
    LinearModel model;
    model.rowsPerPoint = 3;
    model.isWeighted = !vectors.sigma.empty();
    model.design = Eigen::MatrixXd::Zero(3 * count, method == DatumMethod::Seven ? 7 : 3);
    model.observed = Eigen::VectorXd(3 * count);
    model.sigma = Eigen::VectorXd::Ones(3 * count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        model.design.block<3, 3>(3 * i, 0) = Matrix3d::Identity();
        if (method == DatumMethod::Seven) {
            for (int axis = 0; axis < 3; ++axis)
                model.design.block<3, 1>(3 * i, 3 + axis) = Vector3d::Unit(axis).cross(at[index]);
            model.design.block<3, 1>(3 * i, 6) = at[index];
        }
        model.observed.segment<3>(3 * i) = observed[index];
        if (model.isWeighted)
            model.sigma.segment<3>(3 * i).setConstant(vectors.sigma[index]);
    }
    return model;
}

/// The seven parameters of the linear matrix.
DatumParameters linearParameters(const DatumVectors &vectors, const Centred &points,
                                 DatumMethod method)
{
    std::vector<Vector3d> differences;
    for (std::size_t i = 0; i < points.local.size(); ++i)
        differences.push_back(points.wgs84[i] - points.local[i]);
    const Adjustment adjustment = adjusted(modelOf(vectors, method, points.local, differences));
    Vector3d rotation = Vector3d::Zero();
    double scale = 0.0;
    if (method == DatumMethod::Seven) {
        rotation = adjustment.parameters.segment<3>(3);
        scale = adjustment.parameters(6);
    }
    const Vector3d &centre = points.localCentroid;
    const Vector3d translation = points.wgs84Centroid - centre + adjustment.parameters.head<3>()
                                 - scale * centre - rotation.cross(centre);
    return {translation(0),
            translation(1),
            translation(2),
            rotation(0) * arcSecondsPerRadian,
            rotation(1) * arcSecondsPerRadian,
            rotation(2) * arcSecondsPerRadian,
            scale * partsPerMillion};
}

Matrix3d turn(double arcSeconds, const Vector3d &axis)
{
    return Eigen::AngleAxisd(arcSeconds / arcSecondsPerRadian, axis).toRotationMatrix();
}

/// Skew-symmetric: times a vector, the cross product with it.
Matrix3d crossOf(const Vector3d &vector)
{
    Matrix3d matrix;
    matrix << Vector3d::UnitX().cross(vector), Vector3d::UnitY().cross(vector),
        Vector3d::UnitZ().cross(vector);
    return -matrix;
}

/// The roots of the cofactors of the parameters, by the law of their propagation from those of the
/// model: of the shift at the centroid, of small turns about the axes and of a relative scale.
/// `centre`: the centroid of the local positions, turned and scaled.
DatumDeviations deviationsOf(const DatumParameters &parameters, const Eigen::MatrixXd &cofactors,
                             const Vector3d &centre)
{
    const auto rootsOf = [&cofactors](const Eigen::MatrixXd &derivatives) -> Eigen::VectorXd {
        return (derivatives * cofactors * derivatives.transpose()).diagonal().cwiseSqrt();
    };
    DatumDeviations deviations;
    Eigen::MatrixXd translation = Eigen::MatrixXd::Zero(3, cofactors.rows());
    translation.leftCols<3>() = Matrix3d::Identity();
    if (cofactors.rows() > 3) {
        translation.middleCols<3>(3) = crossOf(centre);
        translation.col(6) = -centre;
        // A small turn by the three rotations: each is about its axis as turned by those before.
        const Matrix3d first = turn(parameters.rx, Vector3d::UnitX());
        Matrix3d axes;
        axes << Vector3d::UnitX(), first * Vector3d::UnitY(),
            first * turn(parameters.ry, Vector3d::UnitY()) * Vector3d::UnitZ();
        Eigen::MatrixXd turned = Eigen::MatrixXd::Zero(3, cofactors.rows());
        turned.middleCols<3>(3) = axes.inverse() * arcSecondsPerRadian;
        const Eigen::VectorXd rotations = rootsOf(turned);
        deviations.rx = rotations(0);
        deviations.ry = rotations(1);
        deviations.rz = rotations(2);
        deviations.scale = std::sqrt(cofactors(6, 6)) * (partsPerMillion + parameters.scale);
    }
    const Eigen::VectorXd translations = rootsOf(translation);
    deviations.x = translations(0);
    deviations.y = translations(1);
    deviations.z = translations(2);
    return deviations;
}

} // namespace

Matrix3d rotationOf(const DatumParameters &parameters)
{
    return turn(parameters.rx, Vector3d::UnitX()) * turn(parameters.ry, Vector3d::UnitY())
           * turn(parameters.rz, Vector3d::UnitZ());
}

Vector3d localOf(const DatumParameters &parameters, const Vector3d &wgs84)
{
    const Vector3d translation(parameters.x, parameters.y, parameters.z);
    return rotationOf(parameters).transpose() * (wgs84 - translation)
           / (1.0 + parameters.scale / partsPerMillion);
}

bool areInLine(const std::vector<Vector3d> &positions)
{
    if (positions.size() < 3)
        return true;
    const Vector3d mean = weightedMean(positions, std::vector<double>(positions.size(), 1.0));
    Matrix3d scatter = Matrix3d::Zero();
    for (const Vector3d &position : positions)
        scatter += (position - mean) * (position - mean).transpose();
    const Eigen::SelfAdjointEigenSolver<Matrix3d> solver(scatter, Eigen::EigenvaluesOnly);
    constexpr double thinnest = 1e-6; // a thousandth, squared
    return solver.eigenvalues()(1) <= thinnest * solver.eigenvalues()(2);
}

DatumDeviations scaled(const DatumDeviations &deviations, double unit)
{
    DatumDeviations result = deviations;
    for (double *each : {&result.x, &result.y, &result.z})
        *each *= unit;
    for (std::optional<double> *each : {&result.rx, &result.ry, &result.rz, &result.scale}) {
        if (*each)
            **each *= unit;
    }
    return result;
}

DatumSolution solveDatum(const DatumVectors &vectors, DatumMethod method)
{
    const Centred points = centred(vectors);
    DatumSolution solution;
    if (method == DatumMethod::Seven)
        solveRigorously(points, solution.rigorous);
    store(points, solution.rigorous);
    solution.linear = linearParameters(vectors, points, method);

    // What is left of the rigorous shift, with the derivatives there: no more than rounding comes
    // out as corrections, and the residuals as they are.
    const Matrix3d turned =
        (1.0 + solution.rigorous.scale / partsPerMillion) * rotationOf(solution.rigorous);
    std::vector<Vector3d> shifted;
    std::vector<Vector3d> left;
    for (std::size_t i = 0; i < points.local.size(); ++i) {
        shifted.push_back(turned * points.local[i]);
        left.push_back(points.wgs84[i] - shifted.back());
    }
    const LinearModel model = modelOf(vectors, method, shifted, left);
    const Adjustment adjustment = adjusted(model);
    solution.judgement = judged(model, adjustment, vectors.names);
    solution.cofactors =
        deviationsOf(solution.rigorous, adjustment.cofactors, turned * points.localCentroid);
    solution.residuals = adjustment.residuals;
    return solution;
}

} // namespace KelStd::calibration
