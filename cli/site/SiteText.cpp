#include <cli/site/SiteText.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/Report.h>
#include <cli/terminal/ShownText.h>

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <algorithm>

namespace KelStd::cli {

namespace {

using namespace calibration;

constexpr double partsPerMillion = 1e6;
constexpr int lengthDecimals = 4;

/// Without the sign of what rounds to nothing.
QString fixed(double value, int decimals)
{
    const QString text = QString::number(value, 'f', decimals);
    return text.toDouble() == 0.0 ? QString::number(0.0, 'f', decimals) : text;
}

QString length(const std::optional<double> &value)
{
    return value ? fixed(*value, lengthDecimals) : QStringLiteral("-");
}

QString plain(const std::optional<double> &value, int decimals)
{
    return value ? fixed(*value, decimals) : QStringLiteral("-");
}

QString withDeviation(const QString &value, const std::optional<double> &deviation, int decimals)
{
    return deviation ? QStringLiteral("%1 (standard deviation %2)")
                           .arg(value, fixed(*deviation, decimals))
                     : value;
}

/// Rows of texts in columns of their widths, the first one to the left.
void printTable(const QVector<QStringList> &rows, Console &console)
{
    QVector<int> widths(rows.first().size());
    for (const QStringList &row : rows) {
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), static_cast<int>(row.at(i).size()));
    }
    for (const QStringList &row : rows) {
        QString line = row.first().leftJustified(widths.first());
        for (int i = 1; i < row.size(); ++i)
            line += QLatin1String("  ") + row.at(i).rightJustified(widths.at(i));
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        console.print(line);
    }
}

void printStatistics(const FitStatistics &statistics, Report &report)
{
    report.value(
        QStringLiteral("Points"),
        QStringLiteral("%1, redundancy %2").arg(statistics.points).arg(statistics.redundancy));
    const bool isWeighted = statistics.test == OutlierTest::Baarda;
    report.value(QStringLiteral("s0"), isWeighted || !statistics.s0
                                           ? plain(statistics.s0, 3)
                                           : length(statistics.s0) + QStringLiteral(" m"));
    report.value(QStringLiteral("RMS"), QStringLiteral("%1 m, largest %2 m (%3)")
                                            .arg(length(statistics.rms), length(statistics.max),
                                                 shown(statistics.maxPoint)));
    report.value(QStringLiteral("Test"),
                 QStringLiteral("%1, critical value %2 at 0.001")
                     .arg(isWeighted ? QStringLiteral("Baarda's w") : QStringLiteral("Pope's tau"),
                          plain(statistics.criticalValue, 4)));
}

void printPlan(const PlanFit &plan, Report &report)
{
    report.section(QStringLiteral("Plan"), wordOf(plan.method));
    if (plan.method == PlanMethod::None)
        return;
    const PlaneSimilarity &similarity = plan.similarity;
    report.value(QStringLiteral("Shift east"),
                 QStringLiteral("%1 m").arg(fixed(similarity.eastShift, lengthDecimals)));
    report.value(QStringLiteral("Shift north"),
                 QStringLiteral("%1 m").arg(fixed(similarity.northShift, lengthDecimals)));
    report.value(QStringLiteral("Rotation"),
                 withDeviation(QStringLiteral("%1\"").arg(fixed(similarity.rotation, 5)),
                               plan.rotationDeviation, 5));
    report.value(QStringLiteral("Scale"),
                 withDeviation(QStringLiteral("%1, %2 ppm")
                                   .arg(fixed(similarity.scale, 10),
                                        fixed((similarity.scale - 1.0) * partsPerMillion, 3)),
                               plan.scaleDeviation, 3));
    report.value(QStringLiteral("Centroid"),
                 withDeviation(QStringLiteral("N %1, E %2 becomes N %3, E %4")
                                   .arg(fixed(plan.baseCentroid.n, lengthDecimals),
                                        fixed(plan.baseCentroid.e, lengthDecimals),
                                        fixed(plan.siteCentroid.n, lengthDecimals),
                                        fixed(plan.siteCentroid.e, lengthDecimals)),
                               plan.shiftDeviation, lengthDecimals));
    printStatistics(plan.statistics, report);
}

void printHeight(const HeightFit &height, Report &report)
{
    report.section(QStringLiteral("Height"), wordOf(height.method));
    if (height.method == HeightMethod::None)
        return;
    report.value(QStringLiteral("Shift"),
                 withDeviation(QStringLiteral("%1 m at the centroid")
                                   .arg(fixed(height.shiftAtCentroid, lengthDecimals)),
                               height.shiftDeviation, lengthDecimals));
    if (height.method != HeightMethod::Fixed) {
        const auto slope = [](double value, const std::optional<double> &deviation) {
            return withDeviation(
                QStringLiteral("%1 ppm").arg(fixed(value * partsPerMillion, 3)),
                deviation ? std::optional(*deviation * partsPerMillion) : std::nullopt, 3);
        };
        report.value(QStringLiteral("Slope north"),
                     slope(height.slopeNorth, height.slopeNorthDeviation));
        report.value(QStringLiteral("Slope east"),
                     slope(height.slopeEast, height.slopeEastDeviation));
    }
    printStatistics(height.statistics, report);
}

} // namespace

