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

/// EPSG's method 9624: X' = A0 + A1 X + A2 Y, Y' = B0 + B1 X + B2 Y, of easting and northing.
QJsonObject affineConversion(const calibration::PlaneSimilarity &plane)
{
    const double cosine = plane.scale * std::cos(plane.rotation * radiansPerArcSecond);
    const double sine = plane.scale * std::sin(plane.rotation * radiansPerArcSecond);
    struct Row
    {
        const char *name;
        int code;
        const char *unit;
        double value;
    };
    const Row rows[] = {
        {"A0", 8623, "metre", plane.eastShift},
        {"A1", 8624, "unity", cosine},
        {"A2", 8625, "unity", sine},
        {"B0", 8639, "metre", plane.northShift},
        {"B1", 8640, "unity", 0.0 - sine},
        {"B2", 8641, "unity", cosine},
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

QJsonObject derivedSystem(QJsonObject crs, const QString &name,
                          const calibration::PlaneSimilarity &plane)
{
    const QString source = QStringLiteral("source_crs");
    if (crs.contains(source)) {
        crs.insert(source, derivedSystem(crs.value(source).toObject(), name, plane));
        return crs;
    }
    const QString schema = QStringLiteral("$schema");
    const QString system = QStringLiteral("coordinate_system");
    QJsonObject derived{
        {schema, QStringLiteral("https://proj.org/schemas/v0.5/projjson.schema.json")},
        {QStringLiteral("type"), QStringLiteral("DerivedProjectedCRS")},
        {QStringLiteral("name"), name},
        {QStringLiteral("conversion"), affineConversion(plane)},
        {system, crs.value(system)}};
    crs.remove(schema);
    derived.insert(QStringLiteral("base_crs"), crs);
    return derived;
}

} // namespace KelStd::catalogue
