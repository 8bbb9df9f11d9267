#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// The fields of a line of text, and how they were separated.
struct SplitLine
{
    QStringList fields;
    bool byBlanks = false;
    QString mistake; ///< why there are no fields; empty when there are
};

/// Splits at semicolons, or else commas, or else tabulators, or else runs of blanks; the first of
/// these that the line has outside quotation marks separates all its fields. Blanks around a field
/// do not count. A field may stand in double quotation marks, a doubled one in it being one.
SplitLine splitLine(const QString &line);

} // namespace KelStd::cli
