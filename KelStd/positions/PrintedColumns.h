#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/ColumnSelection.h>
#include <KelStd/positions/FactorColumns.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// A column of what is printed of locations.
struct KELSTD_EXPORT PrintedColumn
{
    /// What stands in the column.
    enum class Kind
    {
        Name,            ///< of the point
        Component,       ///< one of the twelve numbers of a location
        HeightReference, ///< what the projected height is above
        Site,            ///< one of the three numbers of a position at the site
        Factor,          ///< one of the factors of a location
        Extra,           ///< one of what the program knows besides
        Carried          ///< a field of the input that is carried through
    };

    Kind kind;         ///< what stands in it
    std::size_t index; ///< of a component in `columns`, of one at the site in `siteColumns`, of a
                       ///< factor in `factorColumns`, of another field among those of its kind
    QString name;      ///< for other programs, with its unit: "wgs84_longitude_deg"
    bool isNumber;     ///< plain decimals; a factor or an extra one may be missing all the same
    int width = 0;     ///< characters that hold its values in a table; 0 for those of its name
    ExtraColumn::Kind extraKind = ExtraColumn::Kind::Text; ///< of an extra one
    bool isFitted = false; ///< a height at a site that is not the projected one

    /// The component that a column of numbers of a location has, of the site's too; null for
    /// another column.
    const Column *component() const;

    /// The location whose component is printed; null where it is missing, and without a component.
    const Location *locationIn(const PrintedPosition &position) const;
};

/// Which columns are printed of each location, in which order: the one description that all forms
/// of output for other programs follow. May be read on several threads at the same time.
class KELSTD_EXPORT PrintedColumns
{
public:
    PrintedColumns() = default;

    /// The selected ones of: the name, the twelve, the reference of the height, the site's, the
    /// factors, extra columns, carried ones. Each name stands once: a heading of the input that is
    /// the name of another column, whether or not that one is selected, has a number behind it.
    PrintedColumns(const LocationPrinter &printer, const InputColumns &columns,
                   const ColumnSelection &selection = {});

    /// In the order in which they are printed.
    const std::vector<PrintedColumn> &all() const { return m_columns; }

    /// Whether each column was asked for by its name.
    bool areNamed() const { return m_areNamed; }

    /// Why a selection by names cannot be followed: one of them is no column's, or two are the same
    /// one's. Empty where it can. The columns are those of the other names then.
    const QString &mistake() const { return m_mistake; }

    /// The value of a column whose location is null, as it stands; empty for a missing one.
    /// `buffer` holds what is made for it.
    static std::string_view text(const PrintedColumn &column, const PrintedPosition &position,
                                 QByteArray &buffer);

private:
    void takeFrames(const std::vector<PrintedColumn> &all, const ColumnSelection &selection);
    void takeNamed(const std::vector<PrintedColumn> &all, const QStringList &fields);

    std::vector<PrintedColumn> m_columns;
    bool m_areNamed = false;
    QString m_mistake;
};

} // namespace KelStd::positions
