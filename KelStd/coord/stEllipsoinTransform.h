#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// The datum transformation from WGS84 to the local ellipsoid.
///
/// Translations are lengths, rotations angles (arc seconds by default), each in its own unit; the
/// scale is in parts per million. How the signs reach PROJ's "+towgs84" list: see
/// `Coord::__MakeCoordStrings`.
class KELSTD_EXPORT stEllipsoinTransform
{
public:
    stEllipsoinTransform();

    /// Function codes to 0, every `Param` to its default type, unit and value. The dictionary
    /// members of the `Param`s survive on purpose.
    void clear();

    /// Equality of all members.
    bool operator==(const stEllipsoinTransform &other) const;
    /// The negation of `operator==`.
    bool operator!=(const stEllipsoinTransform &other) const;

    /// Equality of what the selected function uses. A function code outside the enumeration is
    /// the same as nothing but the object itself: a deliberate strictness.
    bool isSameLogic(const stEllipsoinTransform &other) const;

    /// Writes the block of version 1: the version [int32], the function codes [int32], then every
    /// `Param` as a block of its own, in declaration order.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1 or a parameter's block fails:
    /// what was read so far stays, the rest is as `clear` leaves it. The stream's status is neither
    /// inspected nor reset (see `Param::load`).
    bool load(QDataStream &stream);

    /// Which of the parameters are used; the name is the contract's.
    EEllipsoinTransformFunction fuction;
    EEllipsoinTransition nofuction_transtion; ///< used when `fuction` is none
    Param x_translate;                        ///< a length
    Param y_translate;                        ///< a length
    Param z_translate; ///< a length; a three-parameter shift reads it in the unit of `y_translate`
    Param x_rotate;    ///< arc seconds by default
    Param y_rotate;    ///< arc seconds by default
    Param z_rotate;    ///< arc seconds by default
    Param ratio_ppm;   ///< difference of the scale from 1 [ppm]
};

} // namespace KelStd
