#pragma once

#include <cli/vector/VectorFiles.h>

#include <memory>
#include <string>
#include <vector>

namespace KelStd::cli::vector {

/// The drivers of files that hold positions, by GDAL's names. Left out are spreadsheets and lists
/// of text, which the program reads itself, and what leads to other files or addresses.
const std::vector<const char *> &readDrivers();

/// See `VectorFiles::open`.
std::unique_ptr<LayerSource> openSource(const std::string &path, std::string &error);

} // namespace KelStd::cli::vector
