#pragma once

#include <cli/run/Notices.h>

#include <KelStd/calibration/SiteHull.h>
#include <KelStd/coord/Pos.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Positions outside the hull of a site's control points, as a notice of a run.
namespace KelStd::cli {

/// The notice of a position that has coordinates at the site.
NoticeBits hullNotices(const calibration::SiteHull &hull, const Pos &atSite);

/// What is said of them: nothing without any, otherwise one warning with their count.
QStringList hullRemarks(const Notices &notices, qint64 taken, const QString &inputName);

} // namespace KelStd::cli
