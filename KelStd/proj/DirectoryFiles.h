#pragma once

#include <proj.h>

namespace KelStd::proj {

/// How PROJ opens files: by relative names as if a certain directory were the current one.
///
/// PROJ is given it together with the address of a `QByteArray`, the directory's absolute path in
/// the file system's encoding, which must live as long as the context; or with null, which leaves
/// names as they stand.
const PROJ_FILE_API &directoryFiles();

} // namespace KelStd::proj
