#include <KelStd/catalogue/PlaneDirection.h>

#include <QtCore/QStringList>

namespace KelStd::catalogue {

namespace {

struct DirectionRow
{
    const char *word; ///< of PROJ
    const char *first;
    const char *second;
    EEllipsoidDirection direction;
};

/// East and north, or their opposites, in whichever order: a `Coord` has the easting first.
constexpr DirectionRow directionRows[] = {
    {"enu", "east", "north", EllipsoidDirection_ENU},
    {"neu", "north", "east", EllipsoidDirection_ENU},
    {"wsu", "west", "south", EllipsoidDirection_WSU},
    {"swu", "south", "west", EllipsoidDirection_WSU},
    {"esu", "east", "south", EllipsoidDirection_ESU},
    {"seu", "south", "east", EllipsoidDirection_ESU},
    {"wnu", "west", "north", EllipsoidDirection_WNU},
    {"nwu", "north", "west", EllipsoidDirection_WNU},
};

bool isAlongMeridians(const std::vector<Axis> &axes)
{
    const QString &first = axes[0].direction;
    return first == axes[1].direction
           && (first == QLatin1String("north") || first == QLatin1String("south"));
}

} // namespace

std::optional<EEllipsoidDirection> planeDirection(const QByteArray &projAxis,
                                                  const std::vector<Axis> &axes)
{
    const bool isByProj = !projAxis.isEmpty();
    if (!isByProj && (axes.size() < 2 || isAlongMeridians(axes)))
        return axes.size() < 2 ? std::nullopt : std::make_optional(EllipsoidDirection_ENU);
    for (const DirectionRow &row : directionRows) {
        if (isByProj ? projAxis == row.word
                     : axes[0].direction == QLatin1String(row.first)
                           && axes[1].direction == QLatin1String(row.second))
            return row.direction;
    }
    return std::nullopt;
}

QString directionRefusal(const QByteArray &projAxis, const std::vector<Axis> &axes)
{
    if (!projAxis.isEmpty())
        return QStringLiteral("the system's axes \"%1\" cannot be carried")
            .arg(QString::fromUtf8(projAxis));
    QStringList directions;
    for (const Axis &axis : axes)
        directions += QLatin1Char('"') + axis.direction + QLatin1Char('"');
    return QStringLiteral("the system's axes point %1, where one has to point east or west and "
                          "the other one north or south")
        .arg(directions.join(QLatin1String(" and ")));
}

std::vector<ProjStep> signSteps(const ProjSession &session, const PJ *projected)
{
    const proj::ProjObject base = session.geodeticOf(projected);
    if (base == nullptr)
        return {};
    const ObjectList list = session.operations(base.get(), projected, false);
    if (session.countOf(list) == 0)
        return {};
    const proj::ProjObject operation = session.elementOf(list, 0);
    const std::vector<ProjStep> steps = stepsOf(session.pipelineOf(operation.get()));
    // The last one is behind the projection, if it is not the first step, that of the base.
    if (steps.size() < 2 || steps.back().name != "axisswap")
        return {};
    QByteArray signs[2];
    for (const QByteArray &place : steps.back().text("order").split(',')) {
        const int number = place.toInt();
        if (number == 1 || number == -1)
            signs[0] = number < 0 ? "-1" : "1";
        else if (number == 2 || number == -2)
            signs[1] = number < 0 ? "-2" : "2";
    }
    if (signs[0] != "-1" && signs[1] != "-2")
        return {};
    ProjStep step;
    step.name = "axisswap";
    step.parameters.emplace_back("order", signs[0] + ',' + signs[1]);
    return {step};
}

} // namespace KelStd::catalogue
