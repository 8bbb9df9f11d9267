#include <cli/vector/LayerPlans.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/vector/PlaneText.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/text/CoordStringHelper.h>

namespace KelStd::cli::vector {

namespace {

bool hasShift(const Coord &coord)
{
    return coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Three
           || coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven
           || coord.ellipsoid.proj4EllpsName.contains(QLatin1String("nadgrids"));
}

/// What the unit of --length-unit measures [m]; `otherwise` without the option.
double lengthUnitOf(const LocationOutput &output, double otherwise)
{
    return output.display.lengthUnit != nullptr
               ? CoordStringHelper::LengthRatio_otherToMeter(output.display.lengthUnit->unit)
               : otherwise;
}

QString lengthUnitName(const LocationOutput &output, const QString &otherwise)
{
    return output.display.lengthUnit != nullptr
               ? QString::fromLatin1(output.display.lengthUnit->symbol)
               : otherwise;
}

} // namespace

double planeUnitOf(const LayerSystem &system, const LocationOutput &output)
{
    return lengthUnitOf(output, system.origin.planeUnit ? system.origin.planeUnit->metres : 1.0);
}

QString planeUnitName(const LayerSystem &system, const LocationOutput &output)
{
    return lengthUnitName(output, system.origin.planeUnit ? shown(system.origin.planeUnit->name)
                                                          : QStringLiteral("m"));
}

std::optional<LayerPlan> layerPlan(const QString &target, const char *driver,
                                   const LayerSystem &system, const LocationOutput &output,
                                   VectorFiles &files, Console &console)
{
    LayerPlan plan;
    plan.target = target;
    plan.format = driver;
    plan.heightReference = positions::heightReference(system.geoidModel);
    QString reason;
    const Reference reference = referenceOf(system, files, reason);
    if (reference.kind == Reference::Kind::None) {
        console.report(QStringLiteral("warning: %1 will name no coordinate reference system: %2")
                           .arg(target, reason));
        plan.planeUnit = planeUnitOf(system, output);
        plan.heightUnit = lengthUnitOf(output, 1.0);
        plan.notes += QStringLiteral("note: easting and northing in %1 are in %2, heights in %3")
                          .arg(target, planeUnitName(system, output),
                               lengthUnitName(output, QStringLiteral("m")));
    } else if (reference.kind != Reference::Kind::Projected) {
        console.report(QStringLiteral("cannot write %1: the axes of the system are %2, and other "
                                      "programs would read easting and northing")
                           .arg(target, QString::fromStdString(reference.otherAxes)));
        return std::nullopt;
    } else {
        // The code brings the definition of the database, datum shift and all.
        plan.reference = reference.code.empty() ? reference.definition : reference.code;
        const QString beside = reference.code.empty() ? QString() : shiftBesideCode(system, target);
        if (!beside.isEmpty())
            console.report(beside);
        plan.planeUnit = reference.unitFactor;
        // Whoever reads a plane in metres takes its heights for metres, too; beside one in feet
        // they are in one or the other.
        const bool isInMetres = reference.unitFactor == 1.0;
        plan.heightUnit = isInMetres ? 1.0 : lengthUnitOf(output, 1.0);
        if (reference.code.empty() && plan.format == "ESRI Shapefile" && hasShift(system.coord)) {
            console.report(
                QStringLiteral("warning: the .prj beside %1 cannot carry the datum shift "
                               "of the system %2: programs that read it take one of their "
                               "own, or none")
                    .arg(target, shown(system.name)));
        }
        if (isInMetres && lengthUnitOf(output, 1.0) != 1.0) {
            plan.notes += QStringLiteral("note: easting, northing and height of the points in %1 "
                                         "are in the metres of its reference system; their "
                                         "attributes are in %2")
                              .arg(target, lengthUnitName(output, QStringLiteral("m")));
        } else if (!isInMetres) {
            plan.notes +=
                QStringLiteral("note: easting and northing in %1 are in the unit \"%2\" of "
                               "its reference system, heights in %3")
                    .arg(target, QString::fromStdString(reference.unit),
                         lengthUnitName(output, QStringLiteral("m")));
        }
    }
    return plan;
}

} // namespace KelStd::cli::vector
