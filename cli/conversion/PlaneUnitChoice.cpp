#include <cli/conversion/PlaneUnitChoice.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/text/CoordStringHelper.h>

#include <cmath>

namespace KelStd::cli {

namespace {

/// As parts of a unit. Those of the EPSG Dataset differ by a ten millionth at least.
constexpr double sameUnit = 1e-9;

/// Says that --length-unit names a foot that is nearly, but not quite, the one of the system's
/// plane: 2 ppm are decimetres in a northing.
void noteOnOtherFoot(const SystemOrigin::PlaneUnit &own, const QString &system,
                     const LengthUnit &given, Console &console)
{
    constexpr double alike = 1e-3; // feet among each other; a metre or a yard is no foot
    const double difference =
        std::abs(CoordStringHelper::LengthRatio_otherToMeter(given.unit) / own.metres - 1.0);
    if (difference <= sameUnit || difference > alike)
        return;
    console.report(QStringLiteral("note: --length-unit %1 is another unit than that of %2's plane "
                                  "(%3, %4 m): both northing and easting differ by %5 ppm")
                       .arg(QLatin1String(given.symbol), system, shown(own.name),
                            QString::number(own.metres, 'g', 15),
                            QString::number(difference * 1e6, 'f', 1)));
}

} // namespace

std::optional<positions::PlaneUnit> planeUnitOf(const SystemOrigin &origin, const QString &system,
                                                const DisplayOptions &display, Console &console)
{
    if (origin.planeUnit && display.lengthUnit != nullptr)
        noteOnOtherFoot(*origin.planeUnit, system, *display.lengthUnit, console);
    if (!origin.planeUnit || display.lengthUnit != nullptr
        || std::abs(origin.planeUnit->metres - 1.0) <= sameUnit)
        return std::nullopt;
    const auto unit = positions::findPlaneUnit(*origin.planeUnit);
    if (!unit) {
        console.report(QStringLiteral("note: plane coordinates of %1 are customarily in a "
                                      "unit of %2 m (%3); here they are in metres")
                           .arg(system, QString::number(origin.planeUnit->metres, 'g', 15),
                                shown(origin.planeUnit->name)));
    }
    return unit;
}

void noteOnPlaneUnit(const std::optional<positions::PlaneUnit> &unit, const QString &system,
                     bool isRead, bool isPrinted, Console &console)
{
    if (!unit || !(isRead || isPrinted))
        return;
    console.report(QStringLiteral("note: northing and easting are %1 in %2, the unit of "
                                  "%3, all other lengths in m; --length-unit overrules that")
                       .arg(isRead && isPrinted ? QStringLiteral("read and printed")
                            : isRead            ? QStringLiteral("read")
                                                : QStringLiteral("printed"),
                            unit->symbol, system));
}

} // namespace KelStd::cli
