#include <KelStd/coord/Coord.h>

#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 2;
constexpr qint32 versionWithoutGeoidModel = 1;

} // namespace

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

void Coord::save(QDataStream &stream) const
{
    stream << streamVersion << coord_name;
    ellipsoid.save(stream);
    projection.save(stream);
    ellipsoidTransform.save(stream);
    planeTransform.save(stream);
    elevationFitting.save(stream);
    geoidModel.save(stream);
}

bool Coord::load(QDataStream &stream)
{
    clear();
    const qint32 version = readVersion(stream);
    if (version != streamVersion && version != versionWithoutGeoidModel)
        return false;
    stream >> coord_name;
    return ellipsoid.load(stream) && projection.load(stream) && ellipsoidTransform.load(stream)
           && planeTransform.load(stream) && elevationFitting.load(stream)
           && (version == versionWithoutGeoidModel || geoidModel.load(stream));
}

} // namespace KelStd
