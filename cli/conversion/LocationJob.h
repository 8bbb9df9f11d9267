#pragma once

#include <cli/conversion/ConversionSystem.h>
#include <cli/run/PositionJob.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/FactorColumns.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace KelStd::cli {

/// Makes a location of each position, only where the projection is one-to-one, and prints it; or
/// that of the same WGS84 position in another system; with the coordinates at the site of the
/// printed system, where that has one. What is given must outlive the job.
class LocationJob : public PositionJob
{
public:
    /// What there is to be computed of positions.
    struct Plan
    {
        const ConversionSystem &system;   ///< of the positions
        const ConversionSystem *target;   ///< whose locations are printed; null for the same system
        const positions::FrameRow &frame; ///< of the positions
        bool isFromSite; ///< they are at the site of their system, the frame is that of its plane
        std::vector<const positions::FactorColumn *> factors; ///< those that are printed
    };

    LocationJob(const Plan &plan, positions::PositionWriter &writer)
        : m_plan(plan), m_writer(writer)
    {}

    QString mistakeIn(const positions::InputColumns &columns) const override;
    QByteArray begin(const positions::InputColumns &columns) override
    {
        return m_writer.begin(columns);
    }
    QByteArray separator() const override { return m_writer.separator(); }
    QByteArray ending() const override { return m_writer.ending(); }
    QStringList remarks(const Notices &notices, qint64 taken,
                        const QString &inputName) const override;
    std::unique_ptr<PositionTaker> makeTaker() const override;

private:
    Plan m_plan;
    positions::PositionWriter &m_writer;
};

} // namespace KelStd::cli
