#pragma once

namespace KelStd::python {

/// Names the places of the process's KelStd as the program `kelstd` does, so that both share the
/// user's library and PROJ, and keeps the library's log off standard error. To be called before
/// anything else, any number of times.
void prepareHost();

/// Makes PROJ ready at its first call; raises `NotReady` with what to do. PROJ stays for the life
/// of the process. With the interpreter's lock: it may change the current directory.
void requireProj();

/// Raises `NotReady` where the home directory is none.
void requireHome();

} // namespace KelStd::python
