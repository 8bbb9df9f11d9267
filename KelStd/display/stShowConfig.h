#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

class Param;

/// The user's choice of how values are shown: for each kind of value the unit or style, the number
/// of decimals, and whether trailing zeros are kept.
///
/// There are two default sets, deliberately different: a new record has the working defaults (few
/// decimals), a cleared one shows nearly everything that a double holds.
///
///     stShowConfig config;
///     config.getParamValueString(longitude, -1); // of 116.5 degrees: "116°30′00.000000″E"
class KELSTD_EXPORT stShowConfig
{
public:
    stShowConfig();

    void clear();

    bool operator==(const stShowConfig &other) const;
    bool operator!=(const stShowConfig &other) const;

    /// Writes version 1 and the fields in declaration order: 68 bytes on a stream with Qt's default
    /// settings (big-endian), enumerations as 32-bit numbers, decimals and flags as one byte each.
    void save(QDataStream &stream) const;

    /// Reads what `save` writes, over the values of `clear()`. False for any version but 1, with
    /// those values left. The stream's status is not looked at: a stream that ends after its
    /// version gives zeros for the missing fields and true.
    bool load(QDataStream &stream);

    /// The description of the unit or style in which values of a kind are shown ("meter",
    /// "Degree Minute Second", "GPSW"), translated; empty for a kind without one.
    QString getParamShowFormatDescription(EValueType type) const;
    QString getParamShowFormatDescription(const Param &param) const;

    /// The text of `param` in a table. A value or setting that cannot be shown is the empty text:
    /// a length whose unit has no factor, a longitude beyond 180 or a latitude beyond 90 degrees,
    /// an infinite or undefined number. Nothing is raised.
    ///
    /// Longitudes and latitudes are padded with zeros and carry their sign as a letter; they and
    /// angles keep their trailing zeros whatever the configuration says. An angle and, deliberately
    /// unlike a latitude, a longitude in radians is brought into 0...360 degrees first, without a
    /// letter. An undefined longitude or latitude in degrees, minutes and seconds is shown as zero,
    /// deliberately.
    ///
    /// \param intDigits the integer digits to which a `ValueType_Distance` is padded with zeros
    ///     (at most 309, as a double has), as an input field needs it; -1 for no padding. Other
    ///     kinds do not look at it.
    QString getParamValueString(const Param &param, int intDigits = -1) const;

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
    /// and at least 3 decimals while converting (docs/display-configuration.md). Anything else is
    /// warned of in the host's log.
    EUnit distanceUnit;
    unsigned char distancePrecision;
    bool distanceKeepZero;

    EUnit heightUnit;
    unsigned char heightPrecision;
    bool heightKeepZero;
};

} // namespace KelStd
