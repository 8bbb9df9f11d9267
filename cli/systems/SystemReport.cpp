#include <cli/systems/SystemReport.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/systems/OriginReport.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/Report.h>
#include <cli/terminal/WithoutRaising.h>

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/location/SystemNotes.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/proj/ShiftGrids.h>
#include <KelStd/text/CoordStringHelper.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// No path of Linux is longer. A name of megabytes would be shown several times.
constexpr int maxPathLength = 4096;

/// The shortest number that reads back as `value`.
QString exactNumber(double value)
{
    constexpr int allDecimals = 17;
    return tk::Toolkits::DoubleToString(value, allDecimals);
}

/// A value exactly as the document has it, with its unit. Times, which cannot stand in a
/// coordinate system, are said to be so.
QString exactText(const Param &param)
{
    QString text;
    QString unit;
    QString reason;
    if (!withoutRaising([&] { text = CoordStringHelper::GetNoFormatString(param, &unit); }, reason))
        return QLatin1Char('(') + reason + QLatin1Char(')');
    // The library's own text has the digits beside the value of a double, for PROJ.
    if (param.value.userType() == QMetaType::Double)
        text = exactNumber(param.value.toDouble());
    return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit;
}

/// Behind it stand the grids of a datum shift in an ellipsoid's PROJ name.
const QString gridsKey = QStringLiteral(" +nadgrids=");

QString nameOrNone(const QString &name)
{
    return name.trimmed().isEmpty() ? QStringLiteral("(none)") : name;
}

void reportEllipsoid(const Ellipsoid &ellipsoid, Report &report)
{
    const bool isNamed = !ellipsoid.proj4EllpsName.trimmed().isEmpty();
    report.section(QStringLiteral("Ellipsoid"), nameOrNone(ellipsoid.ellipsoid_name));
    report.value(QStringLiteral("PROJ name"), nameOrNone(ellipsoid.proj4EllpsName));
    report.value(QStringLiteral("semi-major axis"), exactText(ellipsoid.biggerHalfAxle));
    report.value(QStringLiteral("1/flattening"), exactNumber(ellipsoid.reciprocal));
    if (isNamed) {
        report.value(QStringLiteral(""),
                     QStringLiteral("(not used: PROJ has its own numbers for \"%1\")")
                         .arg(ellipsoid.proj4EllpsName.section(gridsKey, 0, 0).trimmed()));
    }
    const QString unusual = location::unusualAxes(ellipsoid);
    report.value(
        QStringLiteral("positive axes"),
        QStringLiteral("%1 (%2)").arg(
            CoordStringHelper::EEllipsoidDirection_to_DescriptionString(ellipsoid.positiveDir),
            unusual.isEmpty() ? QStringLiteral("east and north") : unusual));
}

/// One line of the list of parameters.
struct ParameterLine
{
    QString projName;
    QString value;
    QString key;
    QString remark;
};

QList<ParameterLine> parameterLines(const Projection &projection)
{
    QList<ParameterLine> lines;
    const auto &names = projection.paramProj4;
    for (auto name = names.constBegin(); name != names.constEnd(); ++name) {
        const auto param = projection.param.constFind(name.key());
        if (param == projection.param.constEnd())
            lines += {name.value(), QStringLiteral("0"), name.key(), QStringLiteral("no value")};
        else
            lines += {name.value(), exactText(*param), name.key(), {}};
    }
    const auto &params = projection.param;
    for (auto param = params.constBegin(); param != params.constEnd(); ++param) {
        if (!names.contains(param.key())) {
            lines += {QStringLiteral("-"), exactText(*param), param.key(),
                      QStringLiteral("not used: it has no PROJ name")};
        }
    }
    return lines;
}

