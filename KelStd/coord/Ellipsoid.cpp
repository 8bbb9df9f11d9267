#include <KelStd/coord/Ellipsoid.h>

namespace KelStd {

Ellipsoid::Ellipsoid()
    : biggerHalfAxle(ValueType_Distance, Unit_Meter, 0.0), reciprocal(0.0),
      positiveDir(EllipsoidDirection_ENU)
{}

void Ellipsoid::clear()
{
    ellipsoid_name.clear();
    biggerHalfAxle.valType = ValueType_Distance;
    biggerHalfAxle.unit = Unit_Meter;
    biggerHalfAxle.value = 0.0;
    biggerHalfAxle.isDictionary = false;
    reciprocal = 0.0;
    positiveDir = EllipsoidDirection_ENU;
}

bool Ellipsoid::operator==(const Ellipsoid &other) const
{
    return this == &other
           || (proj4EllpsName == other.proj4EllpsName && biggerHalfAxle == other.biggerHalfAxle
               && reciprocal == other.reciprocal && positiveDir == other.positiveDir);
}

bool Ellipsoid::operator!=(const Ellipsoid &other) const
{
    return !(*this == other);
}

} // namespace KelStd
