#include <KelStd/calibration/DatumWarnings.h>

#include <KelStd/io/ShiftLimits.h>

#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double knownAtBest = 0.001;    // [m], what coordinates are given to
constexpr double largestDeviation = 5.0; // [m], of a translation; see `fitDatum`

} // namespace

void warnOfShift(const DatumParameters &parameters, CalibrationWarnings &warnings)
{
    const struct
    {
        QString part;
        double size;
        double limit;
        const char *unit;
    } rows[] = {
        {QObject::tr("translation"),
         std::max({std::abs(parameters.x), std::abs(parameters.y), std::abs(parameters.z)}),
         io::maxTranslation, " m"},
        {QObject::tr("rotation"),
         std::max({std::abs(parameters.rx), std::abs(parameters.ry), std::abs(parameters.rz)}),
         io::maxRotation, "\""},
        {QObject::tr("scale"), std::abs(parameters.scale), io::maxScaleDifference, " ppm"},
    };
    for (const auto &row : rows) {
        if (row.size <= row.limit)
            continue;
        warnings += CalibrationWarning{
            CalibrationWarningKind::LargeShift,
            QObject::tr("the %1 of %2%3 is larger than that of any datum, and a system with it is "
                        "refused; check the columns of the pairs, and whether they lie far enough "
                        "apart")
                .arg(row.part, QString::number(row.size, 'f', 1), QLatin1String(row.unit))};
    }
}

void warnOfExtent(const DatumSolution &solution, CalibrationWarnings &warnings)
{
    const Judgement &judgement = solution.judgement;
    const bool isWeighted = judgement.statistics.test == OutlierTest::Baarda;
    const double own = judgement.unitDeviation.value_or(0.0);
    const bool isRaised = !isWeighted && own < knownAtBest;
    const double unit = isRaised ? knownAtBest : own;
    const DatumDeviations deviations = scaled(solution.cofactors, unit);
    const double largest = std::max({deviations.x, deviations.y, deviations.z});
    if (largest <= largestDeviation)
        return;
    warnings += CalibrationWarning{
        CalibrationWarningKind::SmallExtent,
        QObject::tr("the translation is known to %1 m only (standard deviation%2): the pairs lie "
                    "too near each other for translations, rotations and scale to be told apart, "
                    "and the shift holds among them alone; fit three parameters, or measure pairs "
                    "farther apart")
            .arg(QString::number(largest, 'f', 1),
                 isRaised ? QObject::tr(", of coordinates that are good to 1 mm") : QString())};
}

void warnOfPairs(const Judgement &judgement, CalibrationWarnings &warnings)
{
    const FitStatistics &statistics = judgement.statistics;
    if (statistics.redundancy == 0) {
        warnings += CalibrationWarning{
            CalibrationWarningKind::NoRedundancy,
            QObject::tr("there is no redundancy: the pairs determine the parameters without a "
                        "check; measure another point")};
    }
    if (!statistics.suspect.isEmpty()) {
        warnings += CalibrationWarning{
            CalibrationWarningKind::Suspect,
            QObject::tr("\"%1\" is suspect: its test is above the critical value %2; check it, and "
                        "fit again without it if it is wrong")
                .arg(statistics.suspect,
                     QString::number(statistics.criticalValue.value_or(0.0), 'f', 2))};
    } else if (judgement.isTied) {
        warnings += CalibrationWarning{
            CalibrationWarningKind::Suspect,
            QObject::tr("a pair is suspect, but several have the same test, so that it cannot be "
                        "told which; measure more points")};
    }
}

} // namespace KelStd::calibration
