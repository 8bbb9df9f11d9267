#include <KelStd/location/ChainDefinitions.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/proj/ConfiguredAxis.h>
#include <KelStd/proj/FixedBuffer.h>

namespace KelStd {

ChainDefinitions::ChainDefinitions(const Coord *coord)
{
    if (coord != nullptr)
        problem = proj::axisProblem(coord->ellipsoid);
    if (!problem.isEmpty())
        return;
    char geographicText[proj::chainDefinitionSize] = {};
    char cartesianText[proj::chainDefinitionSize] = {};
    char localGeographicText[proj::chainDefinitionSize] = {};
    char localProjectedText[proj::chainDefinitionSize] = {};
    Coord::__MakeCoordStrings(nullptr, coord, geographicText, cartesianText, localGeographicText,
                              localProjectedText);
    geographic = QString::fromUtf8(geographicText);
    cartesian = QString::fromUtf8(cartesianText);
    localGeographic = QString::fromUtf8(localGeographicText);
    localProjected = QString::fromUtf8(localProjectedText);
}

QString geoidGridFile(const Coord *coord)
{
    if (coord == nullptr || coord->geoidModel.modelFileName.isEmpty())
        return {};
    return AppConfig::getInstance()
        .module_resourceQuery()
        ->makeAndQuery_gnss_geoid_model_relativeFilepath(coord->geoidModel.modelFileName);
}

} // namespace KelStd
