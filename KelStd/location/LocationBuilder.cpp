#include <KelStd/location/LocationBuilder.h>

#include <KelStd/coord/AxisDirections.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/GeographicProjections.h>
#include <KelStd/location/BuilderStages.h>
#include <KelStd/location/LocationSteps.h>
#include <KelStd/location/ShortWayWhereChecked.h>
#include <KelStd/proj/LoadedProj.h>

#include <optional>
#include <utility>

namespace KelStd {

namespace {

/// A parameter that is a length [m], by PROJ's name; 0 where the projection has none.
double lengthOf(const Projection &projection, const char *name)
{
    const QString key = projection.paramProj4.key(QLatin1String(name));
    return projection.param.value(key).value.toDouble();
}

/// A place in the plane [m], east and north of the projection's origin, in the order of the axes.
Pos planeAt(double east, double north, const Coord &coord)
{
    const EEllipsoidDirection axes = coord.ellipsoid.positiveDir;
    const double x = east + lengthOf(coord.projection, "x_0");
    const double y = north + lengthOf(coord.projection, "y_0");
    return Pos::fromENU(countsWest(axes) ? -x : x, countsSouth(axes) ? -y : y, 0.0);
}

bool isKrovak(const Projection &projection)
{
    return projection.proj4Projection.trimmed() == QLatin1String("krovak");
}

/// Where a projection is used: about its origin, but for Krovak's, whose origin is the apex of the
/// cone, 700 km east and 1,000 km north of Bohemia.
Pos homeOf(const Coord &coord)
{
    return isKrovak(coord.projection) ? planeAt(-700'000.0, -1'000'000.0, coord)
                                      : planeAt(0.0, 0.0, coord);
}

} // namespace

/// The stages of many locations, on transformations that are created once.
class LocationBuilder::Stages
{
public:
    explicit Stages(const Coord &coord)
        : Stages(ChainDefinitions(&coord), coord, geoidGridFile(&coord))
    {}

    /// `location` is as it was when one of the steps fails. They write it in place: a copy at the
    /// end would wait for what was written last. `stepsFrom` takes the stages, the position and the
    /// location.
    template <typename StepsFrom>
    bool make(StepsFrom stepsFrom, const Pos &position, Location &location,
              ConversionFailure *failure)
    {
        m_state.failure = failure;
        // Where PROJ is not loaded the first stage says so.
        if (!m_problem.isEmpty() && proj::LoadedProj::instance().isLoaded())
            return failBySystem();
        const Pos given = position; // which may be part of `location`
        const Location before = location;
        m_state.isAboveGeoid = false;
        // Where the short way does not lead, the other one does, or knows the reason.
        if (way() == Way::Short) {
            BuilderStages<ShortWayWhereChecked> stages(*m_shortWay, m_state);
            if (stepsFrom(stages, given, location))
                return true;
            location = before;
            m_state.isAboveGeoid = false;
            if (failure != nullptr)
                *failure = {};
        }
        BuilderStages<DefinitionsWay> stages(m_definitionsWay, m_state);
        if (stepsFrom(stages, given, location))
            return true;
        location = before;
        return false;
    }

    bool separation(Height given, const Pos &wgs84, double &diff, ConversionFailure *failure)
    {
        return m_state.prepared.shift(given == Height::Ellipsoidal ? m_state.toGeoid
                                                                   : m_state.toEllipsoid,
                                      wgs84.getLongLatH(), diff, failure);
    }

    void requireOneToOne(bool isRequired) { m_state.isOneToOneRequired = isRequired; }

    void requireDefinitions(bool isRequired)
    {
        m_areDefinitionsRequired = isRequired;
        m_preparedFor = neverPrepared;
    }

    Way way()
    {
        if (m_preparedFor != m_state.prepared.generation())
            chooseWay();
        return m_way;
    }

    /// Of the location that was made last.
    Height projectedHeight() const
    {
        return m_state.isAboveGeoid ? Height::AboveGeoid : Height::Ellipsoidal;
    }

private:
    static constexpr int neverPrepared = -1;

    Stages(const ChainDefinitions &chain, const Coord &coord, const QString &gridFile)
        : m_state(gridFile, isGeographicProjection(coord.projection.proj4Projection.trimmed())),
          m_definitionsWay(m_state.prepared, chain), m_home(homeOf(coord)),
          m_isKrovak(isKrovak(coord.projection)), m_problem(chain.problem)
    {
        if (const auto operations = ShortWayOperations::of(chain))
            m_shortWay.emplace(m_definitionsWay, m_state.prepared, *operations);
    }

    bool failBySystem()
    {
        if (m_state.failure != nullptr)
            *m_state.failure = {ConversionFailureKind::BadSystem, m_problem};
        return false;
    }

    void chooseWay()
    {
        m_way = Way::Definitions;
        if (!m_shortWay || m_areDefinitionsRequired) {
            m_preparedFor = m_state.prepared.generation();
            return;
        }
        if (!proj::LoadedProj::instance().isLoaded())
            return;
        m_preparedFor = m_state.prepared.generation();
        m_shortWay->forget();
        if (!m_shortWay->holdsAbout(m_home))
            return;
        // Along a great circle through the apex, PROJ's own arithmetic loses half of its digits.
        if (m_isKrovak)
            m_shortWay->keepTo(0.0, 40.0, 40.0, 55.0);
        m_way = Way::Short;
    }

