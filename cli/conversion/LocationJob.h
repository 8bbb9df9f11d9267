#pragma once

#include <cli/conversion/SiteColumns.h>
#include <cli/run/PositionJob.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

namespace KelStd::cli {

/// Makes a location of each position, only where the projection is one-to-one, and prints it, with
/// the coordinates at the site behind it where the system has one. What is given must outlive the
/// job, but for `SiteColumns`.
class LocationJob : public PositionJob
{
public:
    /// `origin`: that of the system, whose area the positions are held against. `geoidModel`: the
    /// one in use, empty for none. `from`: what the positions are. `siteColumns`: nothing for a
    /// system without a site. The records of the system's site must be such that can be applied.
    LocationJob(const Coord &coord, const SystemOrigin &origin, const QString &geoidModel,
                const positions::InputForm &from, const std::optional<SiteColumns> &siteColumns,
                positions::PositionWriter &writer)
        : m_coord(coord), m_origin(origin), m_geoidModel(geoidModel), m_from(from),
          m_siteColumns(siteColumns), m_writer(writer)
    {}

    QByteArray begin(const positions::InputColumns &columns) override
    {
        return m_writer.begin(m_siteColumns ? m_siteColumns->with(columns) : columns);
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
    const positions::InputForm &m_from;
    std::optional<SiteColumns> m_siteColumns;
    positions::PositionWriter &m_writer;
};

} // namespace KelStd::cli
