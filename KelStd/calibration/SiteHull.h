#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/ControlPoint.h>

#include <QtCore/QVector>

namespace KelStd::calibration {

/// A point of the plane of a site.
struct SitePlanePoint
{
    double north; ///< [m]
    double east;  ///< [m]
};

/// The convex hull of control points of a site, in which its fit holds: outside, errors of
/// rotation, scale and slope grow with the distance. Points that enclose no area have a
/// neighbourhood instead. A plain value: any thread may use one.
class KELSTD_EXPORT SiteHull
{
public:
    /// How far from a single point the fit is taken to hold [m]: four centimetres, where map and
    /// ground differ by 400 ppm.
    static constexpr double pointRadius = 100.0;

    /// No hull: everything is inside.
    SiteHull() = default;

    /// The hull of the points that were used in plan, or else of those that were used in height.
    explicit SiteHull(const ControlPoints &control);

    /// The hull of the points that were used in height.
    static SiteHull ofHeights(const ControlPoints &control);

    /// Whether there is an area: three points that are not in one line.
    bool hasArea() const { return m_corners.size() > 2; }

    /// Counter-clockwise, as seen with east to the right and north up; the first one is not
    /// repeated. Without an area, the ends of the line that all points are in, or the one point.
    const QVector<SitePlanePoint> &corners() const { return m_corners; }

    /// Whether a point lies in the hull or less than 0.1 m outside, as the control points may when
    /// they are measured again. Of points in one line: no farther from it than it is long; of one
    /// point: no farther than `pointRadius`. True where there is no point.
    bool contains(double north, double east) const;

private:
    explicit SiteHull(QVector<SitePlanePoint> points);

    QVector<SitePlanePoint> m_corners;
};

} // namespace KelStd::calibration
