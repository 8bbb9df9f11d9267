#pragma once

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Where records lie in a directory. An empty directory is the current one.
namespace KelStd::library {

/// The name of the file of the record called `name`, which is used as it stands.
inline QString recordFileName(const QString &name)
{
    return QStringLiteral("%1.xml").arg(name);
}

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
    for (const QString &fileName : fileNames)
        paths << pathIn(directory, fileName);
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
