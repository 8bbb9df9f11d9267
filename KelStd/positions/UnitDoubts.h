#pragma once

#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Units that are named elsewhere than in a heading: numbers of another unit than the one that is
/// read are refused before they move a point.
namespace KelStd::positions {

/// The fields of a line that holds nothing but units, as stands below headings or behind a #:
/// "[deg],[deg],[m]". Empty for any other line; a field may be without a unit.
QStringList unitsOfLine(const SplitLine &line);

/// Lets components whose headings name no unit be read in those of such a line. Each unit is that
/// of its column, or of the component where there are as many. Returns why positions of that order
/// cannot be read below the line, and leaves the order as it was then; empty when they can.
QString takeUnits(const QStringList &units, const InputForm &form, FieldOrder &order);

/// Why positions of an order in which some were read cannot be read below such a line.
QString unitsMistake(const QStringList &units, const FieldOrder &order, const InputForm &form);

/// Whether a title or remark says clearly in which unit something is: "Units: US survey feet", "all
/// heights in ft". A name such as "Site 12 in Foot Lane" does not.
bool saysUnits(const QString &text);

/// Why positions of that order cannot be read below such a text; empty when they can. Headings that
/// name their units go before it.
QString saidUnitMistake(const QString &text, const FieldOrder &order, const InputForm &form);

/// Why a position is refused whose line names another unit in a column of its own; empty when it is
/// not refused.
QString unitFieldMistake(const SplitLine &line, const FieldOrder &order, const InputForm &form);

} // namespace KelStd::positions
