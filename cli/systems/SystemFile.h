#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/location/SystemDefinitions.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// Reads a coordinate system and its origin from a document, and lists what is not understood as it
/// is written; false with the reason.
bool readSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                QList<io::DocumentFinding> &findings, QString &reason);

/// `location::definitionsOf`, or nothing and the reason, also of what that raises.
std::optional<location::SystemDefinitions> definitionsOf(const Coord &coord, QString &reason);

/// `location::acceptedByProj`, with the reason and how to learn more.
bool acceptedByProj(const location::SystemDefinitions &definitions, QString &reason);

} // namespace KelStd::cli
