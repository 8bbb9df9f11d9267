#pragma once

#include <QtCore/QString>

namespace kelstd_platform {

/// The file that this library was loaded from, or an empty text where the system cannot say.
QString ownLibraryPath();

/// The program directory that a program with the static libraries was told when it was linked;
/// empty in a shared library, which looks beside itself.
QString toldProgramDirectory();

} // namespace kelstd_platform
