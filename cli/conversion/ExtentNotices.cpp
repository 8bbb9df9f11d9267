#include <cli/conversion/ExtentNotices.h>

#include <cli/conversion/NoticeNumbers.h>

#include <KelStd/calibration/SiteExtent.h>

namespace KelStd::cli {

namespace {

using calibration::SiteExtent;
using calibration::SiteHull;

static_assert(firstTargetExtentNotice + extentNoticeCount <= maxNotices);
static_assert(SiteExtent::plan == 1U && SiteExtent::heights == 1U << 1);

/// Where positions lie, seen from the points. `which`: the points, in the plural.
QString placeOutside(const SiteHull &hull, const QString &which)
{
    switch (hull.corners().size()) {
    case 1:
        return QStringLiteral("more than %1 m from the only one of %2")
            .arg(SiteHull::pointRadius)
            .arg(which);
    case 2: return QStringLiteral("farther from the line of %1 than it is long").arg(which);
    default: return QStringLiteral("outside the hull of %1").arg(which);
    }
}

} // namespace

QStringList extentRemarks(const Notices &notices, std::size_t firstNotice,
                          const ConversionSystem &system, const QString &systemName, qint64 taken,
                          const QString &inputName)
{
    const QString about = systemName.isEmpty() ? QString() : systemName + QLatin1String(": ");
    QStringList remarks;
    const auto remark = [&](const NoticeCount &found, const QString &place, const QString &what) {
        if (found.count == 0)
            return;
        remarks += QStringLiteral("warning: %1%2 of %3 %4, where %5 not hold; the first is %6:%7")
                       .arg(about)
                       .arg(found.count)
                       .arg(taken == 1 ? QStringLiteral("1 position lies")
                                       : QStringLiteral("%1 positions lie").arg(taken))
                       .arg(place, what, inputName)
                       .arg(found.firstLine);
    };
    const SiteExtent extent(system.site, system.origin.control);
    const NoticeCount &plan = notices[firstNotice];
    const NoticeCount &heights = notices[firstNotice + 1];
    if (extent.heightHull() == nullptr) {
        remark(plan, placeOutside(extent.hull(), QStringLiteral("the site's control points")),
               QStringLiteral("the fit does"));
        return remarks;
    }
    remark(plan,
           placeOutside(extent.hull(), QStringLiteral("the site's control points used in plan")),
           QStringLiteral("northing and easting of the fit do"));
    remark(heights,
           placeOutside(*extent.heightHull(),
                        QStringLiteral("the site's control points used in height")),
           QStringLiteral("heights of the fit do"));
    return remarks;
}

} // namespace KelStd::cli
