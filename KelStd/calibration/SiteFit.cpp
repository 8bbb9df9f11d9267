#include <KelStd/calibration/SiteFit.h>

#include <KelStd/calibration/ControlChecks.h>
#include <KelStd/calibration/HeightSolution.h>
#include <KelStd/calibration/PlaneSolution.h>
#include <KelStd/calibration/SiteMethods.h>
#include <KelStd/calibration/SiteRecordsOfFit.h>
#include <KelStd/calibration/SiteWarnings.h>

#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

/// From how many points on a plane of heights is fitted where nobody chooses.
constexpr int pointsForPlane = 4;

/// The fit of one site, step by step; `failure` says why a step ended it.
class Fit
{
public:
    Fit(const Coord &base, const ControlPoints &control, const SiteFitOptions &options)
        : m_base(base), m_options(options)
    {
        result.coord = base;
        result.control = control;
    }

    bool run()
    {
        return leaveOut() && isSound() && chooseMethods() && fitPlane() && fitHeights()
               && isReproduced();
    }

    SiteFit result;
    CalibrationFailure failure;

private:
    bool fail(CalibrationFault fault, const QString &text)
    {
        failure = {fault, text};
        return false;
    }

    bool take(CalibrationFailure found)
    {
        failure = std::move(found);
        return !failure;
    }

    bool leaveOut();
    bool isSound();
    bool chooseMethods();
    bool fitPlane();
    bool fitHeights();
    bool isReproduced();

    bool hasEnough(const QString &method, int least, int points, const QString &where);
    bool takeSigma(std::optional<double> ControlPoint::*own, const std::optional<double> &common,
                   const std::vector<int> &used, const QString &where, std::vector<double> &sigma);
    void sayChoice(const QString &text);
    QStringList namesOf(const std::vector<int> &points) const;

    const Coord &m_base;
    const SiteFitOptions &m_options;
    std::vector<stENU> m_positions;
    std::vector<int> m_inPlan;
    std::vector<int> m_inHeight;
};

bool Fit::leaveOut()
{
    for (const QString &name : m_options.without) {
        const auto found =
            std::find_if(result.control.begin(), result.control.end(),
                         [&name](const ControlPoint &point) { return point.name == name; });
        if (found == result.control.end()) {
            return fail(CalibrationFault::UnknownName,
                        QObject::tr("there is no point \"%1\" to be left out; the names of points "
                                    "are taken as they are written")
                            .arg(name));
        }
        found->isUsedInPlan = false;
        found->isUsedInHeight = false;
    }
    return true;
}

bool Fit::isSound()
{
    for (const auto &sigma : {m_options.sigmaH, m_options.sigmaV}) {
        if (sigma && !isDeviation(*sigma)) {
            return fail(
                CalibrationFault::BadSigma,
                QObject::tr("the standard deviation of all points is not between 0.000001 and "
                            "1000; give it in metres, or none"));
        }
    }
    return take(faultOfPoints(result.control));
}

void Fit::sayChoice(const QString &text)
{
    result.warnings += CalibrationWarning{CalibrationWarningKind::Choice, text};
}

