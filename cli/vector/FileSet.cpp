#include <cli/vector/FileSet.h>

#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace KelStd::cli::vector {

namespace {

/// What belongs to a file of an extension: endings in place of it.
struct Companions
{
    const char *extension;
    QStringList endings;
};

const std::vector<Companions> &companions()
{
    static const std::vector<Companions> rows = {
        {"shp",
         {".shx", ".dbf", ".prj", ".cpg", ".qpj", ".qix", ".sbn", ".sbx", ".fbn", ".fbx",
          ".shp.xml", ".ain", ".aih", ".atx", ".ixs", ".mxs", ".qmd", ".idm", ".ind"}},
        // Of a database that is open elsewhere or was not closed: it would be taken for the new
        // one's.
        {"gpkg", {".gpkg-wal", ".gpkg-shm", ".gpkg-journal"}},
    };
    return rows;
}

std::filesystem::path onFileSystem(const QString &name)
{
    return QFile::encodeName(name).toStdString();
}

/// Moves a file, over one that is there.
bool move(const QString &from, const QString &to, QString &error)
{
    std::error_code code;
    std::filesystem::rename(onFileSystem(from), onFileSystem(to), code);
    if (code)
        error = QString::fromStdString(code.message());
    return !code;
}

/// The endings of what belongs to a file of this extension.
QStringList endingsBeside(const QString &extension)
{
    for (const Companions &row : companions()) {
        if (extension == QLatin1String(row.extension))
            return row.endings;
    }
    return {};
}

} // namespace

FileSet::FileSet(const QString &target)
{
    const QFileInfo info(target);
    const bool isLink = info.isSymLink() && info.exists();
    m_target = isLink ? info.canonicalFilePath() : info.absoluteFilePath();
}

QStringList FileSet::names() const
{
    QStringList all{m_target};
    const QFileInfo info(m_target);
    const QString stem = m_target.chopped(info.suffix().size() + 1);
    for (const QString &ending : endingsBeside(info.suffix().toLower()))
        all += stem + ending;
    return all;
}

QStringList FileSet::existing() const
{
    QStringList found;
    for (const QString &name : names()) {
        if (QFileInfo::exists(name))
            found += name;
    }
    return found;
}

bool FileSet::has(const QString &name) const
{
    const QString place = placeOf(name);
    const QString target = placeOf(m_target);
    const QString extension = QFileInfo(m_target).suffix();
    const QString stem = target.chopped(extension.size() + 1);
    const QStringList endings = endingsBeside(extension.toLower());
    return place == target
           || std::any_of(endings.begin(), endings.end(),
                          [&](const QString &ending) { return place == stem + ending; });
}

bool FileSet::prepare(QString &error)
{
    const QString directory = QFileInfo(m_target).absolutePath();
    m_directory = std::make_unique<QTemporaryDir>(QDir(directory).filePath(".kelstd-XXXXXX"));
    if (m_directory->isValid() && QDir(m_directory->path()).mkdir(QStringLiteral("before")))
        return true;
    error = m_directory->errorString();
    return false;
}

QString FileSet::path() const
{
    return m_directory->filePath(QFileInfo(m_target).fileName());
}

bool FileSet::commit(QString &error)
{
    const QDir made(m_directory->path());
    const QDir place = QFileInfo(m_target).absoluteDir();
    const QStringList names = made.entryList(QDir::Files | QDir::Hidden);
    const QFileInfo before(m_target);
    for (const QString &name : names) {
        if (before.exists())
            QFile::setPermissions(made.filePath(name), before.permissions());
        if (!streams::storeOnDisk(made.filePath(name))) {
            error = streams::lastErrorText();
            return false;
        }
    }

    std::vector<std::pair<QString, QString>> moved; // from where, to where
    const auto moveAndKeep = [&](const QString &from, const QString &to) {
        if (!move(from, to, error))
            return false;
        moved.emplace_back(from, to);
        return true;
    };
    bool isDone = true;
    for (const QString &file : existing()) {
        const QString name = QFileInfo(file).fileName();
        isDone = isDone && moveAndKeep(file, made.filePath(QStringLiteral("before/") + name));
    }
    for (const QString &name : names)
        isDone = isDone && moveAndKeep(made.filePath(name), place.filePath(name));
    if (isDone)
        return true;
    QString ignored;
    for (auto step = moved.rbegin(); step != moved.rend(); ++step)
        move(step->second, step->first, ignored);
    return false;
}

} // namespace KelStd::cli::vector