void reportProjection(const Projection &projection, Report &report)
{
    report.section(QStringLiteral("Projection"), nameOrNone(projection.projection_name));
    report.value(QStringLiteral("PROJ name"), nameOrNone(projection.proj4Projection));
    report.value(QStringLiteral("positions"),
                 CoordStringHelper::ELocationType_to_DescriptionString(projection.locationType));
    report.value(QStringLiteral("unit"),
                 CoordStringHelper::Unit_to_DescriptionString(projection.loc_or_height_unit));

    const QList<ParameterLine> lines = parameterLines(projection);
    int projWidth = 0;
    int valueWidth = 0;
    for (const ParameterLine &line : lines) {
        projWidth = std::max(projWidth, static_cast<int>(line.projName.size()));
        valueWidth = std::max(valueWidth, static_cast<int>(line.value.size()));
    }
    QString label = QStringLiteral("parameters");
    for (const ParameterLine &line : lines) {
        QString text = line.projName.leftJustified(projWidth) + QLatin1String("  ")
                       + line.value.leftJustified(valueWidth) + QLatin1String("  ") + line.key;
        if (!line.remark.isEmpty())
            text += QLatin1String("  (") + line.remark + QLatin1Char(')');
        report.value(label, text);
        label.clear();
    }
}

QString joined(std::initializer_list<const Param *> params)
{
    QStringList texts;
    for (const Param *param : params)
        texts += exactText(*param);
    return texts.join(QLatin1String(", "));
}

/// Of a system whose ellipsoid's PROJ name brings grids.
void reportGrids(const QString &grids, bool hasParameters, Report &report)
{
    report.section(QStringLiteral("Datum shift"),
                   QStringLiteral("by grid, local to what the grid starts from"));
    for (const QString &grid : grids.split(QLatin1Char(','))) {
        const ShiftGrids::File file = ShiftGrids::examine(ShiftGrids::directory().filePath(grid));
        QString text = file.failure
                           ? QStringLiteral("%1 (cannot be used: %2)").arg(grid, file.failure.text)
                           : grid;
        if (!file.failure && !file.fromSystem.isEmpty())
            text += QStringLiteral(" (%1 to %2)").arg(file.fromSystem, file.toSystem);
        report.value(QStringLiteral("grid"), text);
    }
    for (const char *text : {"Heights stay as they are. A position outside of the grid fails.",
                             "WGS84 positions are taken as those of the grid's own frame."})
        report.line(QString::fromLatin1(text));
    if (hasParameters)
        report.line(QStringLiteral("The parameters of the record are not used."));
}

void reportDatumShift(const stEllipsoinTransform &shift, Report &report)
{
    const bool isThree = shift.fuction == EllipsoinTransformFunction_Three;
    const bool isSeven = shift.fuction == EllipsoinTransformFunction_Seven;
    report.section(QStringLiteral("Datum shift"),
                   isThree   ? QStringLiteral("three parameters, WGS84 to local")
                   : isSeven ? QStringLiteral("seven parameters, WGS84 to local")
                             : QStringLiteral("none"));
    if (!isThree && !isSeven)
        return;
    report.value(QStringLiteral("translations x, y, z"),
                 joined({&shift.x_translate, &shift.y_translate, &shift.z_translate}));
    if (isSeven) {
        report.value(QStringLiteral("rotations x, y, z"),
                     joined({&shift.x_rotate, &shift.y_rotate, &shift.z_rotate}));
        report.value(QStringLiteral("scale"), exactText(shift.ratio_ppm) + QLatin1String(" ppm"));
    }
    // Stored and given to PROJ are two directions: which numbers change their signs has misled
    // many.
    QString label = QStringLiteral("sign convention");
    for (const char *text : {"Stored is the shift from WGS84 to local. PROJ's +towgs84 goes",
                             "from local to WGS84 (position vector): there translations and",
                             "scale are reversed, rotations stand as stored."}) {
        report.value(label, QString::fromLatin1(text));
        label.clear();
    }
}

/// A record of which coordinates at the site are made.
QString siteRecord(bool isNone, const QString &description)
{
    return isNone ? QStringLiteral("none") : description + QLatin1String(" (at the site)");
}

/// The points that the site was fitted to, which its document keeps.
void reportControl(const ControlPoints &control, Report &report)
{
    if (control.isEmpty())
        return;
    int inPlan = 0;
    int inHeight = 0;
    for (const ControlPoint &point : control) {
        inPlan += point.isUsedInPlan ? 1 : 0;
        inHeight += point.isUsedInHeight && point.height ? 1 : 0;
    }
    report.value(QStringLiteral("control points"),
                 QStringLiteral("%1, of which %2 are used in plan and %3 in height")
                     .arg(control.size())
                     .arg(inPlan)
                     .arg(inHeight));
}

