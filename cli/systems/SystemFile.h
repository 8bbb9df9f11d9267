#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/io/DocumentReview.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// Reads a coordinate system from its document, and lists what is not understood as it is written;
/// false with the reason.
bool readSystem(const QString &fileName, Coord &coord, QList<io::DocumentFinding> &findings,
                QString &reason);

/// The four PROJ definitions of a system.
struct SystemDefinitions
{
    QString wgs84Geographic;
    QString wgs84Cartesian;
    QString localGeographic;
    QString localProjected;
};

/// The definitions, or nothing and the reason: a value that cannot be written, or a definition that
/// is longer than PROJ is given.
std::optional<SystemDefinitions> definitionsOf(const Coord &coord, QString &reason);

/// Whether the loaded PROJ makes transformations of the definitions. It may still refuse every
/// position, which is known only by trying one.
bool acceptedByProj(const SystemDefinitions &definitions, QString &reason);

} // namespace KelStd::cli
