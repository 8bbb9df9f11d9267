#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

/// What this library creates is never for all others to write, even where the user's mask would
/// leave them that: code is loaded from the home directory.
namespace kelstd_platform {

/// The permissions of something new.
QFile::Permissions withoutOthersWriting(QFile::Permissions permissions);

/// Creates a directory and those above it as far as they are missing; false when it is not there
/// afterwards.
bool createDirectory(const QString &path);

} // namespace kelstd_platform
