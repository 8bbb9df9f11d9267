#pragma once

#include <KelStd/coord/Ellipsoid.h>

#include <QtCore/QString>

/// What the display configuration does to an ellipsoid that is given by its numbers: its semi-major
/// axis is written as the configuration shows it, and PROJ reads metres.
namespace KelStd::proj {

/// Why the axis cannot be written: the configuration shows it in a unit that is no length. Empty
/// when it can, or when it need not be, because the ellipsoid has a PROJ name.
QString axisProblem(const Ellipsoid &ellipsoid);

/// Tells the host's log that `axis` was written in another unit than the metre, or with fewer
/// decimals than keep a position to the millimetre: once, and again only after another such
/// setting. Free of locks; from any thread.
void warnOfConfiguredAxis(const Param &axis);

} // namespace KelStd::proj
