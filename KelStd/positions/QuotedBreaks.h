#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LineSplitter.h>

#include <QtCore/QString>

#include <functional>
#include <string_view>

/// Line breaks in fields that stand in quotation marks, as spreadsheets and databases write them:
/// the lines that such a field goes over are one line of the list.
namespace KelStd::positions {

/// What the quotation marks of a line come to at its end.
struct QuotationMarks
{
    bool areOpen = false;   ///< the next line belongs to it
    bool areBroken = false; ///< text follows a closing one, or a line break stands outside
    bool holdFields = false;
};

/// `line`: without its end, maybe several that belong together. `shape`: of its list, as far as it
/// is known. A remark has no quotation marks.
KELSTD_EXPORT QuotationMarks quotationMarksOf(std::string_view line, const ListShape &shape);

/// A line inside quotation marks that would be a position if it stood alone.
struct EnclosedPosition
{
    int line = 0; ///< 1 for the one behind the first line; 0 for none
    /// Its own quotation mark, at the beginning of a field, is the one that closes the field: both
    /// lines may lack another mark.
    bool mayStandAlone = false;
};

/// The first of `text`, which holds whole quotation marks; one that may stand alone goes before.
/// `isPosition` tells it of fields, some of which may be missing.
EnclosedPosition enclosedPosition(const QString &text, const ListShape &shape,
                                  const std::function<bool(const SplitLine &)> &isPosition);

/// Why lines that hold such a position, so many behind the first one, are refused.
QString enclosedDoubt(int line);

} // namespace KelStd::positions
