#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QDir>

class LogLibrary;
class ResourceQuery;

/// What the library asks of its host: where the user's files and the program's files lie, and the
/// host's logging and resource services.
///
/// The class holds no data, so a host may replace its implementation without changing this header.
class KELSTD_PLATFORM_EXPORT AppConfig
{
public:
    /// The one configuration of the process.
    static AppConfig &getInstance();

    /// The directory of the user's own files. The private PROJ directory "proj" and the folder
    /// "geoid_model_list" lie in it.
    QDir homeDir() const;

    /// The directory of the program's files: the archive "proj/proj.zip" and the delivered
    /// "geoid_model_list" lie below it.
    QDir binDir() const;

    /// Never null.
    LogLibrary *module_logLib() const;

    /// Never null.
    ResourceQuery *module_resourceQuery() const;

    /// \name Offered by the default implementation only
    /// \{

    /// Replaces the home directory from now on; any number of times.
    ///
    /// Until something is set, the default implementation takes the environment variable
    /// KELSTD_HOME_DIR, and without it the user's application-data directory, which it creates.
    static void setHomeDir(const QDir &dir);

    /// Replaces the program directory from now on; any number of times.
    ///
    /// Until something is set, the default implementation takes the environment variable
    /// KELSTD_BIN_DIR, then the directory of the running program if it holds "proj/proj.zip", then
    /// the folder "kelstd" in the directory this library was loaded from if that does, then the
    /// "bin" directory beside it.
    static void setBinDir(const QDir &dir);
    /// \}

private:
    AppConfig() = default;
    Q_DISABLE_COPY(AppConfig)
};
