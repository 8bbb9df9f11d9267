#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/ProjSession.h>

#include <vector>

namespace KelStd::catalogue {

/// The seven parameters that give, with the full rotation matrix, what PROJ's own operation gives
/// from WGS 84 to the local frame about these places.
Similarity fittedShift(const ProjSession &session, const CarriedShift &shift,
                       const std::vector<GroundPoint> &places);

} // namespace KelStd::catalogue
