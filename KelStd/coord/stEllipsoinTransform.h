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

    bool operator==(const stEllipsoinTransform &other) const;
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

    EEllipsoinTransformFunction fuction;
    EEllipsoinTransition nofuction_transtion; ///< used when `fuction` is none
    Param x_translate;
    Param y_translate;
    Param z_translate;
    Param x_rotate;
    Param y_rotate;
    Param z_rotate;
    Param ratio_ppm;
};

} // namespace KelStd
