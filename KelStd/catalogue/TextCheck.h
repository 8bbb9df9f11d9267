#pragma once

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/DefinedSystem.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>

#include <optional>

namespace KelStd::catalogue {

/// How far a text may be off the system that it was written for [m].
constexpr double sameText = 0.001;

/// What a text that was written for a system makes of positions.
struct TextCheck
{
    bool isRead = false; ///< PROJ reads the text
    int compared = 0;    ///< positions at which both have a result
    double difference =
        0.0; ///< largest [m] between northing and easting by the text and the system's
};

/// Reads a text back, and takes positions of the system's datum to the plane, by the text and by
/// the conversions of `coord`, or on to the `site`. Northing and easting may stand in either order.
/// A datum shift is not looked at.
///
/// The positions are all over the area, where it is known, else about the projection's origin.
TextCheck checkText(const ProjSession &session, const QByteArray &text, const Coord &coord,
                    const calibration::SiteTransform &site, const SystemArea &area);

} // namespace KelStd::catalogue
