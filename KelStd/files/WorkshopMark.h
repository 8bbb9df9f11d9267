#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <algorithm>

/// The mark of a directory in which something is prepared. It shows that this system made the
/// directory when the process that did so was killed. The name alone does not: its six free
/// characters may be "backup".
namespace KelStd::workshop {

/// The name of the file that is the mark.
inline QString markName()
{
    return QStringLiteral(".kelstd-workshop");
}

/// What stands in it, for people who find it.
inline QByteArray markText()
{
    return QByteArrayLiteral("KelStd prepares something here, and removes this directory.\n");
}

/// To be called before anything else is put into the directory. False when the mark cannot be
/// written.
inline bool mark(const QString &directory)
{
    QFile file(QDir(directory).filePath(markName()));
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly)
           && file.write(markText()) == markText().size() && file.flush();
}

/// Whether the directory may be removed with all it holds: it bears the mark and holds at most
/// `parts` beside it, or it is empty because its maker was killed before the mark.
inline bool mayBeRemoved(const QFileInfo &directory, const QStringList &parts)
{
    if (directory.isSymLink() || !directory.isDir() || !directory.isReadable())
        return false;
    const QDir dir(directory.filePath());
    const QStringList entries =
        dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    if (entries.isEmpty())
        return true;
    const QFileInfo marked(dir.filePath(markName()));
    QFile file(marked.filePath());
    if (marked.isSymLink() || !marked.isFile() || !file.open(QIODevice::ReadOnly)
        || file.read(markText().size() + 1) != markText())
        return false;
    return std::all_of(entries.begin(), entries.end(), [&parts](const QString &entry) {
        return entry == markName() || parts.contains(entry);
    });
}

/// Removes the directory, its mark last: what a process leaves that is killed here can be removed,
/// too.
inline void remove(const QString &directory, const QStringList &parts)
{
    QDir dir(directory);
    for (const QString &part : parts) {
        const QFileInfo entry(dir.filePath(part));
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
    }
    dir.removeRecursively();
}

} // namespace KelStd::workshop
