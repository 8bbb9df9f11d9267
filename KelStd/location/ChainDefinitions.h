#pragma once

#include <QtCore/QString>

namespace KelStd {

class Coord;

/// What the conversions of a coordinate system run between.
struct ChainDefinitions
{
    /// Writes the definitions of `coord`; raises what `Coord::__MakeCoordStrings` raises, but for
    /// what the display configuration keeps from being written: all four are empty then.
    explicit ChainDefinitions(const Coord *coord);

    QString geographic; ///< WGS84
    QString cartesian;  ///< WGS84
    QString localGeographic;
    QString localProjected;

    QString problem; ///< what of the display configuration keeps them from being written, or empty
};

/// The grid file of the geoid model that a system names; empty when it names none, or one that the
/// host does not have.
QString geoidGridFile(const Coord *coord);

} // namespace KelStd
