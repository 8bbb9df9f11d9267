#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/coord/Coord.h>

namespace KelStd::catalogue {

/// The datum shift that a system's records hold, from a frame that counts its longitudes from
/// `primeMeridian` [deg].
CarriedShift recordedShift(const Coord &coord, double primeMeridian);

} // namespace KelStd::catalogue
