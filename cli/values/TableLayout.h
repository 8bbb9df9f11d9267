#pragma once

#include <KelStd/positions/PrintedColumns.h>

#include <QtCore/QString>

#include <vector>

namespace KelStd::cli {

/// A column of a table.
struct TableColumn
{
    positions::PrintedColumn column;
    QString label;
    QString unit;              ///< with what a height is above where the values do not say it
    int width;                 ///< in characters
    bool isAboveGeoid = false; ///< the unit says so, for no other column does
};

/// Columns that stand beside each other and belong together.
struct TableGroup
{
    enum class Kind
    {
        Name,
        Frame,
        HeightReference,
        Factors,
        Further ///< extra and carried columns
    };

    Kind kind;
    QString title; ///< empty for none
    std::vector<TableColumn> columns;

    bool hasNumbers() const { return kind == Kind::Frame || kind == Kind::Factors; }
};

/// What stands between two columns.
inline const QString tableGap = QStringLiteral("  ");

/// The printed columns of a table. `geoidModel`: the one in use, empty for none: without one, what
/// the projected height is above stands with the unit instead of in a column, unless that is asked
/// for by its name. Of an input without names there is no column of them, unless likewise.
std::vector<TableGroup> tableGroups(const positions::PrintedColumns &columns,
                                    const positions::LocationPrinter &printer,
                                    const QString &geoidModel, bool hasNames);

/// What a height is labelled as to the eye, where nothing else says what it is above. Of a fitted
/// one only the control points of its site can say that.
bool isEllipsoidalHeight(const positions::PrintedColumn &column, const QString &geoidModel);

/// In characters, from the first column to the last.
int widthOf(const std::vector<TableGroup> &groups);

} // namespace KelStd::cli
