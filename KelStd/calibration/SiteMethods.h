#pragma once

#include <KelStd/calibration/SiteFit.h>

namespace KelStd::calibration {

/// How many points a method has to have.
int leastPoints(PlanMethod method);
/// Of heights so many are the parameters.
int leastPoints(HeightMethod method);

} // namespace KelStd::calibration
