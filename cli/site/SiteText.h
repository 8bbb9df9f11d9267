#pragma once

#include <KelStd/calibration/DatumFit.h>
#include <KelStd/calibration/SiteCheck.h>
#include <KelStd/calibration/SiteFit.h>

/// What is fitted, as a surveyor reads it.
namespace KelStd::cli {

class Console;

void printText(const calibration::SiteFit &fit, Console &console);
void printText(const calibration::SiteCheck &check, Console &console);
void printText(const calibration::DatumFit &fit, Console &console);

/// Reports each warning; a choice is a note.
void reportWarnings(const calibration::CalibrationWarnings &warnings, Console &console);

} // namespace KelStd::cli
