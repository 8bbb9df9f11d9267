#include <cli/geoids/GeoidModel.h>

#include <cli/geoids/GridText.h>
#include <cli/terminal/FilePath.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString folderName = QStringLiteral("geoid_model_list");

QString pathOfModel(const QString &name)
{
    return AppConfig::getInstance()
        .module_resourceQuery()
        ->makeAndQuery_gnss_geoid_model_relativeFilepath(name);
}

/// Whether a user means a file, whatever models there are.
bool saysWhere(const QString &name)
{
    return name.startsWith(QLatin1String("./")) || name.startsWith(QLatin1String("../"));
}

/// Whether a name is that of a layout that can be looked at without PROJ.
bool isReadHere(const QString &name)
{
    return GridFile::isGgfName(name) || GridFile::isGtxName(name);
}

/// What PROJ does not take for a part of a path.
struct PathSign
{
    char sign;
    const char *effect;
};

constexpr PathSign pathSigns[] = {
    {',', "a comma, at which PROJ begins to read another one"},
    {'"', "a quotation mark, with which a path ends for PROJ"},
    {'#', "a \"#\", with which a comment begins for PROJ"},
    {';', "a semicolon, which PROJ takes for a blank"},
};

/// What of a path keeps PROJ from reading the file. The library tells PROJ the way from the private
/// directory where the home directory's own path has such a sign.
QString signFault(const QString &path)
{
    const QString told = QDir(ProjInspection().privateDirectory()).relativeFilePath(path);
    for (const PathSign &row : pathSigns) {
        const QLatin1Char sign(row.sign);
        if (path.contains(sign) && told.contains(sign)) {
            return QStringLiteral("its %1 has %2")
                .arg(QFileInfo(path).fileName().contains(sign) ? QStringLiteral("name")
                                                               : QStringLiteral("path"),
                     QLatin1String(row.effect));
        }
    }
    return {};
}

/// Why a grid file cannot be used, as far as that can be seen without PROJ.
QString faultOf(const QString &path)
{
    const QString fault = signFault(path);
    if (!fault.isEmpty())
        return fault;
    if (isReadHere(path)) {
        GridFile grid;
        GridFailure failure = grid.open(path);
        return failure ? failure.text : grid.completeness().text;
    }
    return QFileInfo(path).size() == 0 ? QStringLiteral("it is empty") : QString();
}

/// What looks wrong about a grid that can be used.
QString doubtOf(const QString &path)
{
    GridFile grid;
    return isReadHere(path) && !grid.open(path) && grid.endsInZeros() ? zerosText() : QString();
}

QString unreadable(const QString &path, const QString &fault)
{
    return QStringLiteral("PROJ does not read %1%2 ('kelstd geoid info' tells what is in it)")
        .arg(path, fault.isEmpty() ? QString() : QLatin1String(": ") + fault);
}

/// Why a whole GGF grid is not converted; what stands in the place of its conversion is not
/// replaced unless it is a file.
QString conversionFault(const QString &ggf)
{
    const QString text = QStringLiteral("it cannot be converted to GTX beside it");
    const QFileInfo gtx(conversionOf(ggf));
    if (gtx.isSymLink())
        return QStringLiteral("%1: %2 is a symbolic link").arg(text, gtx.filePath());
    if (gtx.isDir())
        return QStringLiteral("%1: %2 is a directory").arg(text, gtx.filePath());
    if (gtx.exists() && !gtx.isFile())
        return QStringLiteral("%1: %2 is no regular file").arg(text, gtx.filePath());
    return text;
}

bool leadsOut(const QString &name)
{
    return QDir::isAbsolutePath(name)
           || QDir::fromNativeSeparators(name)
                  .split(QLatin1Char('/'))
                  .contains(QStringLiteral(".."));
}

} // namespace

QString conversionOf(const QString &ggf)
{
    return ggf + QStringLiteral(".gtx");
}

