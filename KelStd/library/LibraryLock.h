#pragma once

#include <KelStd/Export.h>
#include <KelStd/files/FileLock.h>
#include <KelStd/library/LibraryDirectory.h>

#include <QtCore/QString>

namespace KelStd {

/// Keeps other programs from changing a library while this one does, from loading to writing: each
/// of two that add a name at once would find it free. Gone with the object. A lock that a killed
/// program has left is taken over at once.
///
///     LibraryLock lock(directory);
///     if (const LibraryFailure failure = lock.acquire())
///         return show(failure.text);
///     library::loadPlaces(directory, {LibraryPlace::Custom, LibraryPlace::Standard});
///     // look, and change; then let the lock go
///
/// The registry itself takes no lock. One object belongs to one thread at a time; two objects lock
/// each other out, also in one process.
class KELSTD_EXPORT LibraryLock
{
public:
    /// Nothing is locked yet.
    explicit LibraryLock(const LibraryDirectory &library);

    /// Waits for other programs; `HeldByAnother` when one of them takes longer than `patience`
    /// [ms]. Where no lock file can be made nothing is locked and nothing fails: whether a change
    /// can be written is for the change to tell.
    LibraryFailure acquire(int patience = 10000);

private:
    QString m_fileName;
    FileLock m_lock;
};

} // namespace KelStd
