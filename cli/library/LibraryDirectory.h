#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>

#include <initializer_list>
#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// What a library is made of. One row each in LibraryDirectory.cpp.
enum class LibraryPlace
{
    Base,
    Ellipsoids,
    Projections,
    Custom,
    Standard,
    Offered, ///< the systems offered when a project is created
    Display  ///< the display configuration
};

/// A directory with the seven places of a library.
class LibraryDirectory
{
public:
    explicit LibraryDirectory(const QString &path) : m_dir(QDir(path).absolutePath()) {}

    /// "library" in the home directory.
    static LibraryDirectory ofHome();

    QString path() const { return m_dir.absolutePath(); }
    QString path(LibraryPlace place) const;

    bool exists() const { return m_dir.exists(); }
    /// Whether any of the places is there.
    bool holdsLibrary() const;

private:
    QDir m_dir;
};

/// "custom", "offered.xml": what a place is called in its directory.
QString placeName(LibraryPlace place);

/// Adds the option --dir.
void addDirectoryOption(CommandLine &line);

/// Whether --dir names a library.
bool namesLibrary(const CommandLine &line);

/// The directory of --dir, or that of the home directory, whatever it holds.
LibraryDirectory chosenDirectory(const CommandLine &line);

enum class Missing
{
    IsAnError,
    IsCreated ///< a directory without a library becomes an empty one
};

/// The library that --dir names, or that of the home directory, which is laid out from the
/// delivered one when there is none yet: whole or not at all, also while another process does the
/// same. Nothing after a report of what is wrong.
std::optional<LibraryDirectory> openLibrary(const CommandLine &line, Missing missing,
                                            Console &console);

/// Whether nothing keeps loading from seeing what a directory holds. One that isn't there holds
/// nothing.
bool isListable(const QString &directory);

/// Loads these places into the registry, and nothing else: the other directories are nowhere, and
/// the other files are left out, above all the display configuration, which would reach the PROJ
/// definitions of spelled-out ellipsoids. No file is created.
///
/// False with the reason, and the registry as it was, when one of the directories cannot be listed:
/// loading would take it for an empty one.
bool loadPlaces(const LibraryDirectory &library, std::initializer_list<LibraryPlace> places,
                QString &reason);

} // namespace KelStd::cli
