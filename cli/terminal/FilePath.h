#pragma once

#include <QtCore/QString>

namespace KelStd::cli {

/// A file or directory that somebody named, as Qt is to be given it: a name that begins with a
/// colon is one like another in the current directory, and not a resource within the program.
inline QString onDisk(const QString &given)
{
    return given.startsWith(QLatin1Char(':')) ? QLatin1String("./") + given : given;
}

/// Where a file is or would be, by one name whatever links and dots lead there.
QString placeOf(const QString &name);

} // namespace KelStd::cli
