#pragma once

#include <KelStd/positions/QuotedBreaks.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>
#include <vector>

namespace KelStd::cli {

/// Lines that cannot be read each by itself, by where they stand in some bytes.
struct LineGroup
{
    int begin;
    int end; ///< behind the last line, without its end
    /// 0: they are one line, since a quoted field goes over them. Otherwise the number of a line
    /// whose quotation mark is not closed in time: they may be pieces of its field, and are no
    /// lines.
    qint64 opener = 0;
};

/// Why a line is refused that may be a piece of the field that the line `opener` opens.
QString pieceMistake(qint64 opener);

/// Finds where lines end whose quoted fields may hold line breaks.
///
/// A field whose quotation mark is not closed within the greatest length of a line is none: the
/// line that opens it stands alone, and is refused when it is read, and the next ones stand for
/// themselves. They do not where the mark is closed further behind, where a mark that would close
/// it is followed by text, or where the input breaks off before: half of a field must not pass for
/// a position.
class LineGroups
{
public:
    /// `skipped`: so many lines at the beginning are each one by itself, whatever they hold.
    explicit LineGroups(qint64 skipped) : m_skipped(skipped) {}

    /// How the lines to come are separated, as far as it is known.
    void setShape(const positions::ListShape &shape) { m_shape = shape; }

    /// Where the line ends that begins at `begin` of `bytes` and has the number `line`: behind its
    /// line feed, or at the end of an input without one. Nothing when more bytes have to be read.
    /// Adds to `groups` what stands there together.
    std::optional<int> endOf(const QByteArray &bytes, int begin, qint64 line, bool isAtEnd,
                             std::vector<LineGroup> &groups) const;

private:
    positions::QuotationMarks marksOf(const QByteArray &bytes, int begin, int end,
                                      bool isFirst) const;

    qint64 m_skipped;
    positions::ListShape m_shape;
};

} // namespace KelStd::cli
