#include <KelStd/coord/Coord.h>

#include <KelStd/proj/Definition.h>
#include <KelStd/proj/FixedBuffer.h>

namespace KelStd {

QString Coord::__MakeEllipseString(const Ellipsoid *ellipsoid)
{
    return proj::ellipsoidFragment(*ellipsoid);
}

QString Coord::__MakeEllipseTransformString(const stEllipsoinTransform *transform)
{
    const double sign = s_invertParamsFunctionSwitch ? 1.0 : -1.0;
    return proj::datumFragment(*transform, {sign, sign});
}

void Coord::__MakeCoordStrings(const Coord * /*ignoredCoord*/, const Coord *coord,
                               char *wgs84LatLong, char *wgs84XYZ, char *localLatLong,
                               char *localProjected)
{
    using proj::chainDefinitionSize;
    proj::copyToBuffer(proj::wgs84Geographic(), wgs84LatLong, chainDefinitionSize);
    proj::copyToBuffer(proj::wgs84Cartesian(), wgs84XYZ, chainDefinitionSize);
    localLatLong[0] = '\0';
    localProjected[0] = '\0';
    if (coord == nullptr)
        return;

    // The unit is metres whatever the projection's own unit says, and the ellipsoid follows the
    // parameters: of two equal keys PROJ takes the first, so a parameter called "units" or "axis"
    // wins over these.
    const QString local = __MakeEllipseString(&coord->ellipsoid)
                          + __MakeEllipseTransformString(&coord->ellipsoidTransform)
                          + QLatin1String(" +units=m");
    proj::copyToBuffer(QLatin1String("+proj=longlat") + local, localLatLong, chainDefinitionSize);
    proj::copyToBuffer(proj::projectionFragment(coord->projection.proj4Projection)
                           + proj::parameterFragment(coord->projection) + local,
                       localProjected, chainDefinitionSize);
}

} // namespace KelStd
