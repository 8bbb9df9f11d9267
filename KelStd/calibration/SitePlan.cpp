#include <KelStd/calibration/SitePlan.h>

#include <KelStd/calibration/ReportPage.h>
#include <KelStd/calibration/SiteHull.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KelStd::calibration {

namespace {

// In units of the drawing, which is as wide as the page.
constexpr double width = 640.0;
constexpr double margin = 70.0;
constexpr double longestVector = 60.0;
constexpr double leastHeight = 160.0;
constexpr double barRoom = 64.0;
constexpr double rowHeight = 20.0;
constexpr int longestName = 14;
constexpr int maxLabels = 80; // more would cover each other

constexpr double noVector = 1e-6; // [m]

QString number(double value)
{
    return QString::number(value, 'f', 2);
}

/// 1, 2 or 5 times a power of ten, not above `value`.
double roundBelow(double value)
{
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {5.0, 2.0}) {
        if (step * power <= value * (1.0 + 1e-9))
            return step * power;
    }
    return power;
}

QString lengthText(double metres)
{
    return metres < 0.1 ? QStringLiteral("%1 mm").arg(metres * 1000.0, 0, 'g', 6)
                        : QStringLiteral("%1 m").arg(metres, 0, 'g', 9);
}

QString shortName(const QString &name)
{
    if (name.size() <= longestName)
        return name;
    const int kept = longestName - (name.at(longestName - 2).isHighSurrogate() ? 2 : 1);
    return name.left(kept) + QChar(0x2026);
}

bool isDrawn(const SitePoint &point)
{
    return point.residualNorth && point.residualEast;
}

/// Where the points of the site are drawn. Those that are not used may be anywhere, by a mistake
/// for example, and say nothing about the sheet.
class Sheet
{
public:
    explicit Sheet(const SiteFit &fit)
    {
        double south = std::numeric_limits<double>::infinity();
        double north = -south;
        double east = -south;
        m_west = south;
        for (const SitePoint &point : fit.points) {
            if (!isDrawn(point) && !point.residualHeight)
                continue;
            south = std::min(south, point.control.n);
            north = std::max(north, point.control.n);
            m_west = std::min(m_west, point.control.e);
            east = std::max(east, point.control.e);
        }
        m_north = north;
        const double extent = std::max({east - m_west, north - south, 1.0});
        constexpr double room = width - 2.0 * margin;
        m_scale = room / extent;
        m_left = margin + (room - (east - m_west) * m_scale) / 2.0;
        m_height = std::max(leastHeight, (north - south) * m_scale + 2.0 * margin);
    }

    double x(double east) const { return m_left + (east - m_west) * m_scale; }
    double y(double north) const { return margin + (m_north - north) * m_scale; }
    double scale() const { return m_scale; } ///< units of the drawing per metre
    double height() const { return m_height; }

    bool holds(const stENU &point) const
    {
        const double left = x(point.e);
        const double top = y(point.n);
        return left >= 0.0 && left <= width && top >= 0.0 && top <= m_height;
    }

private:
    double m_west = 0.0;
    double m_north = 0.0;
    double m_scale = 1.0;
    double m_left = 0.0;
    double m_height = 0.0;
};

/// The longest of residual vectors and ellipses [m].
double longestLength(const SiteFit &fit)
{
    double longest = 0.0;
    for (const SitePoint &point : fit.points) {
        if (isDrawn(point))
            longest = std::max(longest, std::hypot(*point.residualNorth, *point.residualEast));
        if (point.ellipse)
            longest = std::max(longest, point.ellipse->major);
    }
    return longest;
}

/// A bar of a length, and what it is.
QString bar(double left, double top, double length, const QString &what, const char *kind)
{
    return QStringLiteral("<line class=\"%1\" x1=\"%2\" y1=\"%3\" x2=\"%4\" y2=\"%3\"/>"
                          "<text x=\"%2\" y=\"%5\">%6</text>\n")
        .arg(QLatin1String(kind), number(left), number(top), number(left + length),
             number(top + 16.0), what);
}

QString hullOf(const SiteFit &fit, const Sheet &sheet)
{
    const SiteHull hull(fit.control);
    if (!hull.hasArea())
        return {};
    QString corners;
    for (const SitePlanePoint &corner : hull.corners())
        corners += QStringLiteral("%1,%2 ").arg(number(sheet.x(corner.east)),
                                                number(sheet.y(corner.north)));
    return QStringLiteral("<polygon class=\"hull\" points=\"%1\"/>\n").arg(corners.trimmed());
}

