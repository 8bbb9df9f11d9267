#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/SiteHull.h>
#include <KelStd/calibration/SiteTransform.h>

#include <optional>

namespace KelStd::calibration {

/// Where the fit of a site holds: all of it in the hull of the points that were used in plan, but
/// sloped or curved heights in that of the points that were used in height.
///
///     const SiteExtent extent(site, origin.control);
///     if ((extent.outside(atSite.n, atSite.e) & SiteExtent::heights) != 0)
///
/// A plain value: any thread may use one.
class KELSTD_EXPORT SiteExtent
{
public:
    /// \name Parts of a fit
    /// Bits of `outside`.
    /// \{
    static constexpr unsigned plan = 1;    ///< northing and easting
    static constexpr unsigned heights = 2; ///< the height
    /// \}

    /// The fit holds everywhere.
    SiteExtent() = default;

    /// That of a site with its control points. Without a site, or without control points, nothing
    /// is known of it, and it holds everywhere.
    SiteExtent(const SiteTransform &site, const ControlPoints &control);

    /// The parts that do not hold at a place of the site [m]; 0 where all do. A northing or easting
    /// that is no number is outside.
    unsigned outside(double north, double east) const
    {
        if (!m_heights)
            return m_hull.contains(north, east) ? 0 : plan | heights;
        return (m_hull.contains(north, east) ? 0 : plan)
               | (m_heights->contains(north, east) ? 0 : heights);
    }

    /// The hull of the points that were used in plan, or of those that were used in height where
    /// none was.
    const SiteHull &hull() const { return m_hull; }

    /// That of the heights, where it is another one; null where it is not.
    const SiteHull *heightHull() const { return m_heights ? &*m_heights : nullptr; }

private:
    SiteHull m_hull;
    std::optional<SiteHull> m_heights;
};

} // namespace KelStd::calibration
