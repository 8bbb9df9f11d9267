#pragma once

#include <cli/catalogue/NearSystems.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class Console;

/// A system that is imported where no document has it.
struct LastResort
{
    std::optional<Coord> system;
    SystemOrigin origin;
    bool isReported = false; ///< a report says why there is none; otherwise nothing was meant by it
    bool isUnknownCode = false; ///< nothing was meant by a code that PROJ's database has not
    QList<NearSystem> near;     ///< what may have been meant, where there is neither
};

/// Imports the system that `given` means as a source for the catalogue: a code, a name, a
/// definition or a file with one. What has to be known of its datum shift goes to standard error.
/// Loads PROJ for the time of it: nothing else may have it loaded meanwhile.
LastResort importAsLastResort(const QString &given, Console &console);

} // namespace KelStd::cli
