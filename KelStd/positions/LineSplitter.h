#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace KelStd::positions {

/// The fields of a line of text, and how they were separated.
struct SplitLine
{
    QStringList fields;
    QVector<bool> isQuoted; ///< for each field whether it stood in quotation marks
    QChar separator;        ///< a blank for any run of blanks and tabulators
    bool byBlanks = false;
    QString mistake; ///< why there are no fields; empty when there are
};

/// Whether a separator without a field ends the line.
bool endsEmpty(const SplitLine &line);

/// Whether there is nothing but separators, as spreadsheets write rows without text.
bool isEmptyRow(const SplitLine &line);

/// Splits at semicolons, or else commas, or else tabulators, or else runs of blanks; the first of
/// these that the line has outside quotation marks separates all its fields. Blanks around a field
/// do not count. A field may stand in double quotation marks, a doubled one in it being one; in a
/// field that does not begin with one they are characters like others. A field that a spreadsheet
/// was given as a formula, ="text", is the text.
///
/// Commas do not separate where they can only be decimal commas: in a line with tabulators between
/// its fields, when each comma stands between two digits and no field has more than one of them.
/// Split at its commas, such a line could not hold three numbers: all but its first and last field
/// would have a tabulator inside.
KELSTD_EXPORT SplitLine splitLine(const QString &line);

/// "1 field", "4 fields"
QString fieldCount(int count);

} // namespace KelStd::positions
