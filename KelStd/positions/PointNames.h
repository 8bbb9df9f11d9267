#pragma once

#include <KelStd/Export.h>

#include <QtCore/QStringList>

namespace KelStd::positions {

/// Which of the headings of a table names the points: "point", "name", "id" or another such word,
/// the best first. -1 for none. May be called on any thread.
KELSTD_EXPORT int pointNameAmong(const QStringList &headings);

} // namespace KelStd::positions
