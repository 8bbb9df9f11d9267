#include <KelStd/io/OriginElement.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/ReviewedShape.h>
#include <KelStd/io/ValueText.h>
#include <KelStd/text/NamedUnits.h>

#include <QtCore/QLocale>

#include <cmath>

namespace KelStd::io {

namespace {

using Names = Coord_IO;

const QString originName = QStringLiteral("Origin");
const QString operationName = QStringLiteral("Operation");
const QString areaName = QStringLiteral("Area");
const QString countryName = QStringLiteral("Country");
const QString planeUnitName = QStringLiteral("Plane_Unit");

const QString authorityAttribute = QStringLiteral("authority");
const QString codeAttribute = QStringLiteral("code");
const QString databaseAttribute = QStringLiteral("database");
const QString nameAttribute = QStringLiteral("name");
const QString accuracyAttribute = QStringLiteral("accuracy_m");
const QString metresAttribute = QStringLiteral("metres");

/// The sides of an area.
struct SideRow
{
    const char *attribute;
    double AreaOfUse::*side;
    double limit; ///< [deg] either way
};

constexpr SideRow sideRows[] = {
    {"west", &AreaOfUse::west, 180.0},
    {"south", &AreaOfUse::south, 90.0},
    {"east", &AreaOfUse::east, 180.0},
    {"north", &AreaOfUse::north, 90.0},
};

// Units of length that somebody may measure a country in, with room: the millimetre, the mile.
constexpr double shortestUnit = 1e-4; // [m]
constexpr double longestUnit = 1e4;   // [m]

constexpr double worstAccuracy = 1e5; // [m], of no shift at all some 1000

std::optional<double> numberIn(const QDomElement &element, const QString &attribute)
{
    const QString text = element.attribute(attribute);
    if (text.trimmed().isEmpty() || !isReadAsNumber(text))
        return std::nullopt;
    return text.toDouble();
}

bool isAccuracy(double value)
{
    return value >= 0.0 && value <= worstAccuracy;
}

bool isLength(double value)
{
    return value >= shortestUnit && value <= longestUnit;
}

std::optional<SystemOrigin::Operation> readOperation(const QDomElement &element)
{
    if (element.isNull())
        return std::nullopt;
    SystemOrigin::Operation operation;
    operation.code = element.attribute(codeAttribute);
    operation.name = element.attribute(nameAttribute);
    operation.accuracyM = numberIn(element, accuracyAttribute);
    if (operation.accuracyM && !isAccuracy(*operation.accuracyM))
        operation.accuracyM.reset();
    return operation;
}

std::optional<AreaOfUse> readArea(const QDomElement &element)
{
    AreaOfUse area;
    for (const SideRow &row : sideRows) {
        const auto value = numberIn(element, QString::fromLatin1(row.attribute));
        if (!value)
            return std::nullopt;
        area.*row.side = *value;
    }
    return area.isValid() ? std::optional(area) : std::nullopt;
}

std::optional<SystemOrigin::PlaneUnit> readPlaneUnit(const QDomElement &element)
{
    const auto metres = numberIn(element, metresAttribute);
    if (!metres || !isLength(*metres))
        return std::nullopt;
    return SystemOrigin::PlaneUnit{element.attribute(nameAttribute), *metres};
}

/// The shortest text that reads back as the same double.
QString exactNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// An empty text is none.
void setText(QDomElement &element, const QString &attribute, const QString &text)
{
    if (!text.isEmpty())
        element.setAttribute(attribute, text);
}

void appendOperation(QDomDocument &document, QDomElement &parent,
                     const SystemOrigin::Operation &operation)
{
    QDomElement element = document.createElement(operationName);
    setText(element, codeAttribute, operation.code);
    setText(element, nameAttribute, operation.name);
    if (operation.accuracyM && isAccuracy(*operation.accuracyM))
        element.setAttribute(accuracyAttribute, exactNumber(*operation.accuracyM));
    parent.appendChild(element);
}

void appendArea(QDomDocument &document, QDomElement &parent, const SystemOrigin &origin)
{
    const bool hasBox = origin.area && origin.area->isValid();
    if (!hasBox && origin.areaName.isEmpty())
        return;
    QDomElement element = document.createElement(areaName);
    if (hasBox) {
        for (const SideRow &row : sideRows)
            element.setAttribute(QString::fromLatin1(row.attribute),
                                 exactNumber((*origin.area).*row.side));
    }
    setText(element, nameAttribute, origin.areaName);
    parent.appendChild(element);
}

void appendPlaneUnit(QDomDocument &document, QDomElement &parent,
                     const SystemOrigin::PlaneUnit &unit)
{
    QDomElement element = document.createElement(planeUnitName);
    setText(element, nameAttribute, unit.name);
    element.setAttribute(metresAttribute, exactNumber(unit.metres));
    parent.appendChild(element);
}

/// A number that is there, but none that is meant.
template <typename IsMeant>
void reviewMeaning(const QDomElement &element, const QString &attribute, IsMeant isMeant,
                   ReviewFindings &findings)
{
    reviewNumber(element, attribute, findings);
    const auto value = numberIn(element, attribute);
    if (value && !isMeant(*value))
        findings.addAttribute(FindingKind::Implausible, element, attribute, QObject::tr("nothing"));
}

void reviewOperation(const QDomElement &element, ReviewFindings &findings)
{
    reviewShape(element, {{codeAttribute, nameAttribute, accuracyAttribute}, {}, {}, false},
                findings);
    reviewMeaning(element, accuracyAttribute, &isAccuracy, findings);
}

/// An area may have a name alone, but not some of its sides.
void reviewArea(const QDomElement &element, ReviewFindings &findings)
{
    Shape shape = {{nameAttribute}, {}, {}, false};
    bool hasSides = false;
    for (const SideRow &row : sideRows) {
        shape.attributes += QString::fromLatin1(row.attribute);
        hasSides = hasSides || element.hasAttribute(QString::fromLatin1(row.attribute));
    }
    reviewShape(element, shape, findings);
    if (!hasSides)
        return;
    bool areMeant = true;
    for (const SideRow &row : sideRows) {
        const QString attribute = QString::fromLatin1(row.attribute);
        const auto isMeant = [&row](double value) { return std::abs(value) <= row.limit; };
        const auto value = numberIn(element, attribute);
        areMeant = areMeant && value && isMeant(*value);
        if (element.attribute(attribute).trimmed().isEmpty())
            findings.addAttribute(FindingKind::MissingAttribute, element, attribute,
                                  QObject::tr("nothing"));
        else
            reviewMeaning(element, attribute, isMeant, findings);
    }
    if (areMeant && !readArea(element))
        findings.addAttribute(FindingKind::Implausible, element, QStringLiteral("south"),
                              QObject::tr("nothing"));
}

void reviewCountry(const QDomElement &element, ReviewFindings &findings)
{
    reviewShape(element, {{nameAttribute}, {}, {}, false}, findings);
    reviewPresence(element, nameAttribute, {}, findings);
}

void reviewPlaneUnit(const QDomElement &element, ReviewFindings &findings)
{
    reviewShape(element, {{nameAttribute, metresAttribute}, {}, {}, false}, findings);
    reviewPresence(element, nameAttribute, {}, findings);
    reviewPresence(element, metresAttribute, QObject::tr("nothing"), findings);
    reviewMeaning(element, metresAttribute, &isLength, findings);
    const text::NamedUnit *const named = text::namedUnit(element.attribute(nameAttribute));
    const auto metres = numberIn(element, metresAttribute);
    if (named == nullptr || !metres || findings.isDoubted(element, metresAttribute))
        return;
    if (named->isAngle)
        findings.addAttribute(FindingKind::Implausible, element, nameAttribute,
                              QObject::tr("a unit of length"));
    else if (!text::isSizeOf(*named, *metres))
        findings.addAttribute(FindingKind::WrongUnitSize, element, metresAttribute,
                              asNumber(*metres));
}

/// The review of each child.
struct ChildRow
{
    const QString &name;
    void (*review)(const QDomElement &, ReviewFindings &);
    bool isRepeated;
};

const ChildRow childRows[] = {
    {operationName, &reviewOperation, false},
    {areaName, &reviewArea, false},
    {countryName, &reviewCountry, true},
    {planeUnitName, &reviewPlaneUnit, false},
};

} // namespace

QString originElementName()
{
    return originName;
}

SystemOrigin readOrigin(const QDomElement &root)
{
    SystemOrigin origin;
    const QDomElement element = root.firstChildElement(originName);
    if (element.isNull() || !hasReadableVersion(element))
        return origin;
    origin.authority = element.attribute(authorityAttribute);
    origin.code = element.attribute(codeAttribute);
    origin.databaseVersion = element.attribute(databaseAttribute);
    origin.operation = readOperation(element.firstChildElement(operationName));
    const QDomElement area = element.firstChildElement(areaName);
    origin.area = readArea(area);
    origin.areaName = area.attribute(nameAttribute);
    readEach(element, countryName, [&origin](const QDomElement &country) {
        const QString name = country.attribute(nameAttribute);
        if (!name.isEmpty())
            origin.countries += name;
        return true;
    });
    origin.planeUnit = readPlaneUnit(element.firstChildElement(planeUnitName));
    return origin;
}

void appendOrigin(QDomDocument &document, const SystemOrigin &origin)
{
    SystemOrigin own = origin;
    own.control.clear(); // which stand in an element of their own
    if (own.isEmpty())
        return;
    QDomElement element = versionedElement(document, originName);
    setText(element, authorityAttribute, origin.authority);
    setText(element, codeAttribute, origin.code);
    setText(element, databaseAttribute, origin.databaseVersion);
    if (origin.operation)
        appendOperation(document, element, *origin.operation);
    appendArea(document, element, origin);
    for (const QString &country : origin.countries) {
        if (country.isEmpty())
            continue;
        QDomElement child = document.createElement(countryName);
        child.setAttribute(nameAttribute, country);
        element.appendChild(child);
    }
    if (origin.planeUnit && isLength(origin.planeUnit->metres))
        appendPlaneUnit(document, element, *origin.planeUnit);
    document.documentElement().appendChild(element);
}

void reviewOriginForm(const QDomElement &element, ReviewFindings &findings)
{
    Shape shape = {{Names::xml_attrName_ver, authorityAttribute, codeAttribute, databaseAttribute},
                   {},
                   {},
                   false};
    for (const ChildRow &row : childRows)
        (row.isRepeated ? shape.repeated : shape.single) += row.name;
    reviewShape(element, shape, findings);
    if (!reviewVersion(element, findings))
        return;
    for (const ChildRow &row : childRows) {
        bool isFirst = true;
        readEach(element, row.name, [&](const QDomElement &child) {
            if (isFirst || row.isRepeated)
                row.review(child, findings);
            isFirst = false;
            return true;
        });
    }
}

} // namespace KelStd::io
