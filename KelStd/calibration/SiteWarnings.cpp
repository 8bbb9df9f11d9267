#include <KelStd/calibration/SiteWarnings.h>

#include <QtCore/QObject>

#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double partsPerMillion = 1e6;
constexpr double largeScale = 100.0; // [ppm]
constexpr double largeSlope = 50.0;  // [ppm]
constexpr double metresPerFoot = 0.3048;
constexpr double footTolerance = 0.005; // of a scale, more than any projection has
constexpr double farBetter = 10.0;      // times the RMS
constexpr double leftOutLimit = 3.0;    // times the RMS
constexpr double leastLeftOut = 0.001;  // [m], what coordinates are given to
constexpr double leastMisfit = 0.01;    // [m] below which no mirror is looked for

bool isNear(double value, double expected)
{
    return std::abs(value - expected) <= footTolerance * expected;
}

void warn(CalibrationWarnings &warnings, CalibrationWarningKind kind, const QString &text)
{
    warnings += CalibrationWarning{kind, text};
}

QString millimetres(double metres)
{
    return QObject::tr("%1 m").arg(metres, 0, 'f', 3);
}

/// True where lengths differ as feet and metres do.
bool warnOfFeet(const PlanePairs &pairs, CalibrationWarnings &warnings)
{
    if (pairs.base.size() < 2)
        return false;
    const double scale = quickSimilarity(pairs, false).scale;
    if (!isNear(scale, metresPerFoot) && !isNear(scale, 1.0 / metresPerFoot))
        return false;
    const bool isControlInFeet = scale > 1.0;
    warn(warnings, CalibrationWarningKind::Feet,
         QObject::tr("distances between the points are %1 times those that were measured: %2")
             .arg(scale, 0, 'f', 4)
             .arg(isControlInFeet
                      ? QObject::tr("the control coordinates seem to be in feet; give them in "
                                    "metres, or name their unit in the headings")
                      : QObject::tr("the control coordinates seem to be in metres where feet are "
                                    "read; check the unit in the headings")));
    return true;
}

void warnOfMirror(const PlanePairs &pairs, CalibrationWarnings &warnings)
{
    if (pairs.base.size() < 3)
        return;
    const QuickSimilarity direct = quickSimilarity(pairs, false);
    const QuickSimilarity swapped = quickSimilarity(pairs, true);
    if (!(direct.rms > leastMisfit) || !(direct.rms > farBetter * swapped.rms))
        return;
    // A mirror is a swap behind a quarter turn; sites are seldom turned by more than half of one.
    constexpr double eighthTurn = 0.785398163397448;
    const bool isSwapped = std::abs(swapped.rotation) < eighthTurn;
    warn(warnings, CalibrationWarningKind::Mirrored,
         (isSwapped ? QObject::tr("with northing and easting of the control points swapped, the "
                                  "RMS in plan would be %1 instead of %2; check the columns")
                    : QObject::tr("with one axis of the control points mirrored, the RMS in plan "
                                  "would be %1 instead of %2; check the signs of northing and "
                                  "easting"))
             .arg(millimetres(swapped.rms), millimetres(direct.rms)));
}

void warnOfTest(const Judgement &judgement, const QString &where, CalibrationWarnings &warnings)
{
    const FitStatistics &statistics = judgement.statistics;
    if (!statistics.suspect.isEmpty()) {
        warn(warnings, CalibrationWarningKind::Suspect,
             QObject::tr("\"%1\" is suspect in %2: its test is above the critical value %3; check "
                         "it, and fit again without it if it is wrong")
                 .arg(statistics.suspect, where,
                      QString::number(statistics.criticalValue.value_or(0.0), 'f', 2)));
    } else if (judgement.isTied) {
        warn(warnings, CalibrationWarningKind::Suspect,
             QObject::tr("a point is suspect in %1, but several have the same test, so that it "
                         "cannot be told which; measure more points")
                 .arg(where));
    }
}

void warnOfRedundancy(const FitStatistics &statistics, const QString &where,
                      CalibrationWarnings &warnings)
{
    if (statistics.redundancy > 0)
        return;
    warn(warnings, CalibrationWarningKind::NoRedundancy,
         QObject::tr("there is no redundancy in %1: the points determine the parameters without a "
                     "check, and an error in one of them does not show; measure another point")
             .arg(where));
}

/// The worst point of one part, and how many others are above the limit.
struct WorstLeftOut
{
    QString name;
    double length = 0.0;
    int others = 0;

    void take(const QString &point, double missedBy, double rms)
    {
        if (!(missedBy > leftOutLimit * rms) || !(missedBy > leastLeftOut))
            return;
        others += name.isEmpty() ? 0 : 1;
        if (missedBy > length) {
            name = point;
            length = missedBy;
        }
    }
};

void warnOf(const WorstLeftOut &worst, const QString &where, double rms,
            CalibrationWarnings &warnings)
{
    if (worst.name.isEmpty())
        return;
    const QString others =
        worst.others == 0 ? QString()
                          : QObject::tr(", and %1 more are above three times it").arg(worst.others);
    warn(warnings, CalibrationWarningKind::LeftOut,
         QObject::tr("the fit without \"%1\" misses it by %2 in %3, more than three times the RMS "
                     "of %4%5; check the point")
             .arg(worst.name, millimetres(worst.length), where, millimetres(rms), others));
}

} // namespace

void warnOfPlane(const PlanePairs &pairs, const PlaneSolution &solution,
                 CalibrationWarnings &warnings)
{
    const QString where = QObject::tr("plan");
    warnOfRedundancy(solution.judgement.statistics, where, warnings);
    const double scale = (solution.fit.similarity.scale - 1.0) * partsPerMillion;
    if (!warnOfFeet(pairs, warnings) && std::abs(scale) > largeScale) {
        warn(warnings, CalibrationWarningKind::Scale,
             QObject::tr("the scale is %1 ppm off 1, more than %2 ppm; check the system, its "
                         "projection and the control points")
                 .arg(scale, 0, 'f', 1)
                 .arg(largeScale));
    }
    warnOfMirror(pairs, warnings);
    warnOfTest(solution.judgement, where, warnings);
}

void warnOfHeights(const HeightFit &fit, const Judgement &judgement, CalibrationWarnings &warnings)
{
    const QString where = QObject::tr("height");
    warnOfRedundancy(judgement.statistics, where, warnings);
    const double slope = std::hypot(fit.slopeNorth, fit.slopeEast) * partsPerMillion;
    if (slope > largeSlope) {
        warn(warnings, CalibrationWarningKind::Slope,
             QObject::tr("heights are tilted by %1 ppm, more than %2 ppm; check the heights of the "
                         "control points and the geoid model")
                 .arg(slope, 0, 'f', 1)
                 .arg(largeSlope));
    }
    warnOfTest(judgement, where, warnings);
}

void warnOfLeftOut(const SiteFit &fit, CalibrationWarnings &warnings)
{
    const double planRms = fit.plan.statistics.rms.value_or(0.0);
    const double heightRms = fit.height.statistics.rms.value_or(0.0);
    WorstLeftOut plan;
    WorstLeftOut height;
    for (const SitePoint &point : fit.points) {
        if (point.leftOutNorth && point.leftOutEast)
            plan.take(point.name, std::hypot(*point.leftOutNorth, *point.leftOutEast), planRms);
        if (point.leftOutHeight)
            height.take(point.name, std::abs(*point.leftOutHeight), heightRms);
    }
    warnOf(plan, QObject::tr("plan"), planRms, warnings);
    warnOf(height, QObject::tr("height"), heightRms, warnings);
}

} // namespace KelStd::calibration
