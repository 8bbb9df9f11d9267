#pragma once

#include <cli/vector/VectorFiles.h>

#include <QtCore/QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace KelStd::cli::vector {

/// Which layer of a file is meant: the one of the name that is `wanted`, or where that is empty the
/// only one with points. Nothing, with the `mistake`, where there is none or more than one. `file`:
/// what messages call it.
std::optional<std::size_t> chosenLayer(const std::vector<Layer> &layers, const QString &wanted,
                                       const QString &file, QString &mistake);

} // namespace KelStd::cli::vector
