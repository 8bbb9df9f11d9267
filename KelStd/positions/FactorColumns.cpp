#include <KelStd/positions/FactorColumns.h>

namespace KelStd::positions {

const std::array<FactorColumn, factorCount> &factorColumns()
{
    constexpr int scaleDecimals = 9; // PROJ's derivatives are right to 1e-9, and to 1e-7 degrees
    constexpr int angleDecimals = 7;
    using V = GridFactors::Values;
    static constexpr std::array<FactorColumn, factorCount> rows = {{
        {"point scale", "point_scale", "", scaleDecimals, 1, &V::pointScale},
        {"elevation", "elevation_factor", "", scaleDecimals, 1, &V::elevationFactor},
        {"combined", "combined_factor", "", scaleDecimals, 1, &V::combinedFactor},
        {"convergence", "convergence", "deg", angleDecimals, 4, &V::convergence},
    }};
    return rows;
}

QString nameOf(const FactorColumn &factor)
{
    const QString name = QString::fromLatin1(factor.csvName);
    return *factor.unit == '\0' ? name : name + QLatin1Char('_') + QLatin1String(factor.unit);
}

} // namespace KelStd::positions
