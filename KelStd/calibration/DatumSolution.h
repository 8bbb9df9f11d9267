#pragma once

#include <KelStd/calibration/Adjustment.h>
#include <KelStd/calibration/DatumFit.h>

#include <Eigen/Core>

#include <vector>

/// The fit of a datum shift to pairs of cartesian positions.
namespace KelStd::calibration {

struct DatumVectors
{
    QStringList names;
    std::vector<Eigen::Vector3d> local;
    std::vector<Eigen::Vector3d> wgs84;
    std::vector<double> sigma; ///< of each pair [m], or empty
};

struct DatumSolution
{
    DatumParameters rigorous; ///< as a document keeps them
    DatumParameters linear;
    Judgement judgement;
    DatumDeviations cofactors; ///< the deviations of the rigorous ones, by a unit of 1
    Eigen::VectorXd residuals; ///< three rows a pair, calculated minus given
};

/// Times the standard deviation of unit weight.
DatumDeviations scaled(const DatumDeviations &deviations, double unit);

DatumSolution solveDatum(const DatumVectors &vectors, DatumMethod method);

/// Whether the positions are in one line, as `areInLine` has it in the plane.
bool areInLine(const std::vector<Eigen::Vector3d> &positions);

/// Rx Ry Rz of the rotations.
Eigen::Matrix3d rotationOf(const DatumParameters &parameters);

/// The local position of one in WGS84, by the shift backwards.
Eigen::Vector3d localOf(const DatumParameters &parameters, const Eigen::Vector3d &wgs84);

} // namespace KelStd::calibration
