#include <KelStd/library/StandardLibrary.h>

#include <KelStd/display/ShowConfigInUse.h>

namespace KelStd {

StandardLibrary::StandardLibrary() : showConfig(display::showConfigInUse()) {}

StandardLibrary::~StandardLibrary() = default;

StandardLibrary &StandardLibrary::getInstance()
{
    static StandardLibrary instance;
    return instance;
}

void StandardLibrary::setBaseCoordFilePath(const QString &path)
{
    baseCoordFilePath = path;
}

void StandardLibrary::setEllipsoidListPath(const QString &path)
{
    ellipsoidListPath = path;
}

void StandardLibrary::setProjectionListPath(const QString &path)
{
    projectionListPath = path;
}

void StandardLibrary::setCustomCoordPath(const QString &path)
{
    customCoordPath = path;
}

void StandardLibrary::setStandardCoordPath(const QString &path)
{
    standardCoordPath = path;
}

void StandardLibrary::setShowInCreateProjectCoordsFilePath(const QString &path)
{
    showInCreateProjectCoordsFilePath = path;
}

void StandardLibrary::setShowConfigFilePath(const QString &path)
{
    showConfigFilePath = path;
}

void StandardLibrary::setSafeFileNames(bool isSafe)
{
    hasSafeFileNames = isSafe;
}

void StandardLibrary::genBaseCoord()
{
    const QString datum = QStringLiteral("datum");
    baseCoord.coord_name = QStringLiteral("application_base");
    baseCoord.ellipsoid.ellipsoid_name = QString();
    baseCoord.projection.projection_name = QStringLiteral("application_base_projection");
    baseCoord.projection.proj4Projection = QStringLiteral("longlat");
    baseCoord.projection.param[datum] = Param(ValueType_String, Unit_None, QStringLiteral("WGS84"));
    baseCoord.projection.paramProj4[datum] = datum;
}

} // namespace KelStd
