#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/CalibrationFailure.h>
#include <KelStd/calibration/FitStatistics.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QVector>

#include <optional>

namespace KelStd::calibration {

/// A point that is known on the local ellipsoid and in WGS84.
struct DatumPair
{
    QString name;                ///< of the point
    Pos local;                   ///< earth-centred cartesian on the local datum [m]
    Pos wgs84;                   ///< earth-centred cartesian in WGS84 [m]
    std::optional<double> sigma; ///< standard deviation of each coordinate [m]; of all or of none
};

/// How many parameters a datum shift has.
enum class DatumMethod
{
    Three, ///< three translations; from 1 pair on
    Seven  ///< and three rotations and a scale; from 3 pairs on, which are not in one line
};

/// A datum shift from local to WGS84, with rotations by the position vector convention:
///
///     W = T + (1 + scale) Rx Ry Rz L
struct DatumParameters
{
    double x = 0.0;     ///< T [m]
    double y = 0.0;     ///< [m]
    double z = 0.0;     ///< [m]
    double rx = 0.0;    ///< [arc seconds]
    double ry = 0.0;    ///< [arc seconds]
    double rz = 0.0;    ///< [arc seconds]
    double scale = 0.0; ///< [ppm]
};

/// Standard deviations of the parameters of a datum shift. Those of translations are at the earth's
/// centre, far from the pairs: what cannot be told of rotations and scale within a small area shows
/// in them.
struct DatumDeviations
{
    double x = 0.0;              ///< [m]
    double y = 0.0;              ///< [m]
    double z = 0.0;              ///< [m]
    std::optional<double> rx;    ///< [arc seconds]; nothing where it is not fitted
    std::optional<double> ry;    ///< [arc seconds]; nothing where it is not fitted
    std::optional<double> rz;    ///< [arc seconds]; nothing where it is not fitted
    std::optional<double> scale; ///< [ppm]; nothing where it is not fitted
};

/// A pair in a fit; residuals are calculated minus given, in WGS84.
struct DatumPoint
{
    QString name;               ///< of the point
    double residualX = 0.0;     ///< [m]
    double residualY = 0.0;     ///< [m]
    double residualZ = 0.0;     ///< [m]
    std::optional<double> test; ///< |w| or tau, the largest one of the three coordinates'
    bool isSuspect = false;     ///< the largest test of all, and above the critical value
};

/// A fitted datum shift.
struct DatumFit
{
    Coord coord; ///< the base system with its datum shift filled, without the records of a site
    DatumMethod method = DatumMethod::Seven; ///< which parameters were fitted
    DatumParameters rigorous;                ///< as stored, by the exact rotation matrix
    /// Of the rigorous ones, by the standard deviations of the pairs or else s0; nothing without
    /// redundancy and standard deviations.
    std::optional<DatumDeviations> deviations;
    DatumParameters linear;       ///< by the linear matrix of Bursa and Wolf, for comparison
    FitStatistics statistics;     ///< of all coordinates together
    QVector<DatumPoint> points;   ///< in the order of the pairs
    CalibrationWarnings warnings; ///< what has to be seen before the shift is used
};

/// Fits a datum shift to pairs of positions.
///
/// The seven parameters are those of the least sum of squares with a rigorous rotation (B. K. P.
/// Horn, Closed-form solution of absolute orientation, J. Opt. Soc. Am. A 4, 1987; S. Umeyama,
/// IEEE Trans. PAMI 13, 1991), taken from the matrix in the order Rx Ry Rz in which the chain
/// builds it. The record stores translations and scale with reversed signs, rotations as they
/// stand, as `Coord::__MakeCoordStrings` reads them. Every pair's WGS84 position is run through the
/// chain of the result; more than 0.1 mm between its local position and the fitted one is a
/// failure. A site of the base system was fitted to what its former datum shift made of the control
/// points: its records are not taken over, with a warning.
///
/// Seven parameters of pairs that lie near each other are hardly told apart: a rotation or a scale
/// that is off by a little turns and stretches the shift away from the pairs. A translation whose
/// standard deviation exceeds 5 m (8 cm in 100 km from the pairs, by the earth's radius) is warned
/// of; pairs without standard deviations are taken to be known to 1 mm at best.
///
/// \param failure (when given) becomes the reason, with what to do about it
/// \return nothing on a failure, and where PROJ is not loaded
KELSTD_EXPORT std::optional<DatumFit> fitDatum(const Coord &base, const QVector<DatumPair> &pairs,
                                               DatumMethod method,
                                               CalibrationFailure *failure = nullptr);

/// What of the origin of a base system holds for the system with a fitted datum shift: as of a site
/// on it (`siteOrigin`), all but its code, since it is no system of a database any more and whoever
/// knows the code would take the database's own datum shift; and not the operation of the former
/// datum shift, nor control points.
KELSTD_EXPORT SystemOrigin datumOrigin(const SystemOrigin &base);

/// The earth-centred cartesian position [m] of longitude, latitude [deg] and height [m] on the
/// ellipsoid of a system, as `Location::localLLH` has them: positive in the directions of the
/// ellipsoid's axes (`Ellipsoid::positiveDir`). Nothing, with the reason, for an ellipsoid without a size.
KELSTD_EXPORT std::optional<Pos> cartesianOf(const Ellipsoid &ellipsoid, const Pos &geographic,
                                             CalibrationFailure *failure = nullptr);

/// The same on the ellipsoid of WGS 84.
KELSTD_EXPORT Pos wgs84CartesianOf(const Pos &geographic);

} // namespace KelStd::calibration
