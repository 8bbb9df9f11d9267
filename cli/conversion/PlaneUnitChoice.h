#pragma once

#include <cli/values/DisplayOptions.h>

#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/positions/PlaneUnit.h>

#include <QtCore/QString>

#include <optional>

/// In which unit northing and easting are, and what is said of it. `system`: what messages call it.
namespace KelStd::cli {

class Console;

/// The unit of northing and easting that is the system's own, unless --length-unit overrules it.
/// Nothing for metres, and after a note for a unit that the program does not have. Another foot
/// than the system's is noted.
std::optional<positions::PlaneUnit> planeUnitOf(const SystemOrigin &origin, const QString &system,
                                                const DisplayOptions &display, Console &console);

/// Says in which unit northing and easting are, where it is not that of the other lengths.
void noteOnPlaneUnit(const std::optional<positions::PlaneUnit> &unit, const QString &system,
                     bool isRead, bool isPrinted, Console &console);

} // namespace KelStd::cli
