#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Location.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stEllipsoinTransform.h>
#include <KelStd/coord/stGeoidModel.h>
#include <KelStd/coord/stPlaneTransform.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// A complete coordinate system, and the operations that carry a position through it.
///
/// A position is wanted in four frames at once: WGS84 geographic, WGS84 cartesian, local
/// geographic and local projected (a `Location`). Each `MakeLocation_by...` operation takes it in
/// one of them:
///
///     Coord utm31;
///     Coord_IO::xml_read("utm31.xml", utm31, nullptr);
///     Location location;
///     QString error;
///     if (Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 52.0, 45.0), location,
///                                             nullptr, &utm31, &error))
///         qInfo() << location.get_NEH_E() << location.get_NEH_N();
///
/// They need `ProjLib::___InitializeEnviroment` to have succeeded, and one thread: PROJ calls
/// change the process's current directory while they run.
///
/// Beware of the display configuration. A semi-major axis that is spelled out (an ellipsoid
/// without `proj4EllpsName`) reaches PROJ through the configured distance unit and decimals
/// (`StandardLibrary::getShowConfig`): shown in feet it is written in feet and read as metres, and
/// every position of the system is wrong by a thousand kilometres. Keep distances in metres with
/// at least 3 decimals while converting; docs/display-configuration.md tells the whole story.
class KELSTD_EXPORT Coord
{
public:
    Coord();

    /// Clears every record by its own partial `clear`: the ellipsoid's `proj4EllpsName` and the
    /// projection's `locationType` and `loc_or_height_unit` survive.
    void clear();

    /// Every record is equal; `coord_name` is not compared.
    bool operator==(const Coord &other) const;
    /// The negation of `operator==`.
    bool operator!=(const Coord &other) const;

    /// Equality of what takes part in the computation, record by record.
    bool isSameLogic(const Coord &other) const;

    /// \name A position in all four frames
    /// \{

    /// `pos`: WGS84 earth-centred X, Y, Z [m].
    ///
    /// This and the next three operations fill all four frames of `location` and return true. On
    /// failure they return false, leave `location` untouched, and `error` (when given) says why:
    /// "No proj library.", "Error format." (PROJ refuses a definition of the system, or one does
    /// not fit its buffer), PROJ's own text, or that the display configuration shows the
    /// ellipsoid's axis in a unit that is no length (docs/display-configuration.md). `ignoredCoord`
    /// is not used. The plane transformation and the height fitting of `coord` are not applied
    /// (`calibration::SiteBuilder` does).
    ///
    /// The projected height is the local ellipsoidal one, unless `coord` names a geoid model: then
    /// it is the height above the geoid (WGS84 ellipsoidal height and separation). Where the host's
    /// `ResourceQuery` does not know the model, or the model's grid has nothing for the point, the
    /// height stays ellipsoidal and the operation still returns true; `error` may then hold what
    /// `ProjLib::Calc_geoid_diff` says. All other heights are ellipsoidal.
    static bool MakeLocation_byWGS84XYZ(const Pos &pos, Location &location,
                                        const Coord *ignoredCoord, const Coord *coord,
                                        QString *error = nullptr);

    /// `pos`: WGS84 longitude, latitude [deg], ellipsoidal height [m].
    static bool MakeLocation_byWGS84LatLongH(const Pos &pos, Location &location,
                                             const Coord *ignoredCoord, const Coord *coord,
                                             QString *error = nullptr);

    /// `pos`: longitude, latitude [deg] and height [m] on the local ellipsoid.
    static bool MakeLocation_byLocalLatLongH(const Pos &pos, Location &location,
                                             const Coord *ignoredCoord, const Coord *coord,
                                             QString *error = nullptr);

