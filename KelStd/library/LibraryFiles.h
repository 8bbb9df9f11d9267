#pragma once

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The files of a directory of records. An empty directory is the current one.
namespace KelStd::library {

inline QString pathIn(const QDir &directory, const QString &fileName)
{
    return QDir::fromNativeSeparators(directory.absoluteFilePath(fileName));
}

/// The documents in a directory, in the order in which the file system lists them.
inline QStringList documentsIn(const QDir &directory)
{
    QStringList paths;
    const QStringList fileNames = directory.entryList(
        {QStringLiteral("*.xml")}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
    // What is listed is in the directory, also a name that Qt would take for a path of another
    // kind.
    for (const QString &fileName : fileNames)
        paths << QDir::fromNativeSeparators(directory.absolutePath() + QLatin1Char('/') + fileName);
    return paths;
}

/// False where something other than a file stands: opening a FIFO for writing would wait for its
/// reader.
inline bool canBeWritten(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() || !info.exists();
}

} // namespace KelStd::library
