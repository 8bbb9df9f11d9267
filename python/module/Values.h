#pragma once

#include <pybind11/pybind11.h>

namespace KelStd::python {

/// Adds the functions that format and parse values and list leap seconds.
void addValues(pybind11::module_ &module);

} // namespace KelStd::python
