#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

/// What FILE.xml|NAME can be: names and codes of the library's systems, files,
/// codes of PROJ's database, and, where no system of the library is called so, its names. The
/// database is read only for what begins as a code or as a name of its own, and only where PROJ is
/// unpacked already.
Values systemValues();

/// The same without the library.
Values sourceValues();

} // namespace KelStd::cli
