#pragma once

#include <cli/terminal/CommandLine.h>

namespace KelStd::cli {

/// The options of 'kelstd convert' and its help.
CommandLine convertCommandLine();

} // namespace KelStd::cli
