#include <KelStd/proj/WorkingDirectoryScope.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>

namespace KelStd::proj {

namespace {

/// The current directory is the process's: one thread at a time may change it.
std::recursive_mutex &directoryMutex()
{
    static std::recursive_mutex mutex;
    return mutex;
}

/// How many scopes are open on the thread that holds the mutex.
int openScopes = 0;

} // namespace

WorkingDirectoryScope::WorkingDirectoryScope() : m_lock(directoryMutex())
{
    if (openScopes++ > 0)
        return;
    const QString previous = QDir::currentPath();
    const QString privateDirectory =
        AppConfig::getInstance().homeDir().absoluteFilePath(privateDirectoryName());
    if (QDir::setCurrent(QDir::fromNativeSeparators(privateDirectory)))
        m_previous = previous;
}

WorkingDirectoryScope::~WorkingDirectoryScope()
{
    --openScopes;
    if (!m_previous.isEmpty())
        QDir::setCurrent(m_previous);
}

} // namespace KelStd::proj
