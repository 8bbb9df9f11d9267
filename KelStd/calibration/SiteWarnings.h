#pragma once

#include <KelStd/calibration/CalibrationFailure.h>
#include <KelStd/calibration/PlaneSolution.h>
#include <KelStd/calibration/SiteFit.h>

/// What a surveyor has to see before relying on a fit of a site.
namespace KelStd::calibration {

/// Appends what is to be said of the plane.
void warnOfPlane(const PlanePairs &pairs, const PlaneSolution &solution,
                 CalibrationWarnings &warnings);

/// Appends what is to be said of the heights.
void warnOfHeights(const HeightFit &fit, const Judgement &judgement, CalibrationWarnings &warnings);

/// Appends what is to be said of points that the fit without them misses.
void warnOfLeftOut(const SiteFit &fit, CalibrationWarnings &warnings);

} // namespace KelStd::calibration
