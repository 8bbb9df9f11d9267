#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/QuotedBreaks.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace KelStd::positions {

/// The fields of a line of text, and how they were separated.
struct SplitLine
{
    QStringList fields;
    QVector<bool> isQuoted; ///< for each field whether it stood in quotation marks
    QChar separator;        ///< a blank for any run of blanks and tabulators
    bool byBlanks = false;
    QString mistake;     ///< why the last field is none, and the line cannot be read; or empty
    bool isOpen = false; ///< the mistake: a quotation mark is not closed
};

/// Whether the line has as many fields as those of the list; a separator may end it. One with a
/// mistake does not have them.
bool hasShape(const SplitLine &line, const ListShape &shape);

/// Whether a separator without a field ends the line.
bool endsEmpty(const SplitLine &line);

/// Whether there is nothing but separators, as spreadsheets write rows without text.
bool isEmptyRow(const SplitLine &line);

/// Splits at semicolons, or else commas, or else tabulators, or else runs of blanks; the first of
/// these that the line has outside quotation marks separates all its fields. Blanks around a field
/// do not count. A field may stand in double quotation marks, a doubled one in it being one; in a
/// field that does not begin with one they are characters like others. Line breaks stand only in
/// quotation marks. A field that a spreadsheet was given as a formula, ="text", is the text.
///
/// Commas do not separate where they can only be decimal commas: in a line with tabulators between
/// its fields, when each comma stands between two digits and no field has more than one of them.
/// Split at its commas, such a line could not hold three numbers: all but its first and last field
/// would have a tabulator inside.
KELSTD_EXPORT SplitLine splitLine(const QString &line);

/// Splits a line of a list at the list's separator, whatever others stand in its texts; as a line
/// alone where it does not have the list's number of fields then. `other`: the fields that it has
/// as a line alone, where these are as many; otherwise it is left as it is.
KELSTD_EXPORT SplitLine splitLine(const QString &line, const ListShape &shape,
                                  std::optional<SplitLine> *other = nullptr);

/// Splits a line at this separator alone.
SplitLine splitAt(const QString &line, QChar separator);

/// "1 field", "4 fields"
QString fieldCount(int count);

} // namespace KelStd::positions
