#pragma once

#include <KelStd/Failure.h>

#include <QtCore/QString>
#include <QtCore/QVector>

namespace KelStd::calibration {

/// Why nothing is fitted. The texts say what to do.
enum class CalibrationFault
{
    None = 0,          ///< no failure
    NothingToFit,      ///< neither the plane nor the heights are to be fitted
    TooFewPoints,      ///< fewer than the method has to have
    MissingName,       ///< a point without a name
    DuplicateName,     ///< two points with one name
    UnknownName,       ///< a point to be left out that is not there
    NotFinite,         ///< a coordinate that is no finite number, or of no place near the earth
    BadSigma,          ///< a standard deviation below a micrometre or above a kilometre
    MissingSigma,      ///< a standard deviation for some points only
    CoincidentPoints,  ///< two points in one place
    CollinearPoints,   ///< points in one line, or for a curve on one conic
    UnusualAxes,       ///< the plane of the system is not easting and northing in metres
    MissingGeoidModel, ///< the system names a geoid model that cannot be used
    NotConverted,      ///< a position that the system does not convert
    BadRecords,        ///< the site of the system has records that cannot be applied
    NotReproduced      ///< the records, applied, do not give what was fitted
};

/// A failure of one of the kinds of `CalibrationFault`.
using CalibrationFailure = Failure<CalibrationFault>;

/// What a surveyor has to see before relying on a fit.
enum class CalibrationWarningKind
{
    Choice,          ///< a method that was chosen by the number of points, and why
    NoRedundancy,    ///< as many parameters as observations: nothing is checked
    Scale,           ///< more than 100 ppm off
    Slope,           ///< heights are tilted by more than 50 ppm
    Mirrored,        ///< with northing and easting swapped, or one mirrored, it fits far better
    Feet,            ///< lengths differ as feet and metres do
    LeftOut,         ///< the fit without a point misses it by more than three times the RMS
    Suspect,         ///< the one point whose test is largest and above its critical value
    LargeShift,      ///< a datum shift of which a part is larger than that of any datum
    ReplacedRecords, ///< the base system had records of a site, which are not kept
    UnknownColumn,   ///< something in the list of points was not read
    SmallExtent      ///< pairs too near each other to tell the parts of a datum shift apart
};

/// A text for people, without a full stop.
struct CalibrationWarning
{
    CalibrationWarningKind kind; ///< to decide by
    QString text;                ///< to show
};

/// What a fit is to be read with, in the order in which it was noticed.
using CalibrationWarnings = QVector<CalibrationWarning>;

} // namespace KelStd::calibration
