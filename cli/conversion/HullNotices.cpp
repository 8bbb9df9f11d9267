#include <cli/conversion/HullNotices.h>

#include <KelStd/location/AreaCheck.h>

namespace KelStd::cli {

namespace {

/// Behind those of the area, which are numbered by mistakes.
constexpr std::size_t outsideHull = static_cast<std::size_t>(PositionMistake::BothSigns) + 1;

static_assert(outsideHull < maxNotices);

} // namespace

NoticeBits hullNotices(const calibration::SiteHull &hull, const Pos &atSite)
{
    const stENU &at = atSite.getENU();
    return hull.contains(at.n, at.e) ? 0U : 1U << outsideHull;
}

QStringList hullRemarks(const Notices &notices, qint64 taken, const QString &inputName)
{
    const NoticeCount &found = notices[outsideHull];
    if (found.count == 0)
        return {};
    return {QStringLiteral("warning: %1 of %2 outside the hull of the site's control points, where "
                           "the fit does not hold; the first is %3:%4")
                .arg(found.count)
                .arg(taken == 1 ? QStringLiteral("1 position lies")
                                : QStringLiteral("%1 positions lie").arg(taken))
                .arg(inputName)
                .arg(found.firstLine)};
}

} // namespace KelStd::cli
