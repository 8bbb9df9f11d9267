#include <KelStd/catalogue/WktExtension.h>

#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/ProjectionRecords.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

bool isExtension(const WktNode &node)
{
    return node.keyword == "EXTENSION" && node.name().toUpper() == "PROJ4"
           && node.values.size() == 2;
}

/// What other numbers say, or nobody has to: the figure, its meridian and the unit are compared as
/// what they mean.
const std::set<QByteArray> &comparedOtherwise()
{
    static const std::set<QByteArray> keys = {
        "datum", "ellps",    "a",       "b",    "rf",      "f",      "R",    "pm",
        "units", "to_meter", "towgs84", "type", "no_defs", "wktext", "over", "title"};
    return keys;
}

bool areNear(double a, double b)
{
    return std::abs(a - b) <= 1e-11 * std::max({1.0, std::abs(a), std::abs(b)});
}

/// A number that is not given is 0, a scale factor 1; nothing for what is none.
std::optional<double> numberOf(const ProjStep &step, const QByteArray &key)
{
    if (!step.has(key.constData()))
        return key == "k" || key == "k_0" ? 1.0 : 0.0;
    return step.number(key.constData());
}

bool isSame(const ProjStep &inner, const ProjStep &outer, const QByteArray &key)
{
    // One name of two.
    const QByteArray other = key == "k" ? "k_0" : (key == "k_0" ? "k" : key);
    const QByteArray &name = outer.has(key.constData()) ? key : other;
    const auto mine = numberOf(inner, key);
    const auto theirs = numberOf(outer, name);
    if (mine && theirs)
        return areNear(*mine, *theirs);
    return inner.has(key.constData()) == outer.has(name.constData())
           && inner.text(key.constData()) == outer.text(name.constData());
}

std::array<double, 7> shiftOf(const ProjStep &step)
{
    std::array<double, 7> shift = {};
    std::size_t at = 0;
    for (const QByteArray &number : step.text("towgs84").split(',')) {
        if (at < shift.size())
            shift[at++] = number.toDouble();
    }
    return shift;
}

double unitOf(const ProjSession &session, const PJ *system)
{
    const std::vector<Axis> axes = session.axesOf(system);
    return axes.empty() ? 1.0 : axes.front().factor;
}

/// A system and PROJ's text of it, with its own shift.
struct Said
{
    ProjStep step;
    ProjObject system;
};

Said said(const ProjSession &session, ProjObject object)
{
    const proj::ProjFunctions &proj = session.functions();
    Said result;
    if (object == nullptr)
        return result;
    const std::vector<ProjStep> steps = stepsOf(session.projTextOf(object.get()));
    if (steps.size() == 1)
        result.step = steps.front();
    if (session.typeOf(object.get()) == PJ_TYPE_BOUND_CRS)
        object.reset(proj.proj_get_source_crs(session.context(), object.get()));
    result.system = std::move(object);
    return result;
}

/// What the string says otherwise, as it says it; empty where it agrees.
QString difference(const ProjSession &session, const ProjStep &given, const Said &inner,
                   const Said &outer)
{
    const auto written = [&given](const char *key) {
        return QStringLiteral("+%1=%2").arg(QLatin1String(key),
                                            QString::fromUtf8(given.text(key).left(80)));
    };
    for (const char *file : {"nadgrids", "geoidgrids"}) {
        if (given.has(file))
            return written(file);
    }
    if (inner.step.name != outer.step.name)
        return QStringLiteral("+proj=") + QString::fromUtf8(given.name.left(40));
    for (const ProjStep *step : {&inner.step, &outer.step}) {
        for (const auto &parameter : step->parameters) {
            if (comparedOtherwise().count(parameter.first) == 0
                && !isSame(inner.step, outer.step, parameter.first))
                return written(parameter.first.constData());
        }
    }
    const auto mine = ellipsoidOf(session, inner.system.get());
    const auto theirs = ellipsoidOf(session, outer.system.get());
    const auto isAxis = [](const Ellipsoid &a, const Ellipsoid &b) {
        return areNear(a.biggerHalfAxle.value.toDouble(), b.biggerHalfAxle.value.toDouble())
               && std::abs(a.reciprocal - b.reciprocal) <= 1e-6;
    };
    if (!mine || !theirs || !isAxis(*mine, *theirs)) {
        for (const char *key : {"ellps", "datum", "a", "R"}) {
            if (given.has(key))
                return written(key);
        }
    }
    if (!areNear(primeMeridianOf(session, inner.system.get()),
                 primeMeridianOf(session, outer.system.get())))
        return written("pm");
    if (!areNear(unitOf(session, inner.system.get()), unitOf(session, outer.system.get())))
        return written(given.has("to_meter") ? "to_meter" : "units");
    // A string without a shift says nothing of it.
    const std::array<double, 7> shift = shiftOf(given);
    const std::array<double, 7> outerShift = shiftOf(outer.step);
    if (given.has("towgs84")
        && !std::equal(shift.begin(), shift.end(), outerShift.begin(), areNear))
        return written("towgs84");
    return {};
}

