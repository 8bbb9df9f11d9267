#include <KelStd/proj/WorkingDirectoryScope.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>

namespace KelStd::proj {

namespace {

/// How many scopes are open. The current directory is the process's, and so is this.
int openScopes = 0;

} // namespace

WorkingDirectoryScope::WorkingDirectoryScope()
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
