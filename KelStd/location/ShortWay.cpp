#include <KelStd/location/ShortWay.h>

#include <KelStd/location/DefinitionParameters.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

using definition::countOf;
using definition::isProjection;
using definition::Parameter;
using definition::Parameters;
using definition::parametersOf;
using definition::valueOf;

/// Whether all are parameters of the local definition that this way knows, each once.
bool isKnown(const Parameters &local)
{
    constexpr const char *keys[] = {"proj", "ellps", "a", "rf", "axis", "towgs84", "units"};
    return std::all_of(local.cbegin(), local.cend(), [&](const Parameter &p) {
        return std::any_of(std::begin(keys), std::end(keys), [&](const char *key) {
            return p.key == QLatin1String(key) && countOf(local, key) == 1;
        });
    });
}

/// Whether a definition names a datum, files or other definitions beside its shift, or says how far
/// around the earth longitudes count, which a transformation does not take over.
bool namesMore(const Parameters &projected)
{
    constexpr const char *keys[] = {"datum",   "nadgrids", "geoidgrids", "xy_grids",
                                    "z_grids", "grids",    "init",       "step",
                                    "inv",     "geoc",     "over",       "lon_wrap"};
    return countOf(projected, "towgs84") != 1
           || std::any_of(std::begin(keys), std::end(keys),
                          [&](const char *key) { return countOf(projected, key) > 0; });
}

/// The shape of the local ellipsoid.
QString ellipsoidOf(const Parameters &local)
{
    QString text;
    for (const Parameter &p : local) {
        if (p.key == QLatin1String("ellps") || p.key == QLatin1String("a")
            || p.key == QLatin1String("rf"))
            text += p.text();
    }
    return text;
}

/// The step to an axis word's order from east, north; empty for the usual one.
std::optional<QString> axisStep(const QString &axis)
{
    struct Row
    {
        const char *axis;
        const char *step;
    };
    constexpr Row rows[] = {{"", ""},
                            {"enu", ""},
                            {"wsu", " +step +proj=axisswap +order=-1,-2"},
                            {"esu", " +step +proj=axisswap +order=1,-2"},
                            {"wnu", " +step +proj=axisswap +order=-1,2"}};
    for (const Row &row : rows) {
        if (axis == QLatin1String(row.axis))
            return QString::fromLatin1(row.step);
    }
    return std::nullopt;
}

/// The step from the local cartesian frame to WGS84's; empty where they are the same. Nothing for
/// another number of parameters than three or seven.
std::optional<QString> shiftStep(const QString &towgs84)
{
    constexpr const char *names[] = {"x", "y", "z", "rx", "ry", "rz", "s"};
    constexpr int translations = 3;
    constexpr int all = 7;
    const QStringList values = towgs84.split(QLatin1Char(','));
    if (values.size() != translations && values.size() != all)
        return std::nullopt;
    QString step = QStringLiteral(" +step +proj=helmert");
    bool isShifted = false;
    for (int i = 0; i < values.size(); ++i) {
        bool isNumber = false;
        isShifted = values.at(i).toDouble(&isNumber) != 0.0 || isShifted;
        if (!isNumber)
            return std::nullopt;
        step += QStringLiteral(" +%1=%2").arg(QLatin1String(names[i]), values.at(i));
    }
    if (values.size() == all)
        step += QLatin1String(" +exact +convention=position_vector");
    return isShifted ? step : QString();
}

/// A chain of steps, or the operation itself where it is the only one.
QString chainOf(const QString &steps)
{
    const QString step = QStringLiteral(" +step ");
    return steps.count(step) == 1 && !steps.contains(QLatin1String("+inv"))
               ? steps.mid(step.size())
               : QLatin1String("+proj=pipeline") + steps;
}

} // namespace

std::optional<ShortWayOperations> ShortWayOperations::of(const ChainDefinitions &chain)
{
    const Parameters local = parametersOf(chain.localGeographic);
    const Parameters projected = parametersOf(chain.localProjected);
    const QString axisWord = valueOf(local, "axis");
    const auto axis = axisStep(axisWord);
    const auto shift = shiftStep(valueOf(local, "towgs84"));
    if (!isKnown(local) || namesMore(projected) || !isProjection(valueOf(projected, "proj"))
        || !axis || !shift)
        return std::nullopt;

    QString projection;
    for (const Parameter &p : projected) {
        // The usual axes cost PROJ a step where they are named.
        const bool isUsualAxis = p.key == QLatin1String("axis") && p.value == QLatin1String("enu");
        if (p.key != QLatin1String("towgs84") && !isUsualAxis)
            projection += p.text();
    }
    const QString axisBack = axis->isEmpty() ? QString()
                                             : QString(*axis).replace(QLatin1String("+step"),
                                                                      QLatin1String("+step +inv"));
    return ShortWayOperations{
        // By numbers: beside a named WGS84, PROJ takes a step on GRS 80 for its inverse.
        QStringLiteral("+proj=cart +a=6378137 +rf=298.257223563"),
        chainOf(axisBack + QLatin1String(" +step +proj=cart") + ellipsoidOf(local) + *shift),
        chainOf(axisBack + QLatin1String(" +step") + projection)};
}

} // namespace KelStd
