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

} // namespace

SiteHull::SiteHull(const ControlPoints &control)
{
    const auto take = [&](auto isUsed) {
        QVector<SitePlanePoint> points;
        for (const ControlPoint &point : control) {
            if (isUsed(point) && std::isfinite(point.north) && std::isfinite(point.east))
                points += SitePlanePoint{point.north, point.east};
        }
        return points;
    };
    QVector<SitePlanePoint> points =
        take([](const ControlPoint &point) { return point.isUsedInPlan; });
    if (points.isEmpty()) {
        points =
            take([](const ControlPoint &point) { return point.isUsedInHeight && point.height; });
    }
    if (points.size() < 3)
        return;
    std::sort(
        points.begin(), points.end(), [](const SitePlanePoint &left, const SitePlanePoint &right) {
            return left.east != right.east ? left.east < right.east : left.north < right.north;
        });
    appendHalf(points, m_corners);
    std::reverse(points.begin(), points.end());
    appendHalf(points, m_corners);
    if (m_corners.size() < 3)
        m_corners.clear();
}

bool SiteHull::contains(double north, double east) const
{
    const SitePlanePoint point{north, east};
    for (int i = 0; i < m_corners.size(); ++i) {
        const SitePlanePoint &from = m_corners.at(i);
        const SitePlanePoint &to = m_corners.at((i + 1) % m_corners.size());
        if (!(turn(from, to, point) >= -border * distance(from, to)))
            return false;
    }
    return true;
}

} // namespace KelStd::calibration
