#pragma once

#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QString>

/// Drawings of a fitted site, as SVG elements that stand in a page.
namespace KelStd::calibration {

/// The plan of the site to scale: points, the hull, residual vectors and error ellipses, with a bar
/// for each of the two scales. Empty without a point that has a residual in plan.
QString planDrawing(const SiteFit &fit);

/// The residuals of the heights as bars. Empty without any.
QString heightDrawing(const SiteFit &fit);

/// How much longer residual vectors are drawn than the plan; 1 without any.
double vectorMagnification(const SiteFit &fit);

} // namespace KelStd::calibration
