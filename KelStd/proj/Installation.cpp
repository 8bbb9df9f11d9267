#include <KelStd/proj/Installation.h>

#include <KelStd/files/FileLock.h>
#include <KelStd/files/WorkshopMark.h>
#include <KelStd/grid/GeoidFolder.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/proj/FilePermissions.h>
#include <KelStd/proj/PrivateDirectory.h>
#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ShiftGrids.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/Unpacker.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>

namespace KelStd::proj {

namespace {

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

using Kind = InitializationFailureKind;

using MarkerState = ProjInspection::MarkerState;

InitializationFailure notWritable(const QString &path)
{
    return {Kind::HomeNotWritable, QObject::tr("%1 cannot be written").arg(path)};
}

MarkerState markerState(const QDir &home)
{
    return ProjInspection(home, {}).markerState();
}

bool isInstalled(const QDir &home)
{
    return markerState(home) == MarkerState::Current;
}

/// Why nothing can be installed into the private directory, if so. One that is not there is made,
/// empty.
InitializationFailure preparePrivateDirectory(const QDir &home)
{
    const QFileInfo place(home.absoluteFilePath(privateDirectoryName()));
    const QString path = place.filePath();
    if (!place.exists()) {
        if (home.mkdir(privateDirectoryName()))
            return {};
        if (place.isSymLink()) {
            return {Kind::BadPrivateDirectory,
                    QObject::tr("%1 is a link that leads nowhere").arg(path)};
        }
        return {Kind::HomeNotWritable, QObject::tr("%1 cannot be created").arg(path)};
    }
    if (!place.isDir())
        return {Kind::BadPrivateDirectory, QObject::tr("%1 is no directory").arg(path)};
    if (markerState(home) == MarkerState::Unreadable) {
        return {Kind::BadPrivateDirectory,
                QObject::tr("%1 cannot be read").arg(QDir(path).filePath(markerFileName()))};
    }
    if (!place.isSymLink())
        return {};
    // What the link leads to may be anything.
    const QString text =
        QObject::tr("%1 is a symbolic link and is not replaced; remove the link").arg(path);
    logFailure(text, LogType_Error);
    return {Kind::LinkNotReplaced, text};
}

/// What the directory holds in which PROJ is prepared.
const QString newPart = QStringLiteral("new");
const QString oldPart = QStringLiteral("old");

QStringList workshopParts()
{
    return {newPart, oldPart};
}

/// Removes the directories in which killed processes prepared PROJ. Only under the lock: then no
/// other process uses one.
void removeLeftWorkshops(const QDir &home)
{
    QString pattern = workshopPattern();
    pattern.replace(QLatin1Char('X'), QLatin1Char('?'));
    for (const QFileInfo &entry : home.entryInfoList({pattern}, everything)) {
        if (workshop::mayBeRemoved(entry, workshopParts()))
            workshop::remove(entry.filePath(), workshopParts());
    }
}

/// Moves the grids of datum shifts that a user has added (`ShiftGrids::add`) from one private
/// directory to another, which keeps what it has. Anything else stays.
void keepAddedGrids(const QString &from, const QString &to)
{
    const QDir oldResources(QDir(from).filePath(resourceDirectoryName()));
    const QDir newResources(QDir(to).filePath(resourceDirectoryName()));
    for (const QString &name : oldResources.entryList(QDir::Files)) {
        const QString path = oldResources.filePath(name);
        const ShiftGrids::File file = ShiftGrids::examine(path);
        if (file.format != ShiftGridFile::Format::None && !file.failure)
            QFile::rename(path, newResources.filePath(name)); // which replaces nothing
    }
}

/// The new private directory, made beside the old one and gone with the object unless it was put in
/// its place.
class Workshop
{
public:
    explicit Workshop(const QDir &home)
        : m_home(home), m_dir(home.absoluteFilePath(workshopPattern())),
          m_isMarked(m_dir.isValid() && workshop::mark(m_dir.path()))
    {}
    ~Workshop()
    {
        if (m_dir.isValid())
            workshop::remove(m_dir.path(), workshopParts());
    }
    Workshop(const Workshop &) = delete;
    Workshop &operator=(const Workshop &) = delete;

