#pragma once

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <vector>

/// The columns besides those of the components: of names, of units, and all others.
namespace KelStd::positions {

/// Whether the heading, as `normalisedHeading` writes it, is that of points' names.
bool isNameWord(const QString &word);

/// The fields that are headed as those of units: "unit", "height_unit".
std::vector<int> fieldsOfUnits(const QStringList &headings);

/// The fields that are neither read nor hold a unit.
QVector<int> fieldsNotTaken(const QVector<Heading> &headings, const FieldOrder &order);

/// The headings among them of what does not stand in the program's own output.
QStringList headingsNotTaken(const QVector<Heading> &headings, const FieldOrder &order);

/// The field that says what the projected height of its line is above, as the program's own output
/// has it; `FieldOrder::noField` where there is none, or no such height is read.
int fieldOfHeightReference(const QStringList &headings, const InputForm &form,
                           const FieldOrder &order);

/// Lets a field go into the output as it is, under its heading or, without one, as "column_7".
void carry(int field, const QStringList &headings, FieldOrder &order);

} // namespace KelStd::positions
