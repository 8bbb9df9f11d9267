#pragma once

#include <KelStd/library/LibraryFailure.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The files of the registry. An empty directory is the current one.
namespace KelStd::library {

inline QString pathIn(const QDir &directory, const QString &fileName)
{
    return QDir::fromNativeSeparators(directory.absoluteFilePath(fileName));
}

/// The names of the documents in a directory, in the order in which the file system lists them.
inline QStringList documentNamesIn(const QDir &directory)
{
    return directory.entryList({QStringLiteral("*.xml")}, QDir::Files | QDir::NoDotAndDotDot,
                               QDir::Unsorted);
}

/// The paths of the same documents.
inline QStringList documentsIn(const QDir &directory)
{
    QStringList paths;
    const QStringList fileNames = documentNamesIn(directory);
    // What is listed is in the directory, also a name that Qt would take for a path of another
    // kind.
    for (const QString &fileName : fileNames)
        paths << QDir::fromNativeSeparators(directory.absolutePath() + QLatin1Char('/') + fileName);
    return paths;
}

inline LibraryFailure notWritable(const QString &path, const QString &reason)
{
    return {LibraryFailureKind::NotWritable, QObject::tr("cannot write %1: %2").arg(path, reason)};
}

/// Lets `write(path, &reason)` write a file, and says why it could not. It is not called where
/// something other than a file stands: opening a FIFO for writing would wait for its reader.
template <typename Write>
LibraryFailure written(const QString &path, Write write)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return notWritable(path, QObject::tr("what stands there is no regular file"));
    QString reason;
    return write(path, &reason) ? LibraryFailure() : notWritable(path, reason);
}

} // namespace KelStd::library
