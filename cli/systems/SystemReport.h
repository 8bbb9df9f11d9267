#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::cli {

class Console;

/// A system as a surveyor reads it: where it came from, its records, its PROJ definitions, and what
/// has to be known before its numbers are trusted.
void showSystem(const Coord &coord, const SystemOrigin &origin, Console &console);

/// The parts of it that a library keeps apart.
void showEllipsoid(const Ellipsoid &ellipsoid, Console &console);
void showProjection(const Projection &projection, Console &console);

} // namespace KelStd::cli
