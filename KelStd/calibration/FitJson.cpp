#include <KelStd/calibration/FitJson.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd::calibration {

namespace {

constexpr double partsPerMillion = 1e6;

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonValue orNull(const std::optional<double> &number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}

QJsonValue orNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

/// A number that a method has.
QJsonValue where(bool exists, double number)
{
    return exists ? QJsonValue(number) : QJsonValue();
}

void insertStatistics(const FitStatistics &statistics, QJsonObject &object)
{
    const bool isWeighted = statistics.test == OutlierTest::Baarda;
    object[QStringLiteral("points")] = statistics.points;
    object[QStringLiteral("redundancy")] = statistics.redundancy;
    object[QStringLiteral("s0_m")] = isWeighted ? QJsonValue() : orNull(statistics.s0);
    if (isWeighted)
        object[QStringLiteral("s0")] = orNull(statistics.s0);
    object[QStringLiteral("rms_m")] = orNull(statistics.rms);
    object[QStringLiteral("max_m")] = orNull(statistics.max);
    object[QStringLiteral("max_point")] = orNull(statistics.maxPoint);
}

QJsonObject objectOf(const PlanFit &plan)
{
    const bool exists = plan.method != PlanMethod::None;
    const PlaneSimilarity &similarity = plan.similarity;
    QJsonObject object = {
        {QStringLiteral("method"), wordOf(plan.method)},
        {QStringLiteral("east_shift_m"), where(exists, similarity.eastShift)},
        {QStringLiteral("north_shift_m"), where(exists, similarity.northShift)},
        {QStringLiteral("rotation_arcsec"), where(exists, similarity.rotation)},
        {QStringLiteral("scale"), where(exists, similarity.scale)},
    };
    insertStatistics(plan.statistics, object);
    return object;
}

QJsonObject objectOf(const HeightFit &height)
{
    const HeightSurface &surface = height.surface;
    const bool exists = height.method != HeightMethod::None;
    const bool isSloped = exists && height.method != HeightMethod::Fixed;
    const bool isCurved = height.method == HeightMethod::Curve;
    QJsonObject object = {
        {QStringLiteral("method"), wordOf(height.method)},
        {QStringLiteral("a"), where(exists, surface.a)},
        {QStringLiteral("b"), where(isSloped, surface.b)},
        {QStringLiteral("c"), where(isSloped, surface.c)},
        {QStringLiteral("d"), where(isCurved, surface.d)},
        {QStringLiteral("e"), where(isCurved, surface.e)},
        {QStringLiteral("f"), where(isCurved, surface.f)},
        {QStringLiteral("origin_north_m"), where(isCurved, surface.originNorth)},
        {QStringLiteral("origin_east_m"), where(isCurved, surface.originEast)},
        {QStringLiteral("shift_at_centroid_m"), where(exists, height.shiftAtCentroid)},
        {QStringLiteral("slope_north_ppm"), where(isSloped, height.slopeNorth * partsPerMillion)},
        {QStringLiteral("slope_east_ppm"), where(isSloped, height.slopeEast * partsPerMillion)},
    };
    insertStatistics(height.statistics, object);
    return object;
}

QJsonObject objectOf(const SitePoint &point, const QString &use)
{
    return {
        {QStringLiteral("name"), point.name},
        {QStringLiteral("use"), use},
        {QStringLiteral("residual_north_m"), orNull(point.residualNorth)},
        {QStringLiteral("residual_east_m"), orNull(point.residualEast)},
        {QStringLiteral("residual_height_m"), orNull(point.residualHeight)},
        {QStringLiteral("redundancy_h"), orNull(point.plan.redundancy)},
        {QStringLiteral("redundancy_v"), orNull(point.height.redundancy)},
        {QStringLiteral("test_h"), orNull(point.plan.test)},
        {QStringLiteral("test_v"), orNull(point.height.test)},
        {QStringLiteral("left_out_north_m"), orNull(point.leftOutNorth)},
        {QStringLiteral("left_out_east_m"), orNull(point.leftOutEast)},
        {QStringLiteral("left_out_height_m"), orNull(point.leftOutHeight)},
        {QStringLiteral("suspect"), point.plan.isSuspect || point.height.isSuspect},
    };
}

QJsonArray arrayOf(const CalibrationWarnings &warnings)
{
    QJsonArray array;
    for (const CalibrationWarning &warning : warnings)
        array.append(warning.text);
    return array;
}

QJsonObject objectOf(const DifferenceSummary &summary)
{
    return {{QStringLiteral("rms_m"), orNull(summary.rms)},
            {QStringLiteral("max_m"), orNull(summary.max)},
            {QStringLiteral("max_point"), orNull(summary.maxPoint)}};
}

/// The parts of a datum shift, or their standard deviations, null where one has none.
template <typename Shift>
QJsonObject objectOfShift(const Shift &shift)
{
    return {{QStringLiteral("x_m"), orNull(shift.x)},
            {QStringLiteral("y_m"), orNull(shift.y)},
            {QStringLiteral("z_m"), orNull(shift.z)},
            {QStringLiteral("rx_arcsec"), orNull(shift.rx)},
            {QStringLiteral("ry_arcsec"), orNull(shift.ry)},
            {QStringLiteral("rz_arcsec"), orNull(shift.rz)},
            {QStringLiteral("scale_ppm"), orNull(shift.scale)}};
}

} // namespace

QByteArray jsonLine(const SiteFit &fit)
{
    QJsonArray points;
    for (int i = 0; i < fit.points.size(); ++i)
        points.append(objectOf(fit.points.at(i), fit.control.at(i).useWord()));
    return lineOf({{QStringLiteral("horizontal"), objectOf(fit.plan)},
                   {QStringLiteral("vertical"), objectOf(fit.height)},
                   {QStringLiteral("points"), points},
                   {QStringLiteral("warnings"), arrayOf(fit.warnings)}});
}

QByteArray jsonLine(const SiteCheck &check)
{
    QJsonArray points;
    for (const PointDifference &point : check.points) {
        points.append(QJsonObject{{QStringLiteral("name"), point.name},
                                  {QStringLiteral("difference_north_m"), orNull(point.north)},
                                  {QStringLiteral("difference_east_m"), orNull(point.east)},
                                  {QStringLiteral("difference_height_m"), orNull(point.height)}});
    }
    return lineOf({{QStringLiteral("points"), points},
                   {QStringLiteral("horizontal"), objectOf(check.plan)},
                   {QStringLiteral("vertical"), objectOf(check.height)}});
}

QByteArray jsonLine(const DatumFit &fit)
{
    QJsonArray points;
    for (const DatumPoint &point : fit.points) {
        points.append(QJsonObject{{QStringLiteral("name"), point.name},
                                  {QStringLiteral("residual_x_m"), point.residualX},
                                  {QStringLiteral("residual_y_m"), point.residualY},
                                  {QStringLiteral("residual_z_m"), point.residualZ},
                                  {QStringLiteral("suspect"), point.isSuspect}});
    }
    QJsonObject object = objectOfShift(fit.rigorous);
    object[QStringLiteral("linear")] = objectOfShift(fit.linear);
    object[QStringLiteral("standard_deviations")] =
        fit.deviations ? QJsonValue(objectOfShift(*fit.deviations)) : QJsonValue();
    object[QStringLiteral("s0_m")] = orNull(fit.statistics.s0);
    object[QStringLiteral("points")] = points;
    object[QStringLiteral("warnings")] = arrayOf(fit.warnings);
    return lineOf(object);
}

} // namespace KelStd::calibration
