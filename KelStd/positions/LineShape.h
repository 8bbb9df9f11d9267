#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a line looks like before its order is known: headings, a sentence, or a position.
namespace KelStd::positions {

/// Whether a field is, or was meant to be, a number or an angle.
KELSTD_EXPORT bool isValue(const QString &field);

/// Whether the line has values where the order has components, so that it is a position, even if it
/// cannot be read.
bool isAttempt(const SplitLine &line, const FieldOrder &order);

/// Whether the line is a sentence in which some words happen to be headings.
bool isSentence(const SplitLine &line);

/// The same of a remark, which is a sentence, too, when blanks part it and at most half of its
/// words are headings.
bool isSentenceOfRemark(const SplitLine &line);

/// The fields as headings stand in them: a unit in brackets may have been split off, and a remark's
/// sign or a word such as "order:" in front of them heads no column.
QStringList headingFields(const SplitLine &line);

/// Whether the first field is a number that is no name, or an angle with its signs.
bool beginsAsPosition(const SplitLine &line);

/// "; a choice of columns 1,2,3,4 picks ...", for a line with other fields beside three numbers.
QString hintOnColumns(const SplitLine &line, const InputForm &form);

} // namespace KelStd::positions
