#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QString>

#include <optional>

/// What a line of positions may mean besides what it seems to say. A line in doubt is refused with
/// what removes the doubt: a guess would move a point without a word.
namespace KelStd::positions {

/// What the numbers of the line have before their decimals: a comma may stand there when semicolons
/// or tabulators separate the fields. Nothing, and the `mistake`, when the line mixes points and
/// commas, and when every comma could group thousands: "155,000" may be 155 m. A single number that
/// cannot be grouped so, such as an angle, tells what the commas of its line are. Commas that
/// separate the fields where they seem to have been meant for decimals are a mistake, too.
std::optional<DecimalMark> decimalMarkOf(const SplitLine &line, const FieldOrder &order,
                                         Frame frame, QString &mistake);

/// The mark that stands in the components of a line that was read, if one does.
std::optional<DecimalMark> shownMark(const SplitLine &line, const FieldOrder &order);

/// Why a line is refused that is a position by either of two separators.
QString separatorDoubt(const SplitLine &one, const SplitLine &other);

/// Whether an angle of the line may have been torn apart by the blanks that separate its fields:
/// then what remains of it could pass for the whole. Empty when it was not.
KELSTD_EXPORT QString tornAngle(const SplitLine &line, const FieldOrder &order, Frame frame);

/// Why a line is refused that has a hemisphere in a column of its own, beside an angle, or one of
/// each direction anywhere: read without them, the point would lie elsewhere. Empty when there is
/// none.
QString loneHemisphere(const SplitLine &line, const FieldOrder &order, Frame frame);

/// Why a line is refused that has a number below 60 in a column that is not read, behind an angle
/// of whole degrees: the number may be its minutes. Empty when there is none.
QString unreadMinutes(const SplitLine &line, const FieldOrder &order, Frame frame);

/// What may be wrong with a line of too many fields, to be put behind a message about it: blanks
/// inside its angles. Empty when there are no pieces of angles.
QString hintOnPieces(const SplitLine &line);

} // namespace KelStd::positions
