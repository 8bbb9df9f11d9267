#pragma once

#include <cli/run/Notices.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Positions outside the hull of a site's control points, as a notice of a run.
namespace KelStd::cli {

/// What is said of them: nothing without any, otherwise one warning with their count. `notice`: the
/// number of the notice. `systemName`: what the system is called; empty where there is no other
/// one.
QStringList hullRemarks(const Notices &notices, std::size_t notice, const QString &systemName,
                        qint64 taken, const QString &inputName);

} // namespace KelStd::cli
