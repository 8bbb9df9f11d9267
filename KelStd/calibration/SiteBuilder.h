#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/SiteFailure.h>
#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/coord/Location.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QString>

#include <cstddef>
#include <optional>

namespace KelStd::calibration {

/// Makes locations and the coordinates that they have at the site of a system, and locations of
/// coordinates at the site.
///
/// The locations are those of a `LocationBuilder`: their projected frame is that of the projection,
/// whatever the site. Beside it stand the site's coordinates, in the same order and the same units:
/// east, north, height [m]. Without records of a site they are the projected ones.
///
///     SiteFailure failure;
///     auto builder = SiteBuilder::of(system, &failure);
///     Location location;
///     Pos atSite;
///     LocationBuilder::Outcome outcome;
///     builder->make(LocationBuilder::Frame::Wgs84Geographic, position, location, atSite, outcome);
///     builder->makeFromSite(staked, location, outcome);
///
/// What is said of `LocationBuilder` about threads and PROJ holds of this, too.
class KELSTD_EXPORT SiteBuilder
{
public:
    /// The frames of a location.
    using Frame = LocationBuilder::Frame;
    /// What became of one position.
    using Outcome = LocationBuilder::Outcome;

    /// Nothing, and a `failure` (when given), where `SiteTransform::of` refuses the records. Raises
    /// what `LocationBuilder`'s constructor raises.
    static std::optional<SiteBuilder> of(const Coord &coord, SiteFailure *failure = nullptr);

    /// The site's records, ready to be applied.
    const SiteTransform &site() const { return m_site; }

    /// That of the locations, to set what is required of them.
    LocationBuilder &locations() { return m_locations; }

    /// Makes a location and its coordinates at the site. On failure `location` and `atSite` are
    /// untouched; it also fails (`NoResult`) where the coordinates at the site are not finite. The
    /// former `outcome` is overwritten.
    bool make(Frame from, const Pos &position, Location &location, Pos &atSite, Outcome &outcome);

    /// The same for `count` positions; see `LocationBuilder::make`. `atSite` may be `positions`.
    /// \return how many were made.
    std::size_t make(Frame from, const Pos *positions, std::size_t count, Location *locations,
                     Pos *atSite, Outcome *outcomes = nullptr);

    /// Makes the location of the coordinates `atSite`, as `Frame::LocalProjected` does of the
    /// projected ones that `SiteTransform::fromSite` gives.
    ///
    /// Heights of a system that names a geoid model were fitted above that geoid. Where the model
    /// cannot be used or has no value for the point, a location would be off by the separation of
    /// the geoid, tens of metres: it fails, with what `outcome` has of the model, or
    /// `NoGeoidModel`. The other way there is a location, whose `Outcome::projectedHeight` says
    /// that it is ellipsoidal, and a height at the site that is off by as much.
    bool makeFromSite(const Pos &atSite, Location &location, Outcome &outcome);

    /// The same for `count` positions.
    /// \return how many were made.
    std::size_t makeFromSite(const Pos *atSite, std::size_t count, Location *locations,
                             Outcome *outcomes = nullptr);

private:
    SiteBuilder(const Coord &coord, const SiteTransform &site);

    bool makeOne(Frame from, const Pos &position, Location &location, Pos &atSite,
                 Outcome *outcome);
    bool makeTogether(Frame from, const Pos *positions, std::size_t count, Location *locations,
                      Pos *atSite, Outcome *outcomes);
    bool makeOneFromSite(const Pos &atSite, Location &location, Outcome *outcome);
    std::size_t makeAboveGeoid(const Pos *projected, std::size_t count, Location *locations,
                               Outcome *outcomes);
    bool holds(Outcome &outcome) const;

    SiteTransform m_site;
    LocationBuilder m_locations;
    QString m_geoidModel; ///< above whose geoid heights were fitted; empty for the ellipsoid
};

} // namespace KelStd::calibration
