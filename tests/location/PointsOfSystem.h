#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

#include <random>
#include <vector>

namespace KelStd::test {

/// Random points about the published plane coordinates of one system, where its projection is at
/// home. (Published datum shifts reach round the globe; they serve where there is nothing else.)
///
/// Heights reach from -400 to 2000 m: PROJ turns cartesian into geographic in one step of Bowring's
/// method, whose error grows with the height.
class PointsOfSystem
{
public:
    /// `system` is the document's file name. PROJ must be loaded.
    PointsOfSystem(const QString &system, const Coord &coord, unsigned seed);

    /// A published position, moved by up to half a degree and given a height: WGS84 longitude,
    /// latitude [deg], ellipsoidal height [m].
    Pos next();

private:
    double uniform(double low, double high);

    std::vector<Pos> m_centres;
    std::mt19937 m_random;
};

} // namespace KelStd::test
