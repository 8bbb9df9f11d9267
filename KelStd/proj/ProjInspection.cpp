#include <KelStd/proj/ProjInspection.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Location.h>
#include <KelStd/files/ListableDirectory.h>
#include <KelStd/grid/GeoidFolder.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/FilePermissions.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/PrivateDirectory.h>
#include <KelStd/proj/ProjSymbols.h>
#include <KelStd/proj/Unpacker.h>

#include <QtCore/QDataStream>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace KelStd {

namespace {

/// Files of PROJ's own among its resources. An earlier release unpacked into the private directory
/// itself: any one of these files there shows that such a release was killed meanwhile.
constexpr const char *resourceNames[] = {"proj.db",  "proj.ini", "projjson.schema.json",
                                         "ITRF2000", "ITRF2008", "ITRF2014",
                                         "nad.lst",  "nad27",    "nad83",
                                         "GL27",     "world",    "other.extra"};

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

QString databaseName()
{
    return proj::resourceDirectoryName() + QLatin1Char('/') + proj::databaseFileName();
}

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

} // namespace

ProjInspection::ProjInspection()
    : ProjInspection(AppConfig::getInstance().homeDir(), AppConfig::getInstance().binDir())
{}

ProjInspection::ProjInspection(const QDir &home, const QDir &programDir)
    : m_home(home.absolutePath()), m_programDir(programDir.absolutePath())
{}

QString ProjInspection::archive() const
{
    return QDir(m_programDir.filePath(proj::privateDirectoryName()))
        .filePath(proj::archiveFileName());
}

QString ProjInspection::privateDirectory() const
{
    return m_home.filePath(proj::privateDirectoryName());
}

QString ProjInspection::marker() const
{
    return QDir(privateDirectory()).filePath(proj::markerFileName());
}

QString ProjInspection::libraryFile() const
{
    return QDir(privateDirectory()).filePath(proj::libraryFileName());
}

QString ProjInspection::database() const
{
    return QDir(privateDirectory()).filePath(databaseName());
}

QString ProjInspection::geoidModels() const
{
    return m_home.filePath(kelstd_grid::geoidFolderName());
}

QString ProjInspection::deliveredGeoidModels() const
{
    return m_programDir.filePath(kelstd_grid::geoidFolderName());
}

ProjInspection::ArchiveState ProjInspection::archiveState(const QString &unpacker) const
{
    const QString file = archive();
    if (!QFileInfo(file).isFile())
        return ArchiveState::Missing;
    if (!proj::testArchive(unpacker, file, {}))
        return ArchiveState::Damaged;
    const QString top = proj::privateDirectoryName() + QLatin1Char('/');
    for (const QString &member : {proj::libraryFileName(), databaseName()}) {
        if (!proj::testArchive(unpacker, file, {top + member}))
            return ArchiveState::WithoutProj;
    }
    return ArchiveState::Good;
}

ProjInspection::MarkerState ProjInspection::markerState() const
{
    QFile file(marker());
    // Not QFile::exists, to which a link that leads nowhere exists.
    if (!QFileInfo::exists(file.fileName()))
        return MarkerState::Missing;
    if (!file.open(QIODevice::ReadOnly))
        return MarkerState::Unreadable;
    qint32 version = 0;
    QDataStream(&file) >> version;
    return version == markerVersion() ? MarkerState::Current : MarkerState::OtherVersion;
}

qint32 ProjInspection::markerVersion()
{
    return proj::environmentVersion;
}

bool ProjInspection::holdsSomethingElse() const
{
    const QDir directory(privateDirectory());
    if (directory.exists() && !files::isListable(QFileInfo(directory.path())))
        return true; // as far as anybody can tell
    const auto isThere = [&directory](const QString &name) {
        const QFileInfo entry(directory.filePath(name));
        return entry.exists() || entry.isSymLink();
    };
    const QStringList entries = directory.entryList(everything);
    const QStringList ours = {proj::markerFileName(), proj::libraryFileName(),
                              proj::resourceDirectoryName()};
    if (std::any_of(entries.begin(), entries.end(),
                    [&ours](const QString &entry) { return !ours.contains(entry); }))
        return true;
    if (isThere(proj::markerFileName()) || isThere(proj::libraryFileName()))
        return false;
    const QDir share(directory.filePath(proj::resourceDirectoryName()));
    for (const char *name : resourceNames) {
        if (share.exists(QString::fromLatin1(name)))
            return false;
    }
    const bool isBegun = entries == QStringList{proj::resourceDirectoryName()}
                         && share.entryList(everything).isEmpty();
    return !entries.isEmpty() && !isBegun;
}

ProjInspection::DeliveredModels ProjInspection::deliveredModels() const
{
    const QDir delivered(deliveredGeoidModels());
    const QDir models(geoidModels());
    const QDir ownFolder(QDir(m_home.canonicalPath()).filePath(kelstd_grid::geoidFolderName()));
    DeliveredModels names;
    QDirIterator files(delivered.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString name = delivered.relativeFilePath(file);
        const QFileInfo model(models.filePath(name));
        if (model.canonicalFilePath() != ownFolder.filePath(name))
            continue;
        if (model.isDir())
            names.blocked += name;
        else if (!haveSameBytes(file, model.filePath()))
            names.different += name;
    }
    names.different.sort();
    names.blocked.sort();
    return names;
}

ProjInspection::AccessFault ProjInspection::accessFault(const QString &path)
{
    return proj::accessFaultOf(path);
}

QString ProjInspection::findUnpacker()
{
    return proj::findUnpacker();
}

QString ProjInspection::unpackerName()
{
    return proj::unpackerName();
}

QString ProjInspection::release(const QString &libraryFile, QString *error)
{
    QLibrary library(libraryFile);
    if (!library.load()) {
        proj::fail(error, library.errorString());
        return {};
    }
    const auto info = reinterpret_cast<decltype(&::proj_info)>(library.resolve("proj_info"));
    if (info == nullptr) {
        proj::fail(error, QObject::tr("the library has no proj_info"));
        return {};
    }
    const PJ_INFO about = info();
    return QStringLiteral("%1.%2.%3").arg(about.major).arg(about.minor).arg(about.patch);
}

bool ProjInspection::convertsKnownPosition(QString *error)
{
    // On the equator and the central meridian the default system is at its origin.
    constexpr double semiMajorAxis = 6378137.0;
    constexpr double tolerance = 0.001;
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    Location location;
    if (!Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(0.0, 0.0, 0.0), location, nullptr,
                                             &coord, error))
        return false;
    const bool isRight = std::abs(location.get_WGS84_XYZ_X() - semiMajorAxis) < tolerance
                         && std::abs(location.get_NEH_E()) < tolerance
                         && std::abs(location.get_NEH_N()) < tolerance;
    return isRight || proj::fail(error, QObject::tr("the result is wrong"));
}

} // namespace KelStd
