#pragma once

#include <KelStd/Export.h>

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd {

/// Looks at the pieces that PROJ is made ready from (`ProjLib::___InitializeEnviroment`): where
/// they lie and in which state they are, so that a host can say what is wrong and what may be lost.
///
/// Nothing is changed, nothing is logged, and PROJ need not be ready, unless an operation says so.
/// Every question looks at the files anew. An object may be asked on any thread; what runs or loads
/// PROJ belongs on the thread of `ProjLib`.
class KELSTD_EXPORT ProjInspection
{
public:
    /// Of the directories that the platform's configuration names now.
    ProjInspection();

    /// Of other directories.
    ProjInspection(const QDir &home, const QDir &programDir);

    /// \name Where the pieces lie
    /// Paths, whether there is something or not.
    /// @{

    /// The user's directory.
    const QDir &home() const { return m_home; }
    /// The program's directory.
    const QDir &programDir() const { return m_programDir; }
    /// The packed PROJ, in the program's directory.
    QString archive() const;
    /// What it is unpacked into, in the user's directory.
    QString privateDirectory() const;
    QString marker() const; ///< in the private directory, like the two below
    /// PROJ's library file.
    QString libraryFile() const;
    /// PROJ's database.
    QString database() const;
    QString geoidModels() const;          ///< the folder in the home directory
    QString deliveredGeoidModels() const; ///< the folder in the program directory
    /// @}

    /// What is to be said of the packed PROJ.
    enum class ArchiveState
    {
        Good,       ///< whole, and of PROJ
        Missing,    ///< there is no such file
        Damaged,    ///< not a zip archive, cut short, or with wrong contents
        WithoutProj ///< an archive, but of something else
    };

    /// Reads the archive through with this unpacking program, which unpacks nothing. Takes about as
    /// long as unpacking.
    ArchiveState archiveState(const QString &unpacker) const;

    /// What the marker says, which is written last when PROJ is unpacked.
    enum class MarkerState
    {
        Current,      ///< PROJ was unpacked by a release that installs what this one does
        Missing,      ///< also where a link leads nowhere
        OtherVersion, ///< PROJ is unpacked anew
        Unreadable    ///< PROJ is neither loaded nor unpacked
    };

    /// Reads the marker.
    MarkerState markerState() const;

    /// The version of the marker that this release installs and accepts.
    static qint32 markerVersion();

    /// Whether the private directory holds something that neither this library nor its archive puts
    /// there, or nothing that shows that it is PROJ's: no marker, no library file, no resource
    /// file. A half-unpacked one shows it. True also for one that may not be listed.
    ///
    /// `ProjLib::___InitializeEnviroment` empties the directory without asking where the marker is
    /// not current: a host that asks before loses nothing of its user's.
    bool holdsSomethingElse() const;

    /// What the home directory has under the names of delivered geoid models: their names in the
    /// folder of the geoid models, in order. What a link leads to is not replaced and not named.
    struct DeliveredModels
    {
        QStringList different; ///< files that differ, which unpacking PROJ anew replaces
        QStringList blocked;   ///< directories, in whose place nothing is copied
    };
    /// Compares the folders; reads every delivered model.
    DeliveredModels deliveredModels() const;

    /// Why the library loads no code from a file or directory.
    enum class AccessFault
    {
        None,          ///< also where there is no such file, and where files have no owners
        OfAnotherUser, ///< it belongs neither to the user nor to root
        WritableByAll  ///< all other users may write it
    };

    /// Of this file or directory.
    static AccessFault accessFault(const QString &path);

    /// The unpacking program that `ProjLib::___InitializeEnviroment` would run: the first of that
    /// name in the absolute directories of the search path that nobody else may change. Empty when
    /// there is none.
    static QString findUnpacker();

    /// The name by which it is looked for.
    static QString unpackerName();

    /// The release of the PROJ library in a file, such as "9.1.1". Empty, with the reason in
    /// `error` (when given), when it cannot be loaded or does not say. Runs code of that file,
    /// whoever may have written it.
    static QString release(const QString &libraryFile, QString *error = nullptr);

    /// Converts a position whose result is known through the default system. False with the reason
    /// in `error` (when given) where it is wrong, or PROJ is not ready. Raises what
    /// `Coord::MakeLocation_byWGS84LatLongH` raises, and logs what that logs.
    static bool convertsKnownPosition(QString *error = nullptr);

private:
    QDir m_home;
    QDir m_programDir;
};

} // namespace KelStd