void reportCorrections(const Coord &coord, const ControlPoints &control, Report &report)
{
    const stPlaneTransform &plane = coord.planeTransform;
    const stElevationFitting &fitting = coord.elevationFitting;
    const bool hasPlane = plane.fuction != PlaneTransformFunction_None;
    const bool hasFitting = fitting.function != ElevationFittingFunction_None;
    const QString geoid = coord.geoidModel.modelFileName.left(maxPathLength);

    report.section(QStringLiteral("Corrections"));
    report.value(
        QStringLiteral("planar transformation"),
        siteRecord(!hasPlane,
                   CoordStringHelper::EPlaneTransformFunction_to_DescriptionString(plane.fuction)));
    if (hasPlane) {
        report.value(QStringLiteral("  north, east"),
                     joined({&plane.north_translate, &plane.east_translate}));
        report.value(QStringLiteral("  rotation, scale"),
                     joined({&plane.rotate_angle, &plane.ratio}));
    }
    report.value(
        QStringLiteral("height fitting"),
        siteRecord(!hasFitting, CoordStringHelper::EElevationFittingFunction_to_DescriptionString(
                                    fitting.function)));
    if (hasFitting) {
        report.value(QStringLiteral("  a to f"), joined({&fitting.a, &fitting.b, &fitting.c,
                                                         &fitting.d, &fitting.e, &fitting.f}));
        report.value(QStringLiteral("  origin north, east"),
                     joined({&fitting.north_zero_x0, &fitting.east_zero_y0}));
    }
    reportControl(control, report);
    QString reason;
    report.value(QStringLiteral("geoid model"), geoid.isEmpty() ? QStringLiteral("none")
                                                : findGeoidModel(geoid, reason)
                                                    ? geoid
                                                    : geoid + QLatin1String(" (cannot be used)"));
}

void reportDefinitions(const Coord &coord, Report &report)
{
    report.section(QStringLiteral("PROJ definitions"));
    QString reason;
    const auto definitions = definitionsOf(coord, reason);
    if (!definitions) {
        report.line(QStringLiteral("There are none: %1.").arg(reason));
        return;
    }
    report.value(QStringLiteral("WGS84 geographic"), definitions->wgs84Geographic);
    report.value(QStringLiteral("WGS84 cartesian"), definitions->wgs84Cartesian);
    report.value(QStringLiteral("local geographic"), definitions->localGeographic);
    report.value(QStringLiteral("local projected"), definitions->localProjected);
}

} // namespace

void showSystem(const Coord &coord, const SystemOrigin &origin, Console &console)
{
    Report report(console);
    report.section(QStringLiteral("Coordinate system"), nameOrNone(coord.coord_name));
    reportOrigin(origin, report);
    reportEllipsoid(coord.ellipsoid, report);
    reportProjection(coord.projection, report);
    const QString grids = coord.ellipsoid.proj4EllpsName.section(gridsKey, 1).trimmed();
    if (grids.isEmpty())
        reportDatumShift(coord.ellipsoidTransform, report);
    else
        reportGrids(grids, coord.ellipsoidTransform.fuction != EllipsoinTransformFunction_None,
                    report);
    reportCorrections(coord, origin.control, report);
    reportDefinitions(coord, report);

    QString reason;
    QStringList notes = location::notesOn(coord);
    const QString geoid = coord.geoidModel.modelFileName.left(maxPathLength);
    if (!geoid.isEmpty() && !findGeoidModel(geoid, reason)) {
        notes += QStringLiteral("The geoid model \"%1\" cannot be used: %2. Heights are "
                                "ellipsoidal.")
                     .arg(geoid, reason);
    }
    calibration::SiteFailure failure;
    if (!calibration::SiteTransform::of(coord, &failure))
        notes += QStringLiteral("There are no coordinates at the site: %1.").arg(failure.text);
    if (!notes.isEmpty())
        report.section(QStringLiteral("Take care"));
    for (const QString &note : notes)
        report.line(QLatin1String("- ") + note);
}

void showEllipsoid(const Ellipsoid &ellipsoid, Console &console)
{
    Report report(console);
    reportEllipsoid(ellipsoid, report);
}

void showProjection(const Projection &projection, Console &console)
{
    Report report(console);
    reportProjection(projection, report);
}

} // namespace KelStd::cli
