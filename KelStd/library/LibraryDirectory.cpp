#include <KelStd/library/LibraryDirectory.h>

#include <KelStd/files/FileLock.h>
#include <KelStd/files/ListableDirectory.h>
#include <KelStd/files/WorkshopMark.h>
#include <KelStd/library/LockName.h>
#include <KelStd/library/StandardLibrary.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/Toolkits.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace KelStd {

namespace {

struct PlaceRow
{
    LibraryPlace place;
    const char *name;
    void (StandardLibrary::*setPath)(const QString &);
    bool isDirectory;
};

constexpr PlaceRow placeRows[] = {
    {LibraryPlace::Base, "base.xml", &StandardLibrary::setBaseCoordFilePath, false},
    {LibraryPlace::Ellipsoids, "ellipsoids", &StandardLibrary::setEllipsoidListPath, true},
    {LibraryPlace::Projections, "projections", &StandardLibrary::setProjectionListPath, true},
    {LibraryPlace::Custom, "custom", &StandardLibrary::setCustomCoordPath, true},
    {LibraryPlace::Standard, "standard", &StandardLibrary::setStandardCoordPath, true},
    {LibraryPlace::Offered, "offered.xml", &StandardLibrary::setShowInCreateProjectCoordsFilePath,
     false},
    {LibraryPlace::Display, "display.bin", &StandardLibrary::setShowConfigFilePath, false},
};

const QString directoryName = QStringLiteral("library");
const QString workshopPattern = QStringLiteral(".library-XXXXXX");

/// A directory that never exists: an empty path would be the current one.
const QString nowhere = QStringLiteral(":/nowhere");

LibraryFailure notWritable(const QString &reason)
{
    return {LibraryFailureKind::NotWritable, reason};
}

LibraryFailure noLibrary(const QString &reason)
{
    return {LibraryFailureKind::NoLibrary, reason};
}

/// The lock that is held while a library is laid out in this home directory.
QString layingOutLock(const QDir &home)
{
    return home.absoluteFilePath(QStringLiteral(".library.lock"));
}

/// The directories beside the library in which killed programs were laying one out.
QStringList leftWorkshops(const QDir &home)
{
    constexpr QDir::Filters everything =
        QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
    QString pattern = workshopPattern;
    pattern.replace(QLatin1Char('X'), QLatin1Char('?'));
    QStringList left;
    for (const QFileInfo &entry : home.entryInfoList({pattern}, everything)) {
        if (workshop::mayBeRemoved(entry, {directoryName}))
            left += entry.filePath();
    }
    return left;
}

/// Removes them, under the lock: without it another process may be using them.
void removeLeftWorkshops(const QDir &home, const FileLock &lock)
{
    if (!lock.isTaken())
        return;
    for (const QString &directory : leftWorkshops(home))
        workshop::remove(directory, {directoryName});
}

/// Removes what programs have left that were killed while they laid out the library.
void removeLeftovers(const LibraryDirectory &library)
{
    const QDir home = QFileInfo(library.path()).dir();
    if (!QFileInfo::exists(layingOutLock(home)) && leftWorkshops(home).isEmpty())
        return;
    FileLock lock(layingOutLock(home));
    lock.take(0);
    removeLeftWorkshops(home, lock);
}

/// Removes the lock of a killed program from a directory that holds nothing else. One that somebody
/// holds stays, and so does what has its name and is no lock.
void removeLeftLock(const QDir &directory)
{
    constexpr QDir::Filters everything =
        QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
    const QFileInfoList entries = directory.entryInfoList(everything);
    if (entries.size() != 1 || entries.first().fileName() != library::lockName()
        || entries.first().isSymLink() || !entries.first().isFile())
        return;
    FileLock lock(entries.first().absoluteFilePath());
    lock.take(0);
    lock.release(); // which removes the file
}

/// Makes the library beside its place and moves it there in one step, so that a library that is
/// found is whole. Of two processes that do this at once one moves its library and the other finds
/// it.
LibraryFailure layOut(const LibraryDirectory &library, const LibraryDirectory &delivered)
{
    const QDir home = QFileInfo(library.path()).dir();
    const QString homePath = home.absolutePath();
    if (!QDir().mkpath(homePath))
        return notWritable(QObject::tr("cannot create the home directory %1").arg(homePath));
    constexpr int patience = 10000; // [ms], and without the lock it is done all the same
    FileLock lock(layingOutLock(home));
    lock.take(patience);
    removeLeftWorkshops(home, lock);
    const QTemporaryDir place(home.absoluteFilePath(workshopPattern));
    if (!place.isValid())
        return notWritable(QObject::tr("cannot write %1: %2").arg(homePath, place.errorString()));
    if (!workshop::mark(place.path()))
        return notWritable(QObject::tr("cannot write into %1").arg(homePath));
    const LibraryDirectory made(place.filePath(directoryName));
    if (!tk::Toolkits::CopyDirectory(delivered.path(), made.path(), true)) {
        return notWritable(QObject::tr("cannot copy %1 into %2").arg(delivered.path(), homePath));
    }
    if (auto failure = library::createPlaces(made))
        return failure;
    QDir().rmdir(library.path()); // which leaves one that is not empty
    if (QDir().rename(made.path(), library.path()) || library.holdsLibrary())
        return {};
    return notWritable(QObject::tr("cannot create %1").arg(library.path()));
}

} // namespace

