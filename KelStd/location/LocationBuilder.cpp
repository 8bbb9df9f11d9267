#include <KelStd/location/LocationBuilder.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/LocationSteps.h>
#include <KelStd/location/OneToOne.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/PreparedTransformations.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <type_traits>
#include <utility>

namespace KelStd {

namespace {

/// By PROJ's names for no projection at all.
bool isGeographic(const QString &projection)
{
    constexpr const char *names[] = {"longlat", "latlong", "lonlat", "latlon"};
    return std::any_of(std::begin(names), std::end(names), [&](const char *name) {
        return projection.trimmed() == QLatin1String(name);
    });
}

} // namespace

/// The stages of many locations, on transformations that are created once.
class LocationBuilder::Stages
{
public:
    explicit Stages(const Coord &coord)
        : Stages(ChainDefinitions(&coord), geoidGridFile(&coord),
                 isGeographic(coord.projection.proj4Projection))
    {}

    /// `location` is as it was when one of the steps fails. They write it in place: a copy at the
    /// end would wait for what was written last.
    template <typename Steps>
    bool make(Steps steps, const Pos &position, Location &location, ConversionFailure *failure)
    {
        m_failure = failure;
        // Where PROJ is not loaded the first stage says so.
        if (!m_problem.isEmpty() && proj::LoadedProj::instance().isLoaded())
            return failBySystem();
        const Pos given = position; // which may be part of `location`
        const Location before = location;
        m_projectedHeight = Height::Ellipsoidal;
        if (steps(*this, given, location))
            return true;
        location = before;
        return false;
    }

    bool geographicToCartesian(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_geographicToCartesian, from, to, m_failure);
    }

    bool cartesianToGeographic(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_cartesianToGeographic, from, to, m_failure);
    }

    bool cartesianToLocal(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_cartesianToLocal, from, to, m_failure);
    }

    bool localToCartesian(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_localToCartesian, from, to, m_failure);
    }

    bool localToProjected(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_localToProjected, from, to, m_failure);
    }

    bool projectedToLocal(const Pos &from, Pos &to)
    {
        return m_prepared.convert(m_projectedToLocal, from, to, m_failure);
    }

    bool isPosition(const Pos &wgs84)
    {
        return !m_isOneToOneRequired || one_to_one::isPosition(wgs84.getLongLatH())
               || refuseAsNotOneToOne();
    }

    bool leadsBackToLocal(const Pos &local, const Pos &plane)
    {
        if (!m_isOneToOneRequired)
            return true;
        Pos back;
        return (one_to_one::isInPlane(plane)
                && m_prepared.convert(m_projectedToLocal, plane, back, nullptr)
                && one_to_one::isSamePlace(local.getLongLatH(), back.getLongLatH()))
               || refuseAsNotOneToOne();
    }

    bool leadsBackToPlane(const Pos &plane, const Pos &local)
    {
        return !m_isOneToOneRequired || (one_to_one::isInPlane(plane) && leadsBack(plane, local))
               || refuseAsNotOneToOne();
    }

    bool toGeoid(const Pos &wgs84, double &diff)
    {
        return m_hasGeoid && reachesGeoid(separation(Height::Ellipsoidal, wgs84, diff, m_failure));
    }

    bool toEllipsoid(const Pos &wgs84, double &diff)
    {
        return m_hasGeoid && reachesGeoid(separation(Height::AboveGeoid, wgs84, diff, m_failure));
    }

    bool separation(Height given, const Pos &wgs84, double &diff, ConversionFailure *failure)
    {
        return m_prepared.shift(given == Height::Ellipsoidal ? m_toGeoid : m_toEllipsoid,
                                wgs84.getLongLatH(), diff, failure);
    }

    void requireOneToOne(bool isRequired) { m_isOneToOneRequired = isRequired; }

    /// Of the location that was made last.
    Height projectedHeight() const { return m_projectedHeight; }

