#pragma once

#include <cli/run/PositionJob.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <memory>

namespace KelStd::cli {

/// Makes a location of each position, only where the projection is one-to-one, and prints it. What
/// is given must outlive the job.
class LocationJob : public PositionJob
{
public:
    /// `origin`: that of the system, whose area the positions are held against. `geoidModel`: the
    /// one in use, empty for none. `frame`: that of the positions.
    LocationJob(const Coord &coord, const SystemOrigin &origin, const QString &geoidModel,
                const positions::FrameRow &frame, positions::PositionWriter &writer)
        : m_coord(coord), m_origin(origin), m_geoidModel(geoidModel), m_frame(frame),
          m_writer(writer)
    {}

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
    const Coord &m_coord;
    const SystemOrigin &m_origin;
    const QString &m_geoidModel;
    const positions::FrameRow &m_frame;
    positions::PositionWriter &m_writer;
};

} // namespace KelStd::cli
