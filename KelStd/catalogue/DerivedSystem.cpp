#include <KelStd/catalogue/DerivedSystem.h>

#include <QtCore/QJsonArray>

#include <cmath>

namespace KelStd::catalogue {

namespace {

constexpr double radiansPerArcSecond = 3.14159265358979323846 / (180.0 * 3600.0);

QJsonObject epsg(int code)
{
    return {{QStringLiteral("authority"), QStringLiteral("EPSG")}, {QStringLiteral("code"), code}};
}

/// EPSG's method 9624: X' = A0 + A1 X + A2 Y, Y' = B0 + B1 X + B2 Y, of easting and northing in
/// metres.
QJsonObject affineConversion(const calibration::PlaneSimilarity &plane,
                             const PlaneDirections &directions, double metres)
{
    // From numbers of the records' site to those of the text, and from metres to the records'
    // numbers in the directions of their axes.
    const double written = directions.metres / metres;
    const double cosine = plane.scale * std::cos(plane.rotation * radiansPerArcSecond) / metres;
    const double sine = plane.scale * std::sin(plane.rotation * radiansPerArcSecond) / metres;
    // PROJ turns lengths of a conversion into metres: a shift in another unit is a plain number.
    const char *const unit = metres == 1.0 ? "metre" : "unity";
    struct Row
    {
        const char *name;
        int code;
        const char *unit;
        double value;
    };
    const Row rows[] = {
        {"A0", 8623, unit, written * plane.eastShift},
        {"A1", 8624, "unity", directions.east * cosine},
        {"A2", 8625, "unity", directions.north * sine},
        {"B0", 8639, unit, written * plane.northShift},
        {"B1", 8640, "unity", 0.0 - directions.east * sine},
        {"B2", 8641, "unity", directions.north * cosine},
    };
    QJsonArray parameters;
    for (const Row &row : rows) {
        parameters.append(QJsonObject{{QStringLiteral("name"), QLatin1String(row.name)},
                                      {QStringLiteral("value"), row.value},
                                      {QStringLiteral("unit"), QLatin1String(row.unit)},
                                      {QStringLiteral("id"), epsg(row.code)}});
    }
    return {
        {QStringLiteral("name"), QStringLiteral("site")},
        {QStringLiteral("method"),
         QJsonObject{{QStringLiteral("name"), QStringLiteral("Affine parametric transformation")},
                     {QStringLiteral("id"), epsg(9624)}}},
        {QStringLiteral("parameters"), parameters}};
}

} // namespace

QJsonObject derivedSystem(QJsonObject crs, const QJsonObject &coordinates, const QString &name,
                          const calibration::PlaneSimilarity &plane,
                          const PlaneDirections &directions, double metres)
{
    const QString source = QStringLiteral("source_crs");
    if (crs.contains(source)) {
        crs.insert(source, derivedSystem(crs.value(source).toObject(), coordinates, name, plane,
                                         directions, metres));
        return crs;
    }
    const QString schema = QStringLiteral("$schema");
    QJsonObject derived{
        {schema, QStringLiteral("https://proj.org/schemas/v0.5/projjson.schema.json")},
        {QStringLiteral("type"), QStringLiteral("DerivedProjectedCRS")},
        {QStringLiteral("name"), name},
        {QStringLiteral("conversion"), affineConversion(plane, directions, metres)},
        {QStringLiteral("coordinate_system"), coordinates}};
    crs.remove(schema);
    derived.insert(QStringLiteral("base_crs"), crs);
    return derived;
}

} // namespace KelStd::catalogue
