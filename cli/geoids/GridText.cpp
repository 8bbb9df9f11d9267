#include <cli/geoids/GridText.h>

#include <KelStd/platform/Toolkits.h>

namespace KelStd::cli {

namespace {

QString range(double first, double last)
{
    return QStringLiteral("%1 to %2 deg").arg(degreesText(first), degreesText(last));
}

} // namespace

QString degreesText(double degrees)
{
    constexpr int decimals = 9; // a tenth of a millimetre on the ground
    return tk::Toolkits::DoubleToString(degrees, decimals);
}

QString latitudesText(const GridFile &grid)
{
    return range(grid.nodes().latitudeOf(0), grid.nodes().latitudeOf(grid.nodes().rows - 1));
}

QString longitudesText(const GridFile &grid)
{
    return range(grid.nodes().longitudeOf(0), grid.nodes().longitudeOf(grid.nodes().columns - 1));
}

QString spacingText(const GridFile &grid)
{
    const QString latitude = degreesText(grid.nodes().latitudeSpacing);
    const QString longitude = degreesText(grid.nodes().longitudeSpacing);
    return latitude == longitude
               ? latitude + QLatin1String(" deg")
               : QStringLiteral("%1 deg in latitude, %2 deg in longitude").arg(latitude, longitude);
}

QString zerosText()
{
    return QStringLiteral("the last quarter of its values is nothing but zeros, as where a file's "
                          "end was never written");
}

} // namespace KelStd::cli
