#include <KelStd/proj/GeoidModels.h>

#include <KelStd/grid/GeoidFolder.h>
#include <KelStd/grid/GridFile.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/Transformation.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>

#include <algorithm>

namespace KelStd {

namespace {

using Kind = GeoidModelFailureKind;

constexpr GeoidModels::Folder folders[] = {GeoidModels::Folder::Home, GeoidModels::Folder::Program};

QString pathOfModel(const QString &name)
{
    return AppConfig::getInstance()
        .module_resourceQuery()
        ->makeAndQuery_gnss_geoid_model_relativeFilepath(name);
}

bool leadsOut(const QString &name)
{
    return QDir::isAbsolutePath(name)
           || QDir::fromNativeSeparators(name)
                  .split(QLatin1Char('/'))
                  .contains(QStringLiteral(".."));
}

/// Whether a name is that of a layout that can be looked at without PROJ.
bool isReadHere(const QString &name)
{
    return GridFile::isGgfName(name) || GridFile::isGtxName(name);
}

bool isGeoTiff(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    const bool isNamedSo = suffix.compare(QLatin1String("tif"), Qt::CaseInsensitive) == 0
                           || suffix.compare(QLatin1String("tiff"), Qt::CaseInsensitive) == 0;
    GridFile grid;
    return isNamedSo && grid.open(path).kind == GridFailureKind::OnlyForProj;
}

/// What PROJ does not take for a part of a path.
struct PathSign
{
    char sign;
    const char *effect;
};

constexpr PathSign pathSigns[] = {
    {',', QT_TRANSLATE_NOOP("QObject", "a comma, at which PROJ begins to read another one")},
    {'"', QT_TRANSLATE_NOOP("QObject", "a quotation mark, with which a path ends for PROJ")},
    {'#', QT_TRANSLATE_NOOP("QObject", "a \"#\", with which a comment begins for PROJ")},
    {';', QT_TRANSLATE_NOOP("QObject", "a semicolon, which PROJ takes for a blank")},
};

/// What of a path keeps PROJ from reading the file. PROJ is told the way from the private directory
/// where the home directory's own path has such a sign.
QString signFault(const QString &path)
{
    const QString told = QDir(ProjInspection().privateDirectory()).relativeFilePath(path);
    for (const PathSign &row : pathSigns) {
        const QLatin1Char sign(row.sign);
        if (!path.contains(sign) || !told.contains(sign))
            continue;
        const QString effect = QObject::tr(row.effect);
        return QFileInfo(path).fileName().contains(sign)
                   ? QObject::tr("its name has %1").arg(effect)
                   : QObject::tr("its path has %1").arg(effect);
    }
    return {};
}

bool endsInZeros(const QString &path)
{
    GridFile grid;
    return isReadHere(path) && !grid.open(path) && grid.endsInZeros();
}

GeoidModelFailure refusedByProj(const QString &path, const QString &fault)
{
    const QString text = QObject::tr("PROJ does not read %1").arg(path);
    return {Kind::RefusedByProj, fault.isEmpty() ? text : text + QLatin1String(": ") + fault};
}

/// Why a whole GGF grid is not converted; what stands in the place of its conversion is not
/// replaced unless it is a file.
QString conversionFault(const QString &ggf)
{
    const QFileInfo gtx(GeoidModels::conversionOf(ggf));
    if (gtx.isSymLink()) {
        return QObject::tr("it cannot be converted to GTX beside it: %1 is a symbolic link")
            .arg(gtx.filePath());
    }
    if (gtx.isDir()) {
        return QObject::tr("it cannot be converted to GTX beside it: %1 is a directory")
            .arg(gtx.filePath());
    }
    if (gtx.exists() && !gtx.isFile()) {
        return QObject::tr("it cannot be converted to GTX beside it: %1 is no regular file")
            .arg(gtx.filePath());
    }
    return QObject::tr("it cannot be converted to GTX beside it");
}

} // namespace

QDir GeoidModels::directory(Folder folder)
{
    const ProjInspection places;
    return QDir(folder == Folder::Home ? places.geoidModels() : places.deliveredGeoidModels());
}

QString GeoidModels::conversionOf(const QString &ggf)
{
    return kelstd_grid::conversionOf(ggf);
}

bool GeoidModels::meansFile(const QString &name)
{
    return name.startsWith(QLatin1String("./")) || name.startsWith(QLatin1String("../"));
}

QStringList GeoidModels::names()
{
    QStringList names;
    for (const Folder folder : folders) {
        const QDir models = directory(folder);
        QDirIterator found(models.absolutePath(), QDir::Files, QDirIterator::Subdirectories);
        while (found.hasNext()) {
            const QString path = found.next();
            if (isReadHere(path) || isGeoTiff(path))
                names += models.relativeFilePath(path);
        }
    }
    names.removeDuplicates();
    names.sort();
    const QStringList all = names;
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&all](const QString &name) {
                                   const QString source = name.left(name.lastIndexOf(u'.'));
                                   return GridFile::isGgfName(source) && all.contains(source);
                               }),
                names.end());
    return names;
}

