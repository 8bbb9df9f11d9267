#include <cli/conversion/LocationJob.h>

#include <cli/conversion/AreaNotices.h>
#include <cli/conversion/FactorNotices.h>
#include <cli/conversion/NoticeNumbers.h>

#include <KelStd/location/GridFactors.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/text/TypedNumber.h>

#include <optional>

namespace KelStd::cli {

namespace {

using Frame = LocationBuilder::Frame;

/// Locations in a system, on one thread.
class SystemLocations
{
public:
    explicit SystemLocations(const ConversionSystem &system)
        : m_builder(system.coord), m_geoidModel(system.geoidModel)
    {
        if (system.origin.area)
            m_area.emplace(system.coord, *system.origin.area);
        m_builder.requireOneToOne();
    }

    bool make(Frame frame, const Pos &position, Location &location)
    {
        const bool isMade = m_builder.make(frame, position, location, m_outcome);
        m_notices = !m_area  ? 0
                    : isMade ? areaNotices(*m_area, frame, position, location)
                             : areaNoticesOfFailed(*m_area, frame, position);
        return isMade;
    }

    NoticeBits notices() const { return m_notices; }

    /// Why the last one was not made.
    const QString &reason() const { return m_outcome.reason; }

    /// The model above whose geoid its projected height is; empty for the ellipsoid.
    const QString &heightModel() const
    {
        const bool isAboveGeoid = m_outcome.projectedHeight == LocationBuilder::Height::AboveGeoid;
        return isAboveGeoid ? m_geoidModel : m_noModel;
    }

    /// What is to be said of a projected height that is ellipsoidal although the system has a
    /// model; empty otherwise.
    QString heightWarning(const QString &ofSystem, const char *consequence) const
    {
        if (m_geoidModel.isEmpty() || !heightModel().isEmpty())
            return {};
        return QStringLiteral(
                   "warning: the geoid model \"%1\"%2 has no value for the point (%3): %4")
            .arg(m_geoidModel, ofSystem, m_outcome.reason, QLatin1String(consequence));
    }

private:
    LocationBuilder m_builder;
    std::optional<AreaCheck> m_area; ///< nothing where the area is not known
    NoticeBits m_notices = 0;
    LocationBuilder::Outcome m_outcome;
    const QString &m_geoidModel;
    const QString m_noModel;
};

/// Locations of positions, on one thread.
class LocationTaker : public PositionTaker
{
public:
    LocationTaker(const LocationJob::Plan &plan, const positions::PositionWriter &writer)
        : m_plan(plan), m_given(plan.system), m_writer(writer)
    {
        if (plan.target != nullptr)
            m_target.emplace(*plan.target);
        if (!plan.factors.empty())
            m_factors.emplace(printedSystem().coord);
    }

    bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) override
    {
        Location location;
        const bool isMade = m_given.make(m_plan.frame.frame, read.position, location);
        m_notices = m_given.notices() << firstAreaNotice;
        if (!isMade) {
            reason = inSystem(m_plan.system) + m_given.reason();
            return false;
        }
        if (!isHeightAsSaid(read.heightReference, reason)
            || (m_target && !transfer(location, reason)))
            return false;
        if (!m_target)
            reason = m_given.heightWarning({}, "its projected height is ellipsoidal");

        std::optional<GridFactors::Values> factors;
        if (m_factors) {
            factors = m_factors->at(location);
            m_notices |= factorNotices(*factors, m_plan.factors);
        }
        const QString &model = (m_target ? *m_target : m_given).heightModel();
        m_writer.write(bytes, {read.name, location, model, read.carried, read.extras,
                               factors ? &*factors : nullptr});
        return true;
    }

    NoticeBits notices() const override { return m_notices; }

private:
    const ConversionSystem &printedSystem() const
    {
        return m_plan.target != nullptr ? *m_plan.target : m_plan.system;
    }

    /// False, with the reason, where the input says that its height is above something else than
    /// what it was taken to be above.
    bool isHeightAsSaid(std::string_view said, QString &reason) const
    {
        if (said.empty() || m_plan.frame.frame != Frame::LocalProjected)
            return true;
        const QString taken = positions::heightReference(m_given.heightModel());
        const QString given = QString::fromUtf8(said.data(), static_cast<int>(said.size()));
        if (given == taken)
            return true;
        reason = inSystem(m_plan.system)
                 + QStringLiteral("the height is above %1, as %2 says, and would be read as one "
                                  "above the %3; give the system that the heights are of")
                       .arg(quoted(given), QLatin1String(positions::heightReferenceName), taken);
        return false;
    }

    /// In front of a reason, where there are two systems.
    QString inSystem(const ConversionSystem &system) const
    {
        return m_target ? system.name + QLatin1String(": ") : QString();
    }

    static QString ofSystem(const ConversionSystem &system)
    {
        return QLatin1String(" of ") + system.name;
    }

    /// From the location in the system of the input to that of the same WGS84 position in the
    /// other one.
    bool transfer(Location &location, QString &reason)
    {
        const Pos wgs84 = location.wgs84LLH;
        const bool isMade = m_target->make(Frame::Wgs84Geographic, wgs84, location);
        // Of a mistake in the input only its own system can tell, where that knows its area; in
        // WGS84 longitudes and latitudes any other one can, too.
        constexpr NoticeBits outside = 1U;
        const bool isOfInput =
            m_plan.frame.frame == Frame::Wgs84Geographic && !m_plan.system.origin.area;
        m_notices |= (isOfInput ? m_target->notices() : m_target->notices() & outside)
                     << firstTargetAreaNotice;
        if (!isMade) {
            reason = inSystem(*m_plan.target) + m_target->reason();
            return false;
        }
        const QString ofInput =
            m_plan.frame.frame == Frame::LocalProjected ? m_given.heightWarning(
                ofSystem(m_plan.system), "the height was taken for an ellipsoidal one")
                                                        : QString();
        const QString ofOutput = m_target->heightWarning(ofSystem(*m_plan.target),
                                                         "the projected height is ellipsoidal");
        reason = ofInput.isEmpty() || ofOutput.isEmpty() ? ofInput + ofOutput
                                                         : ofInput + QLatin1String("; ") + ofOutput;
        return true;
    }

    LocationJob::Plan m_plan;
    SystemLocations m_given;
    std::optional<SystemLocations> m_target;
    std::optional<GridFactors> m_factors;
    NoticeBits m_notices = 0;
    const positions::PositionWriter &m_writer;
};

} // namespace

QString LocationJob::mistakeIn(const positions::InputColumns &columns) const
{
    const QString mistake = m_writer.mistakeIn(columns);
    return mistake.isEmpty() ? QString() : QLatin1String("--fields: ") + mistake;
}

QStringList LocationJob::remarks(const Notices &notices, qint64 taken,
                                 const QString &inputName) const
{
    const auto ofArea = [&](const ConversionSystem &system, std::size_t first) {
        const QString name = m_plan.target != nullptr ? system.name : QString();
        return areaRemarks(notices, first, system.origin, name, m_plan.frame.frame, taken,
                           inputName);
    };
    QStringList remarks = ofArea(m_plan.system, firstAreaNotice);
    if (m_plan.target != nullptr)
        remarks += ofArea(*m_plan.target, firstTargetAreaNotice);
    return remarks + factorRemarks(notices, inputName);
}

std::unique_ptr<PositionTaker> LocationJob::makeTaker() const
{
    return std::make_unique<LocationTaker>(m_plan, m_writer);
}

} // namespace KelStd::cli
