#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/library/LibraryFailure.h>

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace KelStd {

/// The process-wide registry of reusable definitions: ellipsoids, projections, standard (delivered)
/// and custom (user-made) coordinate systems, each by its name; besides them one base system, the
/// systems offered when a project is created, and the display configuration.
///
/// The host says where the files are, loads, and then reads and changes:
///
///     StandardLibrary &library = StandardLibrary::getInstance();
///     library.setCustomCoordPath("/home/surveyor/systems"); // and the six other places
///     library.loadLibrary();
///     if (!library.addCoordToCustomLibrary("Harbour", &harbour))
///         return show(library.lastFailure().text); // and nothing has changed
///     const Coord *coord = library.getCoordFromCustomLibrary("Harbour");
///
/// A change is in its file before it is in memory, and a file is replaced whole or not at all.
/// `lastFailure` says why a change failed; no operation logs.
///
/// Names are compared exactly; only adding also refuses a name that differs from a present one in
/// nothing but case. The pointers that the registry hands out are valid until their entry is
/// replaced or removed or the registry is loaded again.
///
/// One thread: only the creation of the object is safe against concurrent callers.
class KELSTD_EXPORT StandardLibrary : public QObject
{
    Q_OBJECT

public:
    /// The one object, created by the first call; concurrent first calls are safe. It has no
    /// places, no records and the constructor defaults of `stShowConfig`, and reads no file. It is
    /// destroyed at the end of the process: a static object of the host that uses it in its
    /// destructor must have called this in its constructor.
    static StandardLibrary &getInstance();

    ~StandardLibrary() override;

    /// \name Places
    /// Each takes effect with the next operation that uses it. There are no defaults; an empty
    /// directory is the current one, an empty file is none. No directory is ever created.
    /// \{

    /// The file of the base system, one coordinate-system document.
    void setBaseCoordFilePath(const QString &path);

    /// The directory of the ellipsoids: list documents, any names ending in ".xml".
    void setEllipsoidListPath(const QString &path);

    /// The directory of the projections: list documents, any names ending in ".xml".
    void setProjectionListPath(const QString &path);

    /// The directory of the custom systems: one document a file, any names ending in ".xml".
    void setCustomCoordPath(const QString &path);

    /// The directory of the standard systems, as that of the custom ones; never written.
    void setStandardCoordPath(const QString &path);

    /// The file of the systems offered when a project is created.
    void setShowInCreateProjectCoordsFilePath(const QString &path);

    /// The file of the display configuration, as `stShowConfig::save` writes it.
    void setShowConfigFilePath(const QString &path);

    /// Whether records whose names have separators of paths get files of their own in the directory
    /// of their kind, called by `library::safeFileName`. At first they do not: the file is named
    /// after the record as it stands (see "Changes"). A host that lets people name systems as the
    /// databases do ("Amersfoort / RD New") sets this before its first change.
    void setSafeFileNames(bool isSafe);

    /// Reads everything anew; emits no signal.
    ///
    /// Every record is known by its own name, whatever its file is called; of several records of
    /// one name the one read last stays, in the order in which the file system lists the files. A
    /// file that cannot be read is skipped as a whole, and so is everything that is no regular
    /// file. Base system and display configuration stay as they are unless their file can be read
    /// whole.
    /// Offered systems that are neither custom nor standard are dropped. A missing file of the
    /// offered systems is created, with none in it.
    void loadLibrary();
    /// \}
    /// \name Look-ups
    /// \{

    /// Never null.
    const Coord *getBaseCoord() const;

    // Null when there is no such name. Standard and custom systems are looked up apart.
    /// The ellipsoid of exactly this name; null for none.
    const Ellipsoid *getEllipsoidFromLibrary(const QString &name) const;
    /// The projection of exactly this name; null for none.
    const Projection *getProjectionFromLibrary(const QString &name) const;
    /// The standard system of exactly this name; null for none. Custom systems are looked up apart.
    const Coord *getCoordFromStandardLibrary(const QString &name) const;
    /// The custom system of exactly this name; null for none.
    const Coord *getCoordFromCustomLibrary(const QString &name) const;

    /// Where a system came from, as its document has it; null where the document does not, and
    /// where there is no such system. Valid as long as the system's own pointer.
    const SystemOrigin *getOriginFromStandardLibrary(const QString &name) const;
    /// The same of a custom system.
    const SystemOrigin *getOriginFromCustomLibrary(const QString &name) const;

    // Each adds its records to `out` and overwrites what has the same name there; the rest stays.
    /// All ellipsoids by their names.
    void getEllipsoidLibrary(QMap<QString, const Ellipsoid *> &out) const;
    /// All projections by their names.
    void getProjectionLibrary(QMap<QString, const Projection *> &out) const;
    /// All standard systems by their names.
    void getStandardCoordLibrary(QMap<QString, const Coord *> &out) const;
    /// All custom systems by their names.
    void getCustomCoordLibrary(QMap<QString, const Coord *> &out) const;

    /// `out` becomes the offered systems: pairs of a system's name and the name to show.
    void getShowInCreateProjectCoords(QList<QPair<QString, QString>> &out) const;

    /// Never null, and the same as long as the process lives.
    const stShowConfig *getShowConfig() const;
    /// \}
    /// \name Changes
    /// Each returns true when the change is in its file and in memory; otherwise both are as they
    /// were. Removing changes no list of offered systems.
    ///
    /// The file is named after `name` as it stands, unless `setSafeFileNames` says otherwise: "zone
    /// 3/A" is "A.xml" in the folder "zone 3", which must be there. All nine refuse a name that
    /// leads out of the directory: one that begins with a separator, a drive ("C:/"), a colon or a
    /// tilde, that goes up on its way ("../A"), or that passes a link to a folder elsewhere. A name
    /// that the file system refuses gives false. A file of that name is replaced, whatever it
    /// holds. A parameter of kind `ValueType_Time`, which no document can hold, raises what
    /// `Coord_IO::xml_write` raises, with file and memory as they were.
    /// \{

    /// Adds a copy under `name`, which must not be empty nor, with or without the blanks around it,
    /// equal a present name in all but case. A custom system may not take a standard one's name
    /// either. The record's own name stays, even when it differs: the next `loadLibrary` goes by
    /// that one.
    bool addEllipsoidToLibrary(const QString &name, const Ellipsoid *ellipsoid);
    /// The same of a projection.
    bool addProjectionToLibrary(const QString &name, const Projection *projection);
    /// The same of a custom system.
    bool addCoordToCustomLibrary(const QString &name, const Coord *coord);

    /// As `addCoordToCustomLibrary`, with the origin that the document keeps beside the system.
    bool addCoordWithOrigin(const QString &name, const Coord *coord, const SystemOrigin &origin);

    /// Replaces the record of exactly this name, which must be there. Of a system's origin the
    /// document keeps what still holds for the new one (`io::keptOrigin`).
    bool setEllipsoidInLibrary(const QString &name, const Ellipsoid *ellipsoid);
    /// The same of a projection.
    bool setProjectionInLibrary(const QString &name, const Projection *projection);
    /// The same of a custom system.
    bool setCoordInCustomLibrary(const QString &name, const Coord *coord);

    /// As `setCoordInCustomLibrary`; the document's origin becomes this one.
    bool setCoordWithOrigin(const QString &name, const Coord *coord, const SystemOrigin &origin);

    /// Removes the record of exactly this name and the file named after it. A record that came from
    /// a file of another name stays.
    bool removeEllipsoidFromLibrary(const QString &name);
    /// The same of a projection.
    bool removeProjectionFromLibrary(const QString &name);
    /// The same of a custom system.
    bool removeCoordFromCustomLibrary(const QString &name);

    /// Replaces a configuration that differs, writes it to its file and then emits
    /// `sgShowConfigChanged`, whether or not it could be written. An equal one changes nothing.
    void setShowConfig(const stShowConfig &config);

    /// Replaces the offered systems by those of `list` that are known, in its order; one without a
    /// name to show gets its own. Writes them to their file and emits
    /// `sgShowInCreateProjectCoordsChanged`, whether or not they could be written.
    void setShowInCreateProjectCoords(const QList<QPair<QString, QString>> &list);

    /// Why the last change of a record, of the display configuration or of the offered systems
    /// failed; kind `None` and no text when it succeeded, when its place has no path, and before
    /// the first one. Look-ups, setters of places and `loadLibrary` leave it as it is. The
    /// reference is valid as long as the registry; the next change gives it another value.
    const LibraryFailure &lastFailure() const;
    /// \}

Q_SIGNALS:
    /// The display configuration has become another one.
    void sgShowConfigChanged();
    /// The list of systems that are offered for a new project has become another one.
    void sgShowInCreateProjectCoordsChanged();

private:
    StandardLibrary();
    Q_DISABLE_COPY(StandardLibrary)

    /// Makes the base system geographic WGS84. Nothing calls it; kept for the application.
    void genBaseCoord();

    bool hasCoord(const QString &name) const;

    void loadBaseCoord();
    void loadShowConfig();

    void createEmptyShowInProjectCoordNamesFile();
    void loadShowInProjectCoordNamesFile();
    void saveShowInProjectCoordNamesFile();

    QString baseCoordFilePath;
    Coord baseCoord;
    QString ellipsoidListPath;
    QString projectionListPath;
    QString customCoordPath;
    QString standardCoordPath;
    QString showInCreateProjectCoordsFilePath;
    QMap<QString, Ellipsoid> ellipsoidLibrary;
    QMap<QString, Projection> projectionLibrary;
    QMap<QString, Coord> customCoordLibrary;
    QMap<QString, Coord> standardCoordLibrary;
    QList<QPair<QString, QString>> showInCreateProjectCoords;
    QString showConfigFilePath;
    stShowConfig &showConfig; ///< which outlives the registry
    LibraryFailure failure;   ///< of the last change
    bool hasSafeFileNames = false;
    QMap<QString, SystemOrigin> customOrigins;   ///< of the systems that have one, by their names
    QMap<QString, SystemOrigin> standardOrigins; ///< as above
};

} // namespace KelStd
