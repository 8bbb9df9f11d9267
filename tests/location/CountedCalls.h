#pragma once

namespace KelStd::test {

/// What this process has asked of the C library on all its threads, in the libraries that are
/// loaded at run time as well. A program that links CountedCalls.cpp counts.
struct CountedCalls
{
    long allocations = 0;      ///< of memory
    long files = 0;            ///< opened, or asked about by name
    long directoryChanges = 0; ///< of the current directory
};

/// Since the process began.
CountedCalls countedCalls();

/// What `work` asks for.
template <typename Work>
CountedCalls callsOf(Work work)
{
    const CountedCalls before = countedCalls();
    work();
    const CountedCalls after = countedCalls();
    return {after.allocations - before.allocations, after.files - before.files,
            after.directoryChanges - before.directoryChanges};
}

} // namespace KelStd::test
