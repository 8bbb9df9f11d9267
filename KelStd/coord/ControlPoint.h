#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Pos.h>

#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

namespace KelStd {

/// A point of a building site that is known twice: measured by GNSS, and in the coordinates of the
/// site. A site is fitted to such points, and its document keeps them (`SystemOrigin::control`).
struct KELSTD_EXPORT ControlPoint
{
    QString name;                 ///< of the point, unique in a list
    Pos wgs84;                    ///< WGS84 longitude, latitude [deg], ellipsoidal height [m]
    double north = 0.0;           ///< northing of the site [m]
    double east = 0.0;            ///< easting of the site [m]
    std::optional<double> height; ///< height of the site [m], where it is known
    bool isUsedInPlan = true;     ///< whether northing and easting are fitted to
    bool isUsedInHeight = true;   ///< means nothing without a height
    std::optional<double> sigmaH; ///< standard deviation of northing and of easting, each [m]
    std::optional<double> sigmaV; ///< standard deviation of the height [m]

    /// "hv", "h" (in plan), "v" (in height) or "-": what it is used for, as documents and lists of
    /// points have it.
    QString useWord() const;

    /// Takes such a word, in letters of either size; false, and nothing changes, for another one.
    bool setUse(const QString &word);

    /// Equality of all members.
    bool operator==(const ControlPoint &other) const;
    /// The negation of `operator==`.
    bool operator!=(const ControlPoint &other) const { return !(*this == other); }
};

/// The control points of a site, in the order in which they were given.
using ControlPoints = QVector<ControlPoint>;

} // namespace KelStd
