#include <cli/conversion/SystemLocations.h>

#include <cli/conversion/AreaNotices.h>

namespace KelStd::cli {

namespace {

using Frame = SystemLocations::Frame;

/// The height [m] of a position of the frame; nothing of a cartesian one.
std::optional<double> heightOf(Frame frame, const Pos &position)
{
    if (frame == Frame::Wgs84Cartesian)
        return std::nullopt;
    return frame == Frame::LocalProjected ? position.getENU().u : position.getLongLatH().height;
}

Pos withoutHeight(Frame frame, const Pos &position)
{
    return frame == Frame::LocalProjected
               ? Pos::fromENU(position.getENU().e, position.getENU().n, 0.0)
               : Pos::fromLongLatH(position.getLongLatH().longitude,
                                   position.getLongLatH().latitude, 0.0);
}

} // namespace

SystemLocations::SystemLocations(const ConversionSystem &system)
    : m_builder(calibration::SiteBuilder::of(system.coord).value()),
      m_hasSite(m_builder.site().hasSite()),
      m_namesModel(!system.coord.geoidModel.modelFileName.isEmpty()),
      m_extent(m_builder.site(), system.origin.control), m_geoidModel(system.geoidModel)
{
    if (system.origin.area)
        m_area.emplace(system.coord, *system.origin.area);
    m_builder.locations().requireOneToOne();
}

bool SystemLocations::make(Frame frame, const Pos &position, Location &location)
{
    Pos &atSite = m_site.location.localNEH;
    const bool isMade = m_builder.make(frame, position, location, atSite, m_outcome);
    if (!isMade)
        tellOfHeight(frame, position);
    // The surface of a site was fitted to heights above the geoid that the system names.
    m_site.hasHeight = !m_namesModel || !heightModel().isEmpty();
    m_areaNotices = !m_area  ? 0
                    : isMade ? cli::areaNotices(*m_area, frame, position, location)
                             : areaNoticesOfFailed(*m_area, frame, position);
    return isMade;
}

/// Says that it is the height where no projection folds over itself at the place.
void SystemLocations::tellOfHeight(Frame frame, const Pos &position)
{
    const auto height = heightOf(frame, position);
    if (m_outcome.failure != ConversionFailureKind::NotOneToOne || !height || *height == 0.0)
        return;
    Location location;
    Pos atSite;
    LocationBuilder::Outcome onEllipsoid;
    if (m_builder.make(frame, withoutHeight(frame, position), location, atSite, onEllipsoid)) {
        m_outcome.reason += QStringLiteral(": the height, %1 m, is no position's (at 0 m there is "
                                           "one)")
                                .arg(*height, 0, 'g', 10);
    }
}

bool SystemLocations::makeFromSite(const Pos &atSite, Location &location)
{
    const bool isMade = m_builder.makeFromSite(atSite, location, m_outcome);
    m_site.location.localNEH = atSite;
    m_site.hasHeight = true; // as it was given
    // Of a mistake at the site, where north may lie anywhere, an area knows nothing.
    m_areaNotices = m_area && isMade ? cli::areaNotices(*m_area, location) : 0;
    return isMade;
}

unsigned SystemLocations::partsOutside() const
{
    const stENU &at = m_site.location.localNEH.getENU();
    return m_extent.outside(at.n, at.e);
}

const QString &SystemLocations::heightModel() const
{
    const bool isAboveGeoid = m_outcome.projectedHeight == LocationBuilder::Height::AboveGeoid;
    return isAboveGeoid ? m_geoidModel : m_noModel;
}

QString SystemLocations::heightWarning(const QString &ofSystem, const QString &consequence) const
{
    if (m_geoidModel.isEmpty() || !heightModel().isEmpty())
        return {};
    return QStringLiteral("warning: the geoid model \"%1\"%2 has no value for the point (%3): %4")
        .arg(m_geoidModel, ofSystem, m_outcome.reason, consequence);
}

} // namespace KelStd::cli
