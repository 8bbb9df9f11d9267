#pragma once

#include <cli/doctor/Findings.h>

#include <KelStd/proj/ProjInspection.h>

namespace KelStd::cli {

/// What has to be there before PROJ can be unpacked: the directories, the unpacking program, the
/// archive. Nothing is changed.
class Supplies
{
public:
    Supplies(const ProjInspection &places, Findings &findings)
        : m_places(places), m_findings(findings)
    {}

    void examine();

    /// Whether others could have written what would run.
    bool isDistrusted() const { return m_isDistrusted; }

private:
    void examineHome();
    void examineProgramDirectory();
    void examineUnpacker();
    void examineArchive();

    using ArchiveState = ProjInspection::ArchiveState;

    const ProjInspection &m_places;
    Findings &m_findings;
    QString m_unpacker;
    bool m_isDistrusted = false;
};

} // namespace KelStd::cli
