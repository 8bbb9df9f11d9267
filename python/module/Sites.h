#pragma once

#include <pybind11/pybind11.h>

namespace KelStd::python {

/// Adds the functions that fit sites and hold points against them.
void addSites(pybind11::module_ &module);

} // namespace KelStd::python
