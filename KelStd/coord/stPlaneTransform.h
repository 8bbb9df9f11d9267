#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// A planar four-parameter similarity transformation of projected coordinates.
///
/// Kept, compared and stored for the application; the location operations of `Coord` do not
/// apply it. `calibration::SiteTransform` has the formula and applies it beside them.
class KELSTD_EXPORT stPlaneTransform
{
public:
    stPlaneTransform();

    /// Function code to 0, every `Param` to its default type, unit and value. The dictionary
    /// members of the `Param`s survive on purpose.
    void clear();

    /// Equality of all members.
    bool operator==(const stPlaneTransform &other) const;
    /// The negation of `operator==`.
    bool operator!=(const stPlaneTransform &other) const;

    /// Equality of what the selected function uses; an unlisted function code is never the same.
    bool isSameLogic(const stPlaneTransform &other) const;

    /// Writes the block of version 1: the version [int32], the function code [int32], then every
    /// `Param` as a block of its own, in declaration order.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1 or a parameter's block fails:
    /// what was read so far stays, the rest is as `clear` leaves it. The stream's status is neither
    /// inspected nor reset (see `Param::load`).
    bool load(QDataStream &stream);

    /// Which of the parameters are used; the name is the contract's.
    EPlaneTransformFunction fuction;
    Param north_translate; ///< a length
    Param east_translate;  ///< a length
    Param rotate_angle;    ///< arc seconds by default
    Param ratio;           ///< scale
};

} // namespace KelStd
