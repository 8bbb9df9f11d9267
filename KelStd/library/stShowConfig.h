#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

namespace KelStd {

/// The user's choice of how values are shown: for each kind of value the unit or style, the number
/// of decimals, and whether trailing zeros are kept.
///
/// There are two default sets, deliberately different: a new record has the working defaults (few
/// decimals), a cleared one shows nearly everything that a double holds.
class KELSTD_EXPORT stShowConfig
{
public:
    stShowConfig();

    void clear();

    bool operator==(const stShowConfig &other) const;
    bool operator!=(const stShowConfig &other) const;

    EFormat coordOrder; ///< kept for the host; nothing in this library reads it

    unsigned char doublePrecision;
    bool doubleKeepZero;

    EFormat latLongFormat;
    unsigned char latLongPrecision;
    bool latLongKeepZero;

    EUnit earthHeightUnit;
    unsigned char earthHeightPrecision;
    bool earthHeightKeepZero;

    EUnit xyUnit;
    unsigned char xyPrecision;
    bool xyKeepZero;

    EUnit elevationHeightUnit;
    unsigned char elevationHeightPrecision;
    bool elevationHeightKeepZero;

    EFormat timeFormat;

    EUnit tempratureUnit;
    unsigned char tempraturePrecision;
    bool tempratureKeepZero;

    EUnit pressureUnit;
    unsigned char pressurePrecision;
    bool pressureKeepZero;

    EFormat angleFormat;
    unsigned char anglePrecision;
    bool angleKeepZero;

    /// Also the unit and decimals in which a spelled-out semi-major axis reaches PROJ: keep metres
    /// and at least 3 decimals while converting (docs/display-configuration.md).
    EUnit distanceUnit;
    unsigned char distancePrecision;
    bool distanceKeepZero;

    EUnit heightUnit;
    unsigned char heightPrecision;
    bool heightKeepZero;
};

} // namespace KelStd
