#include <KelStd/proj/WorkingDirectoryScope.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/PrivateDirectory.h>

namespace KelStd::proj {

namespace {

/// The current directory is the process's: one thread at a time may change it.
std::mutex &directoryMutex()
{
    static std::mutex mutex;
    return mutex;
}

/// The private directory of a home. Nearly every call has the home of the one before it; only who
/// holds the mutex may ask.
const CurrentDirectory::Name &privateDirectoryOf(const QDir &home)
{
    struct Known
    {
        QString home;
        CurrentDirectory::Name directory;
    };
    // Never destroyed: static objects of a host may convert in their destructors.
    static Known &known = *new Known;
    const QString path = home.path();
    if (known.directory.isEmpty() || known.home != path)
        known = {path, CurrentDirectory::nameOf(home.filePath(privateDirectoryName()))};
    return known.directory;
}

} // namespace

// The host is asked before the lock is taken.
WorkingDirectoryScope::WorkingDirectoryScope()
    : WorkingDirectoryScope(AppConfig::getInstance().homeDir())
{}

WorkingDirectoryScope::WorkingDirectoryScope(const QDir &home)
    : m_lock(directoryMutex()), m_directory(privateDirectoryOf(home))
{}

} // namespace KelStd::proj
