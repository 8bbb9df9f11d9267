#include <KelStd/catalogue/SourceUnits.h>

#include <QtCore/QRegularExpression>

#include <cmath>
#include <string_view>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double radiansPerDegree = 3.14159265358979323846 / 180.0;
constexpr double foot = 0.3048;
constexpr double surveyFoot = 1200.0 / 3937.0; // Federal Register of April 5, 1893

/// More digits are lost by nobody; 6 mm in a northing of 6,000 km.
constexpr double sameSize = 1e-9;
/// But for those of degrees: ten of them, 0.0174532925, are 1.1e-9 of it off, which would put a
/// central meridian of 147 degrees 13 mm aside.
constexpr double roundedAngle = 2e-9;

/// The sizes of the EPSG Dataset and of PROJ's table of units, in metres or radians, under the
/// names that texts give them: in small letters, without what parts words.
struct NamedUnit
{
    std::string_view name;
    double size;
    bool isAngle = false;
};

constexpr NamedUnit namedUnits[] = {
    {"metre", 1.0},
    {"meter", 1.0},
    {"metres", 1.0},
    {"meters", 1.0},
    {"m", 1.0},
    {"kilometre", 1000.0},
    {"kilometer", 1000.0},
    {"km", 1000.0},
    {"foot", foot},
    {"feet", foot},
    {"ft", foot},
    {"internationalfoot", foot},
    {"footintl", foot},
    {"footinternational", foot},
    {"ussurveyfoot", surveyFoot},
    {"ussurveyfeet", surveyFoot},
    {"surveyfoot", surveyFoot},
    {"surveyfeet", surveyFoot},
    {"footsurveyus", surveyFoot},
    {"footus", surveyFoot},
    {"usfoot", surveyFoot},
    {"usfeet", surveyFoot},
    {"usft", surveyFoot},
    {"ftus", surveyFoot},
    {"yard", 3.0 * foot},
    {"yd", 3.0 * foot},
    {"ussurveyyard", 3.0 * surveyFoot},
    {"yardus", 3.0 * surveyFoot},
    {"usyd", 3.0 * surveyFoot},
    {"link", 0.66 * foot},
    {"ussurveylink", 0.66 * surveyFoot},
    {"linkus", 0.66 * surveyFoot},
    {"chain", 66.0 * foot},
    {"ch", 66.0 * foot},
    {"ussurveychain", 66.0 * surveyFoot},
    {"chainus", 66.0 * surveyFoot},
    {"usch", 66.0 * surveyFoot},
    {"degree", radiansPerDegree, true},
    {"degrees", radiansPerDegree, true},
    {"deg", radiansPerDegree, true},
    {"grad", 0.9 * radiansPerDegree, true},
    {"gon", 0.9 * radiansPerDegree, true},
    {"radian", 1.0, true},
};

/// How far a size is off that of its name, relative to it.
double differenceOf(const NamedUnit &named, double size)
{
    return std::abs(size / named.size - 1.0);
}

const NamedUnit *find(const QString &unit)
{
    std::string name;
    for (const QChar c : unit) {
        if (c.isLetterOrNumber())
            name += c.toLower().toLatin1();
    }
    for (const NamedUnit &row : namedUnits) {
        if (row.name == name)
            return &row;
    }
    return nullptr;
}

QString doubtOn(const QString &unit, double size)
{
    if (!(size > 0.0) || !std::isfinite(size))
        return QStringLiteral("its unit \"%1\" has the size %2, which is none")
            .arg(unit, QString::number(size, 'g', 15));
    const NamedUnit *named = find(unit);
    if (named == nullptr || differenceOf(*named, size) <= sameSize)
        return {};
    return QStringLiteral("its unit \"%1\" has the size %2, but is %3; one of the two is wrong")
        .arg(unit, QString::number(size, 'g', 15), QString::number(named->size, 'g', 15));
}

} // namespace

QByteArray withWholeAngles(const QByteArray &wkt)
{
    static const QRegularExpression unit(
        QStringLiteral("\\b(?:ANGLE)?UNIT\\s*[\\[(]\\s*\"([^\"]*)\"\\s*,\\s*([0-9.eE+-]+)"),
        QRegularExpression::CaseInsensitiveOption);
    QByteArray result;
    int taken = 0;
    // A letter is a byte of the text, whatever its encoding.
    auto found = unit.globalMatch(QString::fromLatin1(wkt));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        const NamedUnit *named = find(match.captured(1));
        bool isNumber = false;
        const double size = match.captured(2).toDouble(&isNumber);
        if (named == nullptr || !named->isAngle || !isNumber
            || !(differenceOf(*named, size) <= roundedAngle))
            continue;
        const int start = static_cast<int>(match.capturedStart(2));
        result += wkt.mid(taken, start - taken) + QByteArray::number(named->size, 'g', 17);
        taken = static_cast<int>(match.capturedEnd(2));
    }
    return result + wkt.mid(taken);
}

QString doubtOnUnits(const ProjSession &session, const PJ *projected, const PJ *geodetic)
{
    const proj::ProjFunctions &proj = session.functions();
    std::vector<Unit> units;
    for (const PJ *system : {projected, geodetic}) {
        for (const Axis &axis : session.axesOf(system))
            units.push_back({axis.unit, axis.factor});
    }
    const ProjObject conversion(proj.proj_crs_get_coordoperation(session.context(), projected));
    if (conversion != nullptr) {
        for (const MethodValue &value : session.valuesOf(conversion.get()))
            units.push_back(value.unit);
    }
    for (const Unit &unit : units) {
        const QString doubt = doubtOn(unit.name, unit.size);
        if (!doubt.isEmpty())
            return doubt;
    }
    return {};
}

} // namespace KelStd::catalogue
