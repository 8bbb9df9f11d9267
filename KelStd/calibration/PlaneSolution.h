#pragma once

#include <KelStd/calibration/Adjustment.h>
#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// The fit of a plane to points that are known in two.
namespace KelStd::calibration {

/// The points that take part, with east and north of each [m].
struct PlanePairs
{
    QStringList names;
    std::vector<stENU> base;
    std::vector<stENU> control;
    std::vector<double> sigma; ///< of each point [m], or empty
};

/// What is known of a point that took part.
struct PlaneResidual
{
    double north = 0.0; ///< calculated minus control [m]
    double east = 0.0;  ///< [m]
    std::optional<double> leftOutNorth;
    std::optional<double> leftOutEast;
};

struct PlaneSolution
{
    PlanFit fit;
    Judgement judgement;
    std::vector<PlaneResidual> residuals;
    Eigen::MatrixXd design;                   ///< two rows a point, east before north
    std::optional<Eigen::MatrixXd> variances; ///< of the parameters; nothing where not known
};

/// The fit by a method other than `None`. The points are enough, and not in one place.
PlaneSolution solvePlane(const PlanePairs &pairs, PlanMethod method);

/// The standard ellipse of a point, by its two rows of the design.
ErrorEllipse ellipseOf(const PlaneSolution &solution, int point);

/// A similarity that is only looked at.
struct QuickSimilarity
{
    double scale = 1.0;
    double rotation = 0.0; ///< [rad]
    double rms = 0.0;      ///< [m]
};

/// The unweighted four parameters. With `isSwapped` to control points whose northing and easting
/// are taken for each other, which mirrors the plane.
QuickSimilarity quickSimilarity(const PlanePairs &pairs, bool isSwapped);

} // namespace KelStd::calibration
