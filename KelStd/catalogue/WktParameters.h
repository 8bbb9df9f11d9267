#pragma once

#include <KelStd/catalogue/ProjSession.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::catalogue {

/// Why the parameters of a WKT's projection are not taken over; empty where nothing speaks against
/// them.
///
/// PROJ passes over a parameter that it does not know and has a default for one that it misses, so
/// that a misspelt "false_easting" is a false easting of 0. What a parameter does is asked of PROJ
/// itself: each one is changed in the text, and one that changes nothing is refused, as is a number
/// of PROJ's that no parameter changes. Refused as well are a parameter that is given twice, and
/// one of WKT 2 without a unit where the plane is not in metres or the base not in degrees, which
/// PROJ takes for metres and degrees whatever the text has.
QString doubtOnParameters(const ProjSession &session, const QByteArray &definition);

/// The "Vertical_Shift" of ESRI's vertical system in a WKT, which PROJ passes over; 0 without one.
double verticalShiftOf(const QByteArray &definition);

} // namespace KelStd::catalogue
