#include <KelStd/platform/ResourceQuery.h>

#include <KelStd/grid/GeoidFolder.h>
#include <KelStd/grid/GgfGrid.h>
#include <KelStd/grid/GridHeader.h>
#include <KelStd/grid/GridLayout.h>
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
    return kelstd_grid::isNamedAs(kelstd_grid::ggfLayout, file.filePath());
}

/// False for what a copy that was interrupted leaves, and for other files that are not what they
/// say. A file of a layout that is not known here is whole unless it is empty.
bool isWhole(const QFileInfo &file)
{
    if (isGgf(file))
        return kelstd_grid::isWholeGgf(file.filePath());
    if (kelstd_grid::isNamedAs(kelstd_grid::gtxLayout, file.filePath()))
        return kelstd_grid::isWholeGtx(file.filePath());
    return file.size() > 0;
}

/// The model of that name in a folder: an absolute path, because PROJ looks for a relative name in
/// its search paths.
QFileInfo modelIn(const QDir &directory, const QString &name)
{
    const QDir folder(directory.absoluteFilePath(kelstd_grid::geoidFolderName()));
    return QFileInfo(QDir::cleanPath(folder.absoluteFilePath(QDir::fromNativeSeparators(name))));
}

/// Whether a time is that of the source, as the file system of the target can keep it: some do so
/// by whole seconds, some by two of them.
bool isTimeOf(const QDateTime &source, const QDateTime &target)
{
    const qint64 exact = source.toMSecsSinceEpoch();
    const qint64 kept = target.toMSecsSinceEpoch();
    return kept == exact || kept == exact / 1000 * 1000 || kept == exact / 2000 * 2000;
}

/// Whether the GTX file is what the GGF grid was converted to, and not what another one was.
bool isConversionOf(const QFileInfo &ggf, const QFileInfo &gtx)
{
    return gtx.isFile() && isTimeOf(ggf.lastModified(), gtx.lastModified())
           && kelstd_grid::haveTheSameNodes(gtx.filePath(), ggf.filePath());
}

bool liesInFolderOf(const QDir &directory, const QFileInfo &file)
{
    const QString folder =
        QDir(directory.canonicalPath()).filePath(kelstd_grid::geoidFolderName()) + QLatin1Char('/');
    return (QFileInfo(file.absolutePath()).canonicalFilePath() + QLatin1Char('/'))
        .startsWith(folder);
}

/// Whether writing this file would change one outside the folders of the models, to which a link
/// leads: that is not this system's own, whatever its name.
bool wouldOverwriteAnothers(const QFileInfo &gtx)
{
    const AppConfig &config = AppConfig::getInstance();
    return gtx.isSymLink()
           || (gtx.exists() && !liesInFolderOf(config.homeDir(), gtx)
               && !liesInFolderOf(config.binDir(), gtx));
}

/// Several processes may do this at once: each puts a whole file in its place.
bool convert(const QFileInfo &ggf, const QFileInfo &gtx)
{
    return !wouldOverwriteAnothers(gtx)
           && kelstd_grid::convertGgfToGtx(ggf.filePath(), gtx.filePath(),
                                           kelstd_grid::Stamp::AsSource);
}

/// The GTX file of a GGF grid, made when there is none of this source; empty when it cannot be
/// made. It lies beside the source or, where nothing can be written there, in `otherwise`.
QString gtxOf(const QFileInfo &ggf, const QFileInfo &otherwise)
{
    const QFileInfo beside(kelstd_grid::conversionOf(ggf.filePath()));
    const QFileInfo elsewhere(kelstd_grid::conversionOf(otherwise.filePath()));
    for (const QFileInfo &gtx : {beside, elsewhere}) {
        if (isConversionOf(ggf, gtx))
            return gtx.filePath();
    }
    if (convert(ggf, beside))
        return beside.filePath();
    const bool isElsewhere = elsewhere.filePath() != beside.filePath()
                             && QDir().mkpath(elsewhere.absolutePath()) && convert(ggf, elsewhere);
    return isElsewhere ? elsewhere.filePath() : QString();
}

} // namespace

QString ResourceQuery::makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName)
{
    if (!staysInsideFolder(modelName) || !isReadAsOneGrid(modelName))
        return {};
    const AppConfig &config = AppConfig::getInstance();
    const QFileInfo own = modelIn(config.homeDir(), modelName);
    const QFileInfo delivered = modelIn(config.binDir(), modelName);
    // The delivered models are copied to the user's at the first start, which may have been ended
    // before that, or in the middle of it.
    const bool isDelivered =
        !own.isFile() || (!isWhole(own) && delivered.isFile() && isWhole(delivered));
    const QFileInfo &file = isDelivered ? delivered : own;
    if (!file.isFile())
        return {};
    if (!isGgf(file))
        return file.filePath();
    return isWhole(file) ? gtxOf(file, own) : QString();
}
