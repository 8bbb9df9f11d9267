#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QString>

#include <functional>

/// The level of a log entry.
enum ELogType : qint32
{
    LogType_Message = 0, ///< for those who look for a cause
    LogType_Warning = 1, ///< something is not as it should be
    LogType_Error = 2    ///< something was not done
};

/// The host's log. The library logs these, always with the flag false:
///
/// | module    | level             | what                                                        |
/// |-----------|-------------------|-------------------------------------------------------------|
/// | "app_log" | `LogType_Error`   | `ProjLib::ConvertPosList`, and `Coord::MakeLocation_by...`   |
/// |           |                   | by it: PROJ is not loaded, or refuses a definition           |
/// | "app_log" | `LogType_Warning` | `ProjLib::Calc_geoid_diff`, its inverse, and the same        |
/// |           |                   | operations: every failure                                    |
/// | "app_log" | `LogType_Error`   | `ProjLib::___InitializeEnviroment`: whose files keep PROJ     |
/// |           |                   | from being prepared or loaded                                |
/// | "app_log" | `LogType_Warning` | the display configuration reaches a definition, once for a   |
/// |           |                   | setting (docs/display-configuration.md)                      |
/// | "proj"    | `LogType_Warning` | what PROJ itself says is wrong while a transformation is     |
/// |           |                   | created, behind the operation's own entry                    |
/// | "proj"    | `LogType_Message` | the notes that PROJ adds where the environment variable      |
/// |           |                   | PROJ_DEBUG is 2 or 3                                         |
///
/// A position that cannot be converted is not logged, nor what PROJ says about it: the operation
/// returns the reason, and a million of them would say no more. PROJ writes nothing to standard
/// error. The texts of "app_log" are translated, PROJ's are not.
///
/// While it is called the current directory is the caller's and nothing is locked: it may wait for
/// other threads, and they may convert. Entries of a `LocationBuilder` come on its thread.
class KELSTD_PLATFORM_EXPORT LogLibrary
{
public:
    /// Adds an entry under a module name. `flag` is the host's own; the library passes false.
    void addLog(const QString &module, const QString &text, ELogType type, bool flag);

    /// \name Offered by the default implementation only
    /// \{

    /// Where entries go; the arguments are those of `addLog`.
    using Sink =
        std::function<void(const QString &module, const QString &text, ELogType type, bool flag)>;

    /// Sends every entry from now on to `sink`. An empty function restores the default: Qt's
    /// message handler, under the logging category "kelstd".
    static void setSink(Sink sink);
    /// \}
};
