#include <cli/conversion/LocationJob.h>

#include <cli/conversion/AreaNotices.h>
#include <cli/conversion/HullNotices.h>

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/location/LocationBuilder.h>

#include <optional>
#include <utility>

namespace KelStd::cli {

namespace {

/// Locations of positions, on one thread.
class LocationTaker : public PositionTaker
{
public:
    LocationTaker(calibration::SiteBuilder builder, const Coord &coord, const SystemOrigin &origin,
                  const QString &geoidModel, const positions::InputForm &from,
                  const std::optional<SiteColumns> &siteColumns,
                  const positions::PositionWriter &writer)
        : m_builder(std::move(builder)), m_geoidModel(geoidModel), m_from(from),
          m_siteColumns(siteColumns), m_hull(origin.control), m_writer(writer)
    {
        if (origin.area)
            m_area.emplace(coord, *origin.area);
        m_builder.locations().requireOneToOne();
    }

    bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) override
    {
        Location location;
        Pos atSite;
        const bool isMade = make(read.position, location, atSite);
        m_notices = m_area ? noticesOf(*m_area, read.position, isMade ? &location : nullptr) : 0;
        if (!isMade) {
            reason = m_outcome.reason;
            return false;
        }
        if (m_hull.hasArea())
            m_notices |= hullNotices(m_hull, atSite);
        const bool isAboveGeoid = m_outcome.projectedHeight == LocationBuilder::Height::AboveGeoid;
        if (!isAboveGeoid && !m_geoidModel.isEmpty()) {
            reason = QStringLiteral("warning: the geoid model \"%1\" has no value for the point "
                                    "(%2): its projected height is ellipsoidal")
                         .arg(m_geoidModel, m_outcome.reason);
        }
        const QString &model = isAboveGeoid ? m_geoidModel : m_noModel;
        const auto &extras = m_siteColumns ? m_siteColumns->with(atSite, read.extras) : read.extras;
        m_writer.write(bytes, {read.name, location, model, read.carried, extras});
        return true;
    }

    NoticeBits notices() const override { return m_notices; }

private:
    bool make(const Pos &position, Location &location, Pos &atSite)
    {
        if (!m_from.isAtSite)
            return m_builder.make(m_from.frame, position, location, atSite, m_outcome);
        atSite = position;
        return m_builder.makeFromSite(position, location, m_outcome);
    }

    /// `location`: null where none was made. Of a mistake at the site, where north may lie
    /// anywhere, an area knows nothing.
    NoticeBits noticesOf(AreaCheck &area, const Pos &position, const Location *location) const
    {
        if (m_from.isAtSite)
            return location != nullptr ? areaNotices(area, *location) : 0;
        return location != nullptr ? areaNotices(area, m_from.frame, position, *location)
                                   : areaNoticesOfFailed(area, m_from.frame, position);
    }

    calibration::SiteBuilder m_builder;
    std::optional<AreaCheck> m_area; ///< nothing where the area is not known
    NoticeBits m_notices = 0;
    LocationBuilder::Outcome m_outcome;
    const QString &m_geoidModel;
    const QString m_noModel;
    const positions::InputForm &m_from;
    std::optional<SiteColumns> m_siteColumns;
    const calibration::SiteHull m_hull;
    const positions::PositionWriter &m_writer;
};

} // namespace

QStringList LocationJob::remarks(const Notices &notices, qint64 taken,
                                 const QString &inputName) const
{
    return areaRemarks(notices, m_origin, m_from.frame, taken, inputName)
           + hullRemarks(notices, taken, inputName);
}

std::unique_ptr<PositionTaker> LocationJob::makeTaker() const
{
    return std::make_unique<LocationTaker>(calibration::SiteBuilder::of(m_coord).value(), m_coord,
                                           m_origin, m_geoidModel, m_from, m_siteColumns, m_writer);
}

} // namespace KelStd::cli
