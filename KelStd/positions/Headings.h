#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/Heading.h>
#include <KelStd/positions/InputForm.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::positions {

/// Whether the heading, directly behind that of an angle, is that of its minutes or seconds: "min",
/// "s" or "'".
bool isPartOfAngleBefore(const Heading &heading);

/// Why a column of minutes or seconds is refused.
QString partOfAngleMistake(const Heading &heading);

/// Whether the heading may name a component of any form: most words do not.
bool isKnown(const Heading &heading);

/// Whether the heading is one of those that the program prints itself.
bool isOfOutput(const Heading &heading);

/// Whether the heading is one of a list of locations: one of a frame's components, or what says of
/// the height.
bool isOfLocations(const Heading &heading);

/// Whether the heading speaks of some height, known or not.
bool speaksOfHeight(const Heading &heading);

/// Whether the heading speaks of a height above the geoid or the sea: "Ortho. Height", "NHN".
bool speaksOfGeoid(const Heading &heading);

/// Whether the heading names the component, whatever unit it names.
bool isNamedBy(const InputForm &form, int component, const Heading &heading);

/// Whether the component is read in the unit.
bool isInputUnit(const InputForm &form, int component, const NamedUnit &unit);

/// "; the unit us-ft reads and prints lengths in it"; empty where no unit can be chosen, and for a
/// unit that programs need not offer.
QString lengthUnitHint(const InputForm &form, const NamedUnit &unit);

/// Whether the heading names no unit, or the one in which the component is read.
bool hasInputUnit(const InputForm &form, int component, const Heading &heading);

/// "\"h_ft\" is in ft, but height is read in m": of a heading without that unit.
QString unitMistake(const InputForm &form, int component, const Heading &heading,
                    const QString &readUnit);

/// The words for a component, without units, the best first.
QStringList wordsFor(const InputForm &form, int component);

/// The component of the form that a heading names, 0 to 2; -1 when it names none of them.
int componentHeaded(const InputForm &form, const Heading &heading);

/// The one of "longitude", "latitude", "northing", "easting", "north" and "east" that a longer
/// heading speaks of: "GPS Latitude", "decimalLatitude", "Grid Easting", "E_RD". Empty when it
/// speaks of none, or of two.
QString directionIn(const Heading &heading);

/// "the latitude of wgs84-llh and local-llh": which components of other frames a heading names.
/// Empty when it names none.
QString otherMeaning(const InputForm &form, const Heading &heading);

} // namespace KelStd::positions
