#include <cli/ProjInspection.h>

#include <cli/SystemFile.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

#include <cmath>

namespace KelStd::cli {

namespace {

const QString privateDirectoryName = QStringLiteral("proj");
const QString libraryName = QStringLiteral(KELSTD_PROJ_LIBRARY_NAME);
const QString databaseName = QStringLiteral("share/proj.db");

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
    return QDir(privateDirectory()).filePath(QStringLiteral("proj_enviroment"));
}

QString ProjPlaces::libraryFile() const
{
    return QDir(privateDirectory()).filePath(libraryName);
}

QString ProjPlaces::resources() const
{
    return QDir(privateDirectory()).filePath(databaseName);
}

QString findUnpacker()
{
    return QStandardPaths::findExecutable(QStringLiteral(KELSTD_UNPACKER_NAME));
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
