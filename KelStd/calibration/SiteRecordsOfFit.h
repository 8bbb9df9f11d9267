#pragma once

#include <KelStd/calibration/SiteFit.h>
#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stPlaneTransform.h>

/// The records of a system that a fit fills.
namespace KelStd::calibration {

/// No function where nothing is fitted; what is held is stored with its value.
void setPlane(const PlanFit &fit, stPlaneTransform &record);
void setHeights(const HeightFit &fit, stElevationFitting &record);

/// Takes the records of a site away. They were fitted to coordinates that the system does not give
/// any more, so that there is a warning where it has one. `what`: becomes of it.
void clearSite(Coord &coord, CalibrationWarnings &warnings, const QString &what);

} // namespace KelStd::calibration