    /// Unpacks the archive and looks at what came out of it.
    InitializationFailure make(const QString &archive, const FileLock &lock) const
    {
        const QString unpacker = findUnpacker();
        if (unpacker.isEmpty()) {
            return {Kind::NoUnpacker,
                    QObject::tr("%1 is not on the search path").arg(unpackerName())};
        }
        if (!m_isMarked || !QDir().mkpath(newPrivateDirectory()))
            return notWritable(m_home.absolutePath());
        // What the user's mask lets a new directory have.
        const QFile::Permissions allowed = QFileInfo(newPrivateDirectory()).permissions();
        if (InitializationFailure failure = unpack(unpacker, archive, unpacked(), lock))
            return failure;
        restrictPermissions(unpacked(), allowed);
        if (QDir(newPrivateDirectory()).exists(libraryFileName()))
            return {};
        return {Kind::WrongArchive, QObject::tr("%1 holds no PROJ").arg(archive)};
    }

    /// Lets the new private directory take the old one's place.
    InitializationFailure moveIntoPlace() const
    {
        const QString place = m_home.absoluteFilePath(privateDirectoryName());
        const QString old = m_dir.filePath(oldPart);
        if (!QDir().rename(place, old))
            return notWritable(place);
        if (!QDir().rename(newPrivateDirectory(), place)) {
            QDir().rename(old, place);
            return notWritable(place);
        }
        keepAddedGrids(old, place);
        tk::Toolkits::ClearDirectory(old);
        // What the archive has beside its top folder "proj" belongs into the home directory, too.
        const bool isComplete =
            QDir(unpacked()).isEmpty(everything)
            || tk::Toolkits::CopyDirectory(unpacked(), m_home.absolutePath(), true);
        return isComplete ? InitializationFailure() : notWritable(m_home.absolutePath());
    }

private:
    QString unpacked() const { return m_dir.filePath(newPart); }
    QString newPrivateDirectory() const
    {
        return QDir(unpacked()).filePath(privateDirectoryName());
    }

    QDir m_home;
    QTemporaryDir m_dir;
    bool m_isMarked;
};

bool writeMarker(const QString &path)
{
    // An archive that brings a marker of its own is not ours.
    QFile fresh(path);
    if (!fresh.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    fresh.setPermissions(fresh.permissions() & ~QFile::Permissions(QFile::WriteOther));
    fresh.close();

    QSaveFile marker(path);
    if (!marker.open(QIODevice::WriteOnly))
        return false;
    QDataStream stream(&marker);
    stream << environmentVersion;
    // What is still buffered may fail, too, and `commit` does not say so.
    return stream.status() == QDataStream::Ok && marker.flush() && marker.commit();
}

/// Installs what is missing; by one process at a time.
InitializationFailure install(const QDir &home, const QDir &programDir, const FileLock &lock)
{
    if (isInstalled(home))
        return {};
    if (InitializationFailure failure = preparePrivateDirectory(home))
        return failure;
    if (lock.isTaken())
        removeLeftWorkshops(home);

    const QDir archiveDir(programDir.absoluteFilePath(privateDirectoryName()));
    const QString archive = archiveDir.absoluteFilePath(archiveFileName());
    {
        const Workshop workshop(home);
        InitializationFailure failure = workshop.make(archive, lock);
        if (!failure)
            failure = workshop.moveIntoPlace();
        if (failure)
            return failure;
    }
    const QString marker =
        QDir(home.absoluteFilePath(privateDirectoryName())).absoluteFilePath(markerFileName());
    if (QFileInfo::exists(marker))
        return {Kind::WrongArchive, QObject::tr("%1 brings a marker of its own").arg(archive)};
    // Without geoid models everything but heights above the geoid still works. What a link leads to
    // is not this system's own: nothing is overwritten there.
    const QString models = home.absoluteFilePath(kelstd_grid::geoidFolderName());
    tk::Toolkits::CopyDirectory(programDir.absoluteFilePath(kelstd_grid::geoidFolderName()), models,
                                !QFileInfo(models).isSymLink());
    return writeMarker(marker) ? InitializationFailure() : notWritable(marker);
}

} // namespace

InitializationFailure ensureInstalled(const QDir &home, const QDir &programDir)
{
    const QString lockFile = home.absoluteFilePath(installLockName());
    FileLock lock(lockFile);
    if (isInstalled(home)) {
        // Left by a process that was killed after its last step; taking it removes it.
        if (QFile::exists(lockFile))
            lock.take(0);
        return {};
    }
    // Programs that start at the same moment must not unpack over each other. Where no lock can be
    // had nothing can be installed either.
    if (lock.take(FileLock::forEver) != FileLock::Outcome::Unavailable)
        return install(home, programDir, lock);
    // What has the lock's name is something else, and whoever starts finds the same.
    FileLock second(home.absoluteFilePath(secondInstallLockName()));
    second.take(FileLock::forEver);
    // Without any lock another process may have been in the way because it was faster.
    InitializationFailure failure = install(home, programDir, second);
    return isInstalled(home) ? InitializationFailure() : failure;
}

} // namespace KelStd::proj
