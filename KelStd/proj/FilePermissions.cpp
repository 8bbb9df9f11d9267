#include <KelStd/proj/FilePermissions.h>

#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#if defined(Q_OS_UNIX)
#    include <unistd.h>
#endif

namespace KelStd::proj {

namespace {

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

/// The permissions as they stand in the file system. The "user" ones are what this process may do.
constexpr QFile::Permissions storedPermissions =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::WriteGroup
    | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;

void restrictEntry(const QString &path, QFile::Permissions allowed, QFile::Permissions needed)
{
    // Set also where they stay the same: the set-user and set-group bits go with it.
    const QFile::Permissions found = QFileInfo(path).permissions() & storedPermissions;
    QFile::setPermissions(path,
                          (found & allowed & ~QFile::Permissions(QFile::WriteOther)) | needed);
}

#if defined(Q_OS_UNIX)

QString distrustOfEntry(const QString &path)
{
    switch (accessFaultOf(path)) {
    case ProjInspection::AccessFault::OfAnotherUser:
        return QObject::tr("%1 belongs to another user; change its owner, or use another home "
                           "directory")
            .arg(path);
    case ProjInspection::AccessFault::WritableByAll:
        return QObject::tr("%1 can be changed by every user; take that away with 'chmod o-w'")
            .arg(path);
    case ProjInspection::AccessFault::None: break;
    }
    return {};
}

/// Where somebody could put another file in the place of this one, and the file itself. Where it is
/// a link, what that leads to counts as well.
QStringList placesOf(const QString &file)
{
    const QFileInfo info(file);
    if (!info.isSymLink())
        return {info.absolutePath(), file};
    const QString target = info.canonicalFilePath();
    return target.isEmpty()
               ? QStringList{info.absolutePath()}
               : QStringList{info.absolutePath(), QFileInfo(target).absolutePath(), target};
}

#endif

} // namespace

void restrictPermissions(const QString &directory, QFile::Permissions allowed)
{
    restrictEntry(directory, allowed, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const QFileInfo &entry : QDir(directory).entryInfoList(everything)) {
        if (entry.isSymLink())
            continue;
        if (entry.isDir())
            restrictPermissions(entry.filePath(), allowed);
        else
            restrictEntry(entry.filePath(), allowed, QFile::ReadOwner | QFile::WriteOwner);
    }
}

ProjInspection::AccessFault accessFaultOf(const QString &path)
{
    using AccessFault = ProjInspection::AccessFault;
#if defined(Q_OS_UNIX)
    const QFileInfo info(path);
    if (!info.exists())
        return AccessFault::None;
    constexpr uint system = 0;
    if (info.ownerId() != system && info.ownerId() != ::geteuid())
        return AccessFault::OfAnotherUser;
    if (info.permissions().testFlag(QFile::WriteOther))
        return AccessFault::WritableByAll;
#else
    Q_UNUSED(path)
#endif
    return AccessFault::None;
}

QString distrustOf(const QDir &home, const QString &libraryFile)
{
#if defined(Q_OS_UNIX)
    QStringList paths = {home.absolutePath()};
    if (!libraryFile.isEmpty()) {
        paths += placesOf(libraryFile);
        // Who may change the database decides what PROJ computes.
        const QDir resources(QFileInfo(libraryFile).dir().filePath(resourceDirectoryName()));
        paths += placesOf(resources.filePath(databaseFileName()));
    }
    for (const QString &path : paths) {
        QString reason = distrustOfEntry(path);
        if (!reason.isEmpty())
            return reason;
    }
#else
    Q_UNUSED(home)
    Q_UNUSED(libraryFile)
#endif
    return {};
}

} // namespace KelStd::proj
