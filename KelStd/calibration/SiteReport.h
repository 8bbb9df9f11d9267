#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/SiteFit.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::calibration {

/// What a report says besides the fit.
struct SiteReportFacts
{
    QString baseName;     ///< of the base system
    QString madeOn;       ///< a date, as it is to be printed; may be empty
    QString pipeline;     ///< the whole chain as a text for other programs; may be empty
    QString pipelineNote; ///< why there is none
};

/// A report of a fit for those who ordered the survey: an HTML page in UTF-8 that needs nothing
/// besides itself, no script and no network, and prints on A4. It has the base system and its geoid
/// model, the parameters in both sign conventions and about the centroid, the table of points with
/// what is suspect, a plan of the site to scale with the residual vectors and, where they are
/// known, error ellipses, the residuals of heights, the hull in which the fit holds, the warnings
/// and the exported chain.
///
/// Numbers have a decimal point. Texts of the site are escaped. Any thread may call it.
KELSTD_EXPORT QByteArray siteReport(const SiteFit &fit, const SiteReportFacts &facts);

} // namespace KelStd::calibration
