#include <KelStd/io/ReviewedUse.h>

#include <KelStd/coord/PlaneLimit.h>
#include <KelStd/coord/ScaleLimits.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/NamedEllipsoids.h>
#include <KelStd/io/OverrulingParameter.h>
#include <KelStd/io/ProjNames.h>
#include <KelStd/io/RecordParamNames.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/ReviewedValue.h>
#include <KelStd/io/ShiftLimits.h>
#include <KelStd/io/ValueText.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QSet>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace KelStd::io {

namespace {

using Names = Coord_IO;
using Words = CoordStringHelper;

struct Range
{
    double lowest;
    double highest;

    bool holds(double value) const { return value >= lowest && value <= highest; }
};

// What figures of the Earth have, with room: the oldest in PROJ's list have 6375.7 km, 6397.3 km
// and 1/191.
constexpr Range semiMajorAxes = {6.35e6, 6.40e6}; // [m]
constexpr Range inverseFlattenings = {150.0, 1000.0};

// What PROJ is given.
constexpr Range falseOrigins = {-maxPlane, maxPlane}; // [m]
constexpr Range latitudes = {-90.0, 90.0};
constexpr Range longitudes = {-180.0, 360.0};
constexpr Range angles = {-360.0, 360.0};
constexpr Range scales = {lowestScale, highestScale};
constexpr Range zones = {1.0, 60.0};

constexpr Range translations = {-maxTranslation, maxTranslation};             // [m]
constexpr Range rotations = {-maxRotation, maxRotation};                      // [arc seconds]
constexpr Range scaleDifferences = {-maxScaleDifference, maxScaleDifference}; // [ppm]

/// How PROJ takes a parameter of this name.
struct ProjParameter
{
    const char *name;
    EUnit unit;
    Range range;
};

constexpr ProjParameter projParameters[] = {
    {"x_0", Unit_Meter, falseOrigins},    {"y_0", Unit_Meter, falseOrigins},
    {"h_0", Unit_Meter, falseOrigins},    {"h", Unit_Meter, {0.0, 1e9}},
    {"lat_0", Unit_Degree, latitudes},    {"lat_1", Unit_Degree, latitudes},
    {"lat_2", Unit_Degree, latitudes},    {"lat_3", Unit_Degree, latitudes},
    {"lat_ts", Unit_Degree, latitudes},   {"lat_t", Unit_Degree, latitudes},
    {"o_lat_p", Unit_Degree, latitudes},  {"lon_0", Unit_Degree, longitudes},
    {"lon_1", Unit_Degree, longitudes},   {"lon_2", Unit_Degree, longitudes},
    {"lon_3", Unit_Degree, longitudes},   {"lonc", Unit_Degree, longitudes},
    {"o_lon_p", Unit_Degree, longitudes}, {"alpha", Unit_Degree, angles},
    {"gamma", Unit_Degree, angles},       {"azi", Unit_Degree, angles},
    {"k_0", Unit_None, scales},           {"k", Unit_None, scales},
    {"zone", Unit_None, zones},
};

const ProjParameter *projParameter(const QString &name)
{
    const auto row =
        std::find_if(std::begin(projParameters), std::end(projParameters),
                     [&name](const ProjParameter &p) { return name == QLatin1String(p.name); });
    return row != std::end(projParameters) ? row : nullptr;
}

QString wordOf(EUnit unit)
{
    return Words::ForCoordIO_Unit_to_DescriptionAsciiString(unit);
}

QString asText(const Param &param)
{
    return param.value.userType() == QMetaType::Double ? asNumber(param.value.toDouble())
                                                       : param.value.toString();
}

/// "-565.04", or the whole element where it has no text.
QString writtenValue(const QDomElement &element)
{
    const QString text = wholeText(element);
    return text.isEmpty() ? QStringLiteral("<%1>").arg(element.tagName()) : text.trimmed();
}

bool isNothing(const Param &param)
{
    switch (kindOf(param.valType)) {
    case ValueKind::Text:
    case ValueKind::AsVariant: {
        const QString text = param.value.toString().trimmed();
        return text.isEmpty() || text == QLatin1String("0");
    }
    default: return !param.value.isValid() || param.value.toDouble() == 0.0;
    }
}

bool isText(const Param &param)
{
    return kindOf(param.valType) == ValueKind::Text
           || kindOf(param.valType) == ValueKind::AsVariant;
}

/// The children called `childName` by their "name", of equal ones the last, which is the one that
/// counts.
QHash<QString, QDomElement> namedChildren(const QDomElement &element, const QString &childName)
{
    QHash<QString, QDomElement> children;
    readEach(element, childName, [&children](const QDomElement &child) {
        children.insert(child.attribute(Names::xml_attrName_name), child);
        return true;
    });
    return children;
}

/// A parameter that PROJ is given by name.
class GivenParameter
{
public:
    GivenParameter(const QDomElement &element, const Param &param, const QString &projName,
                   ReviewFindings &findings)
        : m_element(element), m_param(param), m_projName(projName), m_row(projParameter(projName)),
          m_findings(findings)
    {}

