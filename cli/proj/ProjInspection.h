#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Looks at the pieces of the PROJ environment without changing any of them.
namespace KelStd::cli {

/// Where the pieces lie.
struct ProjPlaces
{
    QDir home;
    QDir programDir;

    /// The places that the platform's configuration names.
    static ProjPlaces current();

    QString archive() const;
    QString privateDirectory() const;
    QString marker() const;
    QString libraryFile() const;
    QString resources() const; ///< PROJ's database
    QString geoidModels() const;
    QString deliveredGeoidModels() const;
};

/// Whether the private PROJ directory holds something that neither this program nor its archive
/// puts there, or nothing that shows that it is PROJ's: no marker, no library file, no resource
/// file. A half-unpacked one shows it. Who would empty it would lose what is not PROJ's.
bool holdsSomethingElse(const ProjPlaces &places);

/// What to do about it.
QString makeRoomAdvice();

/// Why the library loads no code from a file or directory: it belongs to somebody else than the
/// user or root, or all others may write it. With what to do; nothing when that is not so, when
/// there is no such file, and where files have no owners.
struct AccessFault
{
    QString text;
    QString advice;
};
std::optional<AccessFault> accessFault(const QString &path);

/// What the home directory has under the names of delivered geoid models: their names in the folder
/// of the geoid models, in order.
struct DeliveredModels
{
    QStringList different; ///< files that differ, which installing replaces
    QStringList blocked;   ///< directories, in whose place nothing is copied
};
DeliveredModels comparedModels(const ProjPlaces &places);

/// The unpacking program, which the library looks for in the absolute entries of the search path
/// alone, and takes where nobody else may change it; empty when there is none.
QString findUnpacker();

enum class ArchiveState
{
    Good,
    Missing,
    Damaged,    ///< not a zip archive, cut short, or with wrong contents
    WithoutProj ///< an archive, but of something else
};

/// Reads the archive through with the unpacking program, which unpacks nothing.
ArchiveState inspectArchive(const QString &archive, const QString &unpacker);

enum class MarkerState
{
    Current,
    Missing,
    OtherVersion,
    Unreadable
};

MarkerState inspectMarker(const QString &marker);

/// The release of the PROJ library in a file, such as "9.1.1"; empty, with the reason, when it
/// cannot be loaded or does not say.
QString projRelease(const QString &libraryFile, QString &reason);

/// Converts a position whose result is known through a default system; false with the reason. PROJ
/// has to be ready.
bool convertsKnownPosition(QString &reason);

} // namespace KelStd::cli
