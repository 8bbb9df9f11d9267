#include <KelStd/calibration/SiteHull.h>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double flatness = 0.001; // [m], below which a corner is none
// Control points that are measured again lie outside by what was measured and by their residuals.
constexpr double border = 0.1; // [m]

/// Twice the area of the triangle, positive where the three turn counter-clockwise.
double turn(const SitePlanePoint &a, const SitePlanePoint &b, const SitePlanePoint &c)
{
    return (b.east - a.east) * (c.north - a.north) - (b.north - a.north) * (c.east - a.east);
}

double distance(const SitePlanePoint &a, const SitePlanePoint &b)
{
    return std::hypot(b.east - a.east, b.north - a.north);
}

/// Appends the corners of one half of the hull (A. M. Andrew's monotone chain, 1979).
void appendHalf(const QVector<SitePlanePoint> &points, QVector<SitePlanePoint> &corners)
{
    const auto start = corners.size();
    for (const SitePlanePoint &point : points) {
        // A corner that is hardly off the line of its neighbours is none.
        while (corners.size() >= start + 2) {
            const SitePlanePoint &before = corners.at(corners.size() - 2);
            if (turn(before, corners.last(), point) > flatness * distance(before, point))
                break;
            corners.removeLast();
        }
        corners += point;
    }
    corners.removeLast(); // it begins the other half
}

template <typename IsUsed>
QVector<SitePlanePoint> placesOf(const ControlPoints &control, IsUsed isUsed)
{
    QVector<SitePlanePoint> points;
    for (const ControlPoint &point : control) {
        if (isUsed(point) && std::isfinite(point.north) && std::isfinite(point.east))
            points += SitePlanePoint{point.north, point.east};
    }
    return points;
}

QVector<SitePlanePoint> placesOfHeights(const ControlPoints &control)
{
    return placesOf(control,
                    [](const ControlPoint &point) { return point.isUsedInHeight && point.height; });
}

QVector<SitePlanePoint> placesOfPlan(const ControlPoints &control)
{
    const QVector<SitePlanePoint> points =
        placesOf(control, [](const ControlPoint &point) { return point.isUsedInPlan; });
    return points.isEmpty() ? placesOfHeights(control) : points;
}

/// From a point to the line between two others, which ends there.
double distance(const SitePlanePoint &point, const SitePlanePoint &from, const SitePlanePoint &to)
{
    const double north = to.north - from.north;
    const double east = to.east - from.east;
    const double square = north * north + east * east;
    const double along = (point.north - from.north) * north + (point.east - from.east) * east;
    const double share = square > 0.0 ? std::min(std::max(along / square, 0.0), 1.0) : 0.0;
    return distance(point, {from.north + share * north, from.east + share * east});
}

} // namespace

SiteHull::SiteHull(const ControlPoints &control) : SiteHull(placesOfPlan(control)) {}

SiteHull SiteHull::ofHeights(const ControlPoints &control)
{
    return SiteHull(placesOfHeights(control));
}

SiteHull::SiteHull(QVector<SitePlanePoint> points)
{
    if (points.isEmpty())
        return;
    std::sort(
        points.begin(), points.end(), [](const SitePlanePoint &left, const SitePlanePoint &right) {
            return left.east != right.east ? left.east < right.east : left.north < right.north;
        });
    if (distance(points.first(), points.last()) < flatness) {
        m_corners += points.first();
        return;
    }
    appendHalf(points, m_corners);
    std::reverse(points.begin(), points.end());
    appendHalf(points, m_corners);
}

bool SiteHull::contains(double north, double east) const
{
    const SitePlanePoint point{north, east};
    if (m_corners.isEmpty())
        return true;
    if (!hasArea()) {
        const SitePlanePoint &from = m_corners.first();
        const SitePlanePoint &to = m_corners.last();
        const double reach = m_corners.size() == 1 ? pointRadius : distance(from, to);
        return distance(point, from, to) <= reach + border;
    }
    for (int i = 0; i < m_corners.size(); ++i) {
        const SitePlanePoint &from = m_corners.at(i);
        const SitePlanePoint &to = m_corners.at((i + 1) % m_corners.size());
        if (!(turn(from, to, point) >= -border * distance(from, to)))
            return false;
    }
    return true;
}

} // namespace KelStd::calibration
