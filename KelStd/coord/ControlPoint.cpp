#include <KelStd/coord/ControlPoint.h>

namespace KelStd {

bool ControlPoint::operator==(const ControlPoint &other) const
{
    return name == other.name && wgs84 == other.wgs84 && north == other.north && east == other.east
           && height == other.height && isUsedInPlan == other.isUsedInPlan
           && isUsedInHeight == other.isUsedInHeight && sigmaH == other.sigmaH
           && sigmaV == other.sigmaV;
}

} // namespace KelStd
