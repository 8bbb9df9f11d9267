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

/// Whether PROJ has made a transformation to the plane that refuses every position: what it says of
/// one then is that the operation is not there, not that the position is bad.
bool hasNoOperation(const SystemDefinitions &definitions)
{
    if (definitions.localProjected.contains(QLatin1String("+axis=enu")))
        return false; // it reads those directly
    QList<Pos> any{Pos::fromLongLatH(0.0, 0.0, 0.0)};
    QString text;
    return !ProjLib::ConvertPosList(definitions.localGeographic, definitions.localProjected, any,
                                    ProjLib::LocalLatLongH_to_LocalNEH, &text)
           && text.contains(QLatin1String("No inverse operation"));
}

/// PROJ 9.1 reads such a definition as EPSG's method 9808, which it writes without false origins
/// only.
QString hintOn(const QString &definition)
{
    const bool isSouthOrientated = definition.contains(QLatin1String("+proj=tmerc "))
                                   && definition.contains(QLatin1String("+axis=wsu"));
    return isSouthOrientated ? QObject::tr(
               ": of a transverse Mercator projection whose axes point west and "
               "south it takes no false easting and no false northing but 0; those of "
               "\"etmerc\", which is the same projection, it takes")
                             : QString();
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
    if (refused.isEmpty() && hasNoOperation(definitions)) {
        tell(failure, ConversionFailureKind::RefusedDefinition,
             QObject::tr("PROJ has no operation for its definition \"%1\"%2")
                 .arg(definitions.localProjected, hintOn(definitions.localProjected)));
        return false;
    }
    if (refused.isEmpty())
        return true;
    tell(failure, ConversionFailureKind::RefusedDefinition,
         QObject::tr("PROJ refuses its definition \"%1\"").arg(refused));
    return false;
}

} // namespace KelStd::location
