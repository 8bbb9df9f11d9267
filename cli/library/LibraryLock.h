#pragma once

#include <cli/library/LibraryDirectory.h>

#include <KelStd/files/FileLock.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// Keeps other programs from changing a library while this one does, from loading to writing: each
/// of two that add a name at once would find it free. Gone with the object. A lock that a killed
/// program has left is taken over at once.
///
/// Where no lock file can be made nothing is locked: whether a change can be written is for the
/// change to tell.
class LibraryLock
{
public:
    explicit LibraryLock(const LibraryDirectory &library);

    /// Waits for other programs; false with the reason when one of them takes too long.
    bool acquire(QString &reason);

private:
    QString m_fileName;
    FileLock m_lock;
};

} // namespace KelStd::cli
