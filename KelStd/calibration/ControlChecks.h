#pragma once

#include <KelStd/calibration/CalibrationFailure.h>
#include <KelStd/coord/ControlPoint.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/uPos.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// What control points have to be before anything is fitted to them. A check that finds something
/// returns the failure, and one that finds nothing none.
namespace KelStd::calibration {

/// Each name once, and none missing.
CalibrationFailure faultOfNames(const QStringList &names);

/// Whether a standard deviation [m] can be one: from a micrometre to a kilometre. Weights of others
/// would leave nothing of the rest.
bool isDeviation(double sigma);

/// Names, finite coordinates and standard deviations.
CalibrationFailure faultOfPoints(const ControlPoints &points);

/// Whether the plane of the system is easting and northing in metres.
CalibrationFailure faultOfPlane(const Coord &coord);

/// The points in the plane of the system: easting, northing and height [m]. A point that is used in
/// height needs the geoid model that the system names.
CalibrationFailure toBase(const Coord &coord, const ControlPoints &points,
                          std::vector<stENU> &base);

/// Two points less than 1 mm apart in the plane. `what`: "measured" or "given".
CalibrationFailure faultOfPlaces(const QStringList &names, const std::vector<stENU> &places,
                                 const QString &what);

/// Whether the points are all in one line: across it their root mean square distance is below a
/// thousandth of that along it.
bool areInLine(const std::vector<stENU> &places);

} // namespace KelStd::calibration