private:
    using Kind = ConversionFailureKind;
    using Index = proj::PreparedTransformations::Index;

    bool refuseAsNotOneToOne()
    {
        return proj::fail(m_failure, Kind::NotOneToOne, proj::notOneToOneText);
    }

    bool failBySystem()
    {
        if (m_failure != nullptr)
            *m_failure = {Kind::BadSystem, m_problem};
        return false;
    }

    bool reachesGeoid(bool isSeparated)
    {
        m_projectedHeight = isSeparated ? Height::AboveGeoid : Height::Ellipsoidal;
        return isSeparated;
    }

    bool leadsBack(const Pos &given, const Pos &local)
    {
        const auto project = [this](const Pos &from, Pos &to) {
            return m_prepared.convert(m_localToProjected, from, to, nullptr);
        };
        Pos back;
        if (!project(local, back))
            return false;
        if (m_hasGeographicPlane)
            return one_to_one::isSamePlace(given.getLongLatH(), back.getLongLatH());
        // Less than the tolerance in any unit of length.
        constexpr double negligible = 1e-6;
        const stENU &a = given.getENU();
        const stENU &b = back.getENU();
        return (std::abs(a.e - b.e) <= negligible && std::abs(a.n - b.n) <= negligible)
               || one_to_one::isSamePointOfPlane(given, back, local, project);
    }

    Stages(const ChainDefinitions &chain, const QString &gridFile, bool hasGeographicPlane)
        : m_geographicToCartesian(m_prepared.addConversion(chain.geographic, chain.cartesian)),
          m_cartesianToGeographic(m_prepared.addConversion(chain.cartesian, chain.geographic)),
          m_cartesianToLocal(m_prepared.addConversion(chain.cartesian, chain.localGeographic)),
          m_localToCartesian(m_prepared.addConversion(chain.localGeographic, chain.cartesian)),
          m_localToProjected(m_prepared.addConversion(chain.localGeographic, chain.localProjected)),
          m_projectedToLocal(m_prepared.addConversion(chain.localProjected, chain.localGeographic)),
          m_toGeoid(m_prepared.addShift(gridFile, proj::ShiftDirection::ToGeoid)),
          m_toEllipsoid(m_prepared.addShift(gridFile, proj::ShiftDirection::ToEllipsoid)),
          m_hasGeoid(!gridFile.isEmpty()), m_hasGeographicPlane(hasGeographicPlane),
          m_problem(chain.problem)
    {}

    proj::PreparedTransformations m_prepared; // before the numbers that it gives out
    Index m_geographicToCartesian;
    Index m_cartesianToGeographic;
    Index m_cartesianToLocal;
    Index m_localToCartesian;
    Index m_localToProjected;
    Index m_projectedToLocal;
    Index m_toGeoid;
    Index m_toEllipsoid;
    bool m_hasGeoid;
    bool m_hasGeographicPlane; ///< the "projection" leaves longitude and latitude as they are
    QString m_problem;         ///< what keeps every location from being made, or empty
    bool m_isOneToOneRequired = false;
    Height m_projectedHeight = Height::Ellipsoidal;
    ConversionFailure *m_failure = nullptr; ///< where the stages of a position put their failures
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

/// What `use` gives for the steps from a frame; nothing made for a number that is no frame. The
/// steps come as a type, so that those of a loop become part of it.
template <typename Stages, typename Use>
auto withStepsFrom(LocationBuilder::Frame frame, Use use)
{
    using Steps = bool (*)(Stages &, const Pos &, Location &);
    using Geographic = std::integral_constant<Steps, &steps::fromWgs84Geographic<Stages>>;
    using Cartesian = std::integral_constant<Steps, &steps::fromWgs84Cartesian<Stages>>;
    using Local = std::integral_constant<Steps, &steps::fromLocalGeographic<Stages>>;
    using Projected = std::integral_constant<Steps, &steps::fromLocalProjected<Stages>>;
    switch (frame) {
    case LocationBuilder::Frame::Wgs84Geographic: return use(Geographic());
    case LocationBuilder::Frame::Wgs84Cartesian: return use(Cartesian());
    case LocationBuilder::Frame::LocalGeographic: return use(Local());
    case LocationBuilder::Frame::LocalProjected: return use(Projected());
    }
    return decltype(use(Geographic()))();
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

bool LocationBuilder::make(Frame from, const Pos &position, Location &location, QString *error)
{
    ConversionFailure failure;
    const bool isMade = withStepsFrom<Stages>(from, [&](auto steps) {
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
    return withStepsFrom<Stages>(from, [&](auto steps) {
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
