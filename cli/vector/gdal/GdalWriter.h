#pragma once

#include <cli/vector/VectorFiles.h>

#include <memory>
#include <string>
#include <vector>

namespace KelStd::cli::vector {

/// The drivers that write, by GDAL's names.
const std::vector<const char *> &writtenDrivers();

/// See `VectorFiles::create`.
std::unique_ptr<LayerWriter> createLayer(const NewLayer &layer, std::string &error);

} // namespace KelStd::cli::vector
