#include <KelStd/catalogue/DefinedSystem.h>

#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/location/ChainDefinitions.h>

#include <algorithm>
#include <utility>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

std::optional<ProjStep> stepOf(const Coord &coord)
{
    const ChainDefinitions definitions(&coord);
    std::vector<ProjStep> steps = stepsOf(definitions.localProjected.toUtf8());
    return steps.size() == 1 ? std::optional<ProjStep>(steps.front()) : std::nullopt;
}

/// The parameters that `parts` leave of a definition.
void take(const DefinitionParts &parts, ProjStep &step)
{
    const bool hasGrid = step.has("nadgrids");
    const bool isInMetres = step.text("units") == "m";
    const auto isLeftOut = [&](const std::pair<QByteArray, QByteArray> &parameter) {
        // A grid shifts in place of the numbers beside it.
        if (parameter.first == "nadgrids" || parameter.first == "towgs84")
            return !parts.withShift || (hasGrid && parameter.first == "towgs84");
        return parameter.first == "axis" && (parts.isPlain || parameter.second == "enu");
    };
    auto &all = step.parameters;
    all.erase(std::remove_if(all.begin(), all.end(), isLeftOut), all.end());
    constexpr int digits = 15; // PROJ knows its units by them, as "us-ft"
    for (auto &parameter : all) {
        if (parameter.first != "units")
            continue;
        if (parts.isPlain)
            parameter.second = "m";
        else if (parts.unit && isInMetres)
            parameter = {"to_meter", QByteArray::number(parts.unit->metres, 'g', digits)};
    }
}

} // namespace

ProjObject definedSystem(const ProjSession &session, const Coord &coord,
                         const DefinitionParts &parts)
{
    auto step = stepOf(coord);
    if (!step)
        return nullptr;
    take(parts, *step);
    QByteArray text = "+proj=" + step->name;
    for (const auto &parameter : step->parameters) {
        text += " +" + parameter.first;
        if (!parameter.second.isEmpty())
            text += "=" + parameter.second;
    }
    return session.fromText(text + " +no_defs +type=crs");
}

PlaneDirections planeDirections(const ProjSession &session, const Coord &coord)
{
    PlaneDirections directions;
    const auto step = stepOf(coord);
    if (!step)
        return directions;
    const QByteArray axis = step->text("axis");
    if (!axis.isEmpty() && axis != "enu") {
        directions.axis = axis;
        directions.east = axis.startsWith('w') ? -1.0 : 1.0;
        directions.north = axis.mid(1).startsWith('s') ? -1.0 : 1.0;
    }
    DefinitionParts parts;
    parts.withShift = false;
    const ProjObject object = definedSystem(session, coord, parts);
    const std::vector<Axis> axes =
        object == nullptr ? std::vector<Axis>() : session.axesOf(object.get());
    if (!axes.empty())
        directions.metres = axes.front().factor;
    return directions;
}

} // namespace KelStd::catalogue