LibraryDirectory LibraryDirectory::ofHome()
{
    return LibraryDirectory(AppConfig::getInstance().homeDir().absoluteFilePath(directoryName));
}

LibraryDirectory LibraryDirectory::delivered()
{
    return LibraryDirectory(AppConfig::getInstance().binDir().absoluteFilePath(directoryName));
}

QString LibraryDirectory::path(LibraryPlace place) const
{
    return m_dir.absoluteFilePath(library::placeName(place));
}

bool LibraryDirectory::holdsLibrary() const
{
    return std::any_of(std::begin(placeRows), std::end(placeRows),
                       [this](const PlaceRow &row) { return QFileInfo::exists(path(row.place)); });
}

QString library::placeName(LibraryPlace place)
{
    const auto row = std::find_if(std::begin(placeRows), std::end(placeRows),
                                  [place](const PlaceRow &r) { return r.place == place; });
    return QString::fromLatin1(row->name);
}

QStringList library::placeNames()
{
    QStringList names;
    for (const PlaceRow &row : placeRows)
        names += QString::fromLatin1(row.name);
    return names;
}

bool library::isListable(const QString &directory)
{
    return files::isListable(QFileInfo(directory));
}

LibraryFailure library::listingFailure(const QString &directory)
{
    if (isListable(directory))
        return {};
    return {LibraryFailureKind::NotListable,
            QObject::tr("cannot read the directory %1: Permission denied").arg(directory)};
}

LibraryFailure library::loadPlaces(const LibraryDirectory &library,
                                   std::initializer_list<LibraryPlace> places)
{
    for (const LibraryPlace place : places) {
        if (auto failure = listingFailure(library.path(place)))
            return failure;
    }
    StandardLibrary &registry = StandardLibrary::getInstance();
    for (const PlaceRow &row : placeRows) {
        const QString path = library.path(row.place);
        const bool isLoaded = std::find(places.begin(), places.end(), row.place) != places.end()
                              && (row.isDirectory || QFileInfo::exists(path));
        (registry.*row.setPath)(isLoaded ? path : row.isDirectory ? nowhere : QString());
    }
    registry.loadLibrary();
    return {};
}

LibraryFailure library::createPlaces(const LibraryDirectory &library)
{
    for (const PlaceRow &row : placeRows) {
        if (row.isDirectory && !QDir().mkpath(library.path(row.place)))
            return notWritable(QObject::tr("cannot create %1").arg(library.path(row.place)));
    }
    return {};
}

LibraryFailure library::prepare(const LibraryDirectory &library, const LibraryDirectory &delivered,
                                bool &isNew)
{
    isNew = false;
    if (library.holdsLibrary()) {
        removeLeftovers(library);
        return {};
    }
    if (auto failure = listingFailure(library.path()))
        return failure;
    removeLeftLock(QDir(library.path()));
    if (QFileInfo::exists(library.path())
        && (!library.exists()
            || !QDir(library.path())
                    .isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden
                             | QDir::System)))
        return noLibrary(QObject::tr("%1 holds no library").arg(library.path()));
    if (!delivered.holdsLibrary()) {
        return noLibrary(QObject::tr("there is no library in %1, and none is delivered in %2")
                             .arg(library.path(), delivered.path()));
    }
    LibraryFailure failure = layOut(library, delivered);
    isNew = !failure;
    return failure;
}

} // namespace KelStd
