#include <KelStd/positions/LocationPrinter.h>

#include <algorithm>
#include <cmath>

namespace KelStd::positions {

namespace {

/// Whether the numbers of lengths are those of an output for which no unit is set, metres.
bool isInMetres(const PrintOptions &options, ValuePrinter::Output output)
{
    if (options.lengthUnit != nullptr || options.form == PrintOptions::Form::Exact)
        return false;
    const bool isConfigured =
        output == ValuePrinter::Output::Table || options.form == PrintOptions::Form::Configured;
    return !(isConfigured && options.configured);
}

} // namespace

LocationPrinter::LocationPrinter(const PrintOptions &options, ValuePrinter::Output output,
                                 const std::optional<PlaneUnit> &planeUnit)
    : m_printer(options, output),
      m_planeUnit(isInMetres(options, output) ? planeUnit : std::nullopt)
{}

/// The same with northing and easting in the unit, which the printer takes for metres.
Location LocationPrinter::inPlaneUnit(Location location) const
{
    const stENU &position = location.localNEH.getENU();
    location.localNEH = Pos::fromENU(position.e / m_planeUnit->metres,
                                     position.n / m_planeUnit->metres, position.u);
    return location;
}

QString LocationPrinter::text(const Column &column, const Location &location) const
{
    return m_printer.text(column, isInPlaneUnit(column) ? inPlaneUnit(location) : location);
}

void LocationPrinter::append(QByteArray &bytes, const Column &column,
                             const Location &location) const
{
    if (isInPlaneUnit(column))
        m_printer.append(bytes, column, inPlaneUnit(location));
    else
        m_printer.append(bytes, column, location);
}

QString LocationPrinter::cell(const Column &column, const Location &location) const
{
    return m_printer.cell(column, isInPlaneUnit(column) ? inPlaneUnit(location) : location);
}

QString LocationPrinter::unit(const Column &column) const
{
    return isInPlaneUnit(column) ? m_planeUnit->symbol : m_printer.unit(column);
}

QString LocationPrinter::csvName(const Column &column) const
{
    return isInPlaneUnit(column) ? csvNameOf(
               column, QString(m_planeUnit->symbol).replace(QLatin1Char('-'), QLatin1Char('_')))
                                 : m_printer.csvName(column);
}

int LocationPrinter::width(const Column &column) const
{
    const int width = m_printer.width(column);
    if (!isInPlaneUnit(column))
        return width;
    const int moreDigits = static_cast<int>(std::ceil(-std::log10(m_planeUnit->metres)));
    return std::max(width + std::max(moreDigits, 0), static_cast<int>(unit(column).size()));
}

} // namespace KelStd::positions
