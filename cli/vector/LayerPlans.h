#pragma once

#include <cli/conversion/LocationForms.h>
#include <cli/vector/LayerOutput.h>
#include <cli/vector/VectorInput.h>

#include <QtCore/QString>

#include <optional>

/// In which reference system and which units positions are written as a file.
namespace KelStd::cli::vector {

/// The unit of --length-unit, else the one of the system's plane: what it measures [m].
double planeUnitOf(const LayerSystem &system, const LocationOutput &output);

/// The same by its name.
QString planeUnitName(const LayerSystem &system, const LocationOutput &output);

/// That of a layer with the name `target` by a driver of the module. Nothing after a report where
/// other programs would read another system. PROJ has to be loaded.
std::optional<LayerPlan> layerPlan(const QString &target, const char *driver,
                                   const LayerSystem &system, const LocationOutput &output,
                                   VectorFiles &files, Console &console);

} // namespace KelStd::cli::vector
