#pragma once

#include <KelStd/calibration/Adjustment.h>
#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// The fit of a surface of heights.
namespace KelStd::calibration {

/// The points that take part.
struct HeightPairs
{
    QStringList names;
    std::vector<stENU> site;     ///< northing and easting of the site, height of the system [m]
    std::vector<double> control; ///< heights of the site [m]
    std::vector<double> sigma;   ///< of each point [m], or empty
};

struct HeightResidual
{
    double height = 0.0; ///< calculated minus control [m]
    std::optional<double> leftOut;
};

struct HeightSolution
{
    HeightFit fit;
    Judgement judgement;
    std::vector<HeightResidual> residuals;
    double condition = 0.0; ///< see `Adjustment`; nothing else is set where it is too small
};

/// The fit by a method other than `None`. The points are enough.
HeightSolution solveHeights(const HeightPairs &pairs, HeightMethod method);

/// Below it the points do not determine the surface.
inline constexpr double leastCondition = 1e-6;

} // namespace KelStd::calibration
