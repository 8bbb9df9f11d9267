#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/SiteFailure.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/uPos.h>

#include <optional>

/// Building sites: coordinates of their own, fitted to those of a system.
namespace KelStd::calibration {

/// A similarity of the plane, as EPSG's method 9621 and PROJ's 2D "helmert" have it, with theta the
/// rotation:
///
///     E' = eastShift  + scale ( E cos theta + N sin theta)
///     N' = northShift + scale (-E sin theta + N cos theta)
struct PlaneSimilarity
{
    double northShift = 0.0; ///< [m]
    double eastShift = 0.0;  ///< [m]
    double rotation = 0.0;   ///< theta [arc seconds]; the axes turn counter-clockwise by it
    double scale = 1.0;      ///< site metres per metre of the plane
};

/// A surface that is added to heights, at northing N' and easting E' of the site:
///
///     H' = H + a + b x + c y + d x^2 + e y^2 + f x y,   x = N' - originNorth, y = E' - originEast
struct HeightSurface
{
    double a = 0.0;           ///< [m]
    double b = 0.0;           ///< [m/m], to the north
    double c = 0.0;           ///< [m/m], to the east
    double d = 0.0;           ///< [1/m]
    double e = 0.0;           ///< [1/m]
    double f = 0.0;           ///< [1/m]
    double originNorth = 0.0; ///< [m]
    double originEast = 0.0;  ///< [m]
};

/// The site that a system's records `planeTransform` and `elevationFitting` describe: projected
/// coordinates become those of the site, and back.
///
/// First the plane is transformed, then the surface is added at the transformed northing and
/// easting; the way back takes these steps backwards, which is exact. Northing and easting are the
/// numbers of `Location::localNEH` as they stand: where the axes of a system count positive to the
/// south or west, so do those of its sites.
///
///     const auto site = SiteTransform::of(system);
///     if (site && site->hasSite())
///         atSite = site->toSite(location.localNEH.getENU());
///
/// A plain value: any thread may use one.
class KELSTD_EXPORT SiteTransform
{
public:
    /// No site: both ways give what they are given.
    SiteTransform() = default;

    /// The site of the records of `coord`, lengths converted to metres and angles to arc seconds;
    /// parameters that a function does not use are not looked at. Nothing, and a `failure` (when
    /// given), for a function that is not known, for a parameter that it uses and that is no finite
    /// number or is stored in a unit that it cannot have, for a ratio that is not positive, and for
    /// a site of a system whose coordinates are longitudes and latitudes.
    static std::optional<SiteTransform> of(const Coord &coord, SiteFailure *failure = nullptr);

    /// The same of the two records.
    static std::optional<SiteTransform> of(const stPlaneTransform &plane,
                                           const stElevationFitting &fitting,
                                           SiteFailure *failure = nullptr);

    /// Whether one of the records has a function; the site's coordinates are otherwise those of the
    /// plane.
    bool hasSite() const { return m_hasPlane || hasSurface(); }

    /// Whether the plane transformation has a function.
    bool hasPlane() const { return m_hasPlane; }
    /// Whether the height fitting has a function.
    bool hasSurface() const { return m_function != ElevationFittingFunction_None; }

    /// Which coefficients of the surface are used.
    EElevationFittingFunction surfaceFunction() const { return m_function; }

    /// The identity where the plane is not transformed.
    const PlaneSimilarity &plane() const { return m_plane; }

    /// What the function uses; other coefficients are 0, and so is the origin of all but curves.
    const HeightSurface &surface() const { return m_surface; }

    /// Projected east, north, height [m] to those of the site. Not finite where they exceed what a
    /// number can hold, or are given so.
    stENU toSite(const stENU &projected) const
    {
        stENU site = projected;
        if (m_hasPlane) {
            const double east = projected.e * m_cos + projected.n * m_sin;
            const double north = projected.n * m_cos - projected.e * m_sin;
            site.e = m_plane.eastShift + m_plane.scale * east;
            site.n = m_plane.northShift + m_plane.scale * north;
        }
        site.u += surfaceAt(site);
        return site;
    }

    /// The way back of `toSite`.
    stENU fromSite(const stENU &site) const
    {
        stENU projected = site;
        projected.u -= surfaceAt(site);
        if (m_hasPlane) {
            const double east = (site.e - m_plane.eastShift) / m_plane.scale;
            const double north = (site.n - m_plane.northShift) / m_plane.scale;
            projected.e = east * m_cos - north * m_sin;
            projected.n = east * m_sin + north * m_cos;
        }
        return projected;
    }

    /// What is added to heights at the northing and easting of the site [m].
    double surfaceAt(const stENU &site) const
    {
        const double x = site.n - m_surface.originNorth;
        const double y = site.e - m_surface.originEast;
        return m_surface.a + (m_surface.b + m_surface.d * x + m_surface.f * y) * x
               + (m_surface.c + m_surface.e * y) * y;
    }

private:
    bool setPlane(const stPlaneTransform &record, SiteFailure &failure);
    bool setSurface(const stElevationFitting &record, SiteFailure &failure);

    bool m_hasPlane = false;
    EElevationFittingFunction m_function = ElevationFittingFunction_None;
    PlaneSimilarity m_plane;
    HeightSurface m_surface;
    double m_cos = 1.0; ///< of theta
    double m_sin = 0.0; ///< of theta
};

} // namespace KelStd::calibration
