#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/SourceSystem.h>
#include <KelStd/catalogue/SystemImport.h>

namespace KelStd::catalogue {

/// Imports a system that has been found (see `Catalogue::importSystem`).
ImportedSystem imported(ProjSession &session, ShiftMemory &memory, const SourceSystem &source,
                        const ImportOptions &options);

} // namespace KelStd::catalogue
