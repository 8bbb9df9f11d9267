#include <KelStd/platform/ResourceQuery.h>

#include <KelStd/grid/GgfGrid.h>
#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

bool staysInsideFolder(const QString &name)
{
    if (name.isEmpty() || name.contains(QChar(0)) || QDir::isAbsolutePath(name))
        return false;
    const QStringList pieces = QDir::fromNativeSeparators(name).split(QLatin1Char('/'));
    return !pieces.contains(QStringLiteral(".."));
}

/// PROJ is given the path in a list of grids, in which a comma begins the next one.
bool isReadAsOneGrid(const QString &name)
{
    return !name.contains(QLatin1Char(','));
}

bool isGgf(const QFileInfo &file)
{
    return file.suffix().compare(QLatin1String("ggf"), Qt::CaseInsensitive) == 0;
}

/// The GTX file of a GGF grid, made when there is none that is up to date; empty when it cannot be
/// made. Several processes may make it at once: each puts a whole file in its place.
///
/// It is called "model.ggf.gtx", so that it does not take the place of a "model.gtx" that the user
/// has, too.
QString gtxOf(const QFileInfo &ggf)
{
    const QFileInfo gtx(ggf.filePath() + QLatin1String(".gtx"));
    const bool isCurrent = gtx.isFile() && ggf.lastModified() <= gtx.lastModified();
    // One that is older is of another model: without a new one there is none.
    if (!isCurrent
        && !kelstd_grid::convertGgfToGtx(ggf.filePath(), gtx.filePath(),
                                         kelstd_grid::Stamp::AsSource))
        return {};
    return gtx.filePath();
}

} // namespace

QString ResourceQuery::makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName)
{
    if (!staysInsideFolder(modelName) || !isReadAsOneGrid(modelName))
        return {};
    const QDir folder(
        AppConfig::getInstance().homeDir().absoluteFilePath(QStringLiteral("geoid_model_list")));
    // Absolute, because PROJ looks for a relative name in its search paths.
    const QFileInfo file(
        QDir::cleanPath(folder.absoluteFilePath(QDir::fromNativeSeparators(modelName))));
    if (!file.isFile())
        return {};
    return isGgf(file) ? gtxOf(file) : file.filePath();
}
