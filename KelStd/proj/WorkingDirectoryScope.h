#pragma once

#include <QtCore/QString>

#include <mutex>

namespace KelStd::proj {

/// Makes the private PROJ directory the process's current directory for as long as it lives, so
/// that PROJ finds relative grid names there. When the directory cannot be entered it changes and
/// restores nothing. Within another scope it does nothing: an operation of several PROJ calls opens
/// one for all of them. While one lives, a scope of another thread waits.
class WorkingDirectoryScope
{
public:
    WorkingDirectoryScope();
    ~WorkingDirectoryScope();

    WorkingDirectoryScope(const WorkingDirectoryScope &) = delete;
    WorkingDirectoryScope &operator=(const WorkingDirectoryScope &) = delete;

private:
    const std::unique_lock<std::recursive_mutex> m_lock;
    QString m_previous;
};

} // namespace KelStd::proj