    void review() const
    {
        if (wholeText(m_element).isEmpty()) {
            m_findings.add(FindingKind::MissingValue, m_element, writtenValue(m_element),
                           given(asText(m_param)));
            return;
        }
        reviewUnit();
        if (m_findings.isDoubted(m_element) || m_param.valType == ValueType_Proj4_Param_Bool)
            return;
        if (isText(m_param) && m_row != nullptr && !isReadAsNumber(m_param.value.toString())) {
            m_findings.add(FindingKind::NotANumber, m_element, m_param.value.toString(),
                           given(m_param.value.toString()));
            return;
        }
        reviewText();
        if (m_row != nullptr && !m_findings.isDoubted(m_element)
            && !m_row->range.holds(m_param.value.toDouble())) {
            m_findings.add(FindingKind::Implausible, m_element, writtenValue(m_element),
                           given(asText(m_param)));
        }
    }

private:
    QString given(const QString &value) const
    {
        return QStringLiteral("%1=%2").arg(m_projName, value);
    }

    /// PROJ takes metres, degrees and plain numbers, and no unit goes with them.
    void reviewUnit() const
    {
        const EUnit unit = m_param.unit;
        const bool fits =
            unit == Unit_None
            || (m_row != nullptr ? unit == m_row->unit : unit == Unit_Meter || unit == Unit_Degree);
        if (fits || m_findings.isDoubted(m_element, Names::xml_attrName_unit))
            return;
        m_findings.addAttribute(
            FindingKind::UnitNotUsed, m_element, Names::xml_attrName_unit,
            m_row != nullptr && m_row->unit != Unit_None
                ? QStringLiteral("%1 (%2)").arg(given(asText(m_param)), wordOf(m_row->unit))
                : given(asText(m_param)));
    }

    /// Some kinds of values are written as something else than their number.
    void reviewText() const
    {
        if (isText(m_param) || kindOf(m_param.valType) == ValueKind::Boolean)
            return;
        if (kindOf(m_param.valType) == ValueKind::TimeSpan) {
            m_findings.add(FindingKind::NotUsed, m_element, writtenValue(m_element));
            return;
        }
        const double value = m_param.value.toDouble();
        // A definition has 20 decimals.
        const double lastDigits = std::max(std::abs(value) * 1e-14, 1e-18);
        const QString text = CoordStringHelper::GetNoFormatString(m_param);
        bool isNumber = false;
        const double used = text.toDouble(&isNumber);
        if (!isNumber || std::abs(used - value) > lastDigits)
            m_findings.add(FindingKind::NotUsed, m_element, writtenValue(m_element), given(text));
    }

