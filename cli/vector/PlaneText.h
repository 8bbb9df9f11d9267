#pragma once

#include <cli/vector/VectorFiles.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>

namespace KelStd::cli::vector {

/// The system that positions are converted by, as a layer is held against it.
struct LayerSystem
{
    const Coord &coord;
    const SystemOrigin &origin;
    QString name;       ///< what messages call it
    QString geoidModel; ///< the one in use; empty for none
};

/// The facts of a system's plane; of kind `None` with the `reason` where it has no reference system
/// to be compared with. PROJ has to be loaded.
Reference referenceOf(const LayerSystem &system, VectorFiles &files, QString &reason);

/// What names the plane of a system, so that who reads easting and northing knows whose they are.
struct PlaneText
{
    QString code;       ///< of the database, where the plane is found to be that one; or empty
    QString definition; ///< without a code: a PROJ string; empty where none says it
};

/// PROJ has to be loaded.
PlaneText planeTextOf(const LayerSystem &system);

/// What to warn of where a file names the system by its code, for which the database has no datum
/// shift that is the system's; empty for nothing. `target`: the file.
QString shiftBesideCode(const LayerSystem &system, const QString &target);

} // namespace KelStd::cli::vector
