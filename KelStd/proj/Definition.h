#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

/// The pieces of PROJ definitions. Every piece but the first of a definition begins with a blank.
///
/// All of them may raise what `CoordStringHelper::Unit_to_Proj4String` and `ConvertUnit_Length`
/// raise for a unit that they do not know.
namespace KelStd::proj {

QString wgs84Geographic();
QString wgs84Cartesian();

/// "+proj=NAME".
QString projectionFragment(const QString &name);

/// PROJ's ellipsoid name, or else axis and inverse flattening; then the axis directions.
///
/// The axis is printed by the display configuration and, unless the ellipsoid's unit is the metre,
/// followed at once by the unit's PROJ word; PROJ reads the number as metres whatever follows. Both
/// are the contract's: see docs/display-configuration.md for what a host must keep.
QString ellipsoidFragment(const Ellipsoid &ellipsoid);

/// The parameters that have a PROJ name, in ascending order of their keys. A flag is its bare name
/// when true and nothing when false; a key without a parameter has a fresh parameter's value.
QString parameterFragment(const Projection &projection);

/// " +units=" and the PROJ word of the projection's unit.
QString unitFragment(const Projection &projection);

/// What the stored datum shift is multiplied by on its way into "+towgs84", 1 or -1. Rotations are
/// always written as stored.
struct DatumSigns
{
    double translations;
    double scale;
};

/// " +towgs84=", translations [m], rotations [arc seconds], scale [ppm].
QString datumFragment(const stEllipsoinTransform &transform, DatumSigns signs);

} // namespace KelStd::proj
