#include <KelStd/calibration/SiteReport.h>

#include <KelStd/calibration/ReportPage.h>
#include <KelStd/calibration/SiteExtent.h>
#include <KelStd/calibration/SitePlan.h>

#include <QtCore/QVector>

#include <algorithm>
#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double partsPerMillion = 1e6;
constexpr double arcSecondsPerDegree = 3600.0;

QString shown(const std::optional<double> &value, int decimals)
{
    return value ? fixed(*value, decimals) : QStringLiteral("-");
}

QString signedText(double value, int decimals)
{
    const QString text = fixed(value, decimals);
    return text.startsWith(QLatin1Char('-')) ? text : QLatin1Char('+') + text;
}

QString withDeviation(const QString &value, const std::optional<double> &deviation, int decimals,
                      const char *unit)
{
    return deviation ? QStringLiteral("%1 (standard deviation %2%3)")
                           .arg(value, fixed(*deviation, decimals), QLatin1String(unit))
                     : value;
}

void addStatistics(const FitStatistics &statistics, ReportPage &page)
{
    const bool isWeighted = statistics.test == OutlierTest::Baarda;
    page.fact(QStringLiteral("Points, redundancy"),
              QStringLiteral("%1, %2").arg(statistics.points).arg(statistics.redundancy));
    page.fact(QStringLiteral("Standard deviation of unit weight"),
              isWeighted
                  ? QStringLiteral("%1, to those that were given").arg(shown(statistics.s0, 3))
                  : QStringLiteral("%1 m").arg(shown(statistics.s0, 4)));
    page.fact(QStringLiteral("RMS"),
              QStringLiteral("%1 m, the root of the sum of the residual vectors' squares over the "
                             "number of points")
                  .arg(shown(statistics.rms, 4)));
    page.fact(QStringLiteral("Largest residual"),
              QStringLiteral("%1 m, %2").arg(shown(statistics.max, 4), statistics.maxPoint));
    page.fact(QStringLiteral("Test at 0.001"),
              QStringLiteral("%1, critical value %2")
                  .arg(isWeighted ? QStringLiteral("Baarda's w") : QStringLiteral("Pope's tau"),
                       shown(statistics.criticalValue, 4)));
}

void addPlan(const PlanFit &plan, ReportPage &page)
{
    page.heading(QStringLiteral("Plan: ") + wordOf(plan.method));
    if (plan.method == PlanMethod::None) {
        page.paragraph(QStringLiteral("The plane of the base system is that of the site."));
        return;
    }
    const PlaneSimilarity &similarity = plan.similarity;
    const auto turn = [](double arcSeconds) {
        return QStringLiteral("%1\u2033 (%2\u00B0)")
            .arg(fixed(arcSeconds, 6), fixed(arcSeconds / arcSecondsPerDegree, 9));
    };
    page.beginFacts();
    page.fact(QStringLiteral("Shift east"),
              QStringLiteral("%1 m").arg(fixed(similarity.eastShift, 4)));
    page.fact(QStringLiteral("Shift north"),
              QStringLiteral("%1 m").arg(fixed(similarity.northShift, 4)));
    page.fact(QStringLiteral("Rotation \u03B8, as stored"),
              withDeviation(turn(similarity.rotation), plan.rotationDeviation, 3, " arc seconds")
                  + QStringLiteral("; E' = x + s (E cos \u03B8 + N sin \u03B8), N' = y + s (-E sin "
                                   "\u03B8 + N cos \u03B8), as EPSG's method 9621: the axes turn "
                                   "counter-clockwise"));
    page.fact(QStringLiteral("With the other sign"),
              turn(-similarity.rotation)
                  + QStringLiteral("; E' = x + s (E cos \u03B8 - N sin \u03B8), N' = y + s (E sin "
                                   "\u03B8 + N cos \u03B8): the points turn counter-clockwise"));
    page.fact(QStringLiteral("Scale s"),
              withDeviation(QStringLiteral("%1, %2 ppm")
                                .arg(fixed(similarity.scale, 12),
                                     signedText((similarity.scale - 1.0) * partsPerMillion, 3)),
                            plan.scaleDeviation, 3, " ppm"));
    page.fact(QStringLiteral("About the centroid"),
              withDeviation(QStringLiteral("N %1, E %2 becomes N %3, E %4")
                                .arg(fixed(plan.baseCentroid.n, 4), fixed(plan.baseCentroid.e, 4),
                                     fixed(plan.siteCentroid.n, 4), fixed(plan.siteCentroid.e, 4)),
                            plan.shiftDeviation, 4, " m"));
    addStatistics(plan.statistics, page);
    page.endTable();
}

