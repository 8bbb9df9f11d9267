#include <KelStd/catalogue/SitePipeline.h>

#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/location/ShortWay.h>
#include <KelStd/proj/ShiftGrids.h>

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

using calibration::SiteTransform;
using Steps = std::vector<ProjStep>;

/// In as many digits as read back the same.
QByteArray exactly(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest).toLatin1();
}

void append(Steps &steps, const Steps &more)
{
    steps.insert(steps.end(), more.begin(), more.end());
}

Steps inverseOf(Steps steps)
{
    std::reverse(steps.begin(), steps.end());
    for (ProjStep &step : steps)
        step.isInverse = !step.isInverse;
    return steps;
}

/// A grid's name, or the path of the file where it is one that the program has.
QByteArray pathOfGrid(QByteArray name)
{
    QByteArray optional;
    if (name.startsWith('@')) {
        optional = "@";
        name.remove(0, 1);
    }
    const QFileInfo file(ShiftGrids::directory(), QString::fromUtf8(name));
    const bool isOurs = QFileInfo(QString::fromUtf8(name)).isRelative() && file.isFile();
    return optional + (isOurs ? file.absoluteFilePath().toUtf8() : name);
}

QByteArray pathsOfGrids(const QByteArray &names)
{
    QByteArray paths;
    for (const QByteArray &name : names.split(','))
        paths += (paths.isEmpty() ? "" : ",") + pathOfGrid(name);
    return paths;
}

/// The projection without the datum shift that stands beside it.
Steps projectionOf(const ChainDefinitions &chain)
{
    Steps steps = stepsOf(chain.localProjected.toUtf8());
    for (ProjStep &step : steps) {
        auto &all = step.parameters;
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [](const auto &each) {
                                     return each.first == "towgs84" || each.first == "nadgrids"
                                            || (each.first == "axis" && each.second == "enu");
                                 }),
                  all.end());
    }
    return steps;
}

/// From longitude and latitude [rad] of WGS84 to the plane, where a grid shifts.
std::optional<Steps> stepsByGrid(const ChainDefinitions &chain)
{
    const Steps local = stepsOf(chain.localGeographic.toUtf8());
    if (local.size() != 1 || !local.front().has("nadgrids"))
        return std::nullopt;
    Steps steps = {{"hgridshift", true, {{"grids", pathsOfGrids(local.front().text("nadgrids"))}}}};
    append(steps, projectionOf(chain));
    return steps;
}

/// The same where numbers shift, by the operations that the conversions take.
std::optional<Steps> stepsByNumbers(const ChainDefinitions &chain, const Coord &coord)
{
    const auto operations = ShortWayOperations::of(chain);
    if (!operations || LocationBuilder(coord).way() != LocationBuilder::Way::Short)
        return std::nullopt;
    Steps steps = stepsOf(operations->wgs84.toUtf8());
    append(steps, inverseOf(stepsOf(operations->datum.toUtf8())));
    append(steps, stepsOf(operations->projection.toUtf8()));
    return steps;
}

/// What the heights of the plane become heights above a geoid by: they are put aside in front of
/// `steps`, which need the ellipsoidal ones, and are taken up again behind them.
Steps withGeoid(const Steps &steps, const QByteArray &file)
{
    const std::vector<std::pair<QByteArray, QByteArray>> height = {{"v_3", {}}};
    const ProjStep toGeoid = {"vgridshift", false, {{"grids", file}}};
    Steps all = {toGeoid, {"push", false, height}};
    append(all, inverseOf({toGeoid}));
    append(all, steps);
    all.push_back({"pop", false, height});
    return all;
}

/// The file as a definition can have it; nothing with the `reason` where it cannot.
std::optional<QByteArray> geoidFileOf(const Coord &coord, QString &reason)
{
    const QString path = geoidGridFile(&coord);
    if (path.isEmpty() || !QFileInfo(path).isFile()) {
        reason = QStringLiteral("there is no file of its geoid model \"%1\"")
                     .arg(coord.geoidModel.modelFileName);
        return std::nullopt;
    }
    const QByteArray file = QFileInfo(path).absoluteFilePath().toUtf8();
    // What ends a path to PROJ, or begins another grid or a comment.
    for (const char sign : {'"', ',', '#', ';'}) {
        if (file.contains(sign)) {
            reason = QStringLiteral("PROJ does not take the sign %1 in the path of its geoid "
                                    "model, %2")
                         .arg(QLatin1Char(sign))
                         .arg(path);
            return std::nullopt;
        }
    }
    return file;
}

/// From the plane to the site.
Steps stepsToSite(const SiteTransform &site)
{
    Steps steps;
    if (site.hasPlane()) {
        const calibration::PlaneSimilarity &plane = site.plane();
        steps.push_back({"helmert",
                         false,
                         {{"x", exactly(plane.eastShift)},
                          {"y", exactly(plane.northShift)},
                          {"s", exactly(plane.scale)},
                          {"theta", exactly(plane.rotation)}}});
    }
    if (site.hasSurface()) {
        const calibration::HeightSurface &surface = site.surface();
        ProjStep step = {"affine", false, {{"zoff", exactly(surface.a)}}};
        if (site.surfaceFunction() != ElevationFittingFunction_Fixed) {
            step.parameters.emplace_back("s31", exactly(surface.c));
            step.parameters.emplace_back("s32", exactly(surface.b));
        }
        steps.push_back(step);
    }
    return steps;
}

} // namespace

std::optional<QByteArray> sitePipeline(const ProjSession &session, const Coord &coord,
                                       const SiteTransform &site, const PlaneUnit &unit,
                                       QString &reason)
{
    if (site.surfaceFunction() == ElevationFittingFunction_Curve) {
        reason = QStringLiteral("its height fitting is a curved surface, for which PROJ has no "
                                "step");
        return std::nullopt;
    }
    const ChainDefinitions chain(&coord);
    std::optional<Steps> chainSteps = stepsByGrid(chain);
    if (!chainSteps)
        chainSteps = stepsByNumbers(chain, coord);
    if (!chainSteps) {
        reason = QStringLiteral("no steps of PROJ are known to do what its definition does");
        return std::nullopt;
    }
    if (!coord.geoidModel.modelFileName.isEmpty()) {
        const auto file = geoidFileOf(coord, reason);
        if (!file)
            return std::nullopt;
        chainSteps = withGeoid(*chainSteps, *file);
    }
    Steps steps = {{"unitconvert", false, {{"xy_in", "deg"}, {"xy_out", "rad"}}}};
    append(steps, *chainSteps);
    append(steps, stepsToSite(site));
    if (unit && planeDirections(session, coord).metres == 1.0)
        steps.push_back(
            {"unitconvert", false, {{"xy_in", "m"}, {"xy_out", exactly(unit->metres)}}});
    QByteArray text = pipelineText(steps);
    if (session.fromText(text) != nullptr)
        return text;
    reason = QStringLiteral("PROJ refuses the steps %1").arg(QString::fromUtf8(text));
    return std::nullopt;
}

} // namespace KelStd::catalogue
