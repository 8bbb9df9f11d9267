#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Location.h>
#include <KelStd/proj/ConversionFailure.h>

#include <QtCore/QString>

#include <cstddef>
#include <memory>

namespace KelStd {

class Coord;

/// Makes many locations of one coordinate system.
///
/// The results are those of `Coord::MakeLocation_by...`, to 1e-6 m and 1e-11 degrees, failures and
/// their texts included; `requireDefinitions` makes them the same bit for bit, and
/// `requireOneToOne` adds failures. Those operations create their PROJ transformations anew for
/// each position, which takes some five hundred times as long as the arithmetic; a builder creates
/// each one once, when it is first needed, and touches no file, no current directory and no heap
/// for the positions after it. (Two exceptions: PROJ reads a row of a geoid's grid when a position
/// first needs it, and keeps it; and the reason of a failure is a text.) Where it can, it takes a
/// shorter way between the frames, which `Way` tells of.
///
///     LocationBuilder builder(system);
///     std::vector<Location> locations(positions.size());
///     std::vector<LocationBuilder::Outcome> outcomes(positions.size());
///     builder.make(LocationBuilder::Frame::Wgs84Geographic, positions.data(), positions.size(),
///                  locations.data(), outcomes.data());
///
/// Builders on different threads may work at the same time, one a thread: each has a PROJ context
/// of its own, and neither do they wait for each other nor touch the process's current directory.
/// `ProjLib::___unloadEnviroment` may be called only while no builder works; a builder then fails
/// with "No proj library." until PROJ is loaded again. Unlike the operations of `Coord`, a builder
/// logs only what PROJ says when a transformation is created, once and not for each position, and
/// the warning of the display configuration.
class KELSTD_EXPORT LocationBuilder
{
public:
    /// The frame of a position that is given; units as in `Location`.
    enum class Frame
    {
        Wgs84Geographic, ///< as `Coord::MakeLocation_byWGS84LatLongH`
        Wgs84Cartesian,  ///< as `Coord::MakeLocation_byWGS84XYZ`
        LocalGeographic, ///< as `Coord::MakeLocation_byLocalLatLongH`
        LocalProjected   ///< as `Coord::MakeLocation_byLocalNEH`
    };

    /// What a height is measured from.
    enum class Height
    {
        Ellipsoidal, ///< the ellipsoid of its frame
        AboveGeoid   ///< the geoid, by the system's geoid model
    };

    /// How positions pass from frame to frame.
    enum class Way
    {
        /// By PROJ's operations that are needed, and no other: a third of the other way's cost, and
        /// more exact. The definitions of a system have PROJ pass through longitude, latitude and
        /// height on GRS 80 wherever WGS84 cartesian coordinates are met, by a computation in one
        /// step whose error is 2.8e-7 m at a height of 3,000 m.
        Short,
        Definitions ///< by PROJ's transformations between the definitions of the system
    };

    /// What became of one position.
    struct Outcome
    {
        bool isMade = false; ///< whether there is a location
        /// What the height of the projected frame is measured from, in a location that was made.
        Height projectedHeight = Height::Ellipsoidal;
        /// Why none was made; also why a location was made without the geoid model that the system
        /// names. `None` otherwise, and where the host does not have the model.
        ConversionFailureKind failure = ConversionFailureKind::None;
        QString reason; ///< the failure's text, empty without one
    };

    /// Writes the definitions of `coord` and finds the file of its geoid model, once: later changes
    /// of `coord`, of the display configuration and of `Coord::s_invertParamsFunctionSwitch` have
    /// no effect. Raises what `Coord::MakeLocation_by...` raises.
    explicit LocationBuilder(const Coord &coord);
    ~LocationBuilder();

    /// One that was moved from can only be assigned to or destroyed.
    LocationBuilder(LocationBuilder &&other) noexcept;
    /// As the move constructor.
    LocationBuilder &operator=(LocationBuilder &&other) noexcept;

    /// Whether locations are made only where the projection is one-to-one. At first they are made
    /// everywhere, as by `Coord::MakeLocation_by...`.
    ///
    /// Far outside the area that it is made for a projection folds over itself, or its series run
    /// away: PROJ still gives coordinates, which are those of another place. When this is required,
    /// the projection's other direction is taken as well. Where that misses the local geographic
    /// position (from `Frame::LocalProjected`: the given point of the plane) by more than 1 mm on
    /// the ground, the position fails with "outside where the projection is one-to-one". So does
    /// one that lies more than 20 km below the WGS84 ellipsoid, such as X = Y = Z = 0, where
    /// longitude and latitude lose their meaning; one more than 50,000 km above it, beyond every
    /// satellite of navigation, such as X, Y, Z in centimetres; and one whose northing or easting
    /// is beyond 130,000,000 m, past the last zone whose number stands before its eastings.
    ///
    /// What is made is the same, bit for bit. It costs two fifths more, all of it PROJ's
    /// arithmetic.
    void requireOneToOne(bool isRequired = true);

    /// Which way the builder takes. It is chosen when the first location is made, or here.
    ///
    /// It is the short one where the system has one (its datum shift is one of parameters, and it
    /// is projected), PROJ accepts its operations, and it agrees with the other one to 1e-6 m and
    /// 1e-11 degrees in all frames, both directions, at eighteen positions about the projection's
    /// origin. The same is asked of ten positions of each cell of five degrees before a position in
    /// it is taken that way. Positions of a cell where the two differ, those below -1,000 m or
    /// above 4,000 m, those within half a degree of a pole, and those for which the short way has
    /// no result are taken the other way all the same. While PROJ is not loaded it is
    /// `Way::Definitions`.
    Way way();

    /// Whether `Way::Definitions` is taken in any case, for results that are those of
    /// `Coord::MakeLocation_by...` bit for bit. At first it is not.
    void requireDefinitions(bool isRequired = true);

    /// Makes one location. On failure returns false, `location` is untouched and `error` (when
    /// given) says why; it may also be written by a success, as `Outcome::reason` has it.
    bool make(Frame from, const Pos &position, Location &location, QString *error = nullptr);

    /// The same, with all that is to be said of it. The former `outcome` is overwritten.
    bool make(Frame from, const Pos &position, Location &location, Outcome &outcome);

    /// Makes `count` locations. A position that fails leaves its element of `locations` untouched
    /// and costs the others nothing. `outcomes` has `count` elements, or is null where the reasons
    /// do not matter.
    /// \return how many were made.
    std::size_t make(Frame from, const Pos *positions, std::size_t count, Location *locations,
                     Outcome *outcomes = nullptr);

    /// What to add [m] to the height of `position` (WGS84 longitude, latitude [deg], height [m]) by
    /// the geoid model of the system, to get the other height: to an ellipsoidal one as
    /// `ProjLib::Calc_geoid_diff`, to one above the geoid as `ProjLib::Calc_geoid_diff_inverse`.
    /// False, with `diff` untouched, where there is none: the system names no model, the host does
    /// not have it, or it has nothing for the point.
    bool geoidSeparation(Height given, const Pos &position, double &diff, QString *error = nullptr);

    /// The same for `count` positions; where it fails, the element of `diffs` is left untouched. Of
    /// an outcome `isMade` says whether the separation is known, and `projectedHeight` is always
    /// `Height::Ellipsoidal` and means nothing.
    /// \return how many are known.
    std::size_t geoidSeparations(Height given, const Pos *positions, std::size_t count,
                                 double *diffs, Outcome *outcomes = nullptr);

private:
    class Stages;
    std::unique_ptr<Stages> m_stages;
};

} // namespace KelStd
