#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd {
class FileLock;
}

namespace KelStd::proj {

/// Where a started program's standard error goes. Its input and output are the null device.
enum class ChildErrors
{
    Dropped,
    Passed ///< to this process's
};

/// Runs a program to its end. It gets the environment of this process but for the variables named
/// `withoutVariables`.
///
/// \param lock stays held until the program has ended, also when this process is killed before; may
///        be null
/// \return its exit status; nothing when it did not start, or did not end by itself
std::optional<int> runToItsEnd(const QString &program, const QStringList &arguments,
                               const QStringList &withoutVariables, ChildErrors errors,
                               const FileLock *lock);

} // namespace KelStd::proj
