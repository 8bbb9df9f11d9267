#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/platform/default/Creation.h>
#include <KelStd/platform/default/LibraryLocation.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <optional>

namespace {

struct Places
{
    std::optional<QDir> home;
    std::optional<QDir> bin;
};

Places &places()
{
    // Never destroyed: static objects may ask for the places in their destructors.
    static Places &instance = *new Places;
    return instance;
}

std::optional<QDir> fromEnvironment(const char *variable)
{
    const QString path = qEnvironmentVariable(variable);
    if (path.isEmpty())
        return std::nullopt;
    // A name that begins with a colon is a directory like another here, and no resource of Qt's.
    return QDir(path.startsWith(QLatin1Char(':')) ? QLatin1String("./") + path : path);
}

QDir userDataDir()
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    // Nobody chose this place, so nobody else will create it.
    kelstd_platform::createDirectory(path);
    return QDir(path);
}

bool holdsProjArchive(const QDir &dir)
{
    return dir.exists(QStringLiteral("proj/proj.zip"));
}

QDir deliveredBinDir()
{
    // Without an application object Qt does not know (and says so on standard error) where the
    // program lies.
    const QString program = QCoreApplication::instance() != nullptr
                                ? QCoreApplication::applicationDirPath()
                                : QString();
    if (!program.isEmpty() && holdsProjArchive(QDir(program)))
        return QDir(program);

    const QString told = kelstd_platform::toldProgramDirectory();
    if (!told.isEmpty() && holdsProjArchive(QDir(told)))
        return QDir(told);

    const QString library = QFileInfo(kelstd_platform::ownLibraryPath()).absolutePath();
    // An operating system's package keeps folders out of bin/.
    const QDir besideLibrary(library + QStringLiteral("/kelstd"));
    if (holdsProjArchive(besideLibrary))
        return besideLibrary;
    // The library lies in lib/, or in lib/<architecture>/, beside bin/.
    QDir prefix(library);
    for (int level = 0; level < 2 && prefix.cdUp(); ++level) {
        const QDir bin(prefix.absoluteFilePath(QStringLiteral("bin")));
        if (holdsProjArchive(bin))
            return bin;
    }
    return QDir(program.isEmpty() ? library : program);
}

} // namespace

AppConfig &AppConfig::getInstance()
{
    static AppConfig instance;
    return instance;
}

QDir AppConfig::homeDir() const
{
    if (places().home)
        return *places().home;
    if (const auto chosen = fromEnvironment("KELSTD_HOME_DIR"))
        return *chosen;
    return userDataDir();
}

QDir AppConfig::binDir() const
{
    if (places().bin)
        return *places().bin;
    if (const auto chosen = fromEnvironment("KELSTD_BIN_DIR"))
        return *chosen;
    return deliveredBinDir();
}

LogLibrary *AppConfig::module_logLib() const
{
    static LogLibrary instance;
    return &instance;
}

ResourceQuery *AppConfig::module_resourceQuery() const
{
    static ResourceQuery instance;
    return &instance;
}

void AppConfig::setHomeDir(const QDir &dir)
{
    places().home = dir;
}

void AppConfig::setBinDir(const QDir &dir)
{
    places().bin = dir;
}
