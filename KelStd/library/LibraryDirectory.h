#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryFailure.h>

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <initializer_list>

namespace KelStd {

/// What a library is made of. One row each in LibraryDirectory.cpp.
enum class LibraryPlace
{
    Base,        ///< the file of the base system
    Ellipsoids,  ///< the directory of the ellipsoids
    Projections, ///< the directory of the projections
    Custom,      ///< the directory of the custom systems
    Standard,    ///< the directory of the standard systems
    Offered,     ///< the file of the systems offered when a project is created
    Display      ///< the file of the display configuration
};

/// A directory with the seven places of a library, as the program `kelstd` has them. The registry
/// itself takes any seven paths.
///
/// A value: it holds a path and nothing of what stands there.
class KELSTD_EXPORT LibraryDirectory
{
public:
    /// Of any path; one that is relative belongs to what is the current directory now.
    explicit LibraryDirectory(const QString &path) : m_dir(QDir(path).absolutePath()) {}

    /// "library" in the home directory of the host (`AppConfig`).
    static LibraryDirectory ofHome();

    /// "library" in the program directory of the host: what is delivered beside the program.
    static LibraryDirectory delivered();

    /// The absolute path of the directory, or of a place in it.
    QString path() const { return m_dir.absolutePath(); }
    /// The absolute path of that place.
    QString path(LibraryPlace place) const;

    /// Whether the directory is there.
    bool exists() const { return m_dir.exists(); }
    /// Whether any of the places is there.
    bool holdsLibrary() const;

private:
    QDir m_dir;
};

/// Libraries in directories. All of it belongs to the thread that uses the registry.
namespace library {

/// "custom", "offered.xml": what a place is called in its directory.
KELSTD_EXPORT QString placeName(LibraryPlace place);

/// What all places are called, in the order of `LibraryPlace`.
KELSTD_EXPORT QStringList placeNames();

/// Whether nothing keeps loading from seeing what a directory holds. One that isn't there holds
/// nothing.
KELSTD_EXPORT bool isListable(const QString &directory);

/// `NotListable` for a directory that is not `isListable`.
KELSTD_EXPORT LibraryFailure listingFailure(const QString &directory);

/// Loads these places into the registry, and nothing else: the other directories are nowhere, and
/// the other files are left out, above all the display configuration, which would reach the PROJ
/// definitions of spelled-out ellipsoids. No file is created.
///
/// `NotListable`, and the registry as it was, when one of the directories cannot be listed: loading
/// would take it for an empty one.
KELSTD_EXPORT LibraryFailure loadPlaces(const LibraryDirectory &library,
                                        std::initializer_list<LibraryPlace> places);

/// Makes the directories of the places that are directories, and those above them; what is there
/// stays. `NotWritable` at the first one that cannot be made.
KELSTD_EXPORT LibraryFailure createPlaces(const LibraryDirectory &library);

/// Makes `library` a copy of the `delivered` one when there is none yet: whole or not at all, also
/// while another process does the same. What killed processes have left of such copies is removed.
///
/// \param isNew becomes whether it was made now.
/// \return `NotListable` when nobody can see whether there is one, `NoLibrary` when something else
/// stands there or none is delivered, `NotWritable` when it cannot be made.
KELSTD_EXPORT LibraryFailure prepare(const LibraryDirectory &library,
                                     const LibraryDirectory &delivered, bool &isNew);

} // namespace library

} // namespace KelStd
