#include <cli/terminal/StandardStreams.h>

#include <cli/terminal/FilePath.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <system_error>

#if defined(Q_OS_WIN)
#    include <io.h>
#else
#    include <algorithm>
#    include <atomic>
#    include <chrono>
#    include <csignal>
#    include <fcntl.h>
#    include <poll.h>
#    include <sys/ioctl.h>
#    include <sys/stat.h>
#    include <unistd.h>
#endif

namespace KelStd::cli::streams {

#if defined(Q_OS_WIN)

void prepare() {}

bool isTerminal(int descriptor)
{
    return _isatty(descriptor) != 0;
}

int terminalWidth(int /*descriptor*/)
{
    return 0;
}

std::optional<qint64> bytesToCome(int /*descriptor*/)
{
    return std::nullopt;
}

bool isFile(int /*descriptor*/, const QString & /*name*/)
{
    return false;
}

bool areSameFile(const QString &one, const QString &other)
{
    const QString file = QFileInfo(onDisk(one)).canonicalFilePath();
    return !file.isEmpty() && file == QFileInfo(onDisk(other)).canonicalFilePath();
}

bool isReady(int /*descriptor*/)
{
    return false;
}

bool isReadyWithin(int /*descriptor*/, int /*milliseconds*/)
{
    return true; // reading waits
}

bool storeOnDisk(const QString & /*name*/)
{
    return true;
}

StopRequests::StopRequests() = default;
StopRequests::~StopRequests() = default;

bool StopRequests::isMade() const
{
    return false;
}

void endAsTold() {}

namespace {

void waitForInput(int /*descriptor*/) {}

qint64 systemRead(int descriptor, char *buffer, qint64 size)
{
    return _read(descriptor, buffer, static_cast<unsigned>(size));
}

qint64 systemWrite(int descriptor, const char *bytes, qint64 size)
{
    return _write(descriptor, bytes, static_cast<unsigned>(size));
}

} // namespace

#else

void prepare()
{
    for (int descriptor : {standardInput, standardOutput, standardError}) {
        if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) {
            // Opened the wrong way round: using it is an error, as it was before.
            const int mode = descriptor == standardInput ? O_WRONLY : O_RDONLY;
            if (open("/dev/null", mode) == -1)
                return; // without it there is nothing to protect the number with
        }
    }
    // What cannot be written is an error of the write, which is reported and tidied up after.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool isTerminal(int descriptor)
{
    return isatty(descriptor) != 0;
}

int terminalWidth(int descriptor)
{
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::optional<qint64> bytesToCome(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const off_t position = lseek(descriptor, 0, SEEK_CUR);
    return position >= 0 && position <= status.st_size ? std::optional(status.st_size - position)
                                                       : std::nullopt;
}

bool isFile(int descriptor, const QString &name)
{
    struct stat open = {};
    struct stat named = {};
    return fstat(descriptor, &open) == 0 && S_ISREG(open.st_mode)
           && stat(QFile::encodeName(name).constData(), &named) == 0 && open.st_dev == named.st_dev
           && open.st_ino == named.st_ino;
}

bool storeOnDisk(const QString &name)
{
    const int descriptor = open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor == -1)
        return false;
    const bool isStored = fsync(descriptor) == 0;
    const int reason = errno;
    close(descriptor);
    errno = reason;
    return isStored;
}

bool areSameFile(const QString &one, const QString &other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(QFile::encodeName(one).constData(), &first) == 0
           && stat(QFile::encodeName(other).constData(), &second) == 0 && S_ISREG(first.st_mode)
           && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool isReady(int descriptor)
{
    pollfd wanted = {descriptor, POLLIN, 0};
    return poll(&wanted, 1, 0) != 0;
}

namespace {

// The interrupt key, a request to end, and a terminal that is closed; under nohup the last one is
// ignored from the start.
constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};
std::atomic<int> toldBy{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal may write it");

/// Wakes who waits for input: a signal between the look at `toldBy` and the waiting would be
/// missed.
int wakingPipe[2] = {-1, -1};

void setAction(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// Of those signals that the program was not started to ignore.
void setActions(void (*handler)(int))
{
    for (const int signal : stopSignals) {
        if (!isIgnored(signal))
            setAction(signal, handler);
    }
}

void takeSignal(int signal)
{
    const int error = errno;
    setActions(SIG_DFL); // the next one ends the program, whichever it is
    toldBy = signal;
    const ssize_t written = write(wakingPipe[1], "", 1);
    static_cast<void>(written); // it fails only for a full pipe, which wakes the reader anyhow
    errno = error;
}

} // namespace

StopRequests::StopRequests()
{
    if (pipe2(wakingPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals end the program as they always did
    setActions(takeSignal);
}

StopRequests::~StopRequests()
{
    if (wakingPipe[0] == -1)
        return;
    setActions(SIG_DFL);
    for (int &end : wakingPipe) {
        close(end);
        end = -1;
    }
}

bool StopRequests::isMade() const
{
    return toldBy != 0;
}

void endAsTold()
{
    std::raise(toldBy);
}

namespace {

/// Until there is input, its end or a request to stop.
void waitForInput(int descriptor)
{
    pollfd wanted[] = {{descriptor, POLLIN, 0}, {wakingPipe[0], POLLIN, 0}};
    while (poll(wanted, 2, -1) == -1 && errno == EINTR) {
    }
}

qint64 systemRead(int descriptor, char *buffer, qint64 size)
{
    return read(descriptor, buffer, static_cast<std::size_t>(size));
}

qint64 systemWrite(int descriptor, const char *bytes, qint64 size)
{
    return write(descriptor, bytes, static_cast<std::size_t>(size));
}

} // namespace

bool isReadyWithin(int descriptor, int milliseconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    pollfd wanted[] = {{descriptor, POLLIN, 0}, {wakingPipe[0], POLLIN, 0}};
    for (int left = milliseconds;;) {
        const int count = poll(wanted, 2, left);
        if (count != -1 || errno != EINTR)
            return count != 0;
        // A signal that is none to stop: the rest of the time is waited.
        left = static_cast<int>(std::max<std::chrono::milliseconds::rep>(
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count(), 0));
    }
}

#endif

qint64 readSome(int descriptor, char *buffer, qint64 size, const StopRequests *stop)
{
    qint64 count = -1;
    do {
        waitForInput(descriptor);
        if (stop != nullptr && stop->isMade())
            return 0;
        count = systemRead(descriptor, buffer, size);
    } while (count == -1 && errno == EINTR);
    return count;
}

bool writeAll(int descriptor, const QByteArray &bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 count =
            systemWrite(descriptor, bytes.constData() + written, bytes.size() - written);
        if (count == -1 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

QString lastErrorText()
{
    return QString::fromLocal8Bit(std::generic_category().message(errno).c_str());
}

} // namespace KelStd::cli::streams
