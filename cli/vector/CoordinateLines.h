#pragma once

#include <QtCore/QString>

class QIODevice;

namespace KelStd::cli::vector {

/// Of a drawing (DXF), what of its points and inserted blocks is no number; see
/// `damagedCoordinate`.
QString damageOfDrawing(QIODevice &file);

/// The same of an interchange file of tables (MIF).
QString damageOfMif(QIODevice &file);

} // namespace KelStd::cli::vector
