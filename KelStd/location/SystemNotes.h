#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// How positions become locations of a system.
namespace KelStd::location {

/// What a surveyor has to know about a system before trusting its numbers: what of it is not
/// applied to locations, what PROJ is given instead of it, which way its axes count. Each note is
/// one or two English sentences, in an order that stays. Empty for a system without peculiarities.
///
/// Looks at the record alone: no file is read, PROJ need not be loaded, and any thread may call it.
/// Raises what `CoordStringHelper::GetNoFormatString` raises for a parameter that is a text.
KELSTD_EXPORT QStringList notesOn(const Coord &coord);

/// "west and south" of an ellipsoid whose axes do not point east and north; else empty.
KELSTD_EXPORT QString unusualAxes(const Ellipsoid &ellipsoid);

} // namespace KelStd::location