    BuilderState m_state; // before the ways, which keep their transformations in it
    DefinitionsWay m_definitionsWay;
    std::optional<ShortWayWhereChecked> m_shortWay; ///< nothing for a system that has none
    Pos m_home; ///< in the plane, where both ways are compared first
    bool m_isKrovak;
    QString m_problem; ///< what keeps every location from being made, or empty
    Way m_way = Way::Definitions;
    bool m_areDefinitionsRequired = false;
    int m_preparedFor = neverPrepared; ///< the generation of PROJ's objects for which it was chosen
};

namespace {

/// Keeps what became of a position, of which `failure` tells.
void keep(LocationBuilder::Outcome &outcome, bool isMade, ConversionFailure &failure)
{
    outcome.isMade = isMade;
    outcome.failure = failure.kind;
    outcome.reason = std::move(failure.text);
}

/// Calls `makeOne(index, failure)` for each position and keeps what became of it.
template <typename MakeOne>
std::size_t makeEach(std::size_t count, LocationBuilder::Outcome *outcomes, MakeOne makeOne)
{
    std::size_t made = 0;
    for (std::size_t i = 0; i < count; ++i) {
        ConversionFailure failure;
        if (outcomes != nullptr)
            outcomes[i].projectedHeight = LocationBuilder::Height::Ellipsoidal;
        const bool isMade = makeOne(i, outcomes != nullptr ? &failure : nullptr);
        if (outcomes != nullptr)
            keep(outcomes[i], isMade, failure);
        made += isMade ? 1 : 0;
    }
    return made;
}

/// As an operation tells it that has nothing but a text.
void flatten(const ConversionFailure &failure, QString *error)
{
    if (failure && error != nullptr)
        *error = failure.text;
}

/// What `use` gives for the steps from a frame; nothing made for a number that is no frame. Each
/// frame's steps have a type of their own, so that those of a loop become part of it.
template <typename Use>
auto withStepsFrom(LocationBuilder::Frame frame, Use use)
{
    const auto geographic = [](auto &stages, const Pos &position, Location &location) {
        return steps::fromWgs84Geographic(stages, position, location);
    };
    const auto cartesian = [](auto &stages, const Pos &position, Location &location) {
        return steps::fromWgs84Cartesian(stages, position, location);
    };
    const auto local = [](auto &stages, const Pos &position, Location &location) {
        return steps::fromLocalGeographic(stages, position, location);
    };
    const auto projected = [](auto &stages, const Pos &position, Location &location) {
        return steps::fromLocalProjected(stages, position, location);
    };
    switch (frame) {
    case LocationBuilder::Frame::Wgs84Geographic: return use(geographic);
    case LocationBuilder::Frame::Wgs84Cartesian: return use(cartesian);
    case LocationBuilder::Frame::LocalGeographic: return use(local);
    case LocationBuilder::Frame::LocalProjected: return use(projected);
    }
    return decltype(use(geographic))();
}

} // namespace

LocationBuilder::LocationBuilder(const Coord &coord) : m_stages(std::make_unique<Stages>(coord)) {}

LocationBuilder::~LocationBuilder() = default;
LocationBuilder::LocationBuilder(LocationBuilder &&other) noexcept = default;
LocationBuilder &LocationBuilder::operator=(LocationBuilder &&other) noexcept = default;

void LocationBuilder::requireOneToOne(bool isRequired)
{
    m_stages->requireOneToOne(isRequired);
}

void LocationBuilder::requireDefinitions(bool isRequired)
{
    m_stages->requireDefinitions(isRequired);
}

LocationBuilder::Way LocationBuilder::way()
{
    return m_stages->way();
}

bool LocationBuilder::make(Frame from, const Pos &position, Location &location, QString *error)
{
    ConversionFailure failure;
    const bool isMade = withStepsFrom(from, [&](auto steps) {
        return m_stages->make(steps, position, location, error != nullptr ? &failure : nullptr);
    });
    flatten(failure, error);
    return isMade;
}

bool LocationBuilder::make(Frame from, const Pos &position, Location &location, Outcome &outcome)
{
    return make(from, &position, 1, &location, &outcome) == 1;
}

std::size_t LocationBuilder::make(Frame from, const Pos *positions, std::size_t count,
                                  Location *locations, Outcome *outcomes)
{
    Stages &stages = *m_stages;
    return withStepsFrom(from, [&](auto steps) {
        return makeEach(count, outcomes, [&](std::size_t i, ConversionFailure *failure) {
            const bool isMade = stages.make(steps, positions[i], locations[i], failure);
            if (isMade && outcomes != nullptr)
                outcomes[i].projectedHeight = stages.projectedHeight();
            return isMade;
        });
    });
}

bool LocationBuilder::geoidSeparation(Height given, const Pos &position, double &diff,
                                      QString *error)
{
    ConversionFailure failure;
    const bool isKnown =
        m_stages->separation(given, position, diff, error != nullptr ? &failure : nullptr);
    flatten(failure, error);
    return isKnown;
}

std::size_t LocationBuilder::geoidSeparations(Height given, const Pos *positions, std::size_t count,
                                              double *diffs, Outcome *outcomes)
{
    Stages &stages = *m_stages;
    return makeEach(count, outcomes, [&](std::size_t i, ConversionFailure *failure) {
        return stages.separation(given, positions[i], diffs[i], failure);
    });
}

} // namespace KelStd
