#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

/// What FILE.xml|NAME can be (`readChosenSystem`): names and codes of the library's systems, files,
/// codes of PROJ's database, and its names where no system of the library is called so.
Values systemValues();

} // namespace KelStd::cli
