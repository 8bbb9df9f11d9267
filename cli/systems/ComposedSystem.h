#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// What a system is composed of, as texts of the command line.
struct SystemPieces
{
    QString ellipsoid;    ///< PROJ's name, a name of the library, or "A,RF"
    QString projection;   ///< PROJ's name, or a name of the library
    QStringList settings; ///< "lon_0=15"
    QString shift;        ///< "X,Y,Z" or "X,Y,Z,RX,RY,RZ,S", as PROJ's +towgs84; empty for none
    QString geoid;        ///< the name of a geoid model; empty for none
    QString name;         ///< of the system; empty for one of its pieces' names
};

/// Puts a system together from pieces that are understood each. Names of the library are looked up
/// in the registry, as it is loaded. Nothing, with the mistake, otherwise.
std::optional<Coord> composedSystem(const SystemPieces &pieces, QString &mistake);

/// The parameters that a projection of the library brought and no setting changed: "x_0=500000".
QStringList broughtParameters(const SystemPieces &pieces, const Coord &coord);

} // namespace KelStd::cli
