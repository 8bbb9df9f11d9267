#pragma once

#include <QtCore/QString>

namespace KelStd {

class Coord;

/// What the conversions of a coordinate system run between.
struct ChainDefinitions
{
    /// Writes the definitions of `coord`; raises what `Coord::__MakeCoordStrings` raises.
    explicit ChainDefinitions(const Coord *coord);

    QString geographic; ///< WGS84
    QString cartesian;  ///< WGS84
    QString localGeographic;
    QString localProjected;
};

/// The grid file of the geoid model that a system names; empty when it names none, or one that the
/// host does not have.
QString geoidGridFile(const Coord *coord);

} // namespace KelStd
