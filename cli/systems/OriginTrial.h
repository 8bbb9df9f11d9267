#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// Whether positions around the projection's origin can be converted there and back. PROJ has to be
/// ready. False with the reason.
bool convertsAroundOrigin(const Coord &coord, QString &reason);

} // namespace KelStd::cli