    const QDomElement m_element;
    const Param m_param;
    const QString m_projName;
    const ProjParameter *m_row;
    ReviewFindings &m_findings;
};

/// The names that PROJ takes for one and the same.
QString withoutAliases(const QString &projName)
{
    return projName == QLatin1String("k") ? QStringLiteral("k_0") : projName;
}

/// Whether a parameter may stand in a definition whose projection does not take it, because it says
/// what holds without it. Many systems state every parameter of their family of projections.
bool saysNothing(const Param &param, const QString &projName)
{
    return isNothing(param)
           || (withoutAliases(projName) == QLatin1String("k_0") && param.value.toDouble() == 1.0);
}

/// Whether a flag is given without a value, and any other parameter with one: to PROJ +south=1 is
/// north, and +lat_0 is 0.
bool isGivenAsTaken(const Param &param, const QString &projName)
{
    const bool isFlag = isProjFlag(projName);
    if (param.valType == ValueType_Proj4_Param_Bool)
        return isFlag;
    if (!isFlag)
        return true;
    const QString text = CoordStringHelper::GetNoFormatString(param);
    return text.startsWith(QLatin1Char('t'), Qt::CaseInsensitive)
           || text.startsWith(QLatin1Char('f'), Qt::CaseInsensitive);
}

/// Whether a central meridian is that of the zone beside it. PROJ takes the zone alone.
bool isMeridianOfZone(const Projection &projection, const Param &meridian)
{
    const int zone =
        projection.param.value(projection.paramProj4.key(QStringLiteral("zone"))).value.toInt();
    return projection.proj4Projection == QLatin1String("utm") && zones.holds(zone)
           && meridian.value.toDouble() == 6.0 * zone - 183.0;
}

/// What a parameter overrules with the value that PROJ is given; empty for nothing.
QString whatIsOverruledBy(const QString &projName, const Param &param)
{
    const ValueKind kind = kindOf(param.valType);
    const bool isGiven = kind == ValueKind::ProjFlag ? param.value.toBool()
                                                     : !param.value.toString().trimmed().isEmpty();
    if (!isGiven || kind == ValueKind::Time || kind == ValueKind::TimeSpan)
        return {};
    return whatIsOverruled(projName, CoordStringHelper::GetNoFormatString(param));
}

/// A parameter that PROJ passes over, or that it should not be given; true when it is a finding.
bool reviewProjName(const QDomElement &element, const Projection &projection, const Param &param,
                    const QString &projName, ReviewFindings &findings)
{
    if (findings.isDoubted(element, Names::xml_attrName_proj4Param))
        return true;
    if ((isProjParameterOf(projection.proj4Projection, projName) && isGivenAsTaken(param, projName))
        || (isProjParameter(projName) && saysNothing(param, projName))
        || (projName == QLatin1String("lon_0") && isMeridianOfZone(projection, param))) {
        const QString overruled = whatIsOverruledBy(projName, param);
        if (!overruled.isEmpty())
            findings.addAttribute(FindingKind::Overruling, element, Names::xml_attrName_proj4Param,
                                  overruled);
        return !overruled.isEmpty();
    }
    findings.addAttribute(FindingKind::UnusedProjName, element, Names::xml_attrName_proj4Param);
    return true;
}

/// Of equal parameters PROJ takes the first.
void reviewRepeatedProjNames(const QHash<QString, QDomElement> &elements,
                             const Projection &projection, ReviewFindings &findings)
{
    QSet<QString> seen;
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const QString name = withoutAliases(entry.value().trimmed());
        if (seen.contains(name) && elements.contains(entry.key())) {
            findings.addAttribute(FindingKind::Repeated, elements.value(entry.key()),
                                  Names::xml_attrName_proj4Param, QObject::tr("the first one"));
        }
        seen += name;
    }
}

/// What a parameter of a datum shift is.
enum class Quantity
{
    Translation,
    Rotation,
    Scale
};

Quantity quantityOf(const NamedParam<stEllipsoinTransform> &row)
{
    const QString name = QString::fromLatin1(row.name);
    return name.endsWith(QLatin1String("_translate")) ? Quantity::Translation
           : name.endsWith(QLatin1String("_rotate"))  ? Quantity::Rotation
                                                      : Quantity::Scale;
}

bool isUsed(EEllipsoinTransformFunction function, Quantity quantity)
{
    return function == EllipsoinTransformFunction_Seven
           || (function == EllipsoinTransformFunction_Three && quantity == Quantity::Translation);
}

bool isLengthUnit(EUnit unit)
{
    const UnitRow *row = findRow(unitRows, unit);
    return row != nullptr && row->metresPerUnit != 0.0;
}

/// What the definition makes of a unit; empty when it is converted.
QString misusedUnit(const Param &param, Quantity quantity)
{
    switch (quantity) {
    case Quantity::Translation:
        return isLengthUnit(param.unit) ? QString() : QObject::tr("no definition can be made");
    case Quantity::Rotation:
        return param.unit == Unit_Degree || param.unit == Unit_Second ? QString()
                                                                      : wordOf(Unit_Second);
    case Quantity::Scale: break;
    }
    return param.unit == Unit_None ? QString() : QStringLiteral("ppm");
}

