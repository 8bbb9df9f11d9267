#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/SystemImport.h>
#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::catalogue {

/// What a document keeps of where an imported system came from. May be called on any thread.
KELSTD_EXPORT SystemOrigin originOf(const ImportReport &report);

} // namespace KelStd::catalogue
