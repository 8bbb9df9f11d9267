#include <KelStd/proj/CurrentDirectory.h>

#if defined(Q_OS_UNIX)
#    include <QtCore/QFile>

#    include <climits>

#    include <unistd.h>
#else
#    include <QtCore/QDir>
#endif

namespace KelStd::proj {

namespace {

using Name = CurrentDirectory::Name;

#if defined(Q_OS_UNIX)

Name current()
{
    char name[PATH_MAX];
    return getcwd(name, sizeof name) != nullptr ? Name(name) : Name();
}

bool enter(const Name &directory)
{
    return chdir(directory.constData()) == 0;
}

#else

Name current()
{
    return QDir::currentPath();
}

bool enter(const Name &directory)
{
    return QDir::setCurrent(directory);
}

#endif

} // namespace

Name CurrentDirectory::nameOf(const QString &directory)
{
#if defined(Q_OS_UNIX)
    return QFile::encodeName(directory);
#else
    return directory;
#endif
}

CurrentDirectory::CurrentDirectory(const Name &directory)
{
    const Name previous = current();
    if (enter(directory))
        m_previous = previous;
}

CurrentDirectory::~CurrentDirectory()
{
    if (!m_previous.isEmpty())
        enter(m_previous);
}

} // namespace KelStd::proj
