#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>
#include <QtCore/QVector>

/// Units of lengths and styles of angles by short words in plain ASCII, as they stand in options,
/// headings and names of columns. They are never translated, unlike those of `CoordStringHelper`.
/// Rows that are found are valid as long as the library is loaded; lists are copies. Everything
/// here may be called on any thread and raises nothing.
namespace KelStd {

/// A unit of lengths by its symbol. A new one is a row in UnitNames.h.
struct LengthUnit
{
    const char *symbol; ///< "m", "us-ft"
    EUnit unit;         ///< what it is the symbol of
};

/// Metre, foot, US survey foot, millimetre: "m", "ft", "us-ft", "mm".
KELSTD_EXPORT QVector<LengthUnit> lengthUnits();

/// The unit of that symbol, case-sensitive; null for another word.
KELSTD_EXPORT const LengthUnit *findLengthUnit(const QString &symbol);

/// The symbol of a unit of lengths; empty for one without a row.
KELSTD_EXPORT QString unitSymbol(EUnit unit);

/// A style of angles by its name. A new one is a row in UnitWords.cpp.
struct AngleStyle
{
    const char *name; ///< "dms", "degree", "second", "radian"
    EFormat format;   ///< what it is the name of
    const char *unit; ///< what an angle in this style is in, for headings and names of columns
    int decimals;     ///< as many as show 0.000001 of an arc second
    double degrees;   ///< what 1 of the part that has decimals is: of "dms" a second [deg]
};

/// Degrees, minutes and seconds, then decimal degrees, arc seconds, radians: "dms", "degree",
/// "second", "radian".
KELSTD_EXPORT QVector<AngleStyle> angleStyles();

/// The style of that name, case-sensitive; null for another word.
KELSTD_EXPORT const AngleStyle *findAngleStyle(const QString &name);

/// The style of that format; null for a format that is no style of angles.
KELSTD_EXPORT const AngleStyle *findAngleStyle(EFormat format);

} // namespace KelStd
