#pragma once

#include <cli/conversion/ConversionSystem.h>
#include <cli/conversion/ConvertOptions.h>

#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/PlaneUnit.h>

#include <optional>

namespace KelStd::cli {

/// What the lines of a list hold for the system `given`, where their headings do not say another
/// unit: lengths in the unit of --length-unit, as they are printed. Without the option northing and
/// easting are in the `planeUnit` where there is one.
positions::InputForm lineForm(const ConvertOptions &options, const ConversionSystem &given,
                              const std::optional<positions::PlaneUnit> &planeUnit);

} // namespace KelStd::cli
