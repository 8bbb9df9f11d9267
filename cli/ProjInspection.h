#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>

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
};

/// The unpacking program on the search path; empty when there is none.
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
