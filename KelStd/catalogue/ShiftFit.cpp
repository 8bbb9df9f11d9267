#include <KelStd/catalogue/ShiftFit.h>

#include <KelStd/proj/TransformationResult.h>

#include <cmath>

namespace KelStd::catalogue {

Similarity fittedShift(const ProjSession &session, const CarriedShift &shift,
                       const Ellipsoid &ellipsoid, const std::vector<GroundPoint> &places)
{
    constexpr double radians = 3.14159265358979323846 / 180.0;
    const proj::ProjObject affine = session.fromText(pipelineText(shift.affine));
    std::vector<Pair> pairs;
    if (affine == nullptr)
        return shift.similarity;
    // The places are WGS 84 ones; a few hundred metres beside them do not matter to a fit.
    for (const GroundPoint &place : places) {
        for (const double height : {0.0, 2000.0}) {
            const Vector local =
                cartesian(place.longitude * radians, place.latitude * radians, height,
                          ellipsoid.biggerHalfAxle.value.toDouble(), ellipsoid.reciprocal);
            const PJ_COORD at = session.functions().proj_trans(
                affine.get(), PJ_FWD, PJ_COORD{{local[0], local[1], local[2], HUGE_VAL}});
            if (proj::isResult(at.v[0]) && proj::isResult(at.v[1]) && proj::isResult(at.v[2]))
                pairs.emplace_back(local, Vector{at.v[0], at.v[1], at.v[2]});
        }
    }
    return pairs.size() < 3 ? shift.similarity : fitted(pairs);
}

} // namespace KelStd::catalogue
