#include <KelStd/calibration/SiteExtent.h>

#include <algorithm>

namespace KelStd::calibration {

namespace {

bool areSame(const SiteHull &left, const SiteHull &right)
{
    return std::equal(left.corners().begin(), left.corners().end(), right.corners().begin(),
                      right.corners().end(),
                      [](const SitePlanePoint &one, const SitePlanePoint &other) {
                          return one.north == other.north && one.east == other.east;
                      });
}

} // namespace

SiteExtent::SiteExtent(const SiteTransform &site, const ControlPoints &control)
{
    if (!site.hasSite())
        return;
    m_hull = SiteHull(control);
    // One shift is the same wherever its points are.
    const bool isSloped = site.surfaceFunction() == ElevationFittingFunction_Plane
                          || site.surfaceFunction() == ElevationFittingFunction_Curve;
    SiteHull ofHeights = SiteHull::ofHeights(control);
    if (isSloped && !ofHeights.corners().isEmpty() && !areSame(m_hull, ofHeights))
        m_heights = std::move(ofHeights);
}

} // namespace KelStd::calibration
