#include <KelStd/library/LibraryLock.h>

#include <KelStd/library/LockName.h>

#include <QtCore/QDir>
#include <QtCore/QObject>

namespace KelStd {

LibraryLock::LibraryLock(const LibraryDirectory &library)
    : m_fileName(QDir(library.path()).filePath(library::lockName())), m_lock(m_fileName)
{}

LibraryFailure LibraryLock::acquire(int patience)
{
    if (m_lock.take(patience) != FileLock::Outcome::HeldByAnother)
        return {};
    return {LibraryFailureKind::HeldByAnother,
            QObject::tr("another program is changing the library and holds %1; try again when it "
                        "has ended")
                .arg(m_fileName)};
}

} // namespace KelStd
