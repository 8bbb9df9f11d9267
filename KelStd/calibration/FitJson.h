#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/DatumFit.h>
#include <KelStd/calibration/SiteCheck.h>
#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QByteArray>

/// What is fitted, as JSON: an object in one line, with its end. What does not exist is null, and
/// numbers have all their digits. May be called on any thread.
namespace KelStd::calibration {

/// Keys: horizontal, vertical, points, warnings.
KELSTD_EXPORT QByteArray jsonLine(const SiteFit &fit);

/// Keys: points, horizontal, vertical.
KELSTD_EXPORT QByteArray jsonLine(const SiteCheck &check);

/// Keys: those of the parameters, linear, s0_m, points, warnings.
KELSTD_EXPORT QByteArray jsonLine(const DatumFit &fit);

} // namespace KelStd::calibration
