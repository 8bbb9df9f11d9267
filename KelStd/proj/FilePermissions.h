#pragma once

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QString>

/// Who may write where code is loaded from.
namespace KelStd::proj {

/// Takes from everything in `directory`, itself included, what `allowed` does not have, the right
/// of all others to write, and set-user and set-group bits; the owner can read and write
/// afterwards. Links are not followed.
void restrictPermissions(const QString &directory, QFile::Permissions allowed);

/// What keeps code from being loaded from a file or directory, by its owner and permissions alone.
ProjInspection::AccessFault accessFaultOf(const QString &path);

/// Why the PROJ library is not to be loaded from this home directory, with what to do about it:
/// the file, its directory, the home, PROJ's resources and their database, or what a link among
/// them leads to belongs to somebody else than the user or the system, or all others may write
/// there. Empty when nothing speaks against it; what is missing does not. `libraryFile` may be
/// empty: then only the home is looked at.
///
/// A group that may write is the user's own affair: many systems give each user a group.
QString distrustOf(const QDir &home, const QString &libraryFile);

} // namespace KelStd::proj
