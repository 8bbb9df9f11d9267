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

QString latitudesText(const GridNodes &nodes)
{
    return range(nodes.latitudeOf(0), nodes.latitudeOf(nodes.rows - 1));
}

QString longitudesText(const GridNodes &nodes)
{
    return range(nodes.longitudeOf(0), nodes.longitudeOf(nodes.columns - 1));
}

QString spacingText(const GridNodes &nodes)
{
    const QString latitude = degreesText(nodes.latitudeSpacing);
    const QString longitude = degreesText(nodes.longitudeSpacing);
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