bool isPlausible(const Param &param, Quantity quantity)
{
    const double value = param.value.toDouble();
    switch (quantity) {
    case Quantity::Translation:
        return !isLengthUnit(param.unit)
               || translations.holds(Words::ConvertUnit_Length(value, param.unit, Unit_Meter));
    case Quantity::Rotation:
        return rotations.holds(Words::ConvertUnit_Angle(value, param.unit, Unit_Second));
    case Quantity::Scale: break;
    }
    return scaleDifferences.holds(value);
}

void reviewShiftParameter(const QDomElement &element, const Param &param, Quantity quantity,
                          ReviewFindings &findings)
{
    if (!hasReadableVersion(element))
        return; // said already
    if (wholeText(element).isEmpty()) {
        findings.add(FindingKind::MissingValue, element, writtenValue(element), asText(param));
        return;
    }
    const QString misused = misusedUnit(param, quantity);
    if (!misused.isEmpty() && !findings.isDoubted(element, Names::xml_attrName_unit))
        findings.addAttribute(FindingKind::UnitNotUsed, element, Names::xml_attrName_unit, misused);
    if (findings.isDoubted(element))
        return;
    if (isText(param) && !isReadAsNumber(param.value.toString())) {
        findings.add(FindingKind::NotANumber, element, param.value.toString(),
                     asNumber(param.value.toDouble()));
    } else if (!isPlausible(param, quantity)) {
        findings.add(FindingKind::Implausible, element, writtenValue(element), asText(param));
    }
}

const NamedEllipsoid *namedEllipsoid(const QString &name)
{
    const auto row = std::find_if(
        std::begin(namedEllipsoids), std::end(namedEllipsoids),
        [&name](const NamedEllipsoid &e) { return name == QLatin1String(e.projName); });
    return row != std::end(namedEllipsoids) ? row : nullptr;
}

double semiMinorAxis(double semiMajorAxis, double inverseFlattening)
{
    return semiMajorAxis - semiMajorAxis / inverseFlattening;
}

/// Infinite for a sphere.
double inverseFlattening(const NamedEllipsoid &named)
{
    return named.inverseFlattening != 0.0
               ? named.inverseFlattening
               : named.semiMajorAxis / (named.semiMajorAxis - named.semiMinorAxis);
}

/// Editions of an ellipsoid differ by some decimetres (Clarke 1880 by 0.1 m), others by metres.
constexpr double sameAxis = 1.0; // [m]

void reviewNamedEllipsoid(const QDomElement &element, const Ellipsoid &ellipsoid,
                          const NamedEllipsoid &named, ReviewFindings &findings)
{
    const double axis = ellipsoid.biggerHalfAxle.value.toDouble();
    if (axis != 0.0 && std::abs(axis - named.semiMajorAxis) > sameAxis
        && !findings.isDoubted(element, Names::xml_attrName_biggerHalfAxle)) {
        findings.addAttribute(FindingKind::Contradiction, element,
                              Names::xml_attrName_biggerHalfAxle,
                              QStringLiteral("%1: %2").arg(QString::fromLatin1(named.projName),
                                                           asNumber(named.semiMajorAxis)));
        return;
    }
    const double flattening = inverseFlattening(named);
    const double reciprocal = ellipsoid.reciprocal;
    if (reciprocal != 0.0
        && std::abs(semiMinorAxis(named.semiMajorAxis, reciprocal)
                    - semiMinorAxis(named.semiMajorAxis, flattening))
               > sameAxis
        && !findings.isDoubted(element, Names::xml_attrName_reciprocal)) {
        findings.addAttribute(FindingKind::Contradiction, element, Names::xml_attrName_reciprocal,
                              QStringLiteral("%1: %2").arg(QString::fromLatin1(named.projName),
                                                           asNumber(flattening)));
    }
}

} // namespace

