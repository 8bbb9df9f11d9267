#include <KelStd/positions/PlaneUnit.h>

#include <cmath>

namespace KelStd::positions {

namespace {

struct Row
{
    const char *symbol;
    double metres;
};

/// Lengths as the EPSG Dataset defines them; each symbol is one of the heading units, too.
constexpr Row rows[] = {
    {"ft", 0.3048},                            // EPSG:9002
    {"us-ft", 1200.0 / 3937.0},                // EPSG:9003
    {"clarke-ft", 0.3047972654},               // EPSG:9005
    {"gold-coast-ft", 6378300.0 / 20926201.0}, // EPSG:9094
    {"sears-ft", 12.0 / 39.370147},            // EPSG:9041
    {"indian-yd", 36.0 / 39.370142},           // EPSG:9084
    {"sears-yd", 36.0 / 39.370147},            // EPSG:9040
    {"clarke-yd", 3.0 * 0.3047972654},         // EPSG:9037
    {"link", 0.66 * 0.3048},                   // EPSG:9098
    {"clarke-link", 0.66 * 0.3047972654},      // EPSG:9039
    {"sears-chain", 792.0 / 39.370147},        // EPSG:9042
    {"truncated-sears-chain", 20.116756},      // EPSG:9301
    {"german-m", 1.0000135965},                // EPSG:9031
    {"km", 1000.0},                            // EPSG:9036
};

} // namespace

QVector<PlaneUnit> planeUnits()
{
    QVector<PlaneUnit> units;
    for (const Row &row : rows)
        units += PlaneUnit{QString::fromLatin1(row.symbol), row.metres};
    return units;
}

std::optional<PlaneUnit> findPlaneUnit(const SystemOrigin::PlaneUnit &unit)
{
    constexpr double tolerance = 1e-9;
    for (const PlaneUnit &known : planeUnits()) {
        if (std::abs(unit.metres / known.metres - 1.0) <= tolerance)
            return known;
    }
    return std::nullopt;
}

} // namespace KelStd::positions
