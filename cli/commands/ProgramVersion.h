#pragma once

#include <QtCore/QStringList>

namespace KelStd::cli {

/// The release of the program and of what it runs on, a line each: Qt, PROJ and PROJ's database.
/// Nothing is unpacked for it: without a PROJ that is ready it says why there is none.
QStringList versionLines();

} // namespace KelStd::cli
