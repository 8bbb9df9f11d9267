#include <KelStd/io/FileAccess.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QUuid>

#include <cerrno>
#include <cstdio>

#if defined(Q_OS_UNIX)
#    include <fcntl.h>
#    include <sys/stat.h>
#    include <unistd.h>
#endif

namespace KelStd::io {

namespace {

bool failWith(const QFileDevice &file, QString *error)
{
    if (error != nullptr)
        *error = file.errorString();
    return false;
}

bool failWith(int systemError, QString *error)
{
    if (error != nullptr)
        *error = qt_error_string(systemError);
    return false;
}

/// False for a name that the system would take for another one: a NUL would end it, and what the
/// encoding of file names lacks would vanish.
bool isExpressible(const QString &fileName)
{
    return !fileName.contains(QChar::Null)
           && QFile::decodeName(QFile::encodeName(fileName)) == fileName;
}

#if defined(Q_OS_UNIX)
bool openRegularFile(QFile &file, const QString &fileName, QString *error)
{
    // Without O_NONBLOCK a FIFO would be waited for until somebody writes.
    const int descriptor = ::open(QFile::encodeName(fileName).constData(),
                                  O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return failWith(errno, error);
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return failWith(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, error);
    }
    if (file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return failWith(file, error);
}
#else
bool openRegularFile(QFile &file, const QString &fileName, QString *error)
{
    if (QFileInfo::exists(fileName) && !QFileInfo(fileName).isFile())
        return failWith(EINVAL, error);
    file.setFileName(fileName);
    return file.open(QIODevice::ReadOnly) || failWith(file, error);
}
#endif

bool writeAndCommit(QSaveFile &file, QIODevice::OpenMode mode,
                    const std::function<bool(QIODevice &)> &write, QString *error)
{
    if (!file.open(QIODevice::WriteOnly | mode))
        return failWith(file, error);
    const bool written = write(file);
    // QSaveFile reports a partial write's error only on the next flush.
    const bool flushed = file.flush() || file.flush();
    if (!flushed || !written)
        return failWith(file, error); // what is not committed is removed
    return file.commit() || failWith(file, error);
}

/// True for a name that the file system takes, but not with the suffix of a temporary file.
bool isTooLongForASuffix(const QString &fileName)
{
    constexpr int longestName = 255; // NAME_MAX
    constexpr int suffix = 7;        // ".XXXXXX"
    const auto length = QFile::encodeName(QFileInfo(fileName).fileName()).size();
    return length > longestName - suffix && length <= longestName;
}

/// What the links lead to in the end, whether or not it exists. Nothing for links that lead round
/// in a circle.
QString behindLinks(const QString &fileName)
{
    constexpr int longestChain = 40; // what Linux follows
    QFileInfo info(fileName);
    for (int links = 0; info.isSymLink(); ++links) {
        if (links == longestChain)
            return {};
        info.setFile(info.symLinkTarget());
    }
    return info.filePath();
}

/// Writes into what is no file and cannot be replaced by one: a pipe, a terminal.
bool writeThrough(const QString &fileName, QIODevice::OpenMode mode,
                  const std::function<bool(QIODevice &)> &write, QString *error)
{
    QFile device(fileName);
    if (!device.open(QIODevice::WriteOnly | mode))
        return failWith(device, error);
    const bool written = write(device);
    return (device.flush() && written) || failWith(device, error);
}

/// Writes a neighbour with a short name and lets it take the file's place.
bool replaceByNeighbour(const QString &fileName, QIODevice::OpenMode mode,
                        const std::function<bool(QIODevice &)> &write, QString *error)
{
    const QFileInfo target(fileName);
    if (target.isDir())
        return failWith(EISDIR, error);
    if (target.exists() && !target.isWritable())
        return failWith(EACCES, error); // renaming does not ask for this right
    const QString neighbour = target.absoluteDir().absoluteFilePath(
        QLatin1Char('.') + QUuid::createUuid().toString(QUuid::WithoutBraces));
    {
        QSaveFile file(neighbour);
        if (!writeAndCommit(file, mode, write, error))
            return false;
    }
    if (target.exists())
        QFile::setPermissions(neighbour, target.permissions());
    if (std::rename(QFile::encodeName(neighbour).constData(),
                    QFile::encodeName(fileName).constData())
        == 0)
        return true;
    const int reason = errno;
    QFile::remove(neighbour);
    return failWith(reason, error);
}

} // namespace

bool openForReading(QFile &file, const QString &fileName, Source source, QString *error)
{
    if (!isExpressible(fileName))
        return failWith(EINVAL, error);
    if (source == Source::RegularFile)
        return openRegularFile(file, fileName, error);
    file.setFileName(fileName);
    return file.open(QIODevice::ReadOnly) || failWith(file, error);
}

bool writeAll(QIODevice &device, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 size = device.write(bytes.constData() + done, bytes.size() - done);
        if (size <= 0)
            return false;
        done += size;
    }
    return true;
}

bool replaceFile(const QString &fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice &)> &write, QString *error)
{
    if (fileName.isEmpty()) {
        // A QSaveFile would open it.
        QFile nameless;
        nameless.open(QIODevice::WriteOnly);
        return failWith(nameless, error);
    }
    if (!isExpressible(fileName))
        return failWith(EINVAL, error);
    const QString target = behindLinks(fileName);
    if (target.isEmpty())
        return failWith(ELOOP, error);
    const QFileInfo info(target);
    if (info.exists() && !info.isFile() && !info.isDir())
        return writeThrough(target, mode, write, error);
    if (isTooLongForASuffix(target))
        return replaceByNeighbour(target, mode, write, error);
    QSaveFile file(target);
    return writeAndCommit(file, mode, write, error);
}

} // namespace KelStd::io
