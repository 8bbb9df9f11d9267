#include <KelStd/calibration/SiteCheck.h>

#include <KelStd/calibration/ControlChecks.h>
#include <KelStd/calibration/SiteTransform.h>

#include <QtCore/QObject>

#include <cmath>

namespace KelStd::calibration {

namespace {

/// Takes a point's vector into account; the sum of squares is kept in `rms` until `finish`.
void take(DifferenceSummary &summary, const QString &name, double length)
{
    ++summary.points;
    summary.rms = summary.rms.value_or(0.0) + length * length;
    if (!summary.max || length > *summary.max) {
        summary.max = length;
        summary.maxPoint = name;
    }
}

void finish(DifferenceSummary &summary)
{
    if (summary.rms)
        summary.rms = std::sqrt(*summary.rms / summary.points);
}

std::optional<SiteCheck> fail(CalibrationFailure found, CalibrationFailure *failure)
{
    if (failure != nullptr)
        *failure = std::move(found);
    return std::nullopt;
}

} // namespace

std::optional<SiteCheck> checkSite(const Coord &site, const ControlPoints &points,
                                   CalibrationFailure *failure)
{
    if (points.isEmpty()) {
        return fail({CalibrationFault::TooFewPoints,
                     QObject::tr("there is no point to be checked; give at least one")},
                    failure);
    }
    if (CalibrationFailure found = faultOfPoints(points))
        return fail(std::move(found), failure);
    SiteFailure siteFailure;
    const auto transform = SiteTransform::of(site, &siteFailure);
    if (!transform)
        return fail({CalibrationFault::BadRecords, siteFailure.text}, failure);
    std::vector<stENU> base;
    if (CalibrationFailure found = toBase(site, points, base))
        return fail(std::move(found), failure);

    SiteCheck check;
    check.hasSite = transform->hasSite();
    for (int i = 0; i < points.size(); ++i) {
        const ControlPoint &point = points.at(i);
        const stENU at = transform->toSite(base[static_cast<std::size_t>(i)]);
        PointDifference difference;
        difference.name = point.name;
        if (point.isUsedInPlan) {
            difference.north = at.n - point.north;
            difference.east = at.e - point.east;
            take(check.plan, point.name, std::hypot(*difference.north, *difference.east));
        }
        if (point.isUsedInHeight && point.height) {
            difference.height = at.u - *point.height;
            take(check.height, point.name, std::abs(*difference.height));
        }
        check.points += difference;
    }
    finish(check.plan);
    finish(check.height);
    return check;
}

} // namespace KelStd::calibration
