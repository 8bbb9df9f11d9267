#pragma once

#include <KelStd/Export.h>
#include <KelStd/text/UnitNames.h>

#include <QtCore/QString>

namespace KelStd::positions {

/// What a heading says: "WGS84 latitude [rad]" is the word "latitude", the frame "wgs84" and the
/// unit radian.
struct Heading
{
    QString text;                    ///< as it stands
    QString whole;                   ///< without the unit: "wgs84_latitude"
    QString word;                    ///< without frame and unit: "latitude"
    QString frame;                   ///< "wgs84", "local" or empty
    const NamedUnit *unit = nullptr; ///< null: it names none
};

/// A heading as it is compared: "Longitude [deg]" is "longitude_deg".
QString normalisedHeading(const QString &heading);

/// "decimalLatitude" as "decimal_Latitude".
QString withWordsApart(QString text);

KELSTD_EXPORT Heading headingOf(const QString &text);

} // namespace KelStd::positions
