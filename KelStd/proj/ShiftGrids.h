#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>
#include <KelStd/coord/AreaOfUse.h>
#include <KelStd/grid/ShiftGridFile.h>

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd {

/// Why a grid of datum shifts was not put where PROJ finds it.
enum class ShiftGridFailureKind
{
    None,       ///< no failure
    BadGrid,    ///< the file is not what its header says, or none of the formats
    NotAShift,  ///< a GeoTIFF file with one value a node: a geoid model or an image
    BadName,    ///< a name that no definition can hold
    NotReady,   ///< PROJ's resource directory is not there: PROJ was never made ready
    NameTaken,  ///< another file of that name is there
    NotWritable ///< the text has the file's own reason
};

/// A failure of one of the kinds of `ShiftGridFailureKind`.
using ShiftGridFailure = Failure<ShiftGridFailureKind>;

/// The grids of datum shifts that PROJ finds by their names: the NTv2 and GeoTIFF files among its
/// resource files, in the private PROJ directory of the home directory.
///
///     if (const ShiftGridFailure failure = ShiftGrids::add("/media/usb/BETA2007.gsb"))
///         return show(failure.text);
///
/// They look at the platform's configuration, which belongs to one thread: that of `ProjLib`. PROJ
/// need not be loaded. Failures have texts for people, translated in the context "QObject".
class KELSTD_EXPORT ShiftGrids
{
public:
    ShiftGrids() = delete;

    /// Where PROJ looks for them, whether it exists or not.
    static QDir directory();

    /// A file among PROJ's resource files.
    struct File
    {
        QString name;    ///< as definitions have it: "BETA2007.gsb"
        QString path;    ///< where it lies
        qint64 size = 0; ///< [bytes]
        ShiftGridFile::Format format = ShiftGridFile::Format::None; ///< of the file's layout
        std::optional<AreaOfUse> area; ///< the box around all of its grids
        QString fromSystem;            ///< as `ShiftGridFile` has it
        QString toSystem;              ///< as `ShiftGridFile` has it
        GridFailure failure;           ///< why PROJ is not to use it
    };

    /// All of them, in the order of their names: the files that are NTv2 or GeoTIFF by their first
    /// bytes. GeoTIFF files of one value a node, which are no datum shifts, are left out.
    static QList<File> files();

    /// What a file holds, wherever it lies.
    static File examine(const QString &path);

    /// What becomes of a file of the same name.
    enum class Existing
    {
        IsKept,    ///< another file of that name makes `add` fail
        IsReplaced ///< by the new one
    };

    /// Copies a grid to where PROJ finds it, under its own name, whole or not at all. Where the
    /// same bytes are there already nothing is done.
    ///
    /// What was added outlives a new installation of PROJ (`ProjLib::___InitializeEnviroment`).
    static ShiftGridFailure add(const QString &path, Existing existing = Existing::IsKept);
};

} // namespace KelStd
