#pragma once

#include <cli/library/DirectoryOption.h>

#include <KelStd/library/LibraryLock.h>
#include <KelStd/library/LibraryRecord.h>

#include <memory>
#include <optional>

namespace KelStd::cli {

/// A library that no other program changes meanwhile.
struct LockedLibrary
{
    LibraryDirectory directory;
    std::unique_ptr<LibraryLock> lock;
};

/// The library that --dir names, or that of the home directory; nothing after a report.
std::optional<LockedLibrary> lockLibrary(const CommandLine &line, Missing missing,
                                         Console &console);

/// The same, loaded.
std::optional<LockedLibrary> openForChange(const CommandLine &line, Missing missing,
                                           Console &console);

/// Adds the option --kind of a command that changes one record; `without`: what it means not to
/// give it.
void addOwnKindOption(CommandLine &line, const QString &without);

/// Whether an entry of the loaded library can be changed by the registry; a report when not.
/// `change`: "replace", "remove".
bool isChangeable(const LibraryDirectory &library, RecordKind kind, const QString &name,
                  const char *change, Console &console);

/// The help on how a command ends that changes a library.
QString changeStatusHelp();

} // namespace KelStd::cli
