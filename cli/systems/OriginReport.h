#pragma once

#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::cli {

class Report;

/// Where a system came from and where it is meant to be used, as far as its document says so; no
/// section where it says nothing.
void reportOrigin(const SystemOrigin &origin, Report &report);

} // namespace KelStd::cli
