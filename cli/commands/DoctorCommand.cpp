#include <cli/commands/Command.h>

#include <cli/geoids/DoctorGeoidModels.h>
#include <cli/proj/ProjAdvice.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

namespace KelStd::cli {

namespace {

const QString reinstall = QStringLiteral("run 'kelstd doctor --reinstall'");
const QString installAgain =
    QStringLiteral("install KelStd again, or set KELSTD_BIN_DIR to the directory that holds "
                   "proj/proj.zip");

/// One thing that was looked at.
struct Finding
{
    enum State
    {
        Ok,
        Problem,
        Doubt,  ///< it works, and may be another thing than is meant
        Waiting ///< cannot be right before another problem is solved
    };

    QString label;
    State state;
    QString text;
    QString advice; ///< of a problem or doubt: what to do about it
};

QString sizeOf(const QString &file)
{
    return QStringLiteral("%1 (%2 KiB)").arg(file).arg((QFileInfo(file).size() + 1023) / 1024);
}

/// Everything that a conversion needs, looked at in the order in which one thing needs another.
class Examination
{
    using ArchiveState = ProjInspection::ArchiveState;
    using MarkerState = ProjInspection::MarkerState;

public:
    /// With `isAnew` PROJ is to be unpacked even where it is.
    Examination(const ProjInspection &places, bool isAnew)
        : m_places(places), m_before(places.markerState()),
          m_isUnpacked(isAnew || m_before == MarkerState::Missing
                       || m_before == MarkerState::OtherVersion)
    {}

    /// What has to be there before PROJ can be unpacked. Changes nothing.
    void examineSupplies()
    {
        examineHome();
        examineProgramDirectory();
        examineUnpacker();
        examineArchive();
        examineWhatIsReplaced();
    }

    /// True when PROJ can be unpacked anew.
    bool canInstall() const { return problems() == 0; }

    /// Whether the next step unpacks PROJ, as far as it can.
    bool isUnpacked() const { return m_isUnpacked && canInstall(); }

    /// Makes PROJ ready, unpacking it when that was not done, and looks at the result.
    void examineInstallation()
    {
        const bool isReady = !m_isKept && ProjLib::___InitializeEnviroment();
        if (!isReady && !m_isKept)
            m_failure = ProjLib::initializationFailure();
        m_wasPrepared = isReady && m_isUnpacked;
        examinePrivateDirectory();
        examineMarker();
        examineLibraryFile();
        examineResources();
        examineRelease(isReady);
        examineConversion(isReady);
        examineModels(isReady);
        ProjLib::___unloadEnviroment();
    }

    bool wasPrepared() const { return m_wasPrepared; }

    int problems() const { return count(Finding::Problem); }
    int doubts() const { return count(Finding::Doubt); }

    void print(Console &console) const
    {
        for (const Finding &finding : m_findings) {
            const QString mark = finding.state == Finding::Ok        ? QStringLiteral("ok")
                                 : finding.state == Finding::Problem ? QStringLiteral("problem")
                                 : finding.state == Finding::Doubt   ? QStringLiteral("doubt")
                                                                     : QStringLiteral("-");
            console.print(QStringLiteral("%1  %2  %3")
                              .arg(mark, -7)
                              .arg(finding.label, -22)
                              .arg(finding.text));
            if (!finding.advice.isEmpty())
                console.print(QStringLiteral("         -> %1").arg(finding.advice));
        }
    }

private:
    int count(Finding::State state) const
    {
        int found = 0;
        for (const Finding &finding : m_findings)
            found += finding.state == state ? 1 : 0;
        return found;
    }

    void ok(const char *label, const QString &text) { add(label, Finding::Ok, text, {}); }
    void problem(const char *label, const QString &text, const QString &advice)
    {
        add(label, Finding::Problem, text, advice);
    }
    void waiting(const char *label)
    {
        add(label, Finding::Waiting, QStringLiteral("waits for the above"), {});
    }
    void add(const char *label, Finding::State state, const QString &text, const QString &advice)
    {
        m_findings += {QString::fromLatin1(label), state, text, advice};
    }

    void examineHome()
    {
        const QString path = m_places.home().path();
        const QString text =
            QStringLiteral("%1 (%2)").arg(path, qEnvironmentVariableIsEmpty("KELSTD_HOME_DIR")
                                                    ? QStringLiteral("the user's application data")
                                                    : QStringLiteral("from KELSTD_HOME_DIR"));
        const auto fault = accessProblem(path);
        if (!QFileInfo(path).isDir()) {
            problem("home directory", text + QStringLiteral(" is no directory"),
                    QStringLiteral("create it, or set KELSTD_HOME_DIR to another one"));
        } else if (fault) {
            problem("home directory", fault->text, fault->advice);
            m_isDistrusted = true;
        } else {
            ok("home directory", text);
        }
    }

