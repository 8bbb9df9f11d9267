#include <KelStd/io/ControlElement.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/ReviewedShape.h>
#include <KelStd/io/ValueText.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace KelStd::io {

namespace {

const QString controlName = QStringLiteral("Control_Points");
const QString pointName = QStringLiteral("Point");
const QString nameAttribute = QStringLiteral("name");
const QString useAttribute = QStringLiteral("use");

/// The numbers that a point has to have, in the order of `numbersOf`.
constexpr const char *neededAttributes[] = {"longitude", "latitude", "height", "north", "east"};
constexpr int neededCount = 5;

using Numbers = std::array<double, neededCount>;

Numbers numbersOf(const ControlPoint &point)
{
    const stLongLatH &at = point.wgs84.getLongLatH();
    return {at.longitude, at.latitude, at.height, point.north, point.east};
}

void setNumbers(const Numbers &numbers, ControlPoint &point)
{
    point.wgs84 = Pos::fromLongLatH(numbers[0], numbers[1], numbers[2]);
    point.north = numbers[3];
    point.east = numbers[4];
}

/// The numbers that it may have.
struct OptionalRow
{
    const char *attribute;
    std::optional<double> ControlPoint::*value;
};

constexpr OptionalRow optionalRows[] = {
    {"site_height", &ControlPoint::height},
    {"sigma_h", &ControlPoint::sigmaH},
    {"sigma_v", &ControlPoint::sigmaV},
};

std::optional<double> numberIn(const QDomElement &element, const char *attribute)
{
    const QString text = element.attribute(QString::fromLatin1(attribute));
    if (text.trimmed().isEmpty() || !isReadAsNumber(text))
        return std::nullopt;
    return text.toDouble();
}

QString exactNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// Whether reading would take the point over.
bool isReadable(const ControlPoint &point)
{
    const Numbers numbers = numbersOf(point);
    return !point.name.isEmpty() && std::all_of(numbers.begin(), numbers.end(), [](double number) {
        return std::isfinite(number);
    });
}

std::optional<ControlPoint> readPoint(const QDomElement &element)
{
    ControlPoint point;
    point.name = element.attribute(nameAttribute);
    Numbers numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto number = numberIn(element, neededAttributes[i]);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    setNumbers(numbers, point);
    for (const OptionalRow &row : optionalRows)
        point.*row.value = numberIn(element, row.attribute);
    if (point.name.isEmpty() || !point.setUse(element.attribute(useAttribute)))
        return std::nullopt;
    return point;
}

void reviewPoint(const QDomElement &element, ReviewFindings &findings)
{
    Shape shape = {{nameAttribute, useAttribute}, {}, {}, false};
    for (const char *attribute : neededAttributes)
        shape.attributes += QString::fromLatin1(attribute);
    for (const OptionalRow &row : optionalRows)
        shape.attributes += QString::fromLatin1(row.attribute);
    reviewShape(element, shape, findings);
    const QString nothing = QObject::tr("nothing");
    reviewPresence(element, nameAttribute, nothing, findings);
    for (const char *attribute : neededAttributes) {
        reviewPresence(element, QString::fromLatin1(attribute), nothing, findings);
        reviewNumber(element, QString::fromLatin1(attribute), findings);
    }
    for (const OptionalRow &row : optionalRows)
        reviewNumber(element, QString::fromLatin1(row.attribute), findings);
    ControlPoint point;
    if (!element.hasAttribute(useAttribute))
        reviewPresence(element, useAttribute, nothing, findings);
    else if (!point.setUse(element.attribute(useAttribute)))
        findings.addAttribute(FindingKind::UnknownWord, element, useAttribute, nothing);
}

} // namespace

QString controlElementName()
{
    return controlName;
}

ControlPoints readControl(const QDomElement &root)
{
    ControlPoints points;
    const QDomElement element = root.firstChildElement(controlName);
    if (element.isNull() || !hasReadableVersion(element))
        return points;
    readEach(element, pointName, [&points](const QDomElement &child) {
        if (const auto point = readPoint(child))
            points += *point;
        return true;
    });
    return points;
}

void appendControl(QDomDocument &document, const ControlPoints &points)
{
    if (points.isEmpty())
        return;
    QDomElement element = versionedElement(document, controlName);
    for (const ControlPoint &point : points) {
        if (!isReadable(point))
            continue;
        QDomElement child = document.createElement(pointName);
        child.setAttribute(nameAttribute, point.name);
        const Numbers numbers = numbersOf(point);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            child.setAttribute(QString::fromLatin1(neededAttributes[i]), exactNumber(numbers[i]));
        for (const OptionalRow &row : optionalRows) {
            if (point.*row.value && std::isfinite(*(point.*row.value)))
                child.setAttribute(QString::fromLatin1(row.attribute),
                                   exactNumber(*(point.*row.value)));
        }
        child.setAttribute(useAttribute, point.useWord());
        element.appendChild(child);
    }
    document.documentElement().appendChild(element);
}

void reviewControlForm(const QDomElement &element, ReviewFindings &findings)
{
    reviewShape(element, {{Coord_IO::xml_attrName_ver}, {}, {pointName}, false}, findings);
    if (!reviewVersion(element, findings))
        return;
    readEach(element, pointName, [&findings](const QDomElement &point) {
        reviewPoint(point, findings);
        return true;
    });
}

} // namespace KelStd::io