QString drawn(const SitePoint &point, const Sheet &sheet, double unitsPerMetre, bool hasLabel)
{
    const double x = sheet.x(point.control.e);
    const double y = sheet.y(point.control.n);
    const bool isSuspect = point.plan.isSuspect || point.height.isSuspect;
    QString text;
    if (point.ellipse) {
        text +=
            QStringLiteral("<ellipse class=\"ellipse\" cx=\"%1\" cy=\"%2\" rx=\"%3\" ry=\"%4\" "
                           "transform=\"rotate(%5 %1 %2)\"/>\n")
                .arg(number(x), number(y), number(point.ellipse->minor * unitsPerMetre),
                     number(point.ellipse->major * unitsPerMetre), number(point.ellipse->azimuth));
    }
    if (isDrawn(point)) {
        text += QStringLiteral("<line class=\"vector\" x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\"/>\n")
                    .arg(number(x), number(y), number(x + *point.residualEast * unitsPerMetre),
                         number(y - *point.residualNorth * unitsPerMetre));
    }
    text += QStringLiteral("<circle class=\"%1\" cx=\"%2\" cy=\"%3\" r=\"4\"><title>%4</title>"
                           "</circle>\n")
                .arg(isSuspect        ? QStringLiteral("suspect")
                     : isDrawn(point) ? QStringLiteral("point")
                                      : QStringLiteral("unused"),
                     number(x), number(y), escaped(point.name));
    if (!hasLabel && !isSuspect)
        return text;
    const bool isRight = x > width / 2.0;
    return text
           + QStringLiteral("<text x=\"%1\" y=\"%2\" text-anchor=\"%3\">%4</text>\n")
                 .arg(number(isRight ? x - 8.0 : x + 8.0), number(y - 7.0),
                      isRight ? QStringLiteral("end") : QStringLiteral("start"),
                      escaped(shortName(point.name)));
}

QString svg(double height, const QString &label, const QString &content)
{
    return QStringLiteral("<svg role=\"img\" aria-label=\"%1\" viewBox=\"0 0 %2 %3\">\n%4</svg>\n")
        .arg(label, number(width), number(height), content);
}

} // namespace

double vectorMagnification(const SiteFit &fit)
{
    const double longest = longestLength(fit);
    if (!(longest > noVector))
        return 1.0;
    return roundBelow(longestVector / longest / Sheet(fit).scale());
}

QString planDrawing(const SiteFit &fit)
{
    if (std::none_of(fit.points.begin(), fit.points.end(), isDrawn))
        return {};
    const Sheet sheet(fit);
    const double unitsPerMetre = sheet.scale() * vectorMagnification(fit);
    QString content = hullOf(fit, sheet);
    for (const SitePoint &point : fit.points) {
        if (sheet.holds(point.control))
            content += drawn(point, sheet, unitsPerMetre, fit.points.size() <= maxLabels);
    }
    const double plan = roundBelow(150.0 / sheet.scale());
    const double top = sheet.height() + 20.0;
    content += bar(20.0, top, plan * sheet.scale(), lengthText(plan), "bar");
    if (longestLength(fit) > noVector) {
        const double vector = roundBelow(150.0 / unitsPerMetre);
        content += bar(260.0, top, vector * unitsPerMetre,
                       QStringLiteral("residuals: %1").arg(lengthText(vector)), "vector");
    }
    content += QStringLiteral("<path class=\"bar\" d=\"M600 %1v-34m-7 10l7 -10l7 10\"/>"
                              "<text x=\"600\" y=\"%2\" text-anchor=\"middle\">N</text>\n")
                   .arg(number(top + 14.0), number(top + 30.0));
    return svg(sheet.height() + barRoom, QStringLiteral("Plan of the site"), content);
}

QString heightDrawing(const SiteFit &fit)
{
    double largest = 0.0;
    int count = 0;
    for (const SitePoint &point : fit.points) {
        largest = std::max(largest, std::abs(point.residualHeight.value_or(0.0)));
        count += point.residualHeight ? 1 : 0;
    }
    if (count == 0)
        return {};
    constexpr double numberEnd = 280.0; // behind the longest name of the widest letters
    constexpr double centre = 460.0;
    constexpr double room = 170.0;
    const double unitsPerMetre = largest > noVector ? room / largest : 0.0;
    QString content;
    double y = rowHeight;
    for (const SitePoint &point : fit.points) {
        if (!point.residualHeight)
            continue;
        const double length = *point.residualHeight * unitsPerMetre;
        content +=
            QStringLiteral("<rect class=\"%1\" x=\"%2\" y=\"%3\" width=\"%4\" "
                           "height=\"12\"/><text x=\"20\" y=\"%5\">%6</text>"
                           "<text x=\"%8\" y=\"%5\" text-anchor=\"end\">%7</text>\n")
                .arg(point.height.isSuspect ? QStringLiteral("suspect") : QStringLiteral("height"),
                     number(centre + std::min(length, 0.0)), number(y - 10.0),
                     number(std::max(std::abs(length), 0.5)), number(y),
                     escaped(shortName(point.name)), fixed(*point.residualHeight, 4),
                     number(numberEnd));
        y += rowHeight;
    }
    content += QStringLiteral("<line class=\"bar\" x1=\"%1\" y1=\"4\" x2=\"%1\" y2=\"%2\"/>\n")
                   .arg(number(centre), number(y - rowHeight + 6.0));
    return svg(y, QStringLiteral("Residuals of the heights"), content);
}

} // namespace KelStd::calibration
