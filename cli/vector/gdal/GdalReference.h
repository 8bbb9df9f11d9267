#pragma once

#include <cli/vector/VectorFiles.h>

#include <ogr_spatialref.h>

#include <string>

namespace KelStd::cli::vector {

/// The facts of a reference system; those of none for null.
Reference factsOf(const OGRSpatialReference *system);

/// A code or a definition as GDAL reads it, with longitude and easting first. False with the
/// `error`.
bool readReference(const std::string &text, OGRSpatialReference &system, std::string &error);

/// Whether two definitions have the same datum, ellipsoid and prime meridian.
bool haveSameDatum(const std::string &one, const std::string &other);

} // namespace KelStd::cli::vector