bool Fit::chooseMethods()
{
    int inPlan = 0;
    int inHeight = 0;
    for (ControlPoint &point : result.control) {
        point.isUsedInHeight = point.isUsedInHeight && point.height;
        inPlan += point.isUsedInPlan ? 1 : 0;
        inHeight += point.isUsedInHeight ? 1 : 0;
    }
    result.plan.method = m_options.plan.value_or(inPlan > 0 ? PlanMethod::Four : PlanMethod::None);
    if (!m_options.plan && inPlan == 0)
        sayChoice(QObject::tr("the plane is not fitted: no point is used in plan"));
    result.height.method =
        m_options.height.value_or(inHeight >= pointsForPlane ? HeightMethod::Plane
                                  : inHeight > 0             ? HeightMethod::Fixed
                                                             : HeightMethod::None);
    if (!m_options.height) {
        sayChoice(inHeight == 0 ? QObject::tr("heights are not fitted: no point is used in height")
                  : inHeight >= pointsForPlane
                      ? QObject::tr("heights are fitted by a plane, as %1 points have heights, and "
                                    "from %2 on a plane is checked")
                            .arg(inHeight)
                            .arg(pointsForPlane)
                      : QObject::tr("heights are fitted by one shift: there are %1 points with "
                                    "heights, and a plane is checked from %2 on")
                            .arg(inHeight)
                            .arg(pointsForPlane));
    }
    if (result.plan.method == PlanMethod::None && result.height.method == HeightMethod::None) {
        return fail(CalibrationFault::NothingToFit,
                    QObject::tr("nothing is to be fitted; use points in plan or in height, and "
                                "choose a method for one of them"));
    }
    for (int i = 0; i < result.control.size(); ++i) {
        const ControlPoint &point = result.control.at(i);
        if (point.isUsedInPlan && result.plan.method != PlanMethod::None)
            m_inPlan.push_back(i);
        if (point.isUsedInHeight && result.height.method != HeightMethod::None)
            m_inHeight.push_back(i);
    }
    for (ControlPoint &point : result.control) {
        point.isUsedInPlan = point.isUsedInPlan && result.plan.method != PlanMethod::None;
        point.isUsedInHeight = point.isUsedInHeight && result.height.method != HeightMethod::None;
    }
    if (!hasEnough(wordOf(result.plan.method), leastPoints(result.plan.method),
                   static_cast<int>(m_inPlan.size()), QObject::tr("plan"))
        || !hasEnough(wordOf(result.height.method), leastPoints(result.height.method),
                      static_cast<int>(m_inHeight.size()), QObject::tr("height"))
        || !take(toBase(m_base, result.control, m_positions)))
        return false;
    clearSite(result.coord, result.warnings, QObject::tr("replaced"));
    for (int i = 0; i < result.control.size(); ++i) {
        const ControlPoint &control = result.control.at(i);
        SitePoint point;
        point.name = control.name;
        point.base = m_positions[static_cast<std::size_t>(i)];
        point.control = {control.east, control.north, control.height.value_or(0.0)};
        result.points += point;
    }
    return true;
}

bool Fit::hasEnough(const QString &method, int least, int points, const QString &where)
{
    if (points >= least)
        return true;
    return fail(CalibrationFault::TooFewPoints,
                QObject::tr("too few points in %1: the method %2 has to have at least %3, and %4 "
                            "can be used; measure more points, or choose a simpler method")
                    .arg(where, method)
                    .arg(least)
                    .arg(points));
}

QStringList Fit::namesOf(const std::vector<int> &points) const
{
    QStringList names;
    for (const int point : points)
        names += result.control.at(point).name;
    return names;
}

/// Standard deviations of all points that are used, or of none.
bool Fit::takeSigma(std::optional<double> ControlPoint::*own, const std::optional<double> &common,
                    const std::vector<int> &used, const QString &where, std::vector<double> &sigma)
{
    QString without;
    for (const int index : used) {
        ControlPoint &point = result.control[index];
        if (!(point.*own))
            point.*own = common;
        if (point.*own)
            sigma.push_back(*(point.*own));
        else
            without = point.name;
    }
    if (sigma.empty() || sigma.size() == used.size())
        return true;
    return fail(CalibrationFault::MissingSigma,
                QObject::tr("the point \"%1\" has no standard deviation in %2 while others have; "
                            "give one for all points, or none")
                    .arg(without, where));
}

bool Fit::fitPlane()
{
    if (m_inPlan.empty())
        return true;
    PlanePairs pairs;
    pairs.names = namesOf(m_inPlan);
    for (const int index : m_inPlan) {
        pairs.base.push_back(result.points.at(index).base);
        pairs.control.push_back(result.points.at(index).control);
    }
    if (!takeSigma(&ControlPoint::sigmaH, m_options.sigmaH, m_inPlan, QObject::tr("plan"),
                   pairs.sigma)
        || !take(faultOfPlaces(pairs.names, pairs.base, QObject::tr("measured")))
        || !take(faultOfPlaces(pairs.names, pairs.control, QObject::tr("given"))))
        return false;
    const PlaneSolution solution = solvePlane(pairs, result.plan.method);
    result.plan = solution.fit;
    for (std::size_t i = 0; i < m_inPlan.size(); ++i) {
        SitePoint &point = result.points[m_inPlan[i]];
        const PlaneResidual &residual = solution.residuals[i];
        point.plan = solution.judgement.points[i];
        point.residualNorth = residual.north;
        point.residualEast = residual.east;
        point.leftOutNorth = residual.leftOutNorth;
        point.leftOutEast = residual.leftOutEast;
        if (solution.variances)
            point.ellipse = ellipseOf(solution, static_cast<int>(i));
    }
    warnOfPlane(pairs, solution, result.warnings);
    return true;
}

