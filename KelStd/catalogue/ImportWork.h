#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/CatalogueWords.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/SourceSystem.h>
#include <KelStd/catalogue/SystemImport.h>

#include <vector>

namespace KelStd::catalogue {

/// What an import has found out so far.
struct ImportWork
{
    ProjSession &session;
    ShiftMemory &memory;
    const SourceSystem &source;
    const ImportOptions &options;
    const CatalogueWords &words;
    ImportedSystem &result;
    std::vector<ShiftCandidate> candidates; ///< for the datum shift, best first
    CarriedShift shift;                     ///< the one that is taken
    SystemArea shiftArea;                   ///< of that one, where it is one of the database
    double primeMeridian = 0.0;             ///< [deg]
    bool fits = false;                      ///< published parameters are fitted

    /// False, for the caller to return.
    bool refuse(CatalogueFailureKind kind, const QString &text)
    {
        result.refusal = {kind, text};
        result.system.reset();
        return false;
    }

    void warn(const QString &text) { result.report.warnings += text; }
};

} // namespace KelStd::catalogue
