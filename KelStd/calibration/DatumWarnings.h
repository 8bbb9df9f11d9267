#pragma once

#include <KelStd/calibration/DatumSolution.h>

/// What a surveyor has to see of a datum shift that was fitted.
namespace KelStd::calibration {

/// A part of the shift that no datum has comes of columns or axes that are mixed up.
void warnOfShift(const DatumParameters &parameters, CalibrationWarnings &warnings);

/// Seven parameters that pairs near each other hardly determine.
void warnOfExtent(const DatumSolution &solution, CalibrationWarnings &warnings);

/// Pairs without a check, and the one that is suspect.
void warnOfPairs(const Judgement &judgement, CalibrationWarnings &warnings);

} // namespace KelStd::calibration
