#pragma once

#include <cli/terminal/Values.h>

#include <KelStd/proj/GeoidModels.h>

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <optional>

/// The geoid models and grid files that users name.
namespace KelStd::cli {

/// The names of the models that there are.
Values geoidModelValues(Values::Files files = Values::Files::None);

/// Whose folder it is: "home directory".
QString titleOf(GeoidModels::Folder folder);

/// The grid file of the model of that name, or nothing and the reason.
std::optional<QString> findGeoidModel(const QString &name, QString &reason);

/// False with the reason where PROJ is loaded and does not read the grid file.
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
