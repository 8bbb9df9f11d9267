#pragma once

#include <QtCore/QDir>

namespace KelStd::proj {

/// Makes sure that the private PROJ directory below `home` is prepared: when its marker is missing
/// or has another version, empties it, unpacks the archive below `programDir` and writes the
/// marker. Returns false when any step fails; the marker is there only after a whole unpacking.
/// Processes that share a home directory wait for each other here.
bool ensureInstalled(const QDir &home, const QDir &programDir);

} // namespace KelStd::proj