    void examineProgramDirectory()
    {
        const QString path = m_places.programDir().path();
        const bool isBeside = path == QDir(QCoreApplication::applicationDirPath()).absolutePath();
        const QString text =
            QStringLiteral("%1 (%2)").arg(path, !qEnvironmentVariableIsEmpty("KELSTD_BIN_DIR")
                                                    ? QStringLiteral("from KELSTD_BIN_DIR")
                                                : isBeside ? QStringLiteral("the program's own")
                                                           : QStringLiteral("beside the library"));
        if (QFileInfo(path).isDir())
            ok("program directory", text);
        else
            problem("program directory", text + QStringLiteral(" is no directory"), installAgain);
    }

    void examineUnpacker()
    {
        m_unpacker = ProjInspection::findUnpacker();
        if (m_unpacker.isEmpty()) {
            problem(
                "unpacking program",
                QStringLiteral("%1 is not on the search path").arg(ProjInspection::unpackerName()),
                QStringLiteral("install it in a directory that only you or root can "
                               "write (on Debian: apt-get install unzip)"));
        } else {
            ok("unpacking program", m_unpacker);
        }
    }

    void examineArchive()
    {
        const QString file = m_places.archive();
        const char *label = "PROJ archive";
        if (!QFileInfo(file).isFile()) {
            problem(label, file + QStringLiteral(" is missing"), installAgain);
            return;
        }
        if (m_unpacker.isEmpty()) {
            waiting(label);
            return;
        }
        switch (m_places.archiveState(m_unpacker)) {
        case ArchiveState::Good: ok(label, sizeOf(file)); return;
        case ArchiveState::WithoutProj:
            problem(label, file + QStringLiteral(" holds no PROJ"), installAgain);
            return;
        case ArchiveState::Missing:
        case ArchiveState::Damaged: break;
        }
        problem(label, file + QStringLiteral(" is damaged"), installAgain);
    }

    /// What stands in PROJ's place and is not removed.
    void examineWhatIsReplaced()
    {
        const char *label = "private PROJ directory";
        const QString path = m_places.privateDirectory();
        m_isKept = true;
        if (m_isUnpacked && QFileInfo(path).isSymLink()) {
            problem(label, path + QStringLiteral(" is a symbolic link and is not replaced"),
                    QStringLiteral("remove the link, then run 'kelstd doctor'"));
        } else if (m_isUnpacked && m_places.holdsSomethingElse()) {
            problem(label, path + QStringLiteral(" holds something else and is not emptied"),
                    makeRoomAdvice());
        } else {
            m_isKept = false;
        }
    }

    void examinePrivateDirectory()
    {
        const char *label = "private PROJ directory";
        const QString path = m_places.privateDirectory();
        const QFileInfo info(path);
        m_hasDirectory = info.isDir();
        if (m_isKept)
            return;
        if (const auto fault = accessProblem(path)) {
            problem(label, fault->text, fault->advice);
            m_isDistrusted = true;
        } else if (m_hasDirectory) {
            ok(label, m_wasPrepared ? path + QStringLiteral(" (prepared just now)") : path);
        } else if (info.exists() || info.isSymLink()) {
            problem(label, path + QStringLiteral(" is no directory"),
                    QStringLiteral("remove or rename it"));
        } else if (!canInstall()) {
            waiting(label);
        } else {
            problem(label, path + QStringLiteral(" cannot be created"),
                    QStringLiteral("make %1 writable").arg(m_places.home().path()));
        }
    }

    void examineMarker()
    {
        const char *label = "marker";
        const QString file = m_places.marker();
        switch (m_places.markerState()) {
        case MarkerState::Current:
            ok(label,
               QStringLiteral("%1 (version %2)").arg(file).arg(ProjInspection::markerVersion()));
            m_isInstalled = true;
            return;
        case MarkerState::Unreadable:
            problem(label, file + QStringLiteral(" cannot be read"),
                    QStringLiteral("remove it, then %1").arg(reinstall));
            return;
        case MarkerState::Missing:
        case MarkerState::OtherVersion: break;
        }
        if (!canInstall() || !m_hasDirectory) {
            waiting(label);
        } else {
            problem(label,
                    QStringLiteral("PROJ could not be unpacked into %1: %2")
                        .arg(m_places.privateDirectory(), m_failure.text),
                    QStringLiteral("make %1 writable, see that the disk has room, then %2")
                        .arg(m_places.home().path(), reinstall));
        }
    }

    void examineFile(const char *label, const QString &file)
    {
        if (!m_isInstalled)
            waiting(label);
        else if (QFileInfo(file).isFile())
            ok(label, sizeOf(file));
        else
            problem(label, file + QStringLiteral(" is missing"), reinstall);
    }

