#pragma once

#include <KelStd/Export.h>

#include <QtCore/QChar>

#include <string_view>

/// Line breaks in fields that stand in quotation marks, as spreadsheets and databases write them:
/// the lines that such a field goes over are one line of the list.
namespace KelStd::positions {

/// What the lines of a list have in common, as its headings or its first position show it.
struct ListShape
{
    QChar separator; ///< a blank for any run of blanks and tabulators; null where it is not known
    int fields = 0;  ///< how many each line has; 0 where it is not known
};

/// What the quotation marks of a line come to at its end.
struct QuotationMarks
{
    bool areOpen = false;    ///< the next line belongs to it
    bool areBroken = false;  ///< text follows a closing one, or a line break stands outside
    bool holdFields = false; ///< some field stands in them
};

/// `line`: without its end, maybe several that belong together. `shape`: of its list, as far as it
/// is known. A remark has no quotation marks.
KELSTD_EXPORT QuotationMarks quotationMarksOf(std::string_view line, const ListShape &shape);

} // namespace KelStd::positions
