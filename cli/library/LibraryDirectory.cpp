#include <cli/library/LibraryDirectory.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>

#include <KelStd/files/FileLock.h>
#include <KelStd/files/WorkshopMark.h>
#include <KelStd/library/StandardLibrary.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/Toolkits.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace KelStd::cli {

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
const QString dirOption = QStringLiteral("dir");

/// A directory that never exists: an empty path would be the current one.
const QString nowhere = QStringLiteral(":/nowhere");

bool createPlaces(const LibraryDirectory &library, QString &reason)
{
    for (const PlaceRow &row : placeRows) {
        if (row.isDirectory && !QDir().mkpath(library.path(row.place))) {
            reason = QStringLiteral("cannot create %1").arg(library.path(row.place));
            return false;
        }
    }
    return true;
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

/// Removes them; for who holds the lock, or nobody knows who uses them.
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

/// Makes the library beside its place and moves it there in one step: who finds a library finds a
/// whole one, and of two processes that do this at once one moves and the other finds.
bool layOut(const LibraryDirectory &library, const QString &delivered, QString &reason)
{
    const QDir home = QFileInfo(library.path()).dir();
    if (!QDir().mkpath(home.absolutePath())) {
        reason = QStringLiteral("cannot create the home directory %1").arg(home.absolutePath());
        return false;
    }
    constexpr int patience = 10000; // [ms], and without the lock it is done all the same
    FileLock lock(layingOutLock(home));
    lock.take(patience);
    removeLeftWorkshops(home, lock);
    const QTemporaryDir place(home.absoluteFilePath(workshopPattern));
    if (!place.isValid()) {
        reason =
            QStringLiteral("cannot write %1: %2").arg(home.absolutePath(), place.errorString());
        return false;
    }
    if (!workshop::mark(place.path())) {
        reason = QStringLiteral("cannot write into %1").arg(home.absolutePath());
        return false;
    }
    const LibraryDirectory made(place.filePath(directoryName));
    if (!tk::Toolkits::CopyDirectory(delivered, made.path(), true)) {
        reason = QStringLiteral("cannot copy %1 into %2").arg(delivered, home.absolutePath());
        return false;
    }
    if (!createPlaces(made, reason))
        return false;
    QDir().rmdir(library.path()); // as far as it is an empty one
    if (QDir().rename(made.path(), library.path()) || library.holdsLibrary())
        return true;
    reason = QStringLiteral("cannot create %1").arg(library.path());
    return false;
}

QString notListable(const QString &directory)
{
    return QStringLiteral("cannot read the directory %1: Permission denied").arg(directory);
}

std::optional<LibraryDirectory> refuse(const QString &reason, Console &console)
{
    console.report(reason);
    return std::nullopt;
}

/// The library of the home directory, which is laid out when there is none.
std::optional<LibraryDirectory> openHomeLibrary(Console &console)
{
    const LibraryDirectory library = LibraryDirectory::ofHome();
    if (library.holdsLibrary()) {
        removeLeftovers(library);
        return library;
    }
    if (!isListable(library.path()))
        return refuse(notListable(library.path()), console);
    if (QFileInfo::exists(library.path()) && (!library.exists() || !QDir(library.path()).isEmpty()))
        return refuse(QStringLiteral("%1 holds no library").arg(library.path()), console);
    const QString delivered = AppConfig::getInstance().binDir().absoluteFilePath(directoryName);
    if (!LibraryDirectory(delivered).holdsLibrary()) {
        return refuse(QStringLiteral("there is no library in %1, and none is delivered in %2")
                          .arg(library.path(), delivered),
                      console);
    }
    QString reason;
    if (!layOut(library, delivered, reason))
        return refuse(reason, console);
    console.report(QStringLiteral("note: the library %1 is new, laid out from %2")
                       .arg(library.path(), delivered));
    return library;
}

std::optional<LibraryDirectory> openCreated(const LibraryDirectory &library, Console &console)
{
    QString reason;
    if (!createPlaces(library, reason))
        return refuse(reason, console);
    return library;
}

} // namespace

LibraryDirectory LibraryDirectory::ofHome()
{
    return LibraryDirectory(AppConfig::getInstance().homeDir().absoluteFilePath(directoryName));
}

QString placeName(LibraryPlace place)
{
    const auto row = std::find_if(std::begin(placeRows), std::end(placeRows),
                                  [place](const PlaceRow &r) { return r.place == place; });
    return QString::fromLatin1(row->name);
}

QString LibraryDirectory::path(LibraryPlace place) const
{
    return m_dir.absoluteFilePath(placeName(place));
}

bool LibraryDirectory::holdsLibrary() const
{
    return std::any_of(std::begin(placeRows), std::end(placeRows),
                       [this](const PlaceRow &row) { return QFileInfo::exists(path(row.place)); });
}

void addDirectoryOption(CommandLine &line)
{
    line.addOption({dirOption,
                    QStringLiteral("The library's directory.\n"
                                   "Default: \"library\" in the home directory."),
                    QStringLiteral("D")});
}

bool namesLibrary(const CommandLine &line)
{
    return line.isSet(dirOption);
}

LibraryDirectory chosenDirectory(const CommandLine &line)
{
    return namesLibrary(line) ? LibraryDirectory(onDisk(line.value(dirOption)))
                              : LibraryDirectory::ofHome();
}

std::optional<LibraryDirectory> openLibrary(const CommandLine &line, Missing missing,
                                            Console &console)
{
    if (!namesLibrary(line))
        return openHomeLibrary(console);
    const QString given = line.value(dirOption);
    if (given.isEmpty())
        return refuse(QStringLiteral("--dir is empty"), console);
    const LibraryDirectory library(onDisk(given));
    if (library.holdsLibrary())
        return library;
    if (!isListable(library.path()))
        return refuse(notListable(library.path()), console);
    if (missing == Missing::IsCreated)
        return openCreated(library, console);
    if (!library.exists())
        return refuse(QStringLiteral("there is no directory %1").arg(given), console);
    return refuse(QStringLiteral("%1 holds no library: nothing in it is called base.xml, "
                                 "ellipsoids, projections, custom, standard, offered.xml or "
                                 "display.bin")
                      .arg(given),
                  console);
}

bool isListable(const QString &directory)
{
    const QFileInfo info(directory);
    // What may not be searched shows names, but nothing of what they are.
    return !info.isDir() || (info.isReadable() && info.isExecutable());
}

bool loadPlaces(const LibraryDirectory &library, std::initializer_list<LibraryPlace> places,
                QString &reason)
{
    for (const LibraryPlace place : places) {
        if (!isListable(library.path(place))) {
            reason = notListable(library.path(place));
            return false;
        }
    }
    StandardLibrary &registry = StandardLibrary::getInstance();
    for (const PlaceRow &row : placeRows) {
        const QString path = library.path(row.place);
        const bool isLoaded = std::find(places.begin(), places.end(), row.place) != places.end()
                              && (row.isDirectory || QFileInfo::exists(path));
        (registry.*row.setPath)(isLoaded ? path : row.isDirectory ? nowhere : QString());
    }
    registry.loadLibrary();
    return true;
}

} // namespace KelStd::cli
