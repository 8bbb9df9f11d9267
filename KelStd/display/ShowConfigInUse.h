#pragma once

#include <KelStd/display/stShowConfig.h>

namespace KelStd::display {

/// The display configuration of `StandardLibrary`, by which the formatter prints. It outlives the
/// registry: static objects of a host may print and convert in their destructors.
stShowConfig &showConfigInUse();

} // namespace KelStd::display
