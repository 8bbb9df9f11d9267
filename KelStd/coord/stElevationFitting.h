#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// A height fitting: a constant (`a`), a plane (`a`, `b`, `c`) or a curved surface (`a` to `f`
/// about an origin).
///
/// Kept, compared and stored for the application; the location operations of `Coord` do not
/// apply it. `calibration::SiteTransform` has the formula and applies it beside them.
class KELSTD_EXPORT stElevationFitting
{
public:
    stElevationFitting();

    /// Function code to 0, every `Param` to its default type, unit and value. The dictionary
    /// members of the `Param`s survive on purpose.
    void clear();

    /// Equality of all members.
    bool operator==(const stElevationFitting &other) const;
    /// The negation of `operator==`.
    bool operator!=(const stElevationFitting &other) const;

    /// Equality of what the selected function uses; an unlisted function code is never the same.
    bool isSameLogic(const stElevationFitting &other) const;

    /// Writes the block of version 1: the version [int32], the function code [int32], then every
    /// `Param` as a block of its own, in declaration order.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1 or a parameter's block fails:
    /// what was read so far stays, the rest is as `clear` leaves it. The stream's status is neither
    /// inspected nor reset (see `Param::load`).
    bool load(QDataStream &stream);

    EElevationFittingFunction function; ///< which of the parameters are used
    Param a;                            ///< the constant, a length
    Param b;                            ///< of the northing
    Param c;                            ///< of the easting
    Param d;                            ///< of the square of the northing
    Param e;                            ///< of the square of the easting
    Param f;                            ///< of the product of northing and easting
    Param north_zero_x0;                ///< northing of the fitting's origin
    Param east_zero_y0;                 ///< easting of the fitting's origin
};

} // namespace KelStd