void reviewEllipsoidUse(const QDomElement &element, const Ellipsoid &ellipsoid,
                        ReviewFindings &findings)
{
    const double axis = ellipsoid.biggerHalfAxle.value.toDouble();
    const double reciprocal = ellipsoid.reciprocal;
    const QString name = ellipsoid.proj4EllpsName.trimmed();
    // A record with nothing in it is one to be filled in; PROJ refuses it.
    if (axis == 0.0 && reciprocal == 0.0)
        return;
    const bool mayBeZero = !name.isEmpty(); // where the name is used, and not the numbers
    const auto judge = [&](const QString &attribute, double value, const Range &range) {
        if (!range.holds(value) && !(value == 0.0 && mayBeZero)
            && !findings.isDoubted(element, attribute)) {
            findings.addAttribute(element.hasAttribute(attribute) ? FindingKind::Implausible
                                                                  : FindingKind::MissingAttribute,
                                  element, attribute, asNumber(value));
        }
    };
    judge(Names::xml_attrName_biggerHalfAxle, axis, semiMajorAxes);
    judge(Names::xml_attrName_reciprocal, reciprocal, inverseFlattenings);
    if (const NamedEllipsoid *named = namedEllipsoid(splitEllipsoidName(name).name))
        reviewNamedEllipsoid(element, ellipsoid, *named, findings);
}

void reviewProjectionUse(const QDomElement &element, const Projection &projection,
                         ReviewFindings &findings)
{
    readEach(element, Names::xml_segName_param, [&](const QDomElement &child) {
        const QString key = child.attribute(Names::xml_attrName_name);
        const Param param = projection.param.value(key);
        // Dictionaries and texts are for editors of systems; numbers are there to be used.
        if (!projection.paramProj4.contains(key) && !param.isDictionary && !isText(param)
            && !isNothing(param) && !findings.isDoubted(child))
            findings.add(FindingKind::NotUsed, child, writtenValue(child));
        return true;
    });
    const auto params = namedChildren(element, Names::xml_segName_param);
    const auto projNames = namedChildren(element, Names::xml_segName_paramProj4);
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const QString &key = entry.key();
        if (projNames.contains(key)
            && reviewProjName(projNames.value(key), projection, projection.param.value(key),
                              entry.value(), findings))
            continue;
        if (params.contains(key)) {
            GivenParameter(params.value(key), projection.param.value(key), entry.value(), findings)
                .review();
        } else if (!projection.param.contains(key) && projNames.contains(key)
                   && !findings.isDoubted(projNames.value(key), Names::xml_attrName_name)) {
            findings.addAttribute(FindingKind::MissingValue, projNames.value(key),
                                  Names::xml_attrName_name, entry.value() + QStringLiteral("=0"));
        }
    }
    reviewRepeatedProjNames(projNames, projection, findings);
}

void reviewShiftBesideGrids(const QDomElement &element, const Ellipsoid &ellipsoid,
                            const stEllipsoinTransform &record, ReviewFindings &findings)
{
    const bool hasShift = record.fuction == EllipsoinTransformFunction_Three
                          || record.fuction == EllipsoinTransformFunction_Seven;
    if (hasShift && !splitEllipsoidName(ellipsoid.proj4EllpsName.trimmed()).grids.isEmpty())
        findings.addAttribute(FindingKind::NotUsed, element, Names::xml_attrName_fuction);
}

void reviewTransformUse(const QDomElement &element, const stEllipsoinTransform &record,
                        ReviewFindings &findings)
{
    const bool isMisread = findings.isDoubted(element, Names::xml_attrName_fuction);
    for (const auto &row : ellipsoidTransformParams) {
        const QDomElement child = element.firstChildElement(QString::fromLatin1(row.name));
        if (child.isNull())
            continue;
        const Param &param = record.*row.member;
        const Quantity quantity = quantityOf(row);
        if (isUsed(record.fuction, quantity))
            reviewShiftParameter(child, param, quantity, findings);
        else if (!isMisread && !isNothing(param) && !findings.isDoubted(child))
            findings.add(FindingKind::NotUsed, child, writtenValue(child));
    }
    // A three-parameter shift reads z in the unit of y.
    const QDomElement z = element.firstChildElement(QStringLiteral("z_translate"));
    if (record.fuction == EllipsoinTransformFunction_Three
        && record.z_translate.unit != record.y_translate.unit && !isNothing(record.z_translate)
        && !z.isNull() && !findings.isDoubted(z, Names::xml_attrName_unit)) {
        findings.addAttribute(FindingKind::UnitNotUsed, z, Names::xml_attrName_unit,
                              wordOf(record.y_translate.unit));
    }
}

} // namespace KelStd::io
