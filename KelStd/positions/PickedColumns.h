#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/PositionHeader.h>

/// The columns of a choice, found in an input.
namespace KelStd::positions {

/// Whether a column is picked by its number.
bool isColumnNumber(const QString &column);

/// From 0; -1 for what is no number of a column.
int columnNumber(const QString &column);

/// How many of the picked headings are there.
int countPicked(const ColumnChoice &choice, const QStringList &headings);

/// The order of lines of `fields` fields. `headings` are those of the header line, or empty where
/// there is none. False with the `mistake` when a column is not there, when a heading fits several,
/// and when one says that it holds another component than the one it is picked for, that of another
/// frame, one that counts the other way, or one in another unit. A heading that says nothing known
/// is the user's to know; x, y and z may be any of the plane.
KELSTD_EXPORT bool orderPicked(const ColumnChoice &choice, const QStringList &headings, int fields,
                               const InputForm &form, FieldOrder &order, QString &mistake);

} // namespace KelStd::positions
