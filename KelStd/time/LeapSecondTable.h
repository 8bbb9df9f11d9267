#pragma once

#include <KelStd/Export.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QList>

namespace KelStd {

/// The count that holds from a UTC instant on.
struct LeapSecondRow
{
    TimeUtc from;        ///< the first instant with this count
    int gpsMinusUtc = 0; ///< [s], negative before 1980: GPS time is behind UTC there
};

/// The table by which every time class converts: IERS Bulletin C and its predecessors, in order of
/// time. The first row is that of 1972-01-01, before which the library takes its count, too.
///
/// May be called on any thread.
KELSTD_EXPORT QList<LeapSecondRow> leapSecondTable();

/// Until when it is known that the table lacks no leap second (UTC): what the Bulletin C that was
/// looked at last says. Later instants have the last row's count unless their times were given a
/// greater one (see `TimeGpsT`).
///
/// May be called on any thread.
KELSTD_EXPORT TimeUtc leapSecondTableKnownUntil();

} // namespace KelStd
