#pragma once

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>

#include <optional>

/// In which unit each component of a line is read: that of the form, or the one that its heading or
/// a line of units names.
namespace KelStd::positions {

/// What one of the unit measures [m], [deg]. Nothing for words of which several units go by: a
/// chain, a mile.
std::optional<double> measureOf(const NamedUnit &unit);

/// Whether numbers below the heading can be converted: it names no unit, the one of the form, or
/// one that measures the same everywhere. "ft" is in doubt where the form has another foot.
bool canBeRead(const InputForm &form, int component, const Heading &heading);

/// The unit of a heading that can be read, if it is not that of the form; null otherwise.
const NamedUnit *otherUnitOf(const InputForm &form, int component, const Heading &heading);

/// Whether the component is read in the unit.
bool isReadIn(const InputForm &form, const FieldOrder &order, int component, const NamedUnit &unit);

/// "us-ft": the unit in which the component is read.
QString unitTextOf(const InputForm &form, const FieldOrder &order, int component);

/// What one of the unit measures in which the component is read [m], [deg].
double measureOf(const InputForm &form, const FieldOrder &order, int component);

/// Why headings are refused of which one names a unit and another, which measures the same kind of
/// thing, does not: "northing_ft,easting". Empty where they are not.
QString unitsInDoubt(const InputForm &form, const FieldOrder &order, const QStringList &headings);

/// "northing and easting are read in us-ft": what is not read in the unit of the form. Empty where
/// all is.
QString noteOnUnits(const InputForm &form, const FieldOrder &order);

} // namespace KelStd::positions
