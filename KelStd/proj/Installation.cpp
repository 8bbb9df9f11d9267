#include <KelStd/proj/Installation.h>

#include <KelStd/platform/Toolkits.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QLockFile>
#include <QtCore/QProcess>
#include <QtCore/QSaveFile>
#include <QtCore/QStringList>

namespace KelStd::proj {

namespace {

enum class State
{
    Installed,
    Missing,
    Unusable ///< there is something that can neither be used nor be replaced
};

State markerState(const QDir &privateDir)
{
    // Not QFile::exists, to which a link that leads nowhere exists.
    if (!privateDir.exists(markerFileName()))
        return State::Missing;
    QFile marker(privateDir.absoluteFilePath(markerFileName()));
    if (!marker.open(QIODevice::ReadOnly))
        return State::Unusable;
    qint32 version = 0;
    QDataStream(&marker) >> version;
    return version == environmentVersion ? State::Installed : State::Missing;
}

/// The state of the private directory, which is empty and entered when it has to be installed.
State preparePrivateDirectory(const QDir &home, QDir &privateDir)
{
    const QString name = privateDirectoryName();
    privateDir = home;
    if (!home.exists(name)) {
        const bool entered = home.mkdir(name) && privateDir.cd(name);
        return entered ? State::Missing : State::Unusable;
    }
    if (!privateDir.cd(name))
        return State::Unusable;
    const State state = markerState(privateDir);
    if (state == State::Missing)
        tk::Toolkits::ClearDirectory(privateDir.absolutePath());
    return state;
}

bool unpack(const QString &archive, const QString &target)
{
    QProcess unpacker;
    // The list of what it unpacks is no output of the program that uses this library.
    unpacker.setStandardInputFile(QProcess::nullDevice());
    unpacker.setStandardOutputFile(QProcess::nullDevice());
    unpacker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    unpacker.start(unpackerName(), {QStringLiteral("-o"), QDir::fromNativeSeparators(archive),
                                    QStringLiteral("-d"), QDir::fromNativeSeparators(target)});
    constexpr int noTimeout = -1;
    return unpacker.waitForFinished(noTimeout) && unpacker.exitStatus() == QProcess::NormalExit
           && unpacker.exitCode() == 0;
}

bool writeMarker(const QString &path)
{
    // An archive that brings a marker of its own is not ours.
    QFile fresh(path);
    if (!fresh.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    fresh.close();

    QSaveFile marker(path);
    if (!marker.open(QIODevice::WriteOnly))
        return false;
    QDataStream stream(&marker);
    stream << environmentVersion;
    // What is still buffered may fail, too, and `commit` does not say so.
    return stream.status() == QDataStream::Ok && marker.flush() && marker.commit();
}

/// Installs what is missing; by one process at a time.
bool install(const QDir &home, const QDir &programDir)
{
    QDir privateDir;
    switch (preparePrivateDirectory(home, privateDir)) {
    case State::Installed: return true;
    case State::Unusable: return false;
    case State::Missing: break;
    }

    const QDir archiveDir(programDir.absoluteFilePath(privateDirectoryName()));
    // The archive has the top folder "proj" in it: it is unpacked into the home directory itself.
    if (!unpack(archiveDir.absoluteFilePath(archiveFileName()), home.absolutePath())
        || !privateDir.exists(libraryFileName())
        || !writeMarker(privateDir.absoluteFilePath(markerFileName())))
        return false;

    // Without geoid models everything but heights above the geoid still works.
    tk::Toolkits::CopyDirectory(programDir.absoluteFilePath(geoidDirectoryName()),
                                home.absoluteFilePath(geoidDirectoryName()), true);
    return true;
}

bool isInstalled(const QDir &home)
{
    const QDir privateDir(home.absoluteFilePath(privateDirectoryName()));
    return privateDir.exists() && markerState(privateDir) == State::Installed;
}

} // namespace

bool ensureInstalled(const QDir &home, const QDir &programDir)
{
    // Programs that start at the same moment must not unpack over each other. Geoid models come
    // after the marker: who finds it waits for them, too.
    const QString lockFile = home.absoluteFilePath(privateDirectoryName() + QLatin1String(".lock"));
    if (isInstalled(home) && !QFile::exists(lockFile))
        return true;
    QLockFile lock(lockFile);
    constexpr int longestInstallation = 60000; // [ms], after which its process counts as dead
    lock.setStaleLockTime(longestInstallation);
    lock.lock(); // fails where nothing can be installed either
    return install(home, programDir);
}

} // namespace KelStd::proj
