#include <KelStd/catalogue/CatalogueJson.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd::catalogue {

namespace {

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue numberOrNull(const std::optional<double> &number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}

/// [west, south, east, north], or null where it is not known.
QJsonValue boxOf(const SystemArea &area)
{
    if (!area.isKnown)
        return {};
    return QJsonArray{area.west, area.south, area.east, area.north};
}

QJsonObject objectOf(const DatumShift &shift)
{
    return {{QStringLiteral("code"), textOrNull(shift.code)},
            {QStringLiteral("name"), shift.name},
            {QStringLiteral("kind"), shiftWord(shift.kind)},
            {QStringLiteral("accuracy_m"), numberOrNull(shift.accuracy)},
            {QStringLiteral("coverage"), shift.coverage},
            {QStringLiteral("grids"), QJsonArray::fromStringList(shift.grids)}};
}

QJsonArray arrayOf(const std::vector<DatumShift> &shifts)
{
    QJsonArray array;
    for (const DatumShift &shift : shifts) {
        QJsonObject object = objectOf(shift);
        object.insert(QStringLiteral("missing_grids"),
                      QJsonArray::fromStringList(shift.missingGrids));
        array.append(object);
    }
    return array;
}

QJsonObject objectOf(const ImportReport::Shift &shift)
{
    QJsonObject object = {{QStringLiteral("kind"), shiftWord(shift.kind)},
                          {QStringLiteral("code"), textOrNull(shift.code)},
                          {QStringLiteral("name"), textOrNull(shift.name)},
                          {QStringLiteral("accuracy_m"), numberOrNull(shift.accuracy)},
                          {QStringLiteral("coverage"), shift.coverage}};
    if (!shift.grids.isEmpty()) {
        object.insert(QStringLiteral("grids"), QJsonArray::fromStringList(shift.grids));
        object.insert(QStringLiteral("frame"), textOrNull(shift.frame));
        object.insert(QStringLiteral("operation_frame"), textOrNull(shift.operationFrame));
    }
    return object;
}

QJsonValue verticalOf(const ImportReport &report)
{
    if (!report.geoidModel.isEmpty())
        return QJsonObject{{QStringLiteral("geoid_model"), report.geoidModel}};
    if (!report.missingGrid.isEmpty())
        return QJsonObject{{QStringLiteral("missing_grid"), report.missingGrid}};
    return {};
}

/// The files that the shifts of a report lack, each once.
QStringList missingGrids(const ImportReport &report)
{
    QStringList grids;
    for (const auto *shifts : {&report.better, &report.alternatives}) {
        for (const DatumShift &shift : *shifts)
            grids += shift.missingGrids;
    }
    grids.removeDuplicates();
    return grids;
}

} // namespace

QByteArray jsonLine(const FoundSystem &system)
{
    return lineOf({{QStringLiteral("code"), system.code},
                   {QStringLiteral("name"), system.name},
                   {QStringLiteral("kind"), kindWord(system.kind)},
                   {QStringLiteral("area"), boxOf(system.area)},
                   {QStringLiteral("area_name"), textOrNull(system.area.name)},
                   {QStringLiteral("deprecated"), system.isDeprecated}});
}

QByteArray jsonLine(const DatumShift &shift)
{
    QJsonObject object = objectOf(shift);
    object.insert(QStringLiteral("number"), shift.number);
    object.insert(QStringLiteral("available"), shift.isAvailable);
    return lineOf(object);
}

QByteArray jsonLine(const ImportedSystem &imported)
{
    const ImportReport &report = imported.report;
    const bool isRefused = !imported.system.has_value();
    // What is refused before a shift was chosen has none.
    const bool hasShift = !isRefused || !report.shift.name.isEmpty();
    QJsonObject object = {
        {QStringLiteral("source"), report.source},
        {QStringLiteral("name"), textOrNull(report.name)},
        {QStringLiteral("code"), textOrNull(report.code)},
        {QStringLiteral("area"), boxOf(report.area)},
        {QStringLiteral("shift"), hasShift ? QJsonValue(objectOf(report.shift)) : QJsonValue()},
        {QStringLiteral("difference_m"), isRefused ? QJsonValue() : QJsonValue(report.difference)},
        {QStringLiteral("alternatives"), arrayOf(report.alternatives)},
        {QStringLiteral("better"), arrayOf(report.better)},
        {QStringLiteral("vertical"), verticalOf(report)},
        {QStringLiteral("warnings"), QJsonArray::fromStringList(report.warnings)}};
    if (isRefused) {
        object.insert(QStringLiteral("refused"), refusalWord(imported.refusal.kind));
        object.insert(QStringLiteral("reason"), imported.refusal.text);
        if (imported.refusal.kind == CatalogueFailureKind::GridOnly) {
            object.insert(QStringLiteral("grids"),
                          QJsonArray::fromStringList(missingGrids(report)));
        }
    } else {
        object.insert(QStringLiteral("method_difference_m"), report.methodDifference);
        object.insert(QStringLiteral("area_name"), textOrNull(report.area.name));
        object.insert(QStringLiteral("unit"), report.axisUnit);
        object.insert(QStringLiteral("metres_per_unit"), report.metresPerUnit);
        object.insert(QStringLiteral("database"), textOrNull(report.databaseVersion));
    }
    return lineOf(object);
}

} // namespace KelStd::catalogue
