#include <KelStd/proj/Unpacker.h>

#include <KelStd/files/FileLock.h>
#include <KelStd/proj/FilePermissions.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

namespace KelStd::proj {

namespace {

class LockKeepingProcess : public QProcess
{
public:
    explicit LockKeepingProcess(const FileLock &lock) : m_lock(lock) {}

protected:
    void setupChildProcess() override { m_lock.keepInChild(); }

private:
    const FileLock &m_lock;
};

/// The user's environment without what would add options to the unpacker's.
QProcessEnvironment unpackerEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"UNZIP", "UNZIPOPT", "ZIPINFO", "ZIPINFOOPT"})
        environment.remove(QString::fromLatin1(name));
    return environment;
}

/// Waits for a process that was started; false where it did not start or did not end by itself.
bool hasEnded(QProcess &process)
{
    constexpr int noTimeout = -1;
    return process.waitForFinished(noTimeout) && process.exitStatus() == QProcess::NormalExit;
}

/// What the unpacking program says by its exit status (unzip(1), "DIAGNOSTICS").
InitializationFailure failureOfStatus(int status, const QString &archive, const QString &unpacker)
{
    switch (status) {
    case 2:  // an error in the archive
    case 3:  // a severe one
    case 9:  // no archive
    case 51: // its end comes too early
        return {InitializationFailureKind::DamagedArchive,
                QObject::tr("%1 is damaged").arg(archive)};
    case 50:
        return {InitializationFailureKind::NoRoom,
                QObject::tr("%1 was not unpacked: the disk is full").arg(archive)};
    default: break;
    }
    return {InitializationFailureKind::UnpackingFailed,
            QObject::tr("%1 was not unpacked: %2 ended with status %3")
                .arg(archive, unpacker)
                .arg(status)};
}

/// A directory of processes: what it holds is what somebody's process has.
bool isOfProcesses(const QString &directory)
{
    return (QDir::cleanPath(directory) + QLatin1Char('/')).startsWith(QLatin1String("/proc/"));
}

} // namespace

QString findUnpacker()
{
    const QStringList entries = qEnvironmentVariable("PATH", QStringLiteral("/usr/bin:/bin"))
                                    .split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString &entry : entries) {
        if (!QDir::isAbsolutePath(entry) || isOfProcesses(entry))
            continue;
        QString found = QStandardPaths::findExecutable(unpackerName(), {entry});
        if (!found.isEmpty() && distrustOf(QDir(entry), found).isEmpty())
            return found;
    }
    return {};
}

bool testArchive(const QString &unpacker, const QString &archive, const QStringList &members)
{
    QProcess process;
    process.setProcessEnvironment(unpackerEnvironment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(unpacker, QStringList{QStringLiteral("-tqq"), archive} + members);
    return hasEnded(process) && process.exitCode() == 0;
}

InitializationFailure unpack(const QString &unpacker, const QString &archive, const QString &target,
                             const FileLock &lock)
{
    LockKeepingProcess process(lock);
    // The list of what it unpacks is no output of the program that uses this library.
    process.setProcessEnvironment(unpackerEnvironment());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(unpacker, {QStringLiteral("-o"), QDir::fromNativeSeparators(archive),
                             QStringLiteral("-d"), QDir::fromNativeSeparators(target)});
    const bool isOver = hasEnded(process);
    if (isOver && process.exitCode() == 0)
        return {};
    if (!QFileInfo(archive).isFile())
        return {InitializationFailureKind::NoArchive, QObject::tr("%1 is missing").arg(archive)};
    if (!isOver) {
        return {
            InitializationFailureKind::UnpackingFailed,
            QObject::tr("%1 was not unpacked: %2 did not end by itself").arg(archive, unpacker)};
    }
    return failureOfStatus(process.exitCode(), archive, unpacker);
}

} // namespace KelStd::proj