QList<GeoidModels::File> GeoidModels::files(const QString &name)
{
    QList<File> files;
    if (name.isEmpty() || meansFile(name) || leadsOut(name))
        return files;
    for (const Folder folder : folders) {
        const QString path = directory(folder).absoluteFilePath(name);
        const bool isKnown = std::any_of(files.cbegin(), files.cend(), [&](const File &file) {
            return file.path == path; // both folders may be one
        });
        if (isKnown || !QFileInfo(path).isFile())
            continue;
        const GeoidModelFailure failure = examine(path);
        files += {path, folder, failure, !failure && endsInZeros(path)};
    }
    std::stable_partition(files.begin(), files.end(),
                          [](const File &file) { return !file.failure; });
    return files;
}

std::optional<QString> GeoidModels::find(const QString &name, GeoidModelFailure *failure)
{
    GeoidModelFailure found;
    const QString path = pathOfModel(name);
    if (!path.isEmpty()) {
        const GeoidModelFailure bad = examine(path);
        if (!bad)
            return path;
        found = {bad.kind, refusedByProj(path, bad.text).text};
    } else if (const QList<File> candidates = files(name); candidates.isEmpty()) {
        found = {Kind::NotFound, QObject::tr("it is not in %1 or %2")
                                     .arg(directory(Folder::Home).absolutePath(),
                                          directory(Folder::Program).absolutePath())};
    } else if (candidates.first().failure) {
        found = candidates.first().failure;
    } else {
        found = {Kind::NotConverted, conversionFault(candidates.first().path)};
    }
    if (failure != nullptr)
        *failure = found;
    return std::nullopt;
}

GeoidModelFailure GeoidModels::examine(const QString &path)
{
    const QString sign = signFault(path);
    if (!sign.isEmpty())
        return {Kind::BadPath, sign};
    if (isReadHere(path)) {
        GridFile grid;
        GridFailure failure = grid.open(path);
        if (!failure)
            failure = grid.completeness();
        return failure ? GeoidModelFailure{Kind::BadGrid, failure.text} : GeoidModelFailure();
    }
    const QFileInfo info(path);
    if (!info.isFile()) {
        return {Kind::NotFound,
                info.exists() ? QObject::tr("it is no file") : QObject::tr("it is not there")};
    }
    if (info.size() == 0)
        return {Kind::BadGrid, QObject::tr("it is empty")};
    return {};
}

GeoidModelFailure GeoidModels::tryInProj(const QString &path)
{
    if (!proj::LoadedProj::instance().isLoaded())
        return {Kind::NotLoaded, proj::noLibraryText()};
    proj::ProjMessages messages;
    bool isRead = false;
    if (!path.isEmpty()) {
        const proj::WorkingDirectoryScope scope;
        isRead =
            proj::createShift(proj::defaultContext, path, proj::ShiftDirection::ToGeoid, messages)
            != nullptr;
    }
    messages.log();
    return isRead ? GeoidModelFailure() : refusedByProj(path, examine(path).text);
}

} // namespace KelStd
