#pragma once

#include <KelStd/coord/Pos.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/ProjMessages.h>
#include <KelStd/proj/TransformationResult.h>

#include <QtCore/QString>

#include <cstring>
#include <limits>

/// PROJ transformations: how one is created, and how it is applied to a position: inline, because a
/// million positions pass there.
namespace KelStd::proj {

enum class ShiftDirection
{
    ToGeoid,    ///< from a height above the ellipsoid to one above the geoid
    ToEllipsoid ///< the inverse
};

/// The transformation between two definitions, or null when PROJ refuses them, when one does not
/// fit, or when a grid file that one names is not what its header says. What PROJ says of it is
/// added to `messages`.
ProjObject createConversion(PJ_CONTEXT *context, const QString &from, const QString &to,
                            ProjMessages &messages);

/// The vertical shift by a geoid model's grid, or null when PROJ cannot use the file, or the file
/// is not what its header says.
ProjObject createShift(PJ_CONTEXT *context, const QString &gridFile, ShiftDirection direction,
                       ProjMessages &messages);

/// The operation of a PROJ definition, in which angles are radians, or null when PROJ refuses it.
ProjObject createOperation(PJ_CONTEXT *context, const QString &definition, ProjMessages &messages);

/// A position as PROJ takes it, without a time. PROJ reads its numbers in pairs. Writing them one
/// by one makes the processor wait when a pair is read, which costs a hundredth of the arithmetic.
inline PJ_COORD coordinateOf(const stXYZ &position)
{
#if defined(__GNUC__)
    using Pair = double __attribute__((vector_size(2 * sizeof(double))));
    const Pair pairs[] = {{position.x, position.y}, {position.z, 0.0}};
    PJ_COORD coordinate;
    static_assert(sizeof pairs == sizeof coordinate);
    std::memcpy(&coordinate, pairs, sizeof coordinate);
    return coordinate;
#else
    return PJ_COORD{{position.x, position.y, position.z, 0.0}};
#endif
}

/// Takes `coordinate` through a transformation. False when PROJ has no result, of which
/// `coordinate` holds what PROJ gave.
inline bool transform(const ProjFunctions &functions, PJ *transformation, PJ_DIRECTION direction,
                      PJ_COORD &coordinate)
{
    coordinate = functions.proj_trans(transformation, direction, coordinate);
    return isResult(coordinate.v[0]) && isResult(coordinate.v[1]) && isResult(coordinate.v[2]);
}

/// Transforms `from` into `to`, which may be the same object. False, with `to` untouched, when PROJ
/// has no result.
inline bool transform(const ProjFunctions &functions, PJ *conversion, const Pos &from, Pos &to)
{
    // The three readings of a position share their storage: one of them serves every frame.
    PJ_COORD out = coordinateOf(from.getXYZ());
    if (!transform(functions, conversion, PJ_FWD, out))
        return false;
    to.setXYZ(out.v[0], out.v[1], out.v[2]);
    return true;
}

/// What a vertical shift adds to the height of `point` (longitude, latitude [deg], height [m]).
/// False, with `diff` [m] untouched, when PROJ has no result.
inline bool separation(const ProjFunctions &functions, PJ *shift, const stLongLatH &point,
                       double &diff)
{
    const PJ_COORD in{{functions.proj_torad(point.longitude), functions.proj_torad(point.latitude),
                       point.height,
                       std::numeric_limits<double>::infinity()}}; // at no time in particular
    const double shifted = functions.proj_trans(shift, PJ_FWD, in).v[2];
    if (!isResult(shifted))
        return false;
    diff = shifted - point.height;
    return true;
}

} // namespace KelStd::proj
