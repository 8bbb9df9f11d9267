#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/proj/InitializationFailure.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd {

/// PROJ, loaded at run time from a private directory in the user's home directory.
///
/// Every operation but `CoordToProjString` and `ConvertGeoidModelFile_GGF` needs
/// `___InitializeEnviroment` to have succeeded, and makes the private PROJ directory the process's
/// current directory while PROJ works; it is restored on every exit, and before anything is logged.
/// All of them therefore belong on one thread. Message texts are translated in the context
/// "QObject"; `LogLibrary` says what is logged.
class KELSTD_EXPORT ProjLib
{
public:
    ProjLib() = delete;

    /// Which frames a conversion runs between. The definitions alone decide what PROJ computes; the
    /// type selects the view of `Pos` that is read and written. A number outside the list leaves
    /// the position unread and unwritten.
    enum EConvertType : qint32
    {
        WGS84LatLongH_to_WGS84XYZ = 0, ///< from longitude, latitude, height to X, Y, Z
        WGS84XYZ_to_WGS84LatLongH = 1, ///< the way back
        WGS84XYZ_to_LocalLatLongH = 2, ///< the datum shift
        LocalLatLongH_to_WGS84XYZ = 3, ///< its way back
        LocalLatLongH_to_LocalNEH = 4, ///< the projection
        LocalNEH_to_LocalLatLongH = 5  ///< its way back
    };

    /// Prepares the private PROJ directory when its marker is missing or of another version, loads
    /// PROJ from it and points PROJ at its resource files. Unloads first when something is loaded.
    /// Returns true when PROJ is ready; on any failure false, with nothing loaded.
    ///
    /// Preparing unpacks "proj/proj.zip" of the program directory into the home directory with the
    /// unzip program of the search path, whose relative entries are not followed. The private
    /// directory is emptied, whatever it holds, but only when what takes its place has been
    /// unpacked; until then nothing of it is lost. Then "geoid_model_list" is copied over to the
    /// home directory (adding and overwriting, removing nothing). What is made is never for other
    /// users to write.
    ///
    /// Where code could be another user's, nothing is loaded: the home directory, the private one,
    /// the library file, the resource directory and its database, and what a link among them leads
    /// to, have to belong to the user or to root, and must not be writable for all (on Unix). That,
    /// and a private directory that would have to be replaced and is a symbolic link, are logged
    /// under "app_log" as `LogType_Error`, with what to do; other failures are not logged.
    /// `initializationFailure` says of all of them what they were.
    static bool ___InitializeEnviroment();

    /// Why the last `___InitializeEnviroment` failed; no failure before the first one, and after
    /// one that succeeded. The text names the directory, file or function that is at fault, and is
    /// not logged here. To be asked on the thread of `ProjLib`.
    static InitializationFailure initializationFailure();

    /// Releases PROJ; does nothing when it is not loaded, nor when the process ends and PROJ's own
    /// static objects are gone. No file is touched.
    static void ___unloadEnviroment();

    /// Exercises the loaded library with one fixed transformation; no result.
    static void test();

    /// The PROJ definition of `projection` on `ellipsoid` (which may be null).
    ///
    /// Returns true when PROJ accepts it. `out` receives the definition before it is checked. On
    /// failure `error` (when given) says "No proj library." or "Error format."; a null
    /// `projection` fails without a message and leaves `out` alone. Raises what
    /// `CoordStringHelper::Unit_to_Proj4String` raises.
    static bool GetProjectionString_proj4(const Projection *projection, const Ellipsoid *ellipsoid,
                                          QString &out, QString *error = nullptr);

    /// Writes one self-contained definition of `coord` into `buffer`, a caller's buffer of at least
    /// 1000 bytes, as zero-terminated UTF-8; a definition that does not fit leaves the empty text.
    /// A `projectionName` that is not empty replaces the projection's own; "longlat" (in any case)
    /// drops its parameters and unit.
    ///
    /// The signs of the datum shift are this operation's own and look at no switch of `Coord`:
    /// translations and rotations as stored, the scale reversed.
    static void CoordToProjString(const Coord *coord, char *buffer, const QString &projectionName);

    /// Converts every position in place, from one PROJ definition to another. Longitudes and
    /// latitudes are in decimal degrees, everything else in metres.
    ///
    /// At the first position that PROJ cannot transform it returns false: positions before it stay
    /// converted, it and those after it keep their values. `error` (when given) says "No proj
    /// library.", "Error format." (PROJ refuses a definition or the pair; definitions are limited
    /// to 999 bytes; a GTX or NTv2 grid that one names is not what its header says) or PROJ's own
    /// text for the position. An infinite or undefined result is a failure, never written back.
    ///
    /// Creating the transformation costs some five hundred times what a position costs: convert
    /// many positions in one call.
    static bool ConvertPosList(const QString &from, const QString &to, QList<Pos> &positions,
                               EConvertType type, QString *error = nullptr);

    /// The same for one position.
    static bool ConvertPosList(const QString &from, const QString &to, Pos &position,
                               EConvertType type, QString *error = nullptr);

    /// \name Heights above the geoid
    /// \{

    /// The geoid's separation at a point, by the grid file of a geoid model.
    ///
    /// `latitude`, `longitude` [deg, WGS84] and in this order; `height` [m, above the ellipsoid].
    /// On success `diff` [m] is what to add to the ellipsoidal height to get the height above the
    /// geoid: minus the geoid's undulation. A point beside a node of the grid is interpolated
    /// bilinearly from the four nodes about it, by PROJ.
    ///
    /// `gridFile` is a path that PROJ finds and reads (GTX): an absolute one, a relative one from
    /// the private PROJ directory that begins with "./" or "../", or a bare name in PROJ's search
    /// path. To PROJ a comma in it separates the paths of several grids.
    ///
    /// On failure returns false and leaves `diff` untouched; `error` (when given) says "No proj
    /// library.", "Geoid model file is empty." (no path), "Create proj geoid model failed." (PROJ
    /// cannot read the file; its GTX header and its size do not fit each other, or the header gives
    /// no places on the earth; or the path holds a double quotation mark, or is longer than some
    /// 480 bytes of UTF-8), or PROJ's own text where the grid has no value for the point. Failures
    /// are logged under "app_log" as `LogType_Warning`.
    ///
    /// Nearly all of the cost is PROJ's opening of the file, once a call.
    static bool Calc_geoid_diff(double latitude, double longitude, double height,
                                const QString &gridFile, double &diff, QString *error = nullptr);

    /// The same for a `height` above the geoid: `diff` is what to add to it to get the height above
    /// the ellipsoid.
    static bool Calc_geoid_diff_inverse(double latitude, double longitude, double height,
                                        const QString &gridFile, double &diff,
                                        QString *error = nullptr);

    /// Writes the geoid grid of a GGF file as a GTX file, which PROJ reads; PROJ need not be
    /// loaded. `targetFile` is written whole or not at all. Returns false when the source cannot be
    /// read, is cut short (fewer values than its header says) or has no rows or columns, and when
    /// the target cannot be written.
    static bool ConvertGeoidModelFile_GGF(const QString &sourceFile, const QString &targetFile);
    /// \}

private:
    static void __ProjectionToProjString(const Projection *projection, const Ellipsoid *ellipsoid,
                                         char *buffer);
};

} // namespace KelStd
