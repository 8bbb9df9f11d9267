#include <cli/StandardStreams.h>

#include <QtCore/QByteArray>

#include <cerrno>
#include <system_error>

#if defined(Q_OS_WIN)
#    include <io.h>
#else
#    include <csignal>
#    include <fcntl.h>
#    include <sys/ioctl.h>
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

namespace {

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
    std::signal(SIGPIPE, SIG_IGN);
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

namespace {

qint64 systemRead(int descriptor, char *buffer, qint64 size)
{
    return read(descriptor, buffer, static_cast<std::size_t>(size));
}

qint64 systemWrite(int descriptor, const char *bytes, qint64 size)
{
    return write(descriptor, bytes, static_cast<std::size_t>(size));
}

} // namespace

#endif

qint64 readSome(int descriptor, char *buffer, qint64 size)
{
    qint64 count = -1;
    do {
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
