#include <cli/conversion/LocationJob.h>

#include <cli/conversion/AreaNotices.h>

#include <optional>

namespace KelStd::cli {

namespace {

/// Locations of positions, on one thread.
class LocationTaker : public PositionTaker
{
public:
    LocationTaker(const Coord &coord, const SystemOrigin &origin, const QString &geoidModel,
                  LocationBuilder::Frame frame, const positions::PositionWriter &writer)
        : m_builder(coord), m_geoidModel(geoidModel), m_frame(frame), m_writer(writer)
    {
        if (origin.area)
            m_area.emplace(coord, *origin.area);
        m_builder.requireOneToOne();
    }

    bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) override
    {
        Location location;
        const bool isMade = m_builder.make(m_frame, read.position, location, m_outcome);
        m_notices = !m_area  ? 0
                    : isMade ? areaNotices(*m_area, m_frame, read.position, location)
                             : areaNoticesOfFailed(*m_area, m_frame, read.position);
        if (!isMade) {
            reason = m_outcome.reason;
            return false;
        }
        const bool isAboveGeoid = m_outcome.projectedHeight == LocationBuilder::Height::AboveGeoid;
        if (!isAboveGeoid && !m_geoidModel.isEmpty()) {
            reason = QStringLiteral("warning: the geoid model \"%1\" has no value for the point "
                                    "(%2): its projected height is ellipsoidal")
                         .arg(m_geoidModel, m_outcome.reason);
        }
        const QString &model = isAboveGeoid ? m_geoidModel : m_noModel;
        m_writer.write(bytes, {read.name, location, model, read.carried, read.extras});
        return true;
    }

    NoticeBits notices() const override { return m_notices; }

private:
    LocationBuilder m_builder;
    std::optional<AreaCheck> m_area; ///< nothing where the area is not known
    NoticeBits m_notices = 0;
    LocationBuilder::Outcome m_outcome;
    const QString &m_geoidModel;
    const QString m_noModel;
    LocationBuilder::Frame m_frame;
    const positions::PositionWriter &m_writer;
};

} // namespace

QStringList LocationJob::remarks(const Notices &notices, qint64 taken,
                                 const QString &inputName) const
{
    return areaRemarks(notices, m_origin, m_frame.frame, taken, inputName);
}

std::unique_ptr<PositionTaker> LocationJob::makeTaker() const
{
    return std::make_unique<LocationTaker>(m_coord, m_origin, m_geoidModel, m_frame.frame,
                                           m_writer);
}

} // namespace KelStd::cli