bool Fit::fitHeights()
{
    setPlane(result.plan, result.coord.planeTransform);
    // Where the surface is applied: at the northing and easting that the stored plane gives.
    const auto plane = SiteTransform::of(result.coord.planeTransform, stElevationFitting());
    if (!plane)
        return fail(CalibrationFault::NotReproduced,
                    QObject::tr("the plane that was fitted cannot be applied; check the points"));
    for (SitePoint &point : result.points)
        point.site = plane->toSite(point.base);
    if (m_inHeight.empty()) {
        setHeights(result.height, result.coord.elevationFitting);
        return true;
    }
    HeightPairs pairs;
    pairs.names = namesOf(m_inHeight);
    for (const int index : m_inHeight) {
        pairs.site.push_back(result.points.at(index).site);
        pairs.control.push_back(result.points.at(index).control.u);
    }
    const bool isFlat = result.height.method == HeightMethod::Fixed;
    if (!takeSigma(&ControlPoint::sigmaV, m_options.sigmaV, m_inHeight, QObject::tr("height"),
                   pairs.sigma)
        || !take(faultOfPlaces(pairs.names, pairs.site, QObject::tr("measured"))))
        return false;
    if (!isFlat && areInLine(pairs.site)) {
        return fail(CalibrationFault::CollinearPoints,
                    QObject::tr("the points with heights are in one line, so that the slope across "
                                "it is not known; measure a point off the line, or fit one shift"));
    }
    const HeightSolution solution = solveHeights(pairs, result.height.method);
    if (!(solution.condition > leastCondition)) {
        return fail(CalibrationFault::CollinearPoints,
                    QObject::tr("the points with heights are on one conic, such as two lines or a "
                                "circle, which does not determine a curve; measure other points, "
                                "or fit a plane"));
    }
    result.height = solution.fit;
    for (std::size_t i = 0; i < m_inHeight.size(); ++i) {
        SitePoint &point = result.points[m_inHeight[i]];
        point.height = solution.judgement.points[i];
        point.residualHeight = solution.residuals[i].height;
        point.leftOutHeight = solution.residuals[i].leftOut;
    }
    warnOfHeights(result.height, solution.judgement, result.warnings);
    setHeights(result.height, result.coord.elevationFitting);
    return true;
}

/// Applies the records to each point, and holds what comes out against what was adjusted.
bool Fit::isReproduced()
{
    constexpr double tolerance = 1e-4; // [m]
    SiteFailure siteFailure;
    const auto site = SiteTransform::of(result.coord, &siteFailure);
    if (!site)
        return fail(CalibrationFault::NotReproduced, siteFailure.text);
    for (SitePoint &point : result.points) {
        point.site = site->toSite(point.base);
        const auto differs = [](const std::optional<double> &residual, double applied,
                                double control) {
            return residual && !(std::abs(applied - control - *residual) < tolerance);
        };
        if (differs(point.residualNorth, point.site.n, point.control.n)
            || differs(point.residualEast, point.site.e, point.control.e)
            || differs(point.residualHeight, point.site.u, point.control.u)) {
            return fail(CalibrationFault::NotReproduced,
                        QObject::tr("the fitted site, applied to the point \"%1\", misses what was "
                                    "adjusted by more than 0.1 mm; the coordinates are too large "
                                    "or too far apart to be fitted")
                            .arg(point.name));
        }
    }
    warnOfLeftOut(result, result.warnings);
    return true;
}

} // namespace

std::optional<SiteFit> fitSite(const Coord &base, const ControlPoints &control,
                               const SiteFitOptions &options, CalibrationFailure *failure)
{
    Fit fit(base, control, options);
    if (fit.run())
        return std::move(fit.result);
    if (failure != nullptr)
        *failure = std::move(fit.failure);
    return std::nullopt;
}

SystemOrigin siteOrigin(const SystemOrigin &base, const ControlPoints &control)
{
    SystemOrigin origin = base;
    origin.authority.clear();
    origin.code.clear();
    origin.databaseVersion.clear();
    origin.control = control;
    return origin;
}

} // namespace KelStd::calibration
