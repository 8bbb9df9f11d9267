#pragma once

#include <cli/run/PositionJob.h>

#include <QtCore/QString>

#include <memory>

namespace KelStd::cli {

class SeparationWriter;

/// Gives WGS84 positions the separation of the geoid by a grid file, and prints both heights. One
/// thread: the separations are calculated in the private PROJ directory.
class SeparationJob : public PositionJob
{
public:
    /// `inverse`: the given heights are above the geoid. `isTable`: printed as a table, otherwise
    /// as comma-separated values.
    SeparationJob(const QString &gridFile, bool inverse, bool isTable);
    ~SeparationJob() override;

    QByteArray begin(const positions::InputColumns &columns) override;
    std::unique_ptr<PositionTaker> makeTaker() const override;

private:
    QString m_gridFile;
    bool m_inverse;
    std::unique_ptr<SeparationWriter> m_writer;
};

} // namespace KelStd::cli
