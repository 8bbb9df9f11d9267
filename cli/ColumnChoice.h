#pragma once

#include <cli/PositionHeader.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// The columns of an input that --columns picks: those of the three components of the frame in its
/// order, after that of the point name when there are four. Each is a heading of the input or the
/// number of a column, from 1.
class ColumnChoice
{
public:
    /// "2,3,4", "id,easting,northing,7"; nothing and the `mistake` when the list is none.
    static std::optional<ColumnChoice> from(const QString &list, QString &mistake);

    /// Whether a column is picked by its heading, so that the first line must be a header.
    bool hasHeadings() const;

    /// The order of lines of `fields` fields. `headings` are those of the header line, or empty
    /// where there is none. False with the `mistake` when a column is not there, when a heading
    /// fits several, and when one says that it holds another component of the frame.
    bool apply(const QStringList &headings, int fields, Frame frame, FieldOrder &order,
               QString &mistake) const;

private:
    QStringList m_columns;
};

} // namespace KelStd::cli
