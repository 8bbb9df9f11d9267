#include <KelStd/coord/Ellipsoid.h>

#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

} // namespace

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

void Ellipsoid::save(QDataStream &stream) const
{
    stream << streamVersion << ellipsoid_name << proj4EllpsName;
    biggerHalfAxle.save(stream);
    stream << reciprocal << positiveDir;
}

bool Ellipsoid::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> ellipsoid_name >> proj4EllpsName;
    if (!biggerHalfAxle.load(stream))
        return false;
    stream >> reciprocal >> positiveDir;
    return true;
}

} // namespace KelStd
