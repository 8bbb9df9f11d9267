#include <KelStd/proj/ChildProgram.h>

#include <KelStd/files/FileLock.h>

#if defined(Q_OS_UNIX)
#    include <QtCore/QByteArray>
#    include <QtCore/QFile>

#    include <cerrno>
#    include <fcntl.h>
#    include <spawn.h>
#    include <sys/wait.h>
#    include <unistd.h>

#    include <algorithm>
#    include <csignal>
#    include <vector>
#else
#    include <QtCore/QProcess>
#    include <QtCore/QProcessEnvironment>
#endif

namespace KelStd::proj {

#if defined(Q_OS_UNIX)

namespace {

/// Has children's ends kept until they are waited for, where this process was started with them
/// ignored.
class ChildEnds
{
public:
    ChildEnds()
    {
        ::sigaction(SIGCHLD, nullptr, &m_before);
        m_isIgnored = (m_before.sa_flags & SA_SIGINFO) == 0 && m_before.sa_handler == SIG_IGN;
        if (!m_isIgnored)
            return;
        struct sigaction usual = {};
        usual.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &usual, nullptr);
    }
    ~ChildEnds()
    {
        if (m_isIgnored)
            ::sigaction(SIGCHLD, &m_before, nullptr);
    }
    ChildEnds(const ChildEnds &) = delete;
    ChildEnds &operator=(const ChildEnds &) = delete;

private:
    struct sigaction m_before = {};
    bool m_isIgnored = false;
};

/// What a program is started with besides its arguments.
class SpawnSettings
{
public:
    SpawnSettings(ChildErrors errors, const FileLock *lock)
    {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawnattr_init(&m_attributes);
        open(STDIN_FILENO, O_RDONLY);
        open(STDOUT_FILENO, O_WRONLY);
        if (errors == ChildErrors::Dropped)
            open(STDERR_FILENO, O_WRONLY);
        // A descriptor that becomes itself is not closed when the program starts.
        if (lock != nullptr && lock->isTaken())
            ::posix_spawn_file_actions_adddup2(&m_actions, lock->descriptor(), lock->descriptor());

        sigset_t usual;
        sigemptyset(&usual);
        ::posix_spawnattr_setsigmask(&m_attributes, &usual);
        sigaddset(&usual, SIGPIPE);
        sigaddset(&usual, SIGCHLD);
        ::posix_spawnattr_setsigdefault(&m_attributes, &usual);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings()
    {
        ::posix_spawnattr_destroy(&m_attributes);
        ::posix_spawn_file_actions_destroy(&m_actions);
    }
    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;

    const posix_spawn_file_actions_t *actions() const { return &m_actions; }
    const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    void open(int descriptor, int mode)
    {
        ::posix_spawn_file_actions_addopen(&m_actions, descriptor, "/dev/null", mode, 0);
    }

    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

/// Pointers to the texts and a null behind them, as POSIX takes lists.
std::vector<char *> pointersTo(std::vector<QByteArray> &texts)
{
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<QByteArray> environmentWithout(const QStringList &variables)
{
    std::vector<QByteArray> kept;
    for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const QByteArray text(*entry);
        const QString name = QString::fromLocal8Bit(text.left(text.indexOf('=')));
        if (!variables.contains(name))
            kept.push_back(text);
    }
    return kept;
}

} // namespace

/// Not by QProcess. Its child waits, before the program, for a word of the process that started it:
/// when that one is killed in this moment the child waits for ever and keeps the locks. A spawned
/// one waits for nobody.
std::optional<int> runToItsEnd(const QString &program, const QStringList &arguments,
                               const QStringList &withoutVariables, ChildErrors errors,
                               const FileLock *lock)
{
    std::vector<QByteArray> words = {QFile::encodeName(program)};
    for (const QString &argument : arguments)
        words.push_back(QFile::encodeName(argument));
    std::vector<QByteArray> environment = environmentWithout(withoutVariables);
    const std::vector<char *> argumentPointers = pointersTo(words);
    const std::vector<char *> environmentPointers = pointersTo(environment);

    const ChildEnds ends;
    const SpawnSettings settings(errors, lock);
    pid_t child = 0;
    if (::posix_spawn(&child, words.front().constData(), settings.actions(), settings.attributes(),
                      argumentPointers.data(), environmentPointers.data())
        != 0)
        return std::nullopt;
    int status = 0;
    pid_t ended = 0;
    do {
        ended = ::waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    if (ended != child || !WIFEXITED(status))
        return std::nullopt;
    return WEXITSTATUS(status);
}

#else

std::optional<int> runToItsEnd(const QString &program, const QStringList &arguments,
                               const QStringList &withoutVariables, ChildErrors errors,
                               const FileLock * /*lock*/)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : withoutVariables)
        environment.remove(variable);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(errors == ChildErrors::Passed ? QProcess::ForwardedErrorChannel
                                                                : QProcess::MergedChannels);
    process.start(program, arguments);
    constexpr int noTimeout = -1;
    if (!process.waitForFinished(noTimeout) || process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process.exitCode();
}

#endif

} // namespace KelStd::proj