void addHeight(const HeightFit &height, ReportPage &page)
{
    page.heading(QStringLiteral("Height: ") + wordOf(height.method));
    if (height.method == HeightMethod::None) {
        page.paragraph(QStringLiteral("The heights of the base system are those of the site."));
        return;
    }
    const HeightSurface &surface = height.surface;
    const auto exact = [](double value) { return QString::number(value, 'g', 15); };
    page.beginFacts();
    if (height.method == HeightMethod::Fixed) {
        page.fact(QStringLiteral("As stored"),
                  QStringLiteral("H' = H + a, a = %1 m").arg(exact(surface.a)));
    } else if (height.method == HeightMethod::Plane) {
        page.fact(QStringLiteral("As stored"),
                  QStringLiteral("H' = H + a + b N' + c E', a = %1 m, b = %2, c = %3")
                      .arg(exact(surface.a), exact(surface.b), exact(surface.c)));
    } else {
        page.fact(QStringLiteral("As stored"),
                  QStringLiteral("H' = H + a + b x + c y + d x\u00B2 + e y\u00B2 + f x y, x = N' - "
                                 "%1, y = E' - %2, a = %3, b = %4, c = %5, d = %6, e = %7, f = %8")
                      .arg(exact(surface.originNorth), exact(surface.originEast), exact(surface.a),
                           exact(surface.b), exact(surface.c), exact(surface.d), exact(surface.e),
                           exact(surface.f)));
    }
    page.fact(
        QStringLiteral("With the other sign"),
        QStringLiteral("H = H' %1 m at the centroid").arg(signedText(-height.shiftAtCentroid, 4)));
    page.fact(QStringLiteral("About the centroid"),
              withDeviation(QStringLiteral("%1 m at N' %2, E' %3")
                                .arg(signedText(height.shiftAtCentroid, 4),
                                     fixed(height.centroid.n, 3), fixed(height.centroid.e, 3)),
                            height.shiftDeviation, 4, " m"));
    if (height.method != HeightMethod::Fixed) {
        const auto slope = [&page](const QString &label, double value,
                                   std::optional<double> deviation) {
            if (deviation)
                deviation = *deviation * partsPerMillion;
            page.fact(label, withDeviation(QStringLiteral("%1 ppm").arg(
                                               signedText(value * partsPerMillion, 3)),
                                           deviation, 3, " ppm"));
        };
        slope(QStringLiteral("Slope to the north"), height.slopeNorth, height.slopeNorthDeviation);
        slope(QStringLiteral("Slope to the east"), height.slopeEast, height.slopeEastDeviation);
    }
    addStatistics(height.statistics, page);
    page.endTable();
}

QString remark(const PointStatistics &point)
{
    return point.isSuspect ? QStringLiteral("suspect") : QString();
}

void addControl(const SiteFit &fit, ReportPage &page)
{
    page.heading(QStringLiteral("Control points"));
    page.beginTable({QStringLiteral("Point"), QStringLiteral("Use"), QStringLiteral("North"),
                     QStringLiteral("East"), QStringLiteral("Height")});
    for (int i = 0; i < fit.points.size(); ++i) {
        const SitePoint &point = fit.points.at(i);
        page.row({point.name, fit.control.at(i).useWord(), fixed(point.control.n, 4),
                  fixed(point.control.e, 4), shown(fit.control.at(i).height, 4)},
                 point.plan.isSuspect || point.height.isSuspect);
    }
    page.endTable();
}

/// Tables of as few columns as A4 has room for without a number that is broken in two.
void addResiduals(const SiteFit &fit, ReportPage &page)
{
    page.heading(QStringLiteral("Residuals in plan"));
    page.paragraph(QStringLiteral("Residuals are calculated minus control [m]; those without the "
                                  "point are of a fit to the others. r is the share of an error "
                                  "that shows; found is the smallest error that the test finds "
                                  "[m]."));
    page.beginTable({QStringLiteral("Point"), QStringLiteral("v north"), QStringLiteral("v east"),
                     QStringLiteral("r"), QStringLiteral("Test"), QStringLiteral("Found"),
                     QStringLiteral("North without"), QStringLiteral("East without"),
                     QStringLiteral("Remark")});
    for (const SitePoint &point : fit.points) {
        page.row({point.name, shown(point.residualNorth, 4), shown(point.residualEast, 4),
                  shown(point.plan.redundancy, 2), shown(point.plan.test, 2),
                  shown(point.plan.detectable, 3), shown(point.leftOutNorth, 4),
                  shown(point.leftOutEast, 4), remark(point.plan)},
                 point.plan.isSuspect);
    }
    page.endTable();
    page.heading(QStringLiteral("Residuals in height"));
    page.beginTable({QStringLiteral("Point"), QStringLiteral("v"), QStringLiteral("r"),
                     QStringLiteral("Test"), QStringLiteral("Found"), QStringLiteral("Without"),
                     QStringLiteral("Remark")});
    for (const SitePoint &point : fit.points) {
        page.row({point.name, shown(point.residualHeight, 4), shown(point.height.redundancy, 2),
                  shown(point.height.test, 2), shown(point.height.detectable, 3),
                  shown(point.leftOutHeight, 4), remark(point.height)},
                 point.height.isSuspect);
    }
    page.endTable();
}

