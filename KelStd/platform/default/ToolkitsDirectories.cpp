#include <KelStd/platform/Toolkits.h>
#include <KelStd/platform/default/Creation.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

namespace {

constexpr QDir::Filters everything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

/// Copies one file so that `target` is replaced whole or not at all.
bool copyFile(const QString &source, const QString &target)
{
    constexpr qint64 pieceSize = 1 << 20;

    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    const bool isNew = !QFileInfo::exists(target);
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    if (isNew)
        out.setPermissions(kelstd_platform::withoutOthersWriting(out.permissions()));
    while (!in.atEnd()) {
        const QByteArray piece = in.read(pieceSize);
        if (piece.isEmpty() || out.write(piece) != piece.size())
            return false;
    }
    // What is still buffered may fail, too, and `commit` does not say so.
    return in.error() == QFileDevice::NoError && out.flush() && out.commit();
}

/// Whether `path`, which need not exist yet, lies in the existing directory `directory` or is it.
bool liesIn(const QDir &directory, const QString &path)
{
    QFileInfo ancestor(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    while (!ancestor.exists() && !ancestor.isRoot())
        ancestor.setFile(ancestor.absolutePath());
    const QString outer = directory.canonicalPath();
    const QString inner = ancestor.canonicalFilePath();
    return inner == outer || outer == QLatin1String("/")
           || inner.startsWith(outer + QLatin1Char('/'));
}

/// Whether the path itself is a symbolic link, also with a "/" behind it.
bool isLink(const QString &path)
{
    return QFileInfo(QDir::cleanPath(path)).isSymLink();
}

bool removeEntry(const QFileInfo &entry)
{
    if (entry.isDir() && !entry.isSymLink())
        return QDir(entry.filePath()).removeRecursively();
    return QFile::remove(entry.filePath());
}

} // namespace

namespace tk {

bool Toolkits::CopyDirectory(const QString &source, const QString &target, bool overwrite)
{
    const QDir sourceDir(source);
    if (source.isEmpty() || target.isEmpty() || !sourceDir.exists())
        return false;
    if (liesIn(sourceDir, target))
        return false; // the copy would copy itself without end
    if (!kelstd_platform::createDirectory(target))
        return false;

    const QDir targetDir(target);
    bool complete = true;
    for (const QFileInfo &entry : sourceDir.entryInfoList(everything)) {
        const QString destination = targetDir.absoluteFilePath(entry.fileName());
        if (isLink(destination))
            complete = false; // what it leads to, outside the target, is nobody's to overwrite
        else if (entry.isDir() && !entry.isSymLink()) { // a link could lead round in a circle
            complete = CopyDirectory(entry.filePath(), destination, overwrite) && complete;
        } else if (entry.isFile()) {
            if (overwrite || !QFileInfo::exists(destination))
                complete = copyFile(entry.filePath(), destination) && complete;
        } else {
            complete = false; // a pipe, a device, a link to nowhere: nothing to copy
        }
    }
    return complete;
}

bool Toolkits::ClearDirectory(const QString &directory)
{
    const QDir dir(directory);
    if (directory.isEmpty() || !dir.exists() || isLink(directory))
        return false;

    bool complete = true;
    for (const QFileInfo &entry : dir.entryInfoList(everything))
        complete = removeEntry(entry) && complete;
    return complete;
}

} // namespace tk
