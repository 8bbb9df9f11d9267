#include <KelStd/files/FileLock.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QThread>

#include <tuple>
#include <utility>

#if defined(Q_OS_UNIX)
#    include <cerrno>

#    include <fcntl.h>
#    include <sys/file.h>
#    include <sys/stat.h>
#    include <unistd.h>
#else
#    include <QtCore/QLockFile>
#endif

namespace KelStd {

#if defined(Q_OS_UNIX)

namespace {

int openLockFile(const QByteArray &name)
{
    // A link would lead to another file, and opening a pipe could wait for somebody to write.
    constexpr int safely = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    const int descriptor = ::open(name.constData(), O_RDWR | O_CREAT | safely, 0644);
    // Another user's lock file is locked as well as one's own.
    return descriptor < 0 && errno == EACCES ? ::open(name.constData(), O_RDONLY | safely)
                                             : descriptor;
}

/// Whether an open file is one that a lock can have left: empty, cut to zeros when the machine
/// stopped, or with the number of a process.
bool looksLikeALock(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    char first = '\0';
    if (::pread(descriptor, &first, 1, 0) < 1)
        return true;
    return first == '\0' || (first >= '0' && first <= '9');
}

/// Whether the file of this name is still the open one. A holder that lets go removes the file, and
/// who waited for it has locked a file that nobody else will find.
bool isStillNamed(int descriptor, const QByteArray &name)
{
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(descriptor, &opened) == 0 && ::lstat(name.constData(), &named) == 0
           && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

int lockWithoutWaiting(int descriptor)
{
    int result = 0;
    do {
        result = ::flock(descriptor, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result == 0 ? 0 : errno;
}

/// Writes the number of this process, for people who look into the file.
void writeProcessNumber(int descriptor)
{
    const QByteArray text = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    // On a full disk the lock is held all the same.
    std::ignore = ::ftruncate(descriptor, 0);
    std::ignore = ::pwrite(descriptor, text.constData(), static_cast<std::size_t>(text.size()), 0);
}

} // namespace

struct FileLock::Holder
{
    int descriptor;
    QByteArray name;

    Holder(int d, QByteArray n) : descriptor(d), name(std::move(n)) {}
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;
    ~Holder()
    {
        if (isStillNamed(descriptor, name))
            ::unlink(name.constData()); // before it is let go: nobody else holds it yet
        ::close(descriptor);
    }
};

FileLock::Outcome FileLock::take(int patience)
{
    if (isTaken())
        return Outcome::Taken;
    constexpr unsigned long pause = 20; // [ms]
    const QByteArray name = QFile::encodeName(m_fileName);
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        const int descriptor = openLockFile(name);
        if (descriptor < 0)
            return Outcome::Unavailable;
        const int refusal = looksLikeALock(descriptor) ? lockWithoutWaiting(descriptor) : EINVAL;
        if (refusal == 0 && isStillNamed(descriptor, name)) {
            writeProcessNumber(descriptor);
            m_holder = std::make_unique<Holder>(descriptor, name);
            return Outcome::Taken;
        }
        ::close(descriptor);
        if (refusal == 0)
            continue;
        if (refusal != EWOULDBLOCK)
            return Outcome::Unavailable;
        if (patience != forEver && clock.elapsed() >= patience)
            return Outcome::HeldByAnother;
        QThread::msleep(pause);
    }
}

void FileLock::keepInChild() const
{
    if (isTaken())
        ::fcntl(m_holder->descriptor, F_SETFD, 0);
}

int FileLock::descriptor() const
{
    return isTaken() ? m_holder->descriptor : -1;
}

#else

struct FileLock::Holder
{
    explicit Holder(const QString &fileName) : file(fileName) {}
    QLockFile file;
};

FileLock::Outcome FileLock::take(int patience)
{
    if (isTaken())
        return Outcome::Taken;
    auto holder = std::make_unique<Holder>(m_fileName);
    // A file that a living process has open cannot be removed here, whatever its age.
    holder->file.setStaleLockTime(1);
    if (!holder->file.tryLock(patience)) {
        return holder->file.error() == QLockFile::LockFailedError ? Outcome::HeldByAnother
                                                                  : Outcome::Unavailable;
    }
    m_holder = std::move(holder);
    return Outcome::Taken;
}

void FileLock::keepInChild() const {}

int FileLock::descriptor() const
{
    return -1;
}

#endif

FileLock::FileLock(const QString &fileName) : m_fileName(fileName) {}

FileLock::~FileLock() = default;

void FileLock::release()
{
    m_holder.reset();
}

} // namespace KelStd
