#pragma once

#include <QtCore/QtGlobal>

/// GPS minus UTC [s]. Instants are millisecond counts from 1970-01-01 00:00 of their own scale.
namespace KelStd::leapSeconds {

/// Of a UTC instant: that of the last row of the table that is not later. Instants before the
/// first row have its count, too.
int atUtc(qint64 utc);

/// Of a GPS instant, by looking twice: first as if it were UTC, then with the count found taken
/// off.
///
/// Between two rows this is exact. While the counts are not positive (the rows to 1980), the step
/// comes where the date's midnight has the old count taken on, one second before the first GPS
/// instant that has the new count; no UTC instant maps to the second between.
int atGps(qint64 gps);

/// Of a GPS instant for which a caller supplies a count. The count is believed only where the table
/// cannot know better: later than the last row, and greater than that row's count.
int judged(qint64 gps, int suppliedCount);

/// Of a UTC instant for which a caller supplies a count, by the same rule.
int judgedAtUtc(qint64 utc, int suppliedCount);

} // namespace KelStd::leapSeconds
