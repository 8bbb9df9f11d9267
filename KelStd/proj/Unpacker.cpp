#include <KelStd/proj/Unpacker.h>

#include <KelStd/proj/ChildProgram.h>
#include <KelStd/proj/FilePermissions.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

namespace KelStd::proj {

namespace {

/// Variables that would add options to the unpacker's.
QStringList optionVariables()
{
    return {QStringLiteral("UNZIP"), QStringLiteral("UNZIPOPT"), QStringLiteral("ZIPINFO"),
            QStringLiteral("ZIPINFOOPT")};
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
    return runToItsEnd(unpacker, QStringList{QStringLiteral("-tqq"), archive} + members,
                       optionVariables(), ChildErrors::Dropped, nullptr)
           == 0;
}

InitializationFailure unpack(const QString &unpacker, const QString &archive, const QString &target,
                             const FileLock &lock)
{
    // The list of what it unpacks is no output of the program that uses this library.
    const auto status = runToItsEnd(unpacker,
                                    {QStringLiteral("-o"), QDir::fromNativeSeparators(archive),
                                     QStringLiteral("-d"), QDir::fromNativeSeparators(target)},
                                    optionVariables(), ChildErrors::Passed, &lock);
    if (status == 0)
        return {};
    if (!QFileInfo(archive).isFile())
        return {InitializationFailureKind::NoArchive, QObject::tr("%1 is missing").arg(archive)};
    if (!status) {
        return {
            InitializationFailureKind::UnpackingFailed,
            QObject::tr("%1 was not unpacked: %2 did not end by itself").arg(archive, unpacker)};
    }
    return failureOfStatus(*status, archive, unpacker);
}

} // namespace KelStd::proj
