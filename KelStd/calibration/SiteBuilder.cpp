#include <KelStd/calibration/SiteBuilder.h>

#include <QtCore/QObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace KelStd::calibration {

namespace {

/// Whose former locations stay near the processor.
constexpr std::size_t pointsTogether = 64;

bool isFinite(const stENU &place)
{
    return std::isfinite(place.e) && std::isfinite(place.n) && std::isfinite(place.u);
}

bool failBySite(LocationBuilder::Outcome *outcome)
{
    if (outcome != nullptr) {
        *outcome = {};
        outcome->failure = ConversionFailureKind::NoResult;
        outcome->reason = QObject::tr("the coordinates at the site are no finite numbers");
    }
    return false;
}

} // namespace

SiteBuilder::SiteBuilder(const Coord &coord, const SiteTransform &site)
    : m_site(site), m_locations(coord),
      m_geoidModel(site.hasSurface() ? coord.geoidModel.modelFileName : QString())
{}

std::optional<SiteBuilder> SiteBuilder::of(const Coord &coord, SiteFailure *failure)
{
    const auto site = SiteTransform::of(coord, failure);
    if (!site)
        return std::nullopt;
    return SiteBuilder(coord, *site);
}

bool SiteBuilder::makeOne(Frame from, const Pos &position, Location &location, Pos &atSite,
                          Outcome *outcome)
{
    Location made;
    const bool isMade = outcome != nullptr ? m_locations.make(from, position, made, *outcome)
                                           : m_locations.make(from, position, made);
    if (!isMade)
        return false;
    const stENU place = m_site.toSite(made.localNEH.getENU());
    if (!isFinite(place))
        return failBySite(outcome);
    location = made;
    atSite.setENU(place.e, place.n, place.u);
    return true;
}

/// Makes all of them, or none and changes nothing: then each is to be made by itself. The builder
/// says how many failed, but without outcomes not which.
bool SiteBuilder::makeTogether(Frame from, const Pos *positions, std::size_t count,
                               Location *locations, Pos *atSite, Outcome *outcomes)
{
    // Bytes instead of locations, and places below: neither need be made zero first.
    static_assert(std::is_trivially_copyable_v<Location>);
    alignas(Location) std::array<unsigned char, pointsTogether * sizeof(Location)> before;
    std::memcpy(before.data(), locations, count * sizeof(Location));
    std::array<stENU, pointsTogether> places;
    bool areMade = m_locations.make(from, positions, count, locations, outcomes) == count;
    if (areMade) {
        double zero = 0.0; // turns into NaN where a coordinate is infinite or NaN
        for (std::size_t i = 0; i < count; ++i) {
            places[i] = m_site.toSite(locations[i].localNEH.getENU());
            zero += (places[i].e + places[i].n + places[i].u) * 0.0;
        }
        areMade = zero == 0.0;
    }
    if (!areMade) {
        std::memcpy(locations, before.data(), count * sizeof(Location));
        return false;
    }
    for (std::size_t i = 0; i < count; ++i)
        atSite[i].setENU(places[i].e, places[i].n, places[i].u);
    return true;
}

bool SiteBuilder::makeOneFromSite(const Pos &atSite, Location &location, Outcome *outcome)
{
    const stENU place = m_site.fromSite(atSite.getENU());
    if (!isFinite(place))
        return failBySite(outcome);
    const Pos projected = Pos::fromENU(place.e, place.n, place.u);
    if (!m_geoidModel.isEmpty()) {
        Outcome own;
        Outcome &told = outcome != nullptr ? *outcome : own;
        Location made;
        if (!m_locations.make(Frame::LocalProjected, projected, made, told) || !holds(told))
            return false;
        location = made;
        return true;
    }
    return outcome != nullptr
               ? m_locations.make(Frame::LocalProjected, projected, location, *outcome)
               : m_locations.make(Frame::LocalProjected, projected, location);
}

