#include <cli/doctor/Supplies.h>

#include <cli/doctor/Advice.h>
#include <cli/proj/HomeDirectory.h>
#include <cli/proj/ProjAdvice.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

void Supplies::examine()
{
    examineHome();
    examineProgramDirectory();
    examineUnpacker();
    examineArchive();
}

void Supplies::examineHome()
{
    const QString path = m_places.home().path();
    const QString text =
        QStringLiteral("%1 (%2)").arg(path, qEnvironmentVariableIsEmpty("KELSTD_HOME_DIR")
                                                ? QStringLiteral("the user's application data")
                                                : QStringLiteral("from KELSTD_HOME_DIR"));
    const auto fault = accessProblem(path);
    if (const auto missing = homeProblem()) {
        m_findings.problem("home directory", text + QStringLiteral(" is no directory"),
                           missing->advice);
    } else if (fault) {
        m_findings.problem("home directory", fault->text, fault->advice);
        m_isDistrusted = true;
    } else {
        m_findings.ok("home directory", text);
    }
}

void Supplies::examineProgramDirectory()
{
    const QString path = m_places.programDir().path();
    const bool isBeside = path == QDir(QCoreApplication::applicationDirPath()).absolutePath();
    const QString text = QStringLiteral("%1 (%2)").arg(
        path, !qEnvironmentVariableIsEmpty("KELSTD_BIN_DIR") ? QStringLiteral("from KELSTD_BIN_DIR")
              : isBeside                                     ? QStringLiteral("the program's own")
                         : QStringLiteral("beside the library"));
    if (QFileInfo(path).isDir())
        m_findings.ok("program directory", text);
    else
        m_findings.problem("program directory", text + QStringLiteral(" is no directory"),
                           installAgainAdvice());
}

void Supplies::examineUnpacker()
{
    m_unpacker = ProjInspection::findUnpacker();
    if (m_unpacker.isEmpty()) {
        m_findings.problem(
            "unpacking program",
            QStringLiteral("%1 is not on the search path").arg(ProjInspection::unpackerName()),
            QStringLiteral("install it in a directory that only you or root can "
                           "write (on Debian: apt-get install unzip)"));
    } else {
        m_findings.ok("unpacking program", m_unpacker);
    }
}

void Supplies::examineArchive()
{
    const QString file = m_places.archive();
    const char *label = "PROJ archive";
    if (!QFileInfo(file).isFile()) {
        m_findings.problem(label, file + QStringLiteral(" is missing"), installAgainAdvice());
        return;
    }
    if (m_unpacker.isEmpty()) {
        m_findings.waiting(label);
        return;
    }
    switch (m_places.archiveState(m_unpacker)) {
    case ArchiveState::Good: m_findings.ok(label, withSize(file)); return;
    case ArchiveState::WithoutProj:
        m_findings.problem(label, file + QStringLiteral(" holds no PROJ"), installAgainAdvice());
        return;
    case ArchiveState::Missing:
    case ArchiveState::Damaged: break;
    }
    m_findings.problem(label, file + QStringLiteral(" is damaged"), installAgainAdvice());
}

} // namespace KelStd::cli
