#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <optional>

/// Geoid models by their names and by their files.
namespace KelStd::cli {

/// Where the models lie that have names.
QDir geoidModelDirectory();

/// The grid file of the model of that name, or nothing and the reason.
std::optional<QString> findGeoidModel(const QString &name, QString &reason);

/// The file of the model that the user has of that name, as it was put there. Nothing for "./NAME",
/// which is always a file.
std::optional<QString> modelFile(const QString &name);

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
