#pragma once

#include <QtCore/QString>

/// What the private PROJ directory is called and holds.
namespace KelStd::proj {

/// In the home directory; also the archive's folder in the program directory.
inline QString privateDirectoryName()
{
    return QStringLiteral("proj");
}

inline QString archiveFileName()
{
    return QStringLiteral("proj.zip");
}

inline QString markerFileName()
{
    return QStringLiteral("proj_enviroment"); // spelled so in installed environments
}

/// The version in the marker that this release installs and accepts.
inline constexpr qint32 environmentVersion = 3;

inline QString resourceDirectoryName()
{
    return QStringLiteral("share");
}

/// In the resource directory.
inline QString databaseFileName()
{
    return QStringLiteral("proj.db");
}

/// The platform's file name of PROJ 9.1; the build names it (cmake/KelStdPlatformNames.cmake).
inline QString libraryFileName()
{
    return QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);
}

/// What the private directory is called while it is being made: a directory in the home directory,
/// with six characters in place of the last ones.
inline QString workshopPattern()
{
    return QStringLiteral(".proj-XXXXXX");
}

/// In the home directory, held by the process that installs.
inline QString installLockName()
{
    return QStringLiteral("proj.lock");
}

/// In the home directory, held instead where something else has the name of the lock.
inline QString secondInstallLockName()
{
    return QStringLiteral(".proj.install.lock");
}

/// The platform's unpacking program, found on the search path; the build names it, too.
inline QString unpackerName()
{
    return QStringLiteral(KELSTD_UNPACKER_NAME);
}

} // namespace KelStd::proj
