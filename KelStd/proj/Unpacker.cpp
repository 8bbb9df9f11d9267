#include <KelStd/proj/Unpacker.h>

#include <KelStd/files/FileLock.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
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

} // namespace

QString findUnpacker()
{
    QStringList directories;
    const QStringList entries = qEnvironmentVariable("PATH", QStringLiteral("/usr/bin:/bin"))
                                    .split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString &entry : entries) {
        if (QDir::isAbsolutePath(entry))
            directories += entry;
    }
    // Without directories Qt would look through the whole search path after all.
    return directories.isEmpty() ? QString()
                                 : QStandardPaths::findExecutable(unpackerName(), directories);
}

bool unpack(const QString &unpacker, const QString &archive, const QString &target,
            const FileLock &lock)
{
    LockKeepingProcess process(lock);
    // The list of what it unpacks is no output of the program that uses this library.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(unpacker, {QStringLiteral("-o"), QDir::fromNativeSeparators(archive),
                             QStringLiteral("-d"), QDir::fromNativeSeparators(target)});
    constexpr int noTimeout = -1;
    return process.waitForFinished(noTimeout) && process.exitStatus() == QProcess::NormalExit
           && process.exitCode() == 0;
}

} // namespace KelStd::proj
