#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::proj {

/// The process's current directory, changed for as long as this lives. When the directory cannot be
/// entered, nothing is changed or restored; a previous one that is gone is not restored either.
///
/// It stands in the way of every conversion: where the system has calls for it they are used, which
/// cost a tenth of Qt's operations.
class CurrentDirectory
{
public:
#if defined(Q_OS_UNIX)
    using Name = QByteArray;
#else
    using Name = QString;
#endif
    /// The name of a directory as the system takes it.
    static Name nameOf(const QString &directory);

    explicit CurrentDirectory(const Name &directory);
    ~CurrentDirectory();

    CurrentDirectory(const CurrentDirectory &) = delete;
    CurrentDirectory &operator=(const CurrentDirectory &) = delete;

private:
    Name m_previous; ///< empty when there is nothing to restore
};

} // namespace KelStd::proj
