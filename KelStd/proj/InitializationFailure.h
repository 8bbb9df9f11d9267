#pragma once

#include <KelStd/Failure.h>

namespace KelStd {

/// Why PROJ could not be made ready (`ProjLib::initializationFailure`).
enum class InitializationFailureKind
{
    None,                   ///< no failure
    NoHome,                 ///< the home directory does not exist, or is no directory
    Untrusted,              ///< other users may change what would be loaded
    LinkNotReplaced,        ///< the private directory would be replaced and is a symbolic link
    BadPrivateDirectory,    ///< it is no directory, or its marker cannot be read
    NoUnpacker,             ///< no unpacking program on the search path that may be trusted
    NoArchive,              ///< the program directory has no archive of PROJ
    DamagedArchive,         ///< the unpacking program finds it damaged, or no archive at all
    WrongArchive,           ///< it holds no PROJ library, or brings a marker of its own
    UnpackingFailed,        ///< for another reason, or the program was killed
    NoRoom,                 ///< the unpacking program finds the disk full
    HomeNotWritable,        ///< something in the home directory cannot be made or moved
    LibraryNotLoadable,     ///< the text is the system's
    FunctionMissing,        ///< the library file has no function of this name
    PrivateDirectoryTooLong ///< its path is longer than what PROJ can be told
};

/// A failure of one of the kinds of `InitializationFailureKind`.
using InitializationFailure = Failure<InitializationFailureKind>;

} // namespace KelStd
