#pragma once

#include <QtCore/QString>

namespace KelStd::proj {

/// Makes the private PROJ directory the process's current directory for as long as it lives, so
/// that PROJ finds relative grid names there. When the directory cannot be entered it changes and
/// restores nothing. Within another scope it does nothing: an operation of several PROJ calls opens
/// one for all of them.
class WorkingDirectoryScope
{
public:
    WorkingDirectoryScope();
    ~WorkingDirectoryScope();

    WorkingDirectoryScope(const WorkingDirectoryScope &) = delete;
    WorkingDirectoryScope &operator=(const WorkingDirectoryScope &) = delete;

private:
    QString m_previous;
};

} // namespace KelStd::proj