void printText(const SiteFit &fit, Console &console)
{
    Report report(console);
    printPlan(fit.plan, report);
    printHeight(fit.height, report);
    report.section(QStringLiteral("Points"),
                   QStringLiteral("residuals, calculated minus control, and those of a fit without "
                                  "the point [m]"));
    QVector<QStringList> rows = {
        {QStringLiteral("name"), QStringLiteral("use"), QStringLiteral("north"),
         QStringLiteral("east"), QStringLiteral("height"), QStringLiteral("r h"),
         QStringLiteral("r v"), QStringLiteral("test h"), QStringLiteral("test v"),
         QStringLiteral("without n"), QStringLiteral("without e"), QStringLiteral("without h"),
         QString()}};
    for (int i = 0; i < fit.points.size(); ++i) {
        const SitePoint &point = fit.points.at(i);
        QStringList marks;
        if (point.plan.isSuspect)
            marks += QStringLiteral("suspect in plan");
        if (point.height.isSuspect)
            marks += QStringLiteral("suspect in height");
        rows += {shown(point.name),
                 fit.control.at(i).useWord(),
                 length(point.residualNorth),
                 length(point.residualEast),
                 length(point.residualHeight),
                 plain(point.plan.redundancy, 2),
                 plain(point.height.redundancy, 2),
                 plain(point.plan.test, 2),
                 plain(point.height.test, 2),
                 length(point.leftOutNorth),
                 length(point.leftOutEast),
                 length(point.leftOutHeight),
                 marks.join(QLatin1String(", "))};
    }
    printTable(rows, console);
}

void printText(const SiteCheck &check, Console &console)
{
    QVector<QStringList> rows = {{QStringLiteral("name"), QStringLiteral("north"),
                                  QStringLiteral("east"), QStringLiteral("height")}};
    for (const PointDifference &point : check.points)
        rows += {shown(point.name), length(point.north), length(point.east), length(point.height)};
    Report report(console);
    report.section(QStringLiteral("Points"),
                   QStringLiteral("differences, by the site minus given [m]"));
    printTable(rows, console);
    const auto summary = [&report](const QString &label, const DifferenceSummary &part) {
        if (part.points == 0)
            return;
        report.value(label, QStringLiteral("RMS %1 m, largest %2 m (%3)")
                                .arg(length(part.rms), length(part.max), shown(part.maxPoint)));
    };
    report.section(QStringLiteral("All"));
    summary(QStringLiteral("Plan"), check.plan);
    summary(QStringLiteral("Height"), check.height);
}

void printText(const DatumFit &fit, Console &console)
{
    Report report(console);
    report.section(QStringLiteral("Datum shift"),
                   QStringLiteral("local to WGS 84, rotations as position vector"));
    const DatumDeviations known = fit.deviations.value_or(DatumDeviations());
    const struct
    {
        const char *label;
        double DatumParameters::*value;
        const char *unit;
        int decimals;
        std::optional<double> deviation;
    } rows[] = {
        {"X", &DatumParameters::x, " m", 4, known.x},
        {"Y", &DatumParameters::y, " m", 4, known.y},
        {"Z", &DatumParameters::z, " m", 4, known.z},
        {"Rotation X", &DatumParameters::rx, "\"", 6, known.rx},
        {"Rotation Y", &DatumParameters::ry, "\"", 6, known.ry},
        {"Rotation Z", &DatumParameters::rz, "\"", 6, known.rz},
        {"Scale", &DatumParameters::scale, " ppm", 6, known.scale},
    };
    for (const auto &row : rows) {
        const bool isKnown = fit.deviations && row.deviation;
        report.value(QLatin1String(row.label),
                     QStringLiteral("%1%2 (%3linear: %4)")
                         .arg(fixed(fit.rigorous.*row.value, row.decimals), QLatin1String(row.unit),
                              isKnown ? QStringLiteral("standard deviation %1, ")
                                            .arg(fixed(*row.deviation, row.decimals))
                                      : QString(),
                              fixed(fit.linear.*row.value, row.decimals)));
    }
    printStatistics(fit.statistics, report);
    report.section(QStringLiteral("Points"),
                   QStringLiteral("residuals, calculated minus given in WGS 84 [m]"));
    QVector<QStringList> table = {{QStringLiteral("name"), QStringLiteral("X"), QStringLiteral("Y"),
                                   QStringLiteral("Z"), QStringLiteral("test"), QString()}};
    for (const DatumPoint &point : fit.points) {
        table += {shown(point.name),
                  fixed(point.residualX, lengthDecimals),
                  fixed(point.residualY, lengthDecimals),
                  fixed(point.residualZ, lengthDecimals),
                  plain(point.test, 2),
                  point.isSuspect ? QStringLiteral("suspect") : QString()};
    }
    printTable(table, console);
}

void reportWarnings(const CalibrationWarnings &warnings, Console &console)
{
    for (const CalibrationWarning &warning : warnings) {
        const bool isNote = warning.kind == CalibrationWarningKind::Choice;
        console.report((isNote ? QStringLiteral("note: %1") : QStringLiteral("warning: %1"))
                           .arg(shown(warning.text)));
    }
}

} // namespace KelStd::cli
