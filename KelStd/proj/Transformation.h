#pragma once

#include <KelStd/coord/Pos.h>
#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QString>

/// PROJ transformations: how one is created, and how it is applied to a position.
namespace KelStd::proj {

enum class ShiftDirection
{
    ToGeoid,    ///< from a height above the ellipsoid to one above the geoid
    ToEllipsoid ///< the inverse
};

/// The transformation between two definitions, or null when PROJ refuses them or one does not fit.
ProjObject createConversion(PJ_CONTEXT *context, const QString &from, const QString &to);

/// The vertical shift by a geoid model's grid, or null when PROJ cannot use the file.
ProjObject createShift(PJ_CONTEXT *context, const QString &gridFile, ShiftDirection direction);

/// Transforms `from` into `to`, which may be the same object. False, with `to` untouched, when PROJ
/// has no result.
bool transform(PJ *conversion, const Pos &from, Pos &to);

/// What a vertical shift adds to the height of `point` (longitude, latitude [deg], height [m]).
/// False, with `diff` [m] untouched, when PROJ has no result.
bool separation(PJ *shift, const stLongLatH &point, double &diff);

} // namespace KelStd::proj
