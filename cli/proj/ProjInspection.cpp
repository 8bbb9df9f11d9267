#include <cli/proj/ProjInspection.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDataStream>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <cmath>

#if defined(Q_OS_UNIX)
#    include <unistd.h>
#endif

namespace KelStd::cli {

namespace {

const QString privateDirectoryName = QStringLiteral("proj");
const QString libraryName = QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);
const QString markerName = QStringLiteral("proj_enviroment");
const QString resourceDirectoryName = QStringLiteral("share");
const QString geoidDirectoryName = QStringLiteral("geoid_model_list");
const QString databaseName = QStringLiteral("share/proj.db");

/// Files of PROJ's own among its resources. An earlier release unpacked into the private directory
/// itself, and whichever of them came first shows that a killed one was at work.
constexpr const char *resourceNames[] = {"proj.db",  "proj.ini", "projjson.schema.json",
                                         "ITRF2000", "ITRF2008", "ITRF2014",
                                         "nad.lst",  "nad27",    "nad83",
                                         "GL27",     "world",    "other.extra"};

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

bool haveSameBytes(const QString &one, const QString &other)
{
    constexpr qint64 pieceSize = 1 << 20;
    QFile a(one);
    QFile b(other);
    if (a.size() != b.size() || !a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly))
        return false;
    while (!a.atEnd()) {
        const QByteArray piece = a.read(pieceSize);
        if (piece.isEmpty() || b.read(pieceSize) != piece)
            return false;
    }
    return true;
}

/// What PROJ's `proj_info` returns. The program does not see PROJ's header.
struct ProjInfo
{
    int major;
    int minor;
    int patch;
    const char *release;
    const char *version;
    const char *searchPath;
    const char *const *paths;
    std::size_t pathCount;
};

/// The unpacker's verdict on members of an archive; all of them when none is named.
bool testArchive(const QString &unpacker, const QString &archive, const QStringList &members)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"UNZIP", "UNZIPOPT", "ZIPINFO", "ZIPINFOOPT"})
        environment.remove(QString::fromLatin1(name)); // they would add options
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(unpacker, QStringList{QStringLiteral("-tqq"), archive} + members);
    constexpr int noTimeout = -1;
    return process.waitForFinished(noTimeout) && process.exitStatus() == QProcess::NormalExit
           && process.exitCode() == 0;
}

} // namespace

ProjPlaces ProjPlaces::current()
{
    const AppConfig &config = AppConfig::getInstance();
    return {QDir(config.homeDir().absolutePath()), QDir(config.binDir().absolutePath())};
}

QString ProjPlaces::archive() const
{
    return programDir.filePath(privateDirectoryName + QLatin1String("/proj.zip"));
}

QString ProjPlaces::privateDirectory() const
{
    return home.filePath(privateDirectoryName);
}

QString ProjPlaces::marker() const
{
    return QDir(privateDirectory()).filePath(markerName);
}

QString ProjPlaces::libraryFile() const
{
    return QDir(privateDirectory()).filePath(libraryName);
}

QString ProjPlaces::resources() const
{
    return QDir(privateDirectory()).filePath(databaseName);
}

QString ProjPlaces::geoidModels() const
{
    return home.filePath(geoidDirectoryName);
}

QString ProjPlaces::deliveredGeoidModels() const
{
    return programDir.filePath(geoidDirectoryName);
}

bool holdsSomethingElse(const ProjPlaces &places)
{
    const QDir directory(places.privateDirectory());
    if (directory.exists() && !library::isListable(directory.path()))
        return true; // for all that one can see
    const auto isThere = [&directory](const QString &name) {
        const QFileInfo entry(directory.filePath(name));
        return entry.exists() || entry.isSymLink();
    };
    const QStringList entries = directory.entryList(everything);
    const QStringList ours = {markerName, libraryName, resourceDirectoryName};
    if (std::any_of(entries.begin(), entries.end(),
                    [&ours](const QString &entry) { return !ours.contains(entry); }))
        return true;
    if (isThere(markerName) || isThere(libraryName))
        return false;
    const QDir share(directory.filePath(resourceDirectoryName));
    for (const char *name : resourceNames) {
        if (share.exists(QString::fromLatin1(name)))
            return false;
    }
    const bool isBegun =
        entries == QStringList{resourceDirectoryName} && share.entryList(everything).isEmpty();
    return !entries.isEmpty() && !isBegun;
}

QString makeRoomAdvice()
{
    return QStringLiteral("move it away, or set KELSTD_HOME_DIR to another directory");
}

