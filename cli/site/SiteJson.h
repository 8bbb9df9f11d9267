#pragma once

#include <KelStd/calibration/DatumFit.h>
#include <KelStd/calibration/SiteCheck.h>
#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QByteArray>

/// What is fitted, as JSON: an object in one line, with its end. What does not exist is null.
namespace KelStd::cli {

/// Keys: horizontal, vertical, points, warnings.
QByteArray jsonLine(const calibration::SiteFit &fit);

/// Keys: points, horizontal, vertical.
QByteArray jsonLine(const calibration::SiteCheck &check);

/// Keys: those of the parameters, linear, s0_m, points, warnings.
QByteArray jsonLine(const calibration::DatumFit &fit);

} // namespace KelStd::cli
