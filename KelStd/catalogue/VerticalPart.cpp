#include <KelStd/catalogue/VerticalPart.h>

#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/proj/GeoidModels.h>

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// Where a geoid grid is looked for: by the name that PROJ's database has and by that of the file
/// which PROJ finds for it, which may be an older one.
struct Grid
{
    QString name;
    QString fileName;
};

/// Whether an operation does nothing to heights but add a geoid's undulation by one grid.
bool isByGeoid(const QByteArray &pipeline)
{
    int grids = 0;
    for (const ProjStep &step : withoutBookkeeping(stepsOf(pipeline))) {
        if (step.name == "vgridshift")
            ++grids;
        else if (step.name == "geogoffset" || step.name == "vertoffset")
            return false;
    }
    return grids == 1;
}

QList<Grid> geoidGrids(ProjSession &session, const PJ *vertical)
{
    const proj::ProjFunctions &proj = session.functions();
    QList<Grid> grids;
    const ProjObject wgs84 = session.fromDatabase("EPSG", "4979");
    if (wgs84 == nullptr)
        return grids;
    const ObjectList list = session.operations(vertical, wgs84.get());
    for (int index = 0; index < session.countOf(list); ++index) {
        const ProjObject operation = session.elementOf(list, index);
        if (operation == nullptr || !isByGeoid(session.pipelineOf(operation.get())))
            continue;
        const int count =
            proj.proj_coordoperation_get_grid_used_count(session.context(), operation.get());
        if (count != 1)
            continue;
        const char *name = nullptr;
        const char *path = nullptr;
        if (proj.proj_coordoperation_get_grid_used(session.context(), operation.get(), 0, &name,
                                                   &path, nullptr, nullptr, nullptr, nullptr,
                                                   nullptr)
            != 0)
            grids.append({QString::fromUtf8(name),
                          QFileInfo(QString::fromUtf8(path == nullptr ? "" : path)).fileName()});
    }
    return grids;
}

bool isModel(const QString &name)
{
    return !name.isEmpty() && GeoidModels::find(name).has_value();
}

/// The axis of heights; of a system with a geoid of its own that of the system within.
Axis heightAxis(const ProjSession &session, const PJ *vertical)
{
    const ProjObject inner(
        session.typeOf(vertical) == PJ_TYPE_BOUND_CRS
            ? session.functions().proj_get_source_crs(session.context(), vertical)
            : nullptr);
    const std::vector<Axis> axes = session.axesOf(inner == nullptr ? vertical : inner.get());
    return axes.empty() ? Axis() : axes.front();
}

/// Why a geoid alone does not lead to the heights of a system; empty where it does.
QString differenceFromGeoid(const SourceSystem &source, const Axis &axis)
{
    if (axis.direction == QLatin1String("down"))
        return QStringLiteral("which count downwards");
    if (source.verticalShift != 0.0)
        return QStringLiteral("which are shifted by %1 %2")
            .arg(QString::number(source.verticalShift, 'g', 15), axis.unit);
    return {};
}

} // namespace

void setVerticalPart(ProjSession &session, const SourceSystem &source, Coord &coord,
                     ImportReport &report)
{
    if (source.vertical == nullptr)
        return;
    const QString name = session.nameOf(source.vertical.get());
    const Axis axis = heightAxis(session, source.vertical.get());
    const QString difference = differenceFromGeoid(source, axis);
    if (!difference.isEmpty()) {
        report.warnings += QStringLiteral("Heights are ellipsoidal, not those of \"%1\", %2.")
                               .arg(name, difference);
        return;
    }
    const QList<Grid> grids = geoidGrids(session, source.vertical.get());
    for (const Grid &grid : grids) {
        for (const QString &file : {grid.fileName, grid.name}) {
            if (isModel(file)) {
                coord.geoidModel.modelFileName = file;
                report.geoidModel = file;
                if (axis.factor != 1.0)
                    report.warnings +=
                        QStringLiteral("Heights are in metres, those of \"%1\" in "
                                       "the unit \"%2\" of %3 m.")
                            .arg(name, axis.unit, QString::number(axis.factor, 'g', 15));
                return;
            }
        }
    }
    if (!grids.isEmpty()) {
        report.missingGrid = grids.front().name;
        report.warnings += QStringLiteral("Heights are ellipsoidal, not those of \"%1\": its geoid "
                                          "grid %2 is not among the geoid models.")
                               .arg(name, report.missingGrid);
    } else {
        report.warnings += QStringLiteral("Heights are ellipsoidal, not those of \"%1\": PROJ "
                                          "knows no geoid grid that leads to them.")
                               .arg(name);
    }
}

} // namespace KelStd::catalogue
