#pragma once

#include <KelStd/catalogue/CatalogueWords.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/SourceSystem.h>
#include <KelStd/catalogue/SystemImport.h>

namespace KelStd::catalogue {

/// Imports a system that has been found (see `Catalogue::importSystem`). Messages name what helps
/// by `words`.
ImportedSystem imported(ProjSession &session, ShiftMemory &memory, const SourceSystem &source,
                        const ImportOptions &options, const CatalogueWords &words);

} // namespace KelStd::catalogue
