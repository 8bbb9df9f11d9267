#include <KelStd/platform/ResourceQuery.h>

#include <KelStd/platform/AppConfig.h>

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

} // namespace

QString ResourceQuery::makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName)
{
    if (!staysInsideFolder(modelName))
        return {};
    const QDir folder(
        AppConfig::getInstance().homeDir().absoluteFilePath(QStringLiteral("geoid_model_list")));
    const QFileInfo file(folder.absoluteFilePath(QDir::fromNativeSeparators(modelName)));
    return file.isFile() ? QDir::cleanPath(file.absoluteFilePath()) : QString();
}