std::optional<AccessFault> accessFault(const QString &path)
{
#if defined(Q_OS_UNIX)
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    constexpr uint root = 0;
    if (info.ownerId() != root && info.ownerId() != ::geteuid()) {
        return AccessFault{QStringLiteral("%1 belongs to another user").arg(path),
                           QStringLiteral("change its owner, or set KELSTD_HOME_DIR to a "
                                          "directory of your own")};
    }
    if (info.permissions().testFlag(QFile::WriteOther)) {
        return AccessFault{QStringLiteral("%1 can be changed by every user").arg(path),
                           QStringLiteral("run 'chmod o-w %1'").arg(path)};
    }
#else
    Q_UNUSED(path)
#endif
    return std::nullopt;
}

DeliveredModels comparedModels(const ProjPlaces &places)
{
    const QDir delivered(places.deliveredGeoidModels());
    const QDir models(places.geoidModels());
    DeliveredModels names;
    QDirIterator files(delivered.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString name = delivered.relativeFilePath(file);
        // What a link leads to is not replaced.
        const bool isOwn = QFileInfo(models.filePath(name)).canonicalFilePath()
                           == QDir(places.home.canonicalPath())
                                  .filePath(geoidDirectoryName + QLatin1Char('/') + name);
        if (!isOwn)
            continue;
        if (QFileInfo(models.filePath(name)).isDir())
            names.blocked += name;
        else if (!haveSameBytes(file, models.filePath(name)))
            names.different += name;
    }
    names.different.sort();
    names.blocked.sort();
    return names;
}

namespace {

/// Whether nobody else may change the program, itself or in the directories that lead to it.
bool isTrustedProgram(const QString &directory, const QString &program)
{
    const QString run = QFileInfo(program).canonicalFilePath();
    for (const QString &path : {directory, QFileInfo(run).absolutePath(), run}) {
        if (accessFault(path))
            return false;
    }
    return true;
}

} // namespace

QString findUnpacker()
{
    const QStringList entries = qEnvironmentVariable("PATH", QStringLiteral("/usr/bin:/bin"))
                                    .split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString &entry : entries) {
        const bool isOfProcesses =
            (QDir::cleanPath(entry) + QLatin1Char('/')).startsWith(QLatin1String("/proc/"));
        if (!QDir::isAbsolutePath(entry) || isOfProcesses)
            continue;
        const QString found =
            QStandardPaths::findExecutable(QStringLiteral(KELSTD_UNPACKER_NAME), {entry});
        if (!found.isEmpty() && isTrustedProgram(entry, found))
            return found;
    }
    return {};
}

ArchiveState inspectArchive(const QString &archive, const QString &unpacker)
{
    if (!QFileInfo(archive).isFile())
        return ArchiveState::Missing;
    if (!testArchive(unpacker, archive, {}))
        return ArchiveState::Damaged;
    const QString top = privateDirectoryName + QLatin1Char('/');
    for (const QString &member : {libraryName, databaseName}) {
        if (!testArchive(unpacker, archive, {top + member}))
            return ArchiveState::WithoutProj;
    }
    return ArchiveState::Good;
}

MarkerState inspectMarker(const QString &marker)
{
    constexpr qint32 currentVersion = 3;
    QFile file(marker);
    if (!file.exists())
        return MarkerState::Missing;
    if (!file.open(QIODevice::ReadOnly))
        return MarkerState::Unreadable;
    qint32 version = 0;
    QDataStream(&file) >> version;
    return version == currentVersion ? MarkerState::Current : MarkerState::OtherVersion;
}

QString projRelease(const QString &libraryFile, QString &reason)
{
    QLibrary library(libraryFile);
    if (!library.load()) {
        reason = library.errorString();
        return {};
    }
    using InfoFunction = ProjInfo (*)();
    const auto info = reinterpret_cast<InfoFunction>(library.resolve("proj_info"));
    if (info == nullptr) {
        reason = QStringLiteral("the library has no proj_info");
        return {};
    }
    const ProjInfo about = info();
    return QStringLiteral("%1.%2.%3").arg(about.major).arg(about.minor).arg(about.patch);
}

bool convertsKnownPosition(QString &reason)
{
    // On the equator and the central meridian the default system is at its origin.
    constexpr double semiMajorAxis = 6378137.0;
    constexpr double tolerance = 0.001;
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    Location location;
    bool converted = false;
    const auto convert = [&] {
        converted = Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(0.0, 0.0, 0.0), location,
                                                        nullptr, &coord, &reason);
    };
    if (!withoutRaising(convert, reason) || !converted)
        return false;
    const bool isRight = std::abs(location.get_WGS84_XYZ_X() - semiMajorAxis) < tolerance
                         && std::abs(location.get_NEH_E()) < tolerance
                         && std::abs(location.get_NEH_N()) < tolerance;
    if (!isRight)
        reason = QStringLiteral("the result is wrong");
    return isRight;
}

} // namespace KelStd::cli