/// An extension and the node that it stands in.
struct Extension
{
    const WktNode *owner;
    const WktNode *node;

    const QByteArray &text() const { return node->values[1].text; }
};

void collect(const WktNode &owner, std::vector<Extension> &extensions)
{
    for (const WktNode &node : owner.nodes) {
        if (isExtension(node))
            extensions.push_back({&owner, &node});
        collect(node, extensions);
    }
}

std::vector<Extension> extensionsIn(const WktNode &root)
{
    std::vector<Extension> extensions;
    collect(root, extensions);
    return extensions;
}

/// As GDAL writes it: "+proj=merc +a=6378137 +b=6378137 ... +nadgrids=@null".
bool isWebMercator(const QByteArray &text)
{
    const std::vector<ProjStep> steps = stepsOf(text);
    return steps.size() == 1 && steps[0].name == "merc" && steps[0].text("nadgrids") == "@null"
           && steps[0].text("a").toDouble() == 6378137.0
           && steps[0].text("b").toDouble() == 6378137.0;
}

} // namespace

QByteArray withoutExtensions(const QByteArray &wkt, const WktNode &root)
{
    std::vector<Extension> found = extensionsIn(root);
    std::sort(found.begin(), found.end(),
              [](const Extension &a, const Extension &b) { return a.node->begin > b.node->begin; });
    QByteArray bare = wkt;
    for (const Extension &extension : found) {
        const auto comma = bare.lastIndexOf(',', extension.node->begin);
        bare.remove(comma, extension.node->end - comma);
    }
    return bare;
}

bool isWebMercatorByExtension(const WktNode &root)
{
    const std::vector<Extension> extensions = extensionsIn(root);
    return extensions.size() == 1 && extensions.front().owner->keyword == "PROJCS"
           && isWebMercator(extensions.front().text());
}

QString doubtOnExtensions(const ProjSession &session, const QByteArray &wkt, const WktNode &root)
{
    const QString notUnderstood =
        QStringLiteral("its EXTENSION[\"PROJ4\"] is no system that PROJ understands");
    for (const Extension &extension : extensionsIn(root)) {
        const std::vector<ProjStep> steps = stepsOf(extension.text());
        if (steps.size() != 1)
            return notUnderstood;
        const WktNode &owner = *extension.owner;
        const QByteArray own = wkt.mid(owner.begin, owner.end - owner.begin);
        const auto tree = wktTree(own);
        const Said outer = said(session, session.fromText(withoutExtensions(own, *tree)));
        ProjStep given = steps.front();
        QByteArray alone = extension.text() + " +type=crs";
        const bool isOfWeb = isWebMercatorByExtension(root);
        if (isOfWeb && outer.step.text("nadgrids") == "@null")
            continue; // PROJ knows it by its name, too
        if (isOfWeb) {
            // What is left of the web's Mercator is the origin, which both say.
            alone = "+proj=merc +ellps=WGS84 +type=crs";
            for (const char *key : {"lon_0", "x_0", "y_0", "k"})
                alone += QByteArray(" +") + key + "="
                         + QByteArray::number(numberOf(given, key).value_or(0.0), 'g', 17);
            given.parameters.erase(
                std::remove_if(given.parameters.begin(), given.parameters.end(),
                               [](const auto &row) { return row.first == "nadgrids"; }),
                given.parameters.end());
        }
        const Said inner = said(session, session.fromText(alone));
        if (inner.system == nullptr)
            return notUnderstood;
        if (outer.system == nullptr)
            return {}; // refused for it elsewhere
        const QString otherwise = difference(session, given, inner, outer);
        if (!otherwise.isEmpty())
            return QStringLiteral(
                       "its EXTENSION[\"PROJ4\"] has \"%1\", which the definition around "
                       "it does not say, and programs take either: remove one of them")
                .arg(otherwise);
    }
    return {};
}

} // namespace KelStd::catalogue
