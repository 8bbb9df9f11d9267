#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Ellipsoid.h>

#include <vector>

namespace KelStd::catalogue {

/// The seven parameters that give, with the full rotation matrix, what PROJ's own operation gives
/// between earth-centred coordinates about these places.
Similarity fittedShift(const ProjSession &session, const CarriedShift &shift,
                       const Ellipsoid &ellipsoid, const std::vector<GroundPoint> &places);

} // namespace KelStd::catalogue
