#pragma once

#include <cli/doctor/Findings.h>

#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ProjLib.h>

namespace KelStd::cli {

/// PROJ in its private directory: made ready, and looked at in the order in which one thing needs
/// another. Where `findings` has a problem already, nothing is unpacked.
class InstalledProj
{
public:
    /// With `isAnew` PROJ is to be unpacked even where it is.
    InstalledProj(const ProjInspection &places, Findings &findings, bool isAnew);
    ~InstalledProj();
    InstalledProj(const InstalledProj &) = delete;
    InstalledProj &operator=(const InstalledProj &) = delete;

    /// What stands in PROJ's place and is not removed. Changes nothing.
    void examineWhatIsReplaced();

    /// True when PROJ can be unpacked anew.
    bool canInstall() const { return m_findings.problems() == 0; }

    /// Whether the next step unpacks PROJ, as far as it can.
    bool isUnpacked() const { return m_isUnpacked && canInstall(); }

    /// Makes PROJ ready, unpacking it when that was not done, and looks at the result. It stays
    /// loaded as long as this lives.
    void prepareAndExamine(bool isDistrusted);

    bool wasPrepared() const { return m_wasPrepared; }
    bool isReady() const { return m_isReady; }

private:
    void examinePrivateDirectory();
    void examineMarker();
    void examineFile(const char *label, const QString &file);
    void examineLibraryFile();
    void examineResources();
    void examineRelease();
    void examineConversion();
    bool findDistrusted(const char *label, const QString &file, const QStringList &paths);

    using MarkerState = ProjInspection::MarkerState;

    const ProjInspection &m_places;
    Findings &m_findings;
    bool m_isUnpacked;
    bool m_isReady = false;
    bool m_isKept = false;       ///< the private directory is left as it is
    bool m_isDistrusted = false; ///< others could have written what would run
    bool m_hasDirectory = false;
    bool m_isInstalled = false;
    bool m_wasPrepared = false;
    InitializationFailure m_failure; ///< why PROJ is not ready, where it should be
};

} // namespace KelStd::cli
