#pragma once

#include <KelStd/Export.h>
#include <KelStd/location/GridFactors.h>

#include <QtCore/QString>

#include <array>
#include <cstddef>
#include <optional>

namespace KelStd::positions {

/// One of the factors of a location, as a column. They have the same decimals in every form: as
/// many as are right.
struct FactorColumn
{
    const char *label;   ///< in a table
    const char *csvName; ///< without the unit, unique among all columns
    const char *unit;    ///< in names of columns; empty for a ratio
    int decimals;        ///< in every form of output
    int integerWidth;    ///< of a sign and the digits before the point
    std::optional<double> GridFactors::Values::*value; ///< reads it from the values
};

/// A location has so many factors.
inline constexpr std::size_t factorCount = 4;

/// In the order in which they are printed. May be called on any thread.
KELSTD_EXPORT const std::array<FactorColumn, factorCount> &factorColumns();

/// "convergence_deg", "point_scale". May be called on any thread.
KELSTD_EXPORT QString nameOf(const FactorColumn &factor);

} // namespace KelStd::positions
