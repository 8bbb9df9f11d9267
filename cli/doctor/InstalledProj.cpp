#include <cli/doctor/InstalledProj.h>

#include <cli/doctor/Advice.h>
#include <cli/proj/ProjAdvice.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

namespace KelStd::cli {

InstalledProj::InstalledProj(const ProjInspection &places, Findings &findings, bool isAnew)
    : m_places(places), m_findings(findings),
      m_isUnpacked(isAnew || places.markerState() == MarkerState::Missing
                   || places.markerState() == MarkerState::OtherVersion)
{}

InstalledProj::~InstalledProj()
{
    ProjLib::___unloadEnviroment();
}

void InstalledProj::prepareAndExamine(bool isDistrusted)
{
    m_isDistrusted = isDistrusted;
    m_isReady = !m_isKept && ProjLib::___InitializeEnviroment();
    if (!m_isReady && !m_isKept)
        m_failure = ProjLib::initializationFailure();
    m_wasPrepared = m_isReady && m_isUnpacked;
    examinePrivateDirectory();
    examineMarker();
    examineLibraryFile();
    examineResources();
    examineRelease();
    examineConversion();
}

void InstalledProj::examineWhatIsReplaced()
{
    const char *label = "private PROJ directory";
    const QString path = m_places.privateDirectory();
    m_isKept = true;
    if (m_isUnpacked && QFileInfo(path).isSymLink()) {
        m_findings.problem(label, path + QStringLiteral(" is a symbolic link and is not replaced"),
                           QStringLiteral("remove the link, then run 'kelstd doctor'"));
    } else if (m_isUnpacked && m_places.holdsSomethingElse()) {
        m_findings.problem(label, path + QStringLiteral(" holds something else and is not emptied"),
                           makeRoomAdvice());
    } else {
        m_isKept = false;
    }
}

void InstalledProj::examinePrivateDirectory()
{
    const char *label = "private PROJ directory";
    const QString path = m_places.privateDirectory();
    const QFileInfo info(path);
    m_hasDirectory = info.isDir();
    if (m_isKept)
        return;
    if (const auto fault = accessProblem(path)) {
        m_findings.problem(label, fault->text, fault->advice);
        m_isDistrusted = true;
    } else if (m_hasDirectory) {
        m_findings.ok(label, m_wasPrepared ? path + QStringLiteral(" (prepared just now)") : path,
                      m_wasPrepared);
    } else if (info.exists() || info.isSymLink()) {
        m_findings.problem(label, path + QStringLiteral(" is no directory"),
                           QStringLiteral("remove or rename it"));
    } else if (!canInstall()) {
        m_findings.waiting(label);
    } else {
        m_findings.problem(label, path + QStringLiteral(" cannot be created"),
                           QStringLiteral("make %1 writable").arg(m_places.home().path()));
    }
}

void InstalledProj::examineMarker()
{
    const char *label = "marker";
    const QString file = m_places.marker();
    switch (m_places.markerState()) {
    case MarkerState::Current:
        m_findings.ok(
            label, QStringLiteral("%1 (version %2)").arg(file).arg(ProjInspection::markerVersion()),
            m_wasPrepared);
        m_isInstalled = true;
        return;
    case MarkerState::Unreadable:
        m_findings.problem(label, file + QStringLiteral(" cannot be read"),
                           QStringLiteral("remove it, then %1").arg(reinstallAdvice()));
        return;
    case MarkerState::Missing:
    case MarkerState::OtherVersion: break;
    }
    if (!canInstall() || !m_hasDirectory) {
        m_findings.waiting(label);
    } else {
        m_findings.problem(label,
                           QStringLiteral("PROJ could not be unpacked into %1: %2")
                               .arg(m_places.privateDirectory(), m_failure.text),
                           QStringLiteral("make %1 writable, see that the disk has room, then %2")
                               .arg(m_places.home().path(), reinstallAdvice()));
    }
}

void InstalledProj::examineFile(const char *label, const QString &file)
{
    if (!m_isInstalled)
        m_findings.waiting(label);
    else if (QFileInfo(file).isFile())
        m_findings.ok(label, withSize(file), m_wasPrepared);
    else
        m_findings.problem(label, file + QStringLiteral(" is missing"), reinstallAdvice());
}

/// Whether somebody else could have written one of the paths that an existing file is used by;
/// then that is a finding.
bool InstalledProj::findDistrusted(const char *label, const QString &file, const QStringList &paths)
{
    for (const QString &path : paths) {
        const auto fault = accessProblem(path);
        if (!m_isInstalled || m_isDistrusted || file.isEmpty() || !fault)
            continue;
        m_isDistrusted = true;
        m_findings.problem(label, fault->text, fault->advice);
        return true;
    }
    return false;
}

void InstalledProj::examineLibraryFile()
{
    const char *label = "PROJ library";
    const QString file = m_places.libraryFile();
    // A link is judged by what it leads to.
    const QFileInfo loaded(QFileInfo(file).canonicalFilePath());
    if (findDistrusted(label, loaded.filePath(),
                       {loaded.absoluteFilePath(), loaded.absolutePath()}))
        return;
    examineFile(label, file);
}

void InstalledProj::examineResources()
{
    const char *label = "PROJ database";
    const QString file = m_places.database();
    // A link is judged by what it leads to, too.
    const QFileInfo used(QFileInfo(file).canonicalFilePath());
    if (findDistrusted(
            label, used.filePath(),
            {QFileInfo(file).absolutePath(), used.absolutePath(), used.absoluteFilePath()}))
        return;
    // Of a directory without a database, too.
    if (m_isInstalled && !m_isDistrusted
        && m_failure.kind == InitializationFailureKind::Untrusted) {
        m_isDistrusted = true;
        m_findings.problem(label, m_failure.text,
                           QStringLiteral("let nobody else write there, or set KELSTD_HOME_DIR to "
                                          "a directory of your own"));
        return;
    }
    examineFile(label, file);
}

void InstalledProj::examineRelease()
{
    const char *label = "PROJ release";
    // Code that the library does not trust is not run here either.
    if (!m_isInstalled || m_isDistrusted || !QFileInfo(m_places.libraryFile()).isFile()) {
        m_findings.waiting(label);
        return;
    }
    QString reason;
    const QString release = ProjInspection::release(m_places.libraryFile(), &reason);
    if (!m_isReady) {
        m_findings.problem(
            label,
            release.isEmpty() ? reason : QStringLiteral("%1: %2").arg(release, m_failure.text),
            QStringLiteral("install the libraries that PROJ 9.1 needs, if one is named "
                           "here; else %1")
                .arg(reinstallAdvice()));
    } else if (!release.startsWith(QLatin1String("9."))) {
        m_findings.problem(label,
                           release.isEmpty() ? reason
                                             : QStringLiteral("%1, but 9.1 is needed").arg(release),
                           reinstallAdvice());
    } else {
        m_findings.ok(label, release);
    }
}

void InstalledProj::examineConversion()
{
    const char *label = "test conversion";
    QString reason;
    if (!m_isReady)
        m_findings.waiting(label);
    else if (convertsKnownPosition(reason))
        m_findings.ok(label, QStringLiteral("right"));
    else
        m_findings.problem(label, reason, reinstallAdvice());
}

} // namespace KelStd::cli
