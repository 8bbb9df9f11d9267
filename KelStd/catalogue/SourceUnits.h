#pragma once

#include <KelStd/catalogue/ProjSession.h>

namespace KelStd::catalogue {

/// A WKT text in which angular units that are written with fewer digits (0.0174532925, by 2e-9 at
/// most) have all of them. PROJ would multiply origins and meridians by what is written.
QByteArray withWholeAngles(const QByteArray &wkt);

/// Why the units of a projected system of a text cannot be believed: one that is no size, or whose
/// size is not that of its name, as "Foot_US" with 0.3048. Empty where they can. PROJ multiplies by
/// whatever is written.
QString doubtOnUnits(const ProjSession &session, const PJ *projected, const PJ *geodetic);

} // namespace KelStd::catalogue