QList<GeoidFolder> geoidFolders()
{
    const AppConfig &config = AppConfig::getInstance();
    return {
        {QDir(config.homeDir().absoluteFilePath(folderName)), QStringLiteral("home directory")},
        {QDir(config.binDir().absoluteFilePath(folderName)), QStringLiteral("program directory")}};
}

QStringList geoidModelNames()
{
    QStringList names;
    for (const GeoidFolder &folder : geoidFolders()) {
        QDirIterator files(folder.directory.absolutePath(), QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString name = folder.directory.relativeFilePath(files.next());
            if (isReadHere(name))
                names += name;
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

QList<GeoidModelFile> filesOfModel(const QString &name)
{
    QList<GeoidModelFile> files;
    if (name.isEmpty() || saysWhere(name) || leadsOut(name))
        return files;
    for (const GeoidFolder &folder : geoidFolders()) {
        const QString path = folder.directory.absoluteFilePath(name);
        const bool isKnown = std::any_of(files.cbegin(), files.cend(), [&](const auto &file) {
            return file.path == path; // both folders may be one
        });
        if (isKnown || !QFileInfo(path).isFile())
            continue;
        const QString fault = faultOf(path);
        files += {path, folder, fault, fault.isEmpty() ? doubtOf(path) : QString()};
    }
    std::stable_partition(files.begin(), files.end(),
                          [](const auto &file) { return file.fault.isEmpty(); });
    return files;
}

std::optional<QString> findGeoidModel(const QString &name, QString &reason)
{
    const QString path = pathOfModel(name);
    if (!path.isEmpty()) {
        const QString fault = faultOf(path);
        if (fault.isEmpty())
            return path;
        reason = unreadable(path, fault);
        return std::nullopt;
    }
    const QList<GeoidModelFile> files = filesOfModel(name);
    if (files.isEmpty()) {
        const QList<GeoidFolder> folders = geoidFolders();
        reason = QStringLiteral("it is not in %1 or %2")
                     .arg(folders.first().directory.absolutePath(),
                          folders.last().directory.absolutePath());
    } else if (!files.first().fault.isEmpty()) {
        reason = files.first().fault;
    } else {
        reason = conversionFault(files.first().path);
    }
    return std::nullopt;
}

bool geoidGridIsReadable(const QString &path, QString &reason)
{
    // The library's text for a file of which PROJ makes nothing; a point outside the grid has
    // another one. It is not translated: this program has no translator.
    const QString refused = QStringLiteral("Create proj geoid model failed.");
    double diff = 0.0;
    QString error;
    if (ProjLib::Calc_geoid_diff(0.0, 0.0, 0.0, path, diff, &error) || error != refused)
        return true;
    reason = unreadable(path, faultOf(path));
    return false;
}

bool ChosenGrid::choose(const QString &nameOrFile, QString &reason)
{
    const auto model = findGeoidModel(nameOrFile, reason);
    if (model && !saysWhere(nameOrFile)) {
        m_path = *model;
        return true;
    }
    const QFileInfo file(onDisk(nameOrFile));
    if (!file.exists()) {
        reason += QStringLiteral("; nor is there a file of that name ('kelstd geoid list' lists "
                                 "the models)");
        return false;
    }
    if (!file.isFile()) {
        reason = QStringLiteral("it is no file");
        return false;
    }
    if (GridFile::isGgfName(nameOrFile))
        return convertForTheRun(file.absoluteFilePath(), reason);
    // PROJ looks for a relative path in places of its own.
    m_path = file.absoluteFilePath();
    return true;
}

bool ChosenGrid::convertForTheRun(const QString &ggf, QString &reason)
{
    reason = faultOf(ggf);
    if (!reason.isEmpty())
        return false;
    m_converted.emplace();
    m_path = m_converted->filePath(QStringLiteral("model.gtx"));
    if (m_converted->isValid() && ProjLib::ConvertGeoidModelFile_GGF(ggf, m_path))
        return true;
    reason = QStringLiteral("its conversion cannot be written to %1").arg(m_path);
    return false;
}

} // namespace KelStd::cli
