#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QByteArray>

#include <optional>

namespace KelStd::catalogue {

using PlaneUnit = std::optional<SystemOrigin::PlaneUnit>;

/// What is taken of the records of a system.
struct DefinitionParts
{
    PlaneUnit unit;        ///< of northing and easting, where the definition counts in metres
    bool withShift = true; ///< the datum shift, too
    bool isPlain = false;  ///< metres to the east and north, whatever the definition counts in
};

/// The system that the records define, as PROJ reads it; null where PROJ does not.
proj::ProjObject definedSystem(const ProjSession &session, const Coord &coord,
                               const DefinitionParts &parts);

/// Which way the plane of a system counts, and in what.
struct PlaneDirections
{
    double east = 1.0;   ///< -1 where its eastings count to the west
    double north = 1.0;  ///< -1 where its northings count to the south
    double metres = 1.0; ///< that one of its numbers measures
    QByteArray axis;     ///< PROJ's word for directions other than east and north, such as "wsu"
};

/// Those of the records' definition, which counts in metres unless a parameter of the projection
/// says otherwise.
PlaneDirections planeDirections(const ProjSession &session, const Coord &coord);

} // namespace KelStd::catalogue
