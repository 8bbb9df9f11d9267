#include <KelStd/platform/default/Creation.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace kelstd_platform {

QFile::Permissions withoutOthersWriting(QFile::Permissions permissions)
{
    return permissions & ~QFile::Permissions(QFile::WriteOther);
}

bool createDirectory(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (QFileInfo(clean).isDir())
        return true;
    const QString above = QFileInfo(clean).path();
    if (above == clean || !createDirectory(above))
        return false;
    if (!QDir().mkdir(clean))
        return QFileInfo(clean).isDir(); // another process was faster
    QFile::setPermissions(clean, withoutOthersWriting(QFile::permissions(clean)));
    return true;
}

} // namespace kelstd_platform
