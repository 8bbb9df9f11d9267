#pragma once

#include <KelStd/calibration/SiteFit.h>
#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stPlaneTransform.h>

/// The records of a system that a fit fills.
namespace KelStd::calibration {

/// No function where nothing is fitted; what is held is stored with its value.
void setPlane(const PlanFit &fit, stPlaneTransform &record);
void setHeights(const HeightFit &fit, stElevationFitting &record);

} // namespace KelStd::calibration
