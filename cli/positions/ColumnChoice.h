#pragma once

#include <cli/positions/PositionHeader.h>

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

    /// How many of the picked headings are there.
    int countIn(const QStringList &headings) const;

    /// The order of lines of `fields` fields. `headings` are those of the header line, or empty
    /// where there is none. False with the `mistake` when a column is not there, when a heading
    /// fits several, and when one says that it holds another component than the one it is picked
    /// for, that of another frame, or one in another unit. A heading that says nothing known is
    /// the user's to know; x, y and z may be any of the plane.
    bool apply(const QStringList &headings, int fields, const InputForm &form, FieldOrder &order,
               QString &mistake) const;

private:
    QStringList m_columns;
};

} // namespace KelStd::cli
