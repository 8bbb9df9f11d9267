#include <KelStd/calibration/SiteBuilder.h>

#include <QtCore/QObject>

#include <cmath>

namespace KelStd::calibration {

namespace {

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
    : m_site(site), m_locations(coord)
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

bool SiteBuilder::makeOneFromSite(const Pos &atSite, Location &location, Outcome *outcome)
{
    const stENU place = m_site.fromSite(atSite.getENU());
    if (!isFinite(place))
        return failBySite(outcome);
    const Pos projected = Pos::fromENU(place.e, place.n, place.u);
    return outcome != nullptr
               ? m_locations.make(Frame::LocalProjected, projected, location, *outcome)
               : m_locations.make(Frame::LocalProjected, projected, location);
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
    for (std::size_t i = 0; i < count; ++i) {
        Outcome *const outcome = outcomes != nullptr ? outcomes + i : nullptr;
        made += makeOne(from, positions[i], locations[i], atSite[i], outcome) ? 1 : 0;
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
    for (std::size_t i = 0; i < count; ++i) {
        Outcome *const outcome = outcomes != nullptr ? outcomes + i : nullptr;
        made += makeOneFromSite(atSite[i], locations[i], outcome) ? 1 : 0;
    }
    return made;
}

} // namespace KelStd::calibration
