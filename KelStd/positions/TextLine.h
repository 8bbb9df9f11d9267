#pragma once

#include <KelStd/positions/LineSplitter.h>

#include <QtCore/QString>

#include <optional>
#include <string_view>

namespace KelStd::positions {

/// A line of an input, decoded and split: what it says is not yet judged.
struct TextLine
{
    std::string_view bytes;
    QString text;    ///< of a remark what stands behind its #
    SplitLine split; ///< with broken quotation marks, what may be the fields
    /// The fields as of a line alone, where those of the list are others and as many.
    std::optional<SplitLine> other;
    QString flaw;       ///< why it cannot be read; empty when it can
    bool isUtf8 = true; ///< else read as Windows-1252
    bool isRemark = false;
    bool isSplit = false; ///< its quotation marks are whole
    bool isEmpty = false; ///< blanks or separators without a field
};

/// Whether the text of a line is a remark, which begins with #.
bool isRemark(const QString &text);

/// `shape`: of the list, where it is known.
TextLine textLineOf(std::string_view bytes, const ListShape &shape);

} // namespace KelStd::positions
