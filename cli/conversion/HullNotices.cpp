#include <cli/conversion/HullNotices.h>

#include <cli/conversion/NoticeNumbers.h>

namespace KelStd::cli {

static_assert(targetHullNotice < maxNotices);

QStringList hullRemarks(const Notices &notices, std::size_t notice, const QString &systemName,
                        qint64 taken, const QString &inputName)
{
    const NoticeCount &found = notices[notice];
    if (found.count == 0)
        return {};
    const QString about = systemName.isEmpty() ? QString() : systemName + QLatin1String(": ");
    return {QStringLiteral("warning: %1%2 of %3 outside the hull of the site's control points, "
                           "where the fit does not hold; the first is %4:%5")
                .arg(about)
                .arg(found.count)
                .arg(taken == 1 ? QStringLiteral("1 position lies")
                                : QStringLiteral("%1 positions lie").arg(taken))
                .arg(inputName)
                .arg(found.firstLine)};
}

} // namespace KelStd::cli
