#pragma once

#include <QtCore/QString>

namespace kelstd_platform {

/// The file that this library was loaded from, or an empty text where the system cannot say.
QString ownLibraryPath();

} // namespace kelstd_platform
