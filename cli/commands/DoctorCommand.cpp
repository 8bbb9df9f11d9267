#include <cli/commands/Command.h>

#include <cli/doctor/InstalledProj.h>
#include <cli/doctor/Supplies.h>
#include <cli/doctor/UsedGrids.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace KelStd::cli {

namespace {

/// The marker of a private directory that is to be made anew: without one the library does it.
class SetAsideMarker
{
public:
    explicit SetAsideMarker(const QString &fileName) : m_file(fileName) {}

    /// False with a failure when it is there and stays.
    bool setAside()
    {
        if (m_file.open(QIODevice::ReadOnly)) {
            m_bytes = m_file.readAll();
            m_file.close();
        }
        return !m_file.exists() || m_file.remove();
    }

    QString failure() const
    {
        return QStringLiteral("cannot remove %1: %2").arg(m_file.fileName(), m_file.errorString());
    }

    /// Writes it again where nothing has taken the old directory's place; true when it did.
    bool putBack()
    {
        return !m_bytes.isEmpty() && m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly)
               && m_file.write(m_bytes) == m_bytes.size() && m_file.flush();
    }

private:
    QFile m_file;
    QByteArray m_bytes;
};

/// Says, before it happens, which models of the user installing overwrites.
void announceReplacedModels(const ProjInspection &places, Console &console)
{
    const ProjInspection::DeliveredModels models = places.deliveredModels();
    for (const QString &name : models.blocked) {
        console.print(QStringLiteral("not copying the delivered geoid model %1: %2 is a directory")
                          .arg(QDir(places.deliveredGeoidModels()).filePath(name),
                               QDir(places.geoidModels()).filePath(name)));
    }
    for (const QString &name : models.different) {
        console.print(QStringLiteral("overwriting the geoid model %1: it differs from the "
                                     "delivered one of that name, %2")
                          .arg(QDir(places.geoidModels()).filePath(name),
                               QDir(places.deliveredGeoidModels()).filePath(name)));
    }
    console.flush();
}

} // namespace

ExitStatus runDoctor(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Looks at everything that a conversion needs, makes PROJ ready, and "
                       "says for each\nthing that is wrong what to do about it."),
        QStringLiteral(
            "Exit status: 0 all is well, 2 usage, 3 something is wrong, 4 PROJ was\n"
            "unpacked and all is well, but standard output cannot be written. A doubt is\n"
            "about something that works and may be meant so; it changes no status. What is\n"
            "marked \"made\" the doctor has made now; all else was there.\n"
            "The environment variables KELSTD_HOME_DIR and KELSTD_BIN_DIR choose other\n"
            "directories."));
    line.setExamples(QStringLiteral("kelstd doctor"), QStringLiteral("kelstd doctor --reinstall"));
    line.addOption({QStringLiteral("reinstall"),
                    QStringLiteral("Unpack PROJ anew. Geoid models with the name of a delivered\n"
                                   "one are overwritten by it; the user's other ones stay.")});
    if (const auto status = line.parse(arguments, console, 0))
        return *status;

    const ProjInspection places;
    const bool isAnew = line.isSet(QStringLiteral("reinstall"));
    Findings findings;
    Supplies supplies(places, findings);
    supplies.examine();
    const UsedGrids grids(places);
    InstalledProj proj(places, findings, isAnew);
    proj.examineWhatIsReplaced();
    // What works is not given up before it can be replaced.
    if (isAnew && !proj.canInstall()) {
        findings.print(console);
        console.print(QStringLiteral("PROJ cannot be unpacked anew; nothing was changed."));
        return ExitStatus::Environment;
    }
    if (proj.isUnpacked())
        announceReplacedModels(places, console);
    SetAsideMarker marker(places.marker());
    if (isAnew && !marker.setAside()) {
        console.report(marker.failure());
        return ExitStatus::Environment;
    }
    proj.prepareAndExamine(supplies.isDistrusted());
    grids.examine(proj.isReady(), findings);
    if (proj.wasPrepared())
        console.noteChange(QStringLiteral("PROJ was unpacked anew"));
    findings.print(console);
    if (marker.putBack())
        console.print(QStringLiteral("PROJ was not unpacked anew; what was there is kept."));

    const int problems = findings.problems();
    console.print(problems > 0 ? QStringLiteral("Problems: %1").arg(problems)
                  : findings.doubts() > 0
                      ? QStringLiteral("No problems; doubts: %1").arg(findings.doubts())
                      : QStringLiteral("All is well."));
    return problems == 0 ? ExitStatus::Success : ExitStatus::Environment;
}

} // namespace KelStd::cli
