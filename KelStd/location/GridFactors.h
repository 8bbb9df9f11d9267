#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Location.h>

#include <memory>
#include <optional>

namespace KelStd {

/// What distances and directions are reduced with at a place of a coordinate system: between the
/// ground, the local ellipsoid and the plane.
///
///     GridFactors factors(system);
///     const GridFactors::Values values = factors.at(location);
///     if (values.combinedFactor)
///         planeDistance = horizontalDistanceOnTheGround * *values.combinedFactor;
///
/// They hold at the place itself: a line of some length has those of its middle, or a mean.
///
/// Each object has a PROJ context of its own and asks PROJ to create its operations once: one
/// thread each, as builders. `ProjLib::___unloadEnviroment` may be called only while none works.
class KELSTD_EXPORT GridFactors
{
public:
    /// Why a place has no point scale factor.
    enum class Missing
    {
        Nothing,      ///< it has one
        NoPlane,      ///< the system has longitude and latitude instead of easting and northing
        NotConformal, ///< the scale is not the same in all directions there
        Pole,         ///< there is one, but north is every direction: no convergence
        Unknown       ///< PROJ is not loaded or has no factors, or not those of the system's plane
    };

    /// What there is to say of the plane at one location. A ratio has no unit.
    struct Values
    {
        /// A length in the plane by the length on the local ellipsoid, where that is the same in
        /// all directions to within 1e-8, as everywhere in a conformal projection. Otherwise
        /// nothing: no one number would be right.
        std::optional<double> pointScale;
        /// R / (R + h): a length on the local ellipsoid by the length on the ground, where h is the
        /// local ellipsoidal height and R the Gaussian mean radius of curvature sqrt(M N) of the
        /// local ellipsoid at that latitude. M and N are the radii of the meridian and of the prime
        /// vertical.
        std::optional<double> elevationFactor;
        /// The product of both.
        std::optional<double> combinedFactor;
        /// From true north to grid north [deg], -180 to 180, positive where grid north is east of
        /// true north. Grid north is the direction in which the northing grows; in a system that
        /// counts southwards, that in which the southing falls.
        std::optional<double> convergence;
        Missing missing = Missing::Nothing; ///< why `pointScale` or the convergence is not there
    };

    /// Writes the definitions of `coord`: later changes of it and of the display configuration have
    /// no effect. Raises what `Coord::MakeLocation_by...` raises.
    explicit GridFactors(const Coord &coord);
    ~GridFactors();

    /// One that was moved from can only be assigned to or destroyed.
    GridFactors(GridFactors &&other) noexcept;
    /// As the move constructor.
    GridFactors &operator=(GridFactors &&other) noexcept;

    /// The values at a location that was made in the system. They are computed from its local
    /// longitude, latitude and height; scale and convergence by PROJ (`proj_factors`), by
    /// derivatives that it takes numerically: to 1e-9 and 1e-7 degrees; in a cylindrical projection
    /// beyond 80 degrees of latitude to some 1e-8. Until they agreed once, they are held against
    /// the system's own conversion to the plane; so they are `Missing::Unknown` everywhere if
    /// PROJ's factors are those of another projection.
    Values at(const Location &location);

private:
    class Operations;
    std::unique_ptr<Operations> m_operations;
};

} // namespace KelStd
