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

} // namespace

void setVerticalPart(ProjSession &session, const SourceSystem &source, Coord &coord,
                     ImportReport &report)
{
    if (source.vertical == nullptr)
        return;
    const QString name = session.nameOf(source.vertical.get());
    const QList<Grid> grids = geoidGrids(session, source.vertical.get());
    for (const Grid &grid : grids) {
        for (const QString &file : {grid.fileName, grid.name}) {
            if (isModel(file)) {
                coord.geoidModel.modelFileName = file;
                report.geoidModel = file;
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
