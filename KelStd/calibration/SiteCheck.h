#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/CalibrationFailure.h>
#include <KelStd/coord/ControlPoint.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QVector>

#include <optional>

namespace KelStd::calibration {

/// How far the site coordinates of a measured point are from what they should be.
struct PointDifference
{
    QString name;                 ///< of the point
    std::optional<double> north;  ///< site less control [m]; nothing for a point not used in plan
    std::optional<double> east;   ///< [m]
    std::optional<double> height; ///< [m]; nothing for a point not used in height
};

/// The differences in one number each.
struct DifferenceSummary
{
    int points = 0;            ///< that took part
    std::optional<double> rms; ///< square root of the sum of the vectors' squares over points [m]
    std::optional<double> max; ///< the longest vector [m]
    QString maxPoint;          ///< whose it is
};

/// Independent points held against a site; nothing is fitted.
struct SiteCheck
{
    QVector<PointDifference> points; ///< in the order of the list
    DifferenceSummary plan;          ///< northing and easting together
    DifferenceSummary height;        ///< of the heights
    bool hasSite = false;            ///< whether the system has records of a site
};

/// The differences between the site coordinates of `points` in `site`, by its records, and what
/// they should be. A system without such records is held against its own plane.
///
/// \param failure (when given) becomes the reason
/// \return nothing on a failure: a name that is missing or there twice, a number that is not
///         finite, a position that is not converted, records that cannot be applied, a missing
///         geoid model
KELSTD_EXPORT std::optional<SiteCheck> checkSite(const Coord &site, const ControlPoints &points,
                                                 CalibrationFailure *failure = nullptr);

} // namespace KelStd::calibration
