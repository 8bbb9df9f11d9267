#pragma once

#include <KelStd/proj/CurrentDirectory.h>

#include <QtCore/QDir>

#include <mutex>

namespace KelStd::proj {

/// Makes the private PROJ directory the process's current directory for as long as it lives, so
/// that PROJ finds relative grid names there. When the directory cannot be entered it changes and
/// restores nothing. While one lives, a scope of another thread waits: inside it neither the host's
/// log nor its resources are asked, which may wait for that thread.
class WorkingDirectoryScope
{
public:
    WorkingDirectoryScope();

    WorkingDirectoryScope(const WorkingDirectoryScope &) = delete;
    WorkingDirectoryScope &operator=(const WorkingDirectoryScope &) = delete;

private:
    explicit WorkingDirectoryScope(const QDir &home);

    const std::unique_lock<std::mutex> m_lock;
    const CurrentDirectory m_directory;
};

} // namespace KelStd::proj
