#include <cli/library/LibraryLock.h>

#include <QtCore/QDir>

namespace KelStd::cli {

namespace {

const QString lockName = QStringLiteral(".changing.lock");

} // namespace

LibraryLock::LibraryLock(const LibraryDirectory &library)
    : m_fileName(QDir(library.path()).filePath(lockName)), m_lock(m_fileName)
{}

bool LibraryLock::acquire(QString &reason)
{
    constexpr int patience = 10000; // [ms]
    if (m_lock.take(patience) != FileLock::Outcome::HeldByAnother)
        return true;
    reason = QStringLiteral("another program is changing the library and holds %1; try again when "
                            "it has ended")
                 .arg(m_fileName);
    return false;
}

} // namespace KelStd::cli
