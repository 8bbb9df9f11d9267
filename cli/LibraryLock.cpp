#include <cli/LibraryLock.h>

#include <QtCore/QDir>

namespace KelStd::cli {

namespace {

const QString lockName = QStringLiteral(".changing.lock");

} // namespace

LibraryLock::LibraryLock(const LibraryDirectory &library)
    : m_fileName(QDir(library.path()).filePath(lockName)), m_file(m_fileName)
{
    constexpr int longestChange = 60000; // [ms], after which its process counts as dead
    m_file.setStaleLockTime(longestChange);
}

bool LibraryLock::acquire(QString &reason)
{
    constexpr int patience = 10000; // [ms]
    if (m_file.tryLock(patience) || m_file.error() != QLockFile::LockFailedError)
        return true;
    reason = QStringLiteral("another program is changing the library; if there is none, delete %1")
                 .arg(m_fileName);
    return false;
}

} // namespace KelStd::cli
