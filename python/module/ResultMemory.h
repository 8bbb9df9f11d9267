#pragma once

#include <pybind11/numpy.h>

#include <cstddef>

namespace KelStd::python {

/// A new array of rows and columns, which is not touched before it is filled.
///
/// The memory of a large one that nobody needs any more is kept for the next of about its size, one
/// at a time and 128 MiB at most: to be given pages anew by the system costs as much as a tenth of
/// the conversion that fills them. With the interpreter's lock.
pybind11::array_t<double> newResult(std::size_t rows, std::size_t columns);

} // namespace KelStd::python
