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

    /// Sets every field to the values of the second default set, 12 or 15 decimals for most kinds.
    void clear();

    /// Equality of all fields, `coordOrder` included.
    bool operator==(const stShowConfig &other) const;
    /// The negation of `operator==`.
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
    /// The same for the kind of `param`.
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

    unsigned char doublePrecision; ///< decimals of plain numbers, 6 at first
    bool doubleKeepZero;           ///< whether zeros at their end stay; so for the others

    EFormat latLongFormat;          ///< style of longitudes and latitudes
    unsigned char latLongPrecision; ///< decimals of the last part, 6 at first
    bool latLongKeepZero;           ///< kept; longitudes and latitudes in tables keep their zeros

    EUnit earthHeightUnit;              ///< of ellipsoidal heights
    unsigned char earthHeightPrecision; ///< decimals, 4 at first
    bool earthHeightKeepZero;           ///< whether zeros at the end stay

    EUnit xyUnit;              ///< of northings and eastings
    unsigned char xyPrecision; ///< decimals, 4 at first
    bool xyKeepZero;           ///< whether zeros at the end stay

    EUnit elevationHeightUnit;              ///< of heights in the system of the plane
    unsigned char elevationHeightPrecision; ///< decimals, 4 at first
    bool elevationHeightKeepZero;           ///< whether zeros at the end stay

    EFormat timeFormat; ///< the time scale in which times are shown

    EUnit tempratureUnit;              ///< degrees Celsius at first; the names are the contract's
    unsigned char tempraturePrecision; ///< decimals, 0 at first
    bool tempratureKeepZero;           ///< whether zeros at the end stay

    EUnit pressureUnit;              ///< bar at first
    unsigned char pressurePrecision; ///< decimals, 0 at first
    bool pressureKeepZero;           ///< whether zeros at the end stay

    /// Style of angles that are no longitude or latitude, arc seconds at first.
    EFormat angleFormat;
    unsigned char anglePrecision; ///< decimals of the last part, 2 at first
    bool angleKeepZero;           ///< kept; angles in tables keep their zeros

    /// Also the unit and decimals in which a spelled-out semi-major axis reaches PROJ: keep metres
    /// and at least 3 decimals while converting (docs/display-configuration.md). Anything else is
    /// warned of in the host's log.
    EUnit distanceUnit;
    unsigned char distancePrecision; ///< decimals, 4 at first
    bool distanceKeepZero;           ///< whether zeros at the end stay

    EUnit heightUnit;              ///< of heights that are no component of a position
    unsigned char heightPrecision; ///< decimals, 4 at first
    bool heightKeepZero;           ///< whether zeros at the end stay
};

} // namespace KelStd
