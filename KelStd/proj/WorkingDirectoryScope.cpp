#include <KelStd/proj/WorkingDirectoryScope.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>

namespace KelStd::proj {

WorkingDirectoryScope::WorkingDirectoryScope()
{
    QDir dir = AppConfig::getInstance().homeDir();
    if (!dir.exists() || !dir.cd(privateDirectoryName()))
        return;
    m_previous = QDir::currentPath();
    QDir::setCurrent(QDir::fromNativeSeparators(dir.absolutePath()));
}

WorkingDirectoryScope::~WorkingDirectoryScope()
{
    if (!m_previous.isEmpty())
        QDir::setCurrent(m_previous);
}

} // namespace KelStd::proj
