#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// A column of what is printed of locations.
struct PrintedColumn
{
    enum class Kind
    {
        Name,            ///< of the point
        Component,       ///< one of the twelve numbers of a location
        HeightReference, ///< what the projected height is above
        Extra,
        Carried
    };

    Kind kind;
    std::size_t index; ///< of a component in `columns`, of another field among those of its kind
    QString name;      ///< for other programs, with its unit: "wgs84_longitude_deg"
    bool isNumber;     ///< plain decimals; an extra one may be missing all the same
};

/// Which columns are printed of each location, in which order: the one description that all forms
/// of output for other programs follow. May be read on several threads at the same time.
class KELSTD_EXPORT PrintedColumns
{
public:
    PrintedColumns() = default;

    /// All: the name, the twelve, the reference of the height, extra columns, carried ones. Each
    /// name stands once: a heading of the input that is taken has a number behind it.
    PrintedColumns(const LocationPrinter &printer, const InputColumns &columns);

    const std::vector<PrintedColumn> &all() const { return m_columns; }

    /// The value of a column that is no component, as it stands. `buffer` holds what is made for
    /// it.
    static std::string_view text(const PrintedColumn &column, const PrintedPosition &position,
                                 QByteArray &buffer);

private:
    std::vector<PrintedColumn> m_columns;
};

} // namespace KelStd::positions
