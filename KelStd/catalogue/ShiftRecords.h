#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/coord/Coord.h>

namespace KelStd::catalogue {

/// Writes a datum shift into the records of a system. False where it is by a grid, which needs
/// PROJ's name of the ellipsoid, and that has none.
bool setShift(Coord &coord, const CarriedShift &shift);

} // namespace KelStd::catalogue
