#pragma once

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <optional>

/// Geoid models by their names and by their files.
namespace KelStd::cli {

/// A folder of models. A name is looked up in the user's first.
struct GeoidFolder
{
    QDir directory;
    QString title; ///< whose it is: "home directory"
};

QList<GeoidFolder> geoidFolders();

/// The names of all models, in order. What a GGF grid was converted to is not another model.
QStringList geoidModelNames();

/// A file of a model, as it was put into its folder.
struct GeoidModelFile
{
    QString path;
    GeoidFolder folder;
    QString fault; ///< why the grid cannot be used; empty for a whole one
    QString doubt; ///< what of a whole one looks as if something were wrong; empty for nothing
};

/// The files of that name, the one that is used first. Empty for "./NAME", which is always a file,
/// and for a name that leads out of the folders.
QList<GeoidModelFile> filesOfModel(const QString &name);

/// The grid file of the model of that name, or nothing and the reason.
std::optional<QString> findGeoidModel(const QString &name, QString &reason);

/// Where the GTX conversion of a GGF model's file stands, or is to.
QString conversionOf(const QString &ggf);

/// Whether the loaded PROJ reads the grid file; otherwise the reason.
bool geoidGridIsReadable(const QString &path, QString &reason);

/// The grid that a user chose, by a model's name or as a file.
class ChosenGrid
{
public:
    /// A model's name comes before a file's: "./FILE" is always a file. A GGF file is converted for
    /// the time of the run. False with the reason.
    bool choose(const QString &nameOrFile, QString &reason);

    QString path() const { return m_path; }

private:
    bool convertForTheRun(const QString &ggf, QString &reason);

    QString m_path;
    std::optional<QTemporaryDir> m_converted;
};

} // namespace KelStd::cli
