#pragma once

#include <KelStd/library/LibraryDirectory.h>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Adds the option --dir.
void addDirectoryOption(CommandLine &line);

/// Whether --dir names a library.
bool namesLibrary(const CommandLine &line);

/// The directory of --dir, or that of the home directory, whatever it holds.
LibraryDirectory chosenDirectory(const CommandLine &line);

enum class Missing
{
    IsAnError,
    IsCreated ///< a directory without a library becomes an empty one
};

/// The library that --dir names, or that of the home directory, which is laid out from the
/// delivered one when there is none yet. Nothing after a report of what is wrong.
std::optional<LibraryDirectory> openLibrary(const CommandLine &line, Missing missing,
                                            Console &console);

} // namespace KelStd::cli
