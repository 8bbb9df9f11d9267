#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/ValuePrinter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

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
    LocationPrinter(const ValuePrinter &printer) : m_printer(printer), m_planePrinter(printer) {}

    /// \param options how numbers are printed. Where they set a unit of lengths, ask for exact
    /// numbers or take the units of a display configuration, `planeUnit` is left aside.
    /// \param output what the numbers are for
    /// \param planeUnit the unit of northing and easting; null for that of the other lengths. It
    /// must live as long as the printer.
    LocationPrinter(const PrintOptions &options, ValuePrinter::Output output,
                    const LengthUnit *planeUnit);

    /// Whether northing and easting of such options are printed in a unit of their own.
    static bool hasOwnPlaneUnit(const PrintOptions &options, ValuePrinter::Output output,
                                const LengthUnit *planeUnit);

    /// The number of a column, in its unit.
    QString text(const Column &column, const Location &location) const
    {
        return of(column).text(column, location);
    }

    /// Appends the same in UTF-8.
    void append(QByteArray &bytes, const Column &column, const Location &location) const
    {
        of(column).append(bytes, column, location);
    }

    /// As `ValuePrinter::printsNumbers`.
    bool printsNumbers(const Column &column) const { return of(column).printsNumbers(column); }

    /// As `ValuePrinter::cell`.
    QString cell(const Column &column, const Location &location) const
    {
        return of(column).cell(column, location);
    }

    /// "deg", "dms", "m", "us-ft"
    QString unit(const Column &column) const { return of(column).unit(column); }

    /// "local_northing_us_ft"
    QString csvName(const Column &column) const { return of(column).csvName(column); }

    /// Characters that hold every number on and near the earth.
    int width(const Column &column) const { return of(column).width(column); }

private:
    const ValuePrinter &of(const Column &column) const
    {
        return isPlane(column) ? m_planePrinter : m_printer;
    }

    ValuePrinter m_printer;
    ValuePrinter m_planePrinter; ///< of northing and easting
};

} // namespace KelStd::positions
