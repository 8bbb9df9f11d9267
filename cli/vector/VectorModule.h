#pragma once

#include <cli/vector/VectorFiles.h>

#include <QtCore/QString>

namespace KelStd::cli::vector {

/// The module that reads and writes vector files; null with the `reason` where there is none. It is
/// loaded by the first call and kept.
///
/// To be called before PROJ is loaded. The module brings the operating system's PROJ, and a system
/// loader gives a library that needs one of that name the one that is there already; in this order
/// the two stay apart.
VectorFiles *vectorFiles(QString &reason);

/// The file of the module, whether it is there or not; empty where the program was built without
/// it.
QString vectorModuleFile();

/// The release of GDAL, "3.6.2"; empty where there is no module.
QString gdalRelease();

} // namespace KelStd::cli::vector
