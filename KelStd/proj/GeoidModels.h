#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd {

/// Why a geoid model gives no heights.
enum class GeoidModelFailureKind
{
    None,          ///< no failure
    NotFound,      ///< no folder has a file of that name, or the name leads out of the folders
    BadPath,       ///< its path has a character that PROJ does not take for a part of one
    BadGrid,       ///< the file is empty, or not what its header says
    NotConverted,  ///< the GGF grid is whole, but its GTX file cannot be written beside it
    RefusedByProj, ///< PROJ makes nothing of the file that is used
    NotLoaded      ///< PROJ is not loaded
};

/// A failure of one of the kinds of `GeoidModelFailureKind`.
using GeoidModelFailure = Failure<GeoidModelFailureKind>;

/// The geoid models that a coordinate system can name: the files of the folder "geoid_model_list"
/// in the home directory and in the program directory, which the platform's configuration names.
///
/// Every question looks at the files anew. PROJ need not be ready, unless an operation says so.
/// They look at the platform's configuration, which belongs to one thread: that of `ProjLib`.
/// Failures have texts for people, translated in the context "QObject".
class KELSTD_EXPORT GeoidModels
{
public:
    GeoidModels() = delete;

    /// A name is looked up in the user's folder first.
    enum class Folder
    {
        Home,   ///< the home directory's
        Program ///< the program directory's
    };

    /// Whether it exists or not.
    static QDir directory(Folder folder);

    /// Whether somebody who typed `name` means a file, whatever models there are: one that begins
    /// with "./" or "../".
    static bool meansFile(const QString &name);

    /// The names of all models, in order: GTX and GGF files by their names, and files named ".tif"
    /// or ".tiff" that begin like a GeoTIFF file. A model of a subfolder has its path from the
    /// folder. What a GGF grid was converted to is not another model.
    static QStringList names();

    /// A file of a model, as it was put into its folder.
    struct File
    {
        QString path;                 ///< where it lies
        Folder folder = Folder::Home; ///< in which of the two folders it lies
        GeoidModelFailure failure; ///< why it cannot be used, as far as that is seen without PROJ
        bool endsInZeros = false;  ///< of one that can be used (see `GridFile::endsInZeros`)
    };

    /// The files of that name, the one that is used first. Empty for a name that means a
    /// file (`meansFile`), and for one that leads out of the folders.
    static QList<File> files(const QString &name);

    /// The grid file of the model of that name, which PROJ is given: what the host's
    /// `ResourceQuery` says, which may create the folder and write a GTX file beside a GGF grid.
    /// Nothing, with the reason in `failure` (when given), when there is none or it cannot be used.
    static std::optional<QString> find(const QString &name, GeoidModelFailure *failure = nullptr);

    /// Why a file cannot be used as a grid, as far as that is seen without PROJ: of a GTX or GGF
    /// file by its header, of any other one when it is not there or empty.
    static GeoidModelFailure examine(const QString &path);

    /// Where the GTX file of a GGF model's file stands, or is to.
    static QString conversionOf(const QString &ggf);

    /// Lets PROJ, which has to be loaded, open the grid file as `ProjLib::Calc_geoid_diff` does, on
    /// its thread. What PROJ says meanwhile goes to the host's log.
    static GeoidModelFailure tryInProj(const QString &path);
};

} // namespace KelStd