    void examineLibraryFile()
    {
        const char *label = "PROJ library";
        const QString file = m_places.libraryFile();
        // A link is judged by what it leads to.
        const QFileInfo loaded(QFileInfo(file).canonicalFilePath());
        for (const QString &path : {loaded.absoluteFilePath(), loaded.absolutePath()}) {
            const auto fault = accessProblem(path);
            if (m_isInstalled && !m_isDistrusted && loaded.exists() && fault) {
                m_isDistrusted = true;
                problem(label, fault->text, fault->advice);
                return;
            }
        }
        examineFile(label, file);
    }
    void examineResources()
    {
        const char *label = "PROJ database";
        const QString file = m_places.database();
        // A link is judged by what it leads to, too.
        const QFileInfo used(QFileInfo(file).canonicalFilePath());
        for (const QString &path :
             {QFileInfo(file).absolutePath(), used.absolutePath(), used.absoluteFilePath()}) {
            const auto fault = accessProblem(path);
            if (m_isInstalled && !m_isDistrusted && used.exists() && fault) {
                m_isDistrusted = true;
                problem(label, fault->text, fault->advice);
                return;
            }
        }
        // Of a directory without a database, too.
        if (m_isInstalled && !m_isDistrusted
            && m_failure.kind == InitializationFailureKind::Untrusted) {
            m_isDistrusted = true;
            problem(label, m_failure.text, {});
            return;
        }
        examineFile(label, file);
    }

    void examineRelease(bool isReady)
    {
        const char *label = "PROJ release";
        // Code that the library does not trust is not run here either.
        if (!m_isInstalled || m_isDistrusted || !QFileInfo(m_places.libraryFile()).isFile()) {
            waiting(label);
            return;
        }
        QString reason;
        const QString release = ProjInspection::release(m_places.libraryFile(), &reason);
        if (!isReady) {
            problem(label,
                    release.isEmpty() ? reason
                                      : QStringLiteral("%1: %2").arg(release, m_failure.text),
                    QStringLiteral("install the libraries that PROJ 9.1 needs, if one is named "
                                   "here; else %1")
                        .arg(reinstall));
        } else if (!release.startsWith(QLatin1String("9."))) {
            problem(label,
                    release.isEmpty() ? reason
                                      : QStringLiteral("%1, but 9.1 is needed").arg(release),
                    reinstall);
        } else {
            ok(label, release);
        }
    }

    void examineConversion(bool isReady)
    {
        const char *label = "test conversion";
        QString reason;
        if (!isReady)
            waiting(label);
        else if (convertsKnownPosition(reason))
            ok(label, QStringLiteral("right"));
        else
            problem(label, reason, reinstall);
    }

    void examineModels(bool isReady)
    {
        for (const GeoidModelFinding &finding : examineGeoidModels(isReady)) {
            switch (finding.kind) {
            case GeoidModelFinding::Problem:
                problem("geoid model", finding.text, finding.advice);
                break;
            case GeoidModelFinding::Doubt:
                add("geoid model", Finding::Doubt, finding.text, finding.advice);
                break;
            case GeoidModelFinding::InOrder: ok("geoid models", finding.text); break;
            }
        }
    }

    ProjInspection m_places;
    MarkerState m_before;
    bool m_isUnpacked;
    QList<Finding> m_findings;
    QString m_unpacker;
    bool m_isKept = false;       ///< the private directory is left as it is
    bool m_isDistrusted = false; ///< others could have written what would run
    bool m_hasDirectory = false;
    bool m_isInstalled = false;
    bool m_wasPrepared = false;
    InitializationFailure m_failure; ///< why PROJ is not ready, where it should be
};

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
            "about something that works and may be meant so; it changes no status.\n"
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
    Examination examination(places, isAnew);
    examination.examineSupplies();
    // What works is not given up before it can be replaced.
    if (isAnew && !examination.canInstall()) {
        examination.print(console);
        console.print(QStringLiteral("PROJ cannot be unpacked anew; nothing was changed."));
        return ExitStatus::Environment;
    }
    if (examination.isUnpacked())
        announceReplacedModels(places, console);
    SetAsideMarker marker(places.marker());
    if (isAnew && !marker.setAside()) {
        console.report(marker.failure());
        return ExitStatus::Environment;
    }
    examination.examineInstallation();
    if (examination.wasPrepared())
        console.noteChange(QStringLiteral("PROJ was unpacked anew"));
    examination.print(console);
    if (marker.putBack())
        console.print(QStringLiteral("PROJ was not unpacked anew; what was there is kept."));

    const int problems = examination.problems();
    console.print(problems > 0 ? QStringLiteral("Problems: %1").arg(problems)
                  : examination.doubts() > 0
                      ? QStringLiteral("No problems; doubts: %1").arg(examination.doubts())
                      : QStringLiteral("All is well."));
    return problems == 0 ? ExitStatus::Success : ExitStatus::Environment;
}

} // namespace KelStd::cli
