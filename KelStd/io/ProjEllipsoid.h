#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Ellipsoid.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// The ellipsoids that PROJ has names for.
namespace KelStd::io {

/// The ellipsoid that PROJ calls by this name, in letters of either size, with its PROJ name, its
/// axis [m] and its inverse flattening (0 of a sphere). Nothing where there is none. May be called
/// on any thread; PROJ need not be loaded.
KELSTD_EXPORT std::optional<Ellipsoid> ellipsoidOfProj(const QString &projName);

/// All those names, as PROJ spells them.
KELSTD_EXPORT QStringList ellipsoidNamesOfProj();

} // namespace KelStd::io
