#include <KelStd/catalogue/WktParameters.h>

#include <KelStd/catalogue/ParameterEffects.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/WktExtension.h>
#include <KelStd/catalogue/WktTree.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <set>

namespace KelStd::catalogue {

namespace {

/// More has no projection.
constexpr std::size_t maxParameters = 40;

/// A number of PROJ's that a text has to give, and how people call it.
struct NumberRow
{
    const char *key;
    const char *words;
    /// Part of the name of a parameter which gives the number where PROJ has the method for one
    /// value of it alone: no other value leads to anything that could be compared.
    const char *fixedBy;
};

constexpr NumberRow numberRows[] = {
    {"x_0", "false easting", "easting"},
    {"y_0", "false northing", "northing"},
    {"h", "height of the viewpoint", nullptr},
    {"h_0", "height of the origin", nullptr},
    {"k", "scale factor", nullptr},
    {"k_0", "scale factor", nullptr},
    {"lat_0", "latitude of origin", "latitude"},
    {"lat_1", "first standard parallel", nullptr},
    {"lat_2", "second standard parallel", nullptr},
    {"lat_ts", "standard parallel", nullptr},
    {"lon_0", "central meridian", nullptr},
    {"lonc", "longitude of the centre", nullptr},
    {"alpha", "azimuth", nullptr},
    {"gamma", "angle from rectified to skew grid", nullptr},
};

/// What PROJ writes of its own accord.
struct ConstantRow
{
    const char *projection;
    const char *key;
};

constexpr ConstantRow constants[] = {{"krovak", "alpha"}, {"eqc", "lat_0"}, {"eqc", "lat_ts"}};

/// Parameters that texts may have without an effect: of a method that does not need them, while
/// their value says nothing.
constexpr const char *idleNames[] = {
    "latitudeoforigin",
    "centralmeridian",
    "scalefactor",
    "falseeasting",
    "falsenorthing",
    "standardparallel1",
    "standardparallel2",
    "azimuth",
    "rectifiedgridangle",
    "xscale",
    "yscale",
    "xyplanerotation",
    "auxiliaryspheretype",
    "latitudeofnaturalorigin",
    "longitudeofnaturalorigin",
    "scalefactoratnaturalorigin",
};

bool isWebMercator(const ProjStep &step)
{
    return step.name == "merc" && step.text("nadgrids") == "@null";
}

bool isWkt2(const WktNode &system)
{
    return system.keyword != "PROJCS";
}

std::vector<const WktNode *> parameterNodes(const WktNode &system)
{
    const WktNode *const owner = isWkt2(system) ? system.child({"CONVERSION"}) : &system;
    std::vector<const WktNode *> nodes;
    if (owner != nullptr) {
        for (const WktNode &node : owner->nodes) {
            if (node.keyword == "PARAMETER")
                nodes.push_back(&node);
        }
    }
    return nodes;
}

QString methodName(const WktNode &system)
{
    const WktNode *const owner = isWkt2(system) ? system.child({"CONVERSION"}) : &system;
    const WktNode *const method =
        owner == nullptr ? nullptr : owner->child({"METHOD", "PROJECTION"});
    return method == nullptr ? QString() : QString::fromUtf8(method->name().left(80));
}

bool isIdle(const GivenParameter &parameter, const std::vector<GivenParameter> &given,
            const ProjStep &step)
{
    const auto is = [&parameter](double value) {
        return std::abs(parameter.value - value) <= 1e-9;
    };
    if (step.name == "krovak"
        && (parameter.plain == "latitudeofpseudostandardparallel"
            || parameter.plain == "pseudostandardparallel1"))
        return is(78.5); // the published one [deg]
    // With one standard parallel it is the latitude of the origin.
    if (step.name == "lcc" && parameter.plain == "standardparallel1"
        && std::any_of(given.begin(), given.end(), [&is](const GivenParameter &other) {
               return other.plain == "latitudeoforigin" && is(other.value);
           }))
        return true;
    const bool isKnown = std::any_of(std::begin(idleNames), std::end(idleNames),
                                     [&](const char *name) { return parameter.plain == name; });
    return isKnown && is(parameter.plain.contains("scale") ? 1.0 : 0.0);
}

/// Whether a number is given by no parameter but right all the same.
bool isConstant(const NumberRow &row, const ParameterEffects &effects)
{
    const ProjStep &step = effects.step;
    const bool isByProj =
        std::any_of(std::begin(constants), std::end(constants), [&](const ConstantRow &constant) {
            return step.name == constant.projection && QByteArray(constant.key) == row.key;
        });
    if (isByProj || isWebMercator(step))
        return true;
    const QByteArray key = row.key;
    if (key == "lat_0" && std::abs(std::abs(step.number(row.key).value_or(0.0)) - 90.0) <= 1e-9)
        return true; // about a pole, by the method's name or the sign of its parallel
    return row.fixedBy != nullptr
           && std::any_of(
               effects.fixed.begin(), effects.fixed.end(),
               [&row](const GivenParameter *given) { return given->plain.contains(row.fixedBy); });
}

/// "0 for its false easting" of everything that PROJ has a default for.
QStringList defaultsOf(const ParameterEffects &effects)
{
    QStringList texts;
    for (const NumberRow &row : numberRows) {
        if (effects.step.has(row.key) && effects.given.count(row.key) == 0
            && !isConstant(row, effects))
            texts +=
                QStringLiteral("%1 for its %2")
                    .arg(QString::fromUtf8(effects.step.text(row.key)), QLatin1String(row.words));
    }
    return texts;
}

QString passedOver(const WktNode &parameter, const QString &owner)
{
    return QStringLiteral("PROJ would pass over the parameter \"%1\" of \"%2\"")
        .arg(QString::fromUtf8(parameter.name().left(80)), owner);
}

/// Parameters as texts give them; false with the doubt where they are none.
bool takeParameters(const WktNode &system, std::vector<GivenParameter> &given, QString &doubt)
{
    std::set<QByteArray> names;
    const std::vector<const WktNode *> nodes = parameterNodes(system);
    if (nodes.size() > maxParameters) {
        doubt = QStringLiteral("the projection has more than %1 parameters").arg(maxParameters);
        return false;
    }
    for (const WktNode *node : nodes) {
        const QString name = QString::fromUtf8(node->name().left(80));
        bool isNumber = node->values.size() > 1;
        const double value = isNumber ? node->values[1].text.toDouble(&isNumber) : 0.0;
        if (!isNumber || !std::isfinite(value)) {
            doubt = QStringLiteral("the parameter \"%1\" has no number").arg(name);
            return false;
        }
        if (!isWkt2(system) && node->child({"UNIT", "LENGTHUNIT", "ANGLEUNIT"}) != nullptr) {
            doubt = QStringLiteral("the parameter \"%1\" has a unit of its own, which PROJ passes "
                                   "over in WKT 1")
                        .arg(name);
            return false;
        }
        if (!names.insert(plainName(node->name())).second) {
            doubt = QStringLiteral("the parameter \"%1\" is given twice").arg(name);
            return false;
        }
        const WktValue &number = node->values[1];
        given.push_back({node, plainName(node->name()), value, number.begin - system.begin,
                         number.end - system.begin});
    }
    return true;
}

/// PROJ 9.1 takes WKT 2's parameters without a unit for metres and degrees; the standard has them
/// in the units of the plane and of the base.
QString doubtOnMissingUnits(const std::vector<GivenParameter> &given, const WktNode &system,
                            const MadeOfWkt &made)
{
    const auto sizeIn = [](const WktNode *owner, std::initializer_list<const char *> keywords) {
        const WktNode *unit = owner == nullptr ? nullptr : owner->child(keywords);
        if (unit == nullptr && owner != nullptr && owner->child({"AXIS"}) != nullptr)
            unit = owner->child({"AXIS"})->child(keywords);
        return unit == nullptr || unit->values.size() < 2 ? 0.0 : unit->values[1].text.toDouble();
    };
    constexpr double degree = 3.14159265358979323846 / 180.0;
    const double length = sizeIn(&system, {"LENGTHUNIT", "UNIT"});
    const double angle =
        sizeIn(system.child({"BASEGEOGCRS", "BASEGEODCRS"}), {"ANGLEUNIT", "UNIT"});
    const bool isInMetres = length <= 0.0 || std::abs(length - 1.0) <= 1e-9;
    const bool isInDegrees = angle <= 0.0 || std::abs(angle / degree - 1.0) <= 1e-8;
    for (const GivenParameter &parameter : given) {
        if (parameter.node->child({"LENGTHUNIT", "ANGLEUNIT", "SCALEUNIT", "UNIT"}) != nullptr
            || std::abs(parameter.value) <= 0.0)
            continue;
        const QString name = QString::fromUtf8(parameter.node->name());
        for (const MethodValue &value : made.values) {
            const bool isDoubtful =
                (value.isLength && !isInMetres) || (value.isAngle && !isInDegrees);
            if (isDoubtful && value.name.compare(name, Qt::CaseInsensitive) == 0)
                return QStringLiteral("the parameter \"%1\" has no unit, where it would be that of "
                                      "the %2 and PROJ takes %3: add its %4")
                    .arg(name.left(80),
                         value.isLength ? QStringLiteral("plane") : QStringLiteral("base"),
                         value.isLength ? QStringLiteral("metres") : QStringLiteral("degrees"),
                         value.isLength ? QStringLiteral("LENGTHUNIT")
                                        : QStringLiteral("ANGLEUNIT"));
        }
    }
    return {};
}

constexpr const char *verticalShiftName = "verticalshift";

/// Of ESRI's vertical system PROJ reads the direction alone.
QString doubtOnHeights(const WktNode &root)
{
    const WktNode *const vertical = findNode(root, {"VERTCS"});
    if (vertical == nullptr)
        return {};
    for (const WktNode &node : vertical->nodes) {
        const QByteArray name = plainName(node.name());
        if (node.keyword == "PARAMETER" && name != verticalShiftName && name != "direction")
            return passedOver(node, QString::fromUtf8(vertical->name().left(80)));
    }
    return {};
}

} // namespace

double verticalShiftOf(const QByteArray &definition)
{
    const auto root = wktTree(definition);
    const WktNode *const vertical = !root ? nullptr : findNode(*root, {"VERTCS"});
    if (vertical == nullptr)
        return 0.0;
    for (const WktNode &node : vertical->nodes) {
        if (node.keyword == "PARAMETER" && plainName(node.name()) == verticalShiftName
            && node.values.size() > 1)
            return node.values[1].text.toDouble();
    }
    return 0.0;
}

QString doubtOnParameters(const ProjSession &session, const QByteArray &definition)
{
    auto root = wktTree(definition);
    if (!root)
        return {};
    const QByteArray wkt = withoutExtensions(definition, *root);
    root = wktTree(wkt);
    const WktNode *const system =
        !root ? nullptr : findNode(*root, {"PROJCS", "PROJCRS", "PROJECTEDCRS"});
    if (system == nullptr)
        return {};
    std::vector<GivenParameter> given;
    QString doubt = doubtOnHeights(*root);
    if (!doubt.isEmpty())
        return doubt;
    if (!takeParameters(*system, given, doubt))
        return doubt;
    const QByteArray text = wkt.mid(system->begin, system->end - system->begin);
    if (isWkt2(*system)) {
        doubt = doubtOnMissingUnits(given, *system, madeOf(session, text));
        if (!doubt.isEmpty())
            return doubt;
    }
    const ParameterEffects effects = effectsOf(session, text, given, isWkt2(*system));
    if (effects.step.name.isEmpty())
        return {}; // refused for it elsewhere
    const QStringList defaults = defaultsOf(effects);
    const QString taken = defaults.join(QLatin1String(", "));
    for (const GivenParameter *parameter : effects.none) {
        if (isIdle(*parameter, given, effects.step))
            continue;
        doubt = passedOver(*parameter->node, methodName(*system));
        return taken.isEmpty() ? doubt : doubt + QStringLiteral(" and take %1").arg(taken);
    }
    if (!defaults.isEmpty())
        return QStringLiteral("a parameter of \"%1\" is missing, and PROJ would take %2")
            .arg(methodName(*system), taken);
    return {};
}

} // namespace KelStd::catalogue