void addDrawings(const SiteFit &fit, ReportPage &page)
{
    const QString plan = planDrawing(fit);
    if (!plan.isEmpty()) {
        page.heading(QStringLiteral("Plan of the site"));
        const bool hasEllipses =
            std::any_of(fit.points.begin(), fit.points.end(),
                        [](const SitePoint &point) { return point.ellipse.has_value(); });
        page.paragraph(QStringLiteral("To scale, north up. Residual vectors%1 are drawn %2 times "
                                      "as long.")
                           .arg(hasEllipses ? QStringLiteral(" and standard ellipses") : QString())
                           .arg(vectorMagnification(fit), 0, 'g', 9));
        page.drawing(plan);
    }
    const QString heights = heightDrawing(fit);
    if (!heights.isEmpty()) {
        page.heading(QStringLiteral("Residuals of the heights [m]"));
        page.drawing(heights);
    }
}

void addCorners(const SiteHull &hull, ReportPage &page)
{
    page.beginTable({QStringLiteral("Corner"), QStringLiteral("North"), QStringLiteral("East")});
    int corner = 0;
    for (const SitePlanePoint &point : hull.corners())
        page.row({QString::number(++corner), fixed(point.north, 3), fixed(point.east, 3)}, false);
    page.endTable();
}

void addExtent(const SiteFit &fit, ReportPage &page)
{
    page.heading(QStringLiteral("Where the fit holds"));
    const SiteExtent extent(SiteTransform::of(fit.coord).value_or(SiteTransform()), fit.control);
    const auto describe = [&page](const SiteHull &hull, const QString &what) {
        if (hull.hasArea()) {
            page.paragraph(QStringLiteral("%1: within the hull of its control points, with these "
                                          "corners. Outside, errors grow with the distance.")
                               .arg(what));
            addCorners(hull, page);
        } else {
            page.paragraph(
                QStringLiteral("%1: its control points enclose no area; %2.")
                    .arg(what, hull.corners().size() == 1
                                   ? QStringLiteral("within %1 m of the only one")
                                         .arg(SiteHull::pointRadius)
                                   : QStringLiteral("no farther from their line than it is long")));
        }
    };
    const SiteHull *const heights = extent.heightHull();
    describe(extent.hull(), heights == nullptr ? QStringLiteral("The fit")
                                               : QStringLiteral("Northing and easting"));
    if (heights != nullptr)
        describe(*heights, QStringLiteral("Heights"));
}

} // namespace

QByteArray siteReport(const SiteFit &fit, const SiteReportFacts &facts)
{
    ReportPage page;
    page.beginFacts();
    page.fact(QStringLiteral("Base system"), facts.baseName);
    page.fact(QStringLiteral("Geoid model"),
              fit.coord.geoidModel.modelFileName.isEmpty()
                  ? QStringLiteral("none: heights of the base system are above the ellipsoid")
                  : fit.coord.geoidModel.modelFileName);
    if (!facts.madeOn.isEmpty())
        page.fact(QStringLiteral("Computed"), facts.madeOn);
    page.endTable();
    QStringList warnings;
    for (const CalibrationWarning &warning : fit.warnings)
        warnings += warning.text;
    page.heading(QStringLiteral("Warnings"));
    if (warnings.isEmpty())
        page.paragraph(QStringLiteral("None."));
    else
        page.list(warnings);
    addPlan(fit.plan, page);
    addHeight(fit.height, page);
    addControl(fit, page);
    addResiduals(fit, page);
    addDrawings(fit, page);
    addExtent(fit, page);
    page.heading(QStringLiteral("For other programs"));
    if (facts.pipeline.isEmpty()) {
        page.paragraph(facts.pipelineNote);
    } else {
        page.paragraph(QStringLiteral("WGS 84 longitude, latitude [deg] and height [m] to east, "
                                      "north and height of the site [m]:"));
        page.code(facts.pipeline);
    }
    return page.finished(QStringLiteral("Site calibration: %1").arg(fit.coord.coord_name));
}

} // namespace KelStd::calibration
