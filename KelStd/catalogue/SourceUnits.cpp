#include <KelStd/catalogue/SourceUnits.h>

#include <cmath>
#include <string_view>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double radiansPerDegree = 3.14159265358979323846 / 180.0;

/// The sizes of the EPSG Dataset, in metres or radians, under the names that texts give them: in
/// small letters, without what parts words.
struct NamedUnit
{
    std::string_view name;
    double size;
};

constexpr NamedUnit namedUnits[] = {
    {"metre", 1.0},
    {"meter", 1.0},
    {"metres", 1.0},
    {"meters", 1.0},
    {"kilometre", 1000.0},
    {"kilometer", 1000.0},
    {"foot", 0.3048},
    {"internationalfoot", 0.3048},
    {"footintl", 0.3048},
    {"footinternational", 0.3048},
    {"ussurveyfoot", 1200.0 / 3937.0},
    {"footus", 1200.0 / 3937.0},
    {"degree", radiansPerDegree},
    {"degrees", radiansPerDegree},
    {"grad", 0.9 * radiansPerDegree},
    {"gon", 0.9 * radiansPerDegree},
    {"radian", 1.0},
};

/// More digits are lost by nobody; 6 mm in a northing of 6,000 km.
constexpr double sameSize = 1e-9;

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
    if (named == nullptr || std::abs(size / named->size - 1.0) <= sameSize)
        return {};
    return QStringLiteral("its unit \"%1\" has the size %2, but is %3; one of the two is wrong")
        .arg(unit, QString::number(size, 'g', 15), QString::number(named->size, 'g', 15));
}

} // namespace

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
