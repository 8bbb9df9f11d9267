#pragma once

#include <QtCore/QtGlobal>

/// Where the fields of a GGF grid's header begin. All numbers are little-endian.
namespace kelstd_grid::ggf {

inline constexpr int originLatitudeAt = 48;
inline constexpr int originLongitudeAt = 64;
inline constexpr int latitudeSpacingAt = 80;
inline constexpr int longitudeSpacingAt = 88;
inline constexpr int rowsAt = 96;
inline constexpr int columnsAt = 100;
inline constexpr int rowOrderAt = 142;

/// The row order of a file whose rows stand as GTX has them. Every other one is the reverse.
inline constexpr char outputOrder = 1;

inline constexpr qint64 headerSize = 146;
inline constexpr qint64 valueSize = 4;

} // namespace kelstd_grid::ggf
