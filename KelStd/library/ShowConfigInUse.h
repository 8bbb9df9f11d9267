#pragma once

#include <KelStd/library/stShowConfig.h>

namespace KelStd::library {

/// The display configuration of `StandardLibrary`, by which the formatter prints. It outlives the
/// registry: static objects of a host may print and convert in their destructors.
stShowConfig &showConfigInUse();

} // namespace KelStd::library
