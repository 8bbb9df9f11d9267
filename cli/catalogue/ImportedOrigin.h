#pragma once

#include <KelStd/catalogue/SystemImport.h>
#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::cli {

/// What a document keeps of where an imported system came from.
SystemOrigin originOf(const catalogue::ImportReport &report);

} // namespace KelStd::cli