    /// `pos`: projected east, north, height [m], in this order. It becomes the fourth frame as it
    /// stands.
    ///
    /// With a geoid model the height is one above the geoid; where the model has nothing for the
    /// point, it is read as ellipsoidal. Longitude and latitude are found with the given height
    /// taken as ellipsoidal, which can differ by millimetres from the way back of the other
    /// operations.
    static bool MakeLocation_byLocalNEH(const Pos &pos, Location &location,
                                        const Coord *ignoredCoord, const Coord *coord,
                                        QString *error = nullptr);
    /// \}
    /// \name The default system and UTM zones
    /// \{

    /// Makes `coord` the default system: transverse Mercator about longitude 0 with scale 1 on an
    /// ellipsoid of WGS84 size, no datum shift. Members that it does not set are reset to the
    /// defaults of a new `Coord`.
    static void CreateDefaultTMercCoordination(Coord &coord);

    /// The UTM zone of `longitude` [deg]. Zones do not wrap: 180 gives 61, and from -180 down to
    /// just above -186 the zone is 1. Returns 0 for a NaN, and the nearest `int` where the zone
    /// does not fit one.
    static int DegreedLogitude_to_UtmZone(double longitude);

    /// The central meridian [deg] of a zone, 1 to 60 or any other number.
    static double UtmZone_to_DegreedLogitude(int zone);
    /// \}
    /// \name PROJ definitions
    /// \{

    /// Writes the four PROJ definitions of `coord`'s conversion chain, each into a zero-filled
    /// buffer of 512 bytes, as zero-terminated UTF-8. A definition that does not fit leaves the
    /// empty text, which PROJ refuses. `ignoredCoord` is not used.
    ///
    /// The datum shift becomes "+towgs84" (position-vector convention, local to WGS84). By default
    /// the stored translations and scale are written with their signs reversed and the rotations as
    /// they stand: the record holds the WGS84-to-local transformation with coordinate-frame
    /// rotations. A three-parameter shift reads z in the unit of y, on purpose.
    ///
    /// Raises what `CoordStringHelper::Unit_to_Proj4String` and `ConvertUnit_Length` raise for a
    /// unit that they do not know. A spelled-out semi-major axis goes through the display
    /// configuration (see above).
    static void __MakeCoordStrings(const Coord *ignoredCoord, const Coord *coord,
                                   char *wgs84LatLong, char *wgs84XYZ, char *localLatLong,
                                   char *localProjected);

    /// Kept for the application; nothing in this library reads it.
    static bool s_invertParamsUseMinusNotMatrix;

    /// False (as it starts): translations and scale of the datum shift are written with reversed
    /// signs. True: as they are stored.
    static bool s_invertParamsFunctionSwitch;
    /// \}
    /// \name Binary streams
    /// \{

    /// Writes the block of version 2: the version [int32], `coord_name`, then every record as a
    /// block of its own, in declaration order. The projection's `loc_or_height_unit` is not part of
    /// it.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block of version 2, or of version 1, which ends before the geoid model
    /// and leaves that empty.
    ///
    /// False when the version is another or a record's block fails: what was read so far stays, the
    /// rest is as `clear` leaves it. The stream's status is neither inspected nor reset (see
    /// `Param::load`).
    bool load(QDataStream &stream);
    /// \}
    /// \name The system
    /// \{

    QString coord_name;                      ///< for people; not compared
    Ellipsoid ellipsoid;                     ///< the local ellipsoid
    Projection projection;                   ///< from longitude and latitude to the plane
    stEllipsoinTransform ellipsoidTransform; ///< the datum shift from WGS84
    stPlaneTransform planeTransform;         ///< of the site; not applied by the conversions
    stElevationFitting elevationFitting;     ///< of the site; not applied by the conversions
    /// What the projected height is above; without a name the local ellipsoid.
    stGeoidModel geoidModel;
    /// \}

private:
    static QString __MakeEllipseString(const Ellipsoid *ellipsoid);
    static QString __MakeEllipseTransformString(const stEllipsoinTransform *transform);
};

} // namespace KelStd
