#include <KelStd/catalogue/ShiftFit.h>

#include <KelStd/proj/TransformationResult.h>

#include <cmath>

namespace KelStd::catalogue {

Similarity fittedShift(const ProjSession &session, const CarriedShift &shift,
                       const std::vector<GroundPoint> &places)
{
    constexpr double radians = 3.14159265358979323846 / 180.0;
    const proj::ProjObject affine = session.fromText(pipelineText(shift.affine));
    std::vector<Pair> pairs;
    if (affine == nullptr)
        return shift.similarity;
    // From WGS 84 to the local frame, which is the way that positions are measured on: PROJ's
    // linear shifts do not lead back exactly.
    const double axis = 6378137.0;
    const double reciprocal = 298.257223563;
    for (const GroundPoint &place : places) {
        for (const double height : {0.0, 2000.0}) {
            const Vector global = cartesian(place.longitude * radians, place.latitude * radians,
                                            height, axis, reciprocal);
            const PJ_COORD at = session.functions().proj_trans(
                affine.get(), PJ_INV, PJ_COORD{{global[0], global[1], global[2], HUGE_VAL}});
            if (proj::isResult(at.v[0]) && proj::isResult(at.v[1]) && proj::isResult(at.v[2]))
                pairs.emplace_back(Vector{at.v[0], at.v[1], at.v[2]}, global);
        }
    }
    return pairs.size() < 3 ? shift.similarity : fitted(pairs);
}

} // namespace KelStd::catalogue
