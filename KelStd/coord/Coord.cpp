#include <KelStd/coord/Coord.h>

namespace KelStd {

bool Coord::s_invertParamsUseMinusNotMatrix = true;
bool Coord::s_invertParamsFunctionSwitch = false;

Coord::Coord() = default;

void Coord::clear()
{
    coord_name.clear();
    ellipsoid.clear();
    projection.clear();
    ellipsoidTransform.clear();
    planeTransform.clear();
    elevationFitting.clear();
    geoidModel.clear();
}

bool Coord::operator==(const Coord &other) const
{
    return this == &other
           || (ellipsoid == other.ellipsoid && projection == other.projection
               && ellipsoidTransform == other.ellipsoidTransform
               && planeTransform == other.planeTransform
               && elevationFitting == other.elevationFitting && geoidModel == other.geoidModel);
}

bool Coord::operator!=(const Coord &other) const
{
    return !(*this == other);
}

bool Coord::isSameLogic(const Coord &other) const
{
    return this == &other
           || (ellipsoid == other.ellipsoid && projection.isSameLogic(other.projection)
               && ellipsoidTransform.isSameLogic(other.ellipsoidTransform)
               && planeTransform.isSameLogic(other.planeTransform)
               && elevationFitting.isSameLogic(other.elevationFitting)
               && geoidModel.isSameLogic(other.geoidModel));
}

} // namespace KelStd
