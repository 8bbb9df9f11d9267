#include <cli/GeoidModel.h>

#include <cli/GridFile.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QFileInfo>

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

/// Why a model that there is has no grid file for PROJ.
QString whyNotConverted(const QString &ggf)
{
    GridFile grid;
    QString reason;
    if (!grid.open(ggf, reason) || !grid.isComplete(reason))
        return reason;
    return QStringLiteral("it cannot be converted to GTX beside it");
}

} // namespace

QDir geoidModelDirectory()
{
    return QDir(AppConfig::getInstance().homeDir().absoluteFilePath(folderName));
}

std::optional<QString> findGeoidModel(const QString &name, QString &reason)
{
    const QString path = pathOfModel(name);
    if (!path.isEmpty())
        return path;

    const QDir folder = geoidModelDirectory();
    reason = QStringLiteral("it is not in %1").arg(folder.absolutePath());
    if (QDir::isAbsolutePath(name))
        return std::nullopt;
    const QDir delivered(AppConfig::getInstance().binDir().absoluteFilePath(folderName));
    if (isGgfName(name) && QFileInfo(folder.absoluteFilePath(name)).isFile())
        reason = whyNotConverted(folder.absoluteFilePath(name));
    else if (QFileInfo(delivered.absoluteFilePath(name)).isFile())
        reason += QStringLiteral("; 'kelstd doctor --reinstall' copies it there");
    return std::nullopt;
}

std::optional<QString> modelFile(const QString &name)
{
    if (saysWhere(name))
        return std::nullopt;
    const QFileInfo file(geoidModelDirectory().absoluteFilePath(name));
    return !name.isEmpty() && file.isFile() ? std::optional(file.absoluteFilePath()) : std::nullopt;
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
    reason =
        QStringLiteral("PROJ does not read %1 ('kelstd geoid info' tells what is in it)").arg(path);
    return false;
}

bool ChosenGrid::choose(const QString &nameOrFile, QString &reason)
{
    const auto model = findGeoidModel(nameOrFile, reason);
    if (model && !saysWhere(nameOrFile)) {
        m_path = *model;
        return true;
    }
    const QFileInfo file(nameOrFile);
    if (!file.exists()) {
        reason += QStringLiteral("; nor is there a file of that name ('kelstd geoid list' lists "
                                 "the models)");
        return false;
    }
    if (!file.isFile()) {
        reason = QStringLiteral("it is no file");
        return false;
    }
    if (isGgfName(nameOrFile))
        return convertForTheRun(file.absoluteFilePath(), reason);
    // PROJ looks for a relative path in places of its own.
    m_path = file.absoluteFilePath();
    return true;
}

bool ChosenGrid::convertForTheRun(const QString &ggf, QString &reason)
{
    m_converted.emplace();
    m_path = m_converted->filePath(QStringLiteral("model.gtx"));
    if (m_converted->isValid() && ProjLib::ConvertGeoidModelFile_GGF(ggf, m_path))
        return true;
    GridFile grid;
    if (grid.open(ggf, reason) && grid.isComplete(reason))
        reason = QStringLiteral("its conversion cannot be written to %1").arg(m_path);
    return false;
}

} // namespace KelStd::cli
