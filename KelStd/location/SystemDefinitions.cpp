#include <KelStd/location/SystemDefinitions.h>

#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QList>
#include <QtCore/QObject>

namespace KelStd::location {

namespace {

void tell(ConversionFailure *failure, ConversionFailureKind kind, const QString &text)
{
    if (failure != nullptr)
        *failure = {kind, text};
}

} // namespace

std::optional<SystemDefinitions> definitionsOf(const Coord &coord, ConversionFailure *failure)
{
    const ChainDefinitions chain(&coord);
    if (!chain.problem.isEmpty()) {
        tell(failure, ConversionFailureKind::BadSystem, chain.problem);
        return std::nullopt;
    }
    // A definition that does not fit its buffer is empty.
    if (chain.localGeographic.isEmpty() || chain.localProjected.isEmpty()) {
        tell(failure, ConversionFailureKind::BadSystem,
             QObject::tr("its PROJ definition is longer than %1 bytes")
                 .arg(proj::chainDefinitionSize - 1));
        return std::nullopt;
    }
    return SystemDefinitions{chain.geographic, chain.cartesian, chain.localGeographic,
                             chain.localProjected};
}

bool acceptedByProj(const SystemDefinitions &definitions, ConversionFailure *failure)
{
    // Converting no position creates the transformation, and nothing more.
    QList<Pos> none;
    QString text;
    QString refused;
    if (!ProjLib::ConvertPosList(definitions.wgs84Cartesian, definitions.localGeographic, none,
                                 ProjLib::WGS84XYZ_to_LocalLatLongH, &text))
        refused = definitions.localGeographic;
    else if (!ProjLib::ConvertPosList(definitions.localGeographic, definitions.localProjected, none,
                                      ProjLib::LocalLatLongH_to_LocalNEH, &text))
        refused = definitions.localProjected;
    if (refused.isEmpty())
        return true;
    tell(failure, ConversionFailureKind::RefusedDefinition,
         QObject::tr("PROJ refuses its definition \"%1\"").arg(refused));
    return false;
}

} // namespace KelStd::location
