#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/AreaOfUse.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Location.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QString>

#include <memory>

namespace KelStd {

/// How the first two components of a position may have been mistaken.
enum class PositionMistake
{
    None,       ///< no mistake that would explain it
    Swapped,    ///< they stand in each other's place
    FirstSign,  ///< longitude, or easting, has the wrong sign
    SecondSign, ///< latitude, or northing, has the wrong sign
    BothSigns   ///< both have the wrong sign
};

/// Tells positions that lie outside the area of use of their system, and the mistake without which
/// they would lie inside.
///
///     AreaCheck check(system, area);
///     if (builder.make(frame, position, location)
///         && !check.isInside(location))
///         warn(check.mistakeIn(frame, position));
///
/// `isInside` is a comparison of four numbers. `mistakeIn` computes, and is meant for the few
/// positions that lie outside. Nothing here changes a location. One thread, as a builder.
class KELSTD_EXPORT AreaCheck
{
public:
    /// Copies what it needs of `coord`; writes no definition before `mistakeIn` needs one.
    /// \param coord the system
    /// \param area where it is meant to be used; one that is not valid holds everything
    AreaCheck(const Coord &coord, const AreaOfUse &area);
    ~AreaCheck();

    /// One that was moved from can only be assigned to or destroyed.
    AreaCheck(AreaCheck &&other) noexcept;
    /// As the move constructor.
    AreaCheck &operator=(AreaCheck &&other) noexcept;

    /// Whether the location lies in the area, by its WGS84 longitude and latitude.
    bool isInside(const Location &location) const
    {
        return m_holdsEverything
               || m_area.contains(location.get_WGS84_LLH_Long(), location.get_WGS84_LLH_Lat());
    }

    /// The mistake in a position outside the area, the likeliest one first: that in their order of
    /// `PositionMistake`. Of geographic positions the components are compared as they stand, of
    /// projected ones only what becomes a location inside the area by the way back through the
    /// system counts. `None` where no mistake would explain it, for geographic positions that
    /// lie inside as they stand, and for cartesian ones.
    /// \param from the frame of the position
    /// \param position as it was given, whether or not it became a location: longitude and
    /// latitude, or easting and northing
    PositionMistake mistakeIn(LocationBuilder::Frame from, const Pos &position);

private:
    class Plane;

    AreaOfUse m_area;
    bool m_holdsEverything;
    Coord m_coord;
    std::unique_ptr<Plane> m_plane; ///< made when it is first needed
};

/// "longitude and latitude swapped", "the sign of the northing changed": what would mend a
/// position of a frame. Translated; empty for none.
KELSTD_EXPORT QString describedMistake(PositionMistake mistake, LocationBuilder::Frame frame);

} // namespace KelStd