/// Makes at most `pointsTogether` locations, each only where its height is one above the geoid.
std::size_t SiteBuilder::makeAboveGeoid(const Pos *projected, std::size_t count,
                                        Location *locations, Outcome *outcomes)
{
    std::array<Location, pointsTogether> all;
    std::array<Outcome, pointsTogether> own;
    Outcome *const told = outcomes != nullptr ? outcomes : own.data();
    m_locations.make(Frame::LocalProjected, projected, count, all.data(), told);
    std::size_t made = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!told[i].isMade || !holds(told[i]))
            continue;
        locations[i] = all[i];
        ++made;
    }
    return made;
}

/// Whether a location that was made has its height above the geoid; otherwise it fails.
bool SiteBuilder::holds(Outcome &outcome) const
{
    if (outcome.projectedHeight == LocationBuilder::Height::AboveGeoid)
        return true;
    const bool isMissing = outcome.failure == ConversionFailureKind::None;
    const QString why = isMissing                  ? QObject::tr("there is none of that name")
                        : outcome.reason.isEmpty() ? QObject::tr("it has no value for the point")
                                                   : outcome.reason;
    outcome.isMade = false;
    if (isMissing)
        outcome.failure = ConversionFailureKind::NoGeoidModel;
    outcome.reason = QObject::tr("heights at the site are above the geoid of \"%1\", which gives "
                                 "none here: %2")
                         .arg(m_geoidModel, why);
    return false;
}

bool SiteBuilder::make(Frame from, const Pos &position, Location &location, Pos &atSite,
                       Outcome &outcome)
{
    return makeOne(from, position, location, atSite, &outcome);
}

std::size_t SiteBuilder::make(Frame from, const Pos *positions, std::size_t count,
                              Location *locations, Pos *atSite, Outcome *outcomes)
{
    std::size_t made = 0;
    for (std::size_t first = 0; first < count; first += pointsTogether) {
        const std::size_t points = std::min(pointsTogether, count - first);
        Outcome *const outcome = outcomes != nullptr ? outcomes + first : nullptr;
        if (makeTogether(from, positions + first, points, locations + first, atSite + first,
                         outcome)) {
            made += points;
            continue;
        }
        for (std::size_t i = first; i < first + points; ++i) {
            made += makeOne(from, positions[i], locations[i], atSite[i],
                            outcomes != nullptr ? outcomes + i : nullptr)
                        ? 1
                        : 0;
        }
    }
    return made;
}

bool SiteBuilder::makeFromSite(const Pos &atSite, Location &location, Outcome &outcome)
{
    return makeOneFromSite(atSite, location, &outcome);
}

std::size_t SiteBuilder::makeFromSite(const Pos *atSite, std::size_t count, Location *locations,
                                      Outcome *outcomes)
{
    std::size_t made = 0;
    std::array<Pos, pointsTogether> projected;
    for (std::size_t first = 0; first < count; first += pointsTogether) {
        const std::size_t points = std::min(pointsTogether, count - first);
        bool areFinite = true;
        for (std::size_t i = 0; i < points; ++i) {
            const stENU place = m_site.fromSite(atSite[first + i].getENU());
            projected[i].setENU(place.e, place.n, place.u);
            areFinite = areFinite && isFinite(place);
        }
        if (areFinite) {
            Outcome *const outcome = outcomes != nullptr ? outcomes + first : nullptr;
            made += m_geoidModel.isEmpty()
                        ? m_locations.make(Frame::LocalProjected, projected.data(), points,
                                           locations + first, outcome)
                        : makeAboveGeoid(projected.data(), points, locations + first, outcome);
            continue;
        }
        for (std::size_t i = first; i < first + points; ++i) {
            made += makeOneFromSite(atSite[i], locations[i],
                                    outcomes != nullptr ? outcomes + i : nullptr)
                        ? 1
                        : 0;
        }
    }
    return made;
}

} // namespace KelStd::calibration
