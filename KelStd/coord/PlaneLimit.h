#pragma once

namespace KelStd {

/// How far from its origin [m] a plane has places, and its false origin may lie: beyond the
/// eastings with the number of their zone before them. There are 120 zones of three degrees; zone
/// 64 (EPSG 2581) has its meridian at 64,500,000 m.
///
/// Beyond it there are no positions (location/OneToOne.h). A false origin beyond it is a mistake:
/// the origin itself would be no position.
inline constexpr double maxPlane = 130'000'000.0;

} // namespace KelStd
