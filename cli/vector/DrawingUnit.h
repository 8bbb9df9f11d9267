#pragma once

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli::vector {

/// What one unit of a DXF drawing measures [m]: by the comment of the program's own drawings, else
/// by the header's variable $INSUNITS (AutoCAD's DXF Reference). Nothing where neither says so.
std::optional<double> drawingUnit(const QString &path);

} // namespace KelStd::cli::vector
