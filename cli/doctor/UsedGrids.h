#pragma once

#include <cli/doctor/Findings.h>

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QStringList>

namespace KelStd::cli {

/// The geoid models and the grids of datum shifts that conversions use. Made before PROJ is
/// unpacked, which copies delivered models: so it is known which of them were there.
class UsedGrids
{
public:
    explicit UsedGrids(const ProjInspection &places);

    /// Looks at them: names those in order with where they came from, and what to do about others.
    void examine(bool isProjReady, Findings &findings) const;

private:
    void examineModels(bool isProjReady, Findings &findings) const;
    void examineShiftGrids(bool isProjReady, Findings &findings) const;

    const ProjInspection &m_places;
    QStringList m_modelFiles; ///< in the home directory, before anything was made
};

} // namespace KelStd::cli
