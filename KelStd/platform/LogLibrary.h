#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QString>

#include <functional>

/// The level of a log entry. The library logs failed point conversions as `LogType_Error`, failed
/// geoid computations as `LogType_Warning`, and so it does the display configuration's reach into
/// PROJ definitions (docs/display-configuration.md).
enum ELogType : qint32
{
    LogType_Message = 0,
    LogType_Warning = 1,
    LogType_Error = 2
};

/// The host's log.
class KELSTD_PLATFORM_EXPORT LogLibrary
{
public:
    /// Adds an entry under a module name. `flag` is the host's own; the library passes false.
    void addLog(const QString &module, const QString &text, ELogType type, bool flag);

    // --- Offered by the default implementation only ----------------------------------------

    using Sink =
        std::function<void(const QString &module, const QString &text, ELogType type, bool flag)>;

    /// Sends every entry from now on to `sink`. An empty function restores the default: Qt's
    /// message handler, under the logging category "kelstd".
    static void setSink(Sink sink);
};
