#pragma once

#include <KelStd/display/stShowConfig.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd {

class LibraryDirectory;

namespace cli {

/// What a file of the display configuration holds, and what is to be said of it.
struct DisplayFile
{
    std::optional<stShowConfig> config; ///< nothing when loading leaves the file alone
    bool isWhole = false;               ///< it has all bytes of version 1 and no more
    QString fault;                      ///< why its settings are not to be trusted; empty for none
};

/// Reads a display configuration into a record of its own: the registry's reaches the PROJ
/// definitions of spelled-out ellipsoids, and what is computed must not depend on how it is shown.
DisplayFile readDisplayFile(const QString &fileName);

/// The configuration of a library. Nothing when there is none, and with a `warning` when it is not
/// to be trusted or cannot show locations.
std::optional<stShowConfig> configuredDisplay(const LibraryDirectory &library, QString &warning);

} // namespace cli

} // namespace KelStd
