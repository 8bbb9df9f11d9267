#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

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
