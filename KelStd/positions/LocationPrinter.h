#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/positions/ValuePrinter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::positions {

/// Prints the numbers of locations with a unit of their own for northing and easting, which is
/// customary in some systems, while heights and all other lengths stay in metres.
///
/// A printer may be used on several threads at the same time. Columns are those that `columns` has.
class KELSTD_EXPORT LocationPrinter
{
public:
    /// Prints everything as `printer` does.
    // NOLINTNEXTLINE(google-explicit-constructor): it is a printer of locations, too
    LocationPrinter(const ValuePrinter &printer) : m_printer(printer) {}

    /// \param options how numbers are printed. Where they set a unit of lengths, ask for exact
    /// numbers or take the units of a display configuration, `planeUnit` is left aside.
    /// \param output what the numbers are for
    /// \param planeUnit the unit of northing and easting; nothing for that of the other lengths
    LocationPrinter(const PrintOptions &options, ValuePrinter::Output output,
                    const std::optional<PlaneUnit> &planeUnit);

    /// Whether northing and easting are printed in a unit of their own.
    bool hasOwnPlaneUnit() const { return m_planeUnit.has_value(); }

    /// The number of a column, in its unit.
    QString text(const Column &column, const Location &location) const;

    /// Appends the same in UTF-8.
    void append(QByteArray &bytes, const Column &column, const Location &location) const;

    /// As `ValuePrinter::printsNumbers`.
    bool printsNumbers(const Column &column) const { return m_printer.printsNumbers(column); }

    /// As `ValuePrinter::cell`.
    QString cell(const Column &column, const Location &location) const;

    /// "deg", "dms", "m", "us-ft"
    QString unit(const Column &column) const;

    /// "local_northing_us_ft"
    QString csvName(const Column &column) const;

    /// Characters that hold every number on and near the earth.
    int width(const Column &column) const;

private:
    bool isInPlaneUnit(const Column &column) const { return m_planeUnit && isPlane(column); }
    Location inPlaneUnit(Location location) const;

    ValuePrinter m_printer;
    std::optional<PlaneUnit> m_planeUnit; ///< where `m_printer` prints metres
};

} // namespace KelStd::positions
