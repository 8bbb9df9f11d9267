#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/SourceSystem.h>
#include <KelStd/catalogue/SystemImport.h>
#include <KelStd/coord/Coord.h>

namespace KelStd::catalogue {

/// Makes the geoid grid of a compound system the system's geoid model, where the file is among the
/// models; else says which file misses. Does nothing without a vertical part.
void setVerticalPart(ProjSession &session, const SourceSystem &source, Coord &coord,
                     ImportReport &report);

} // namespace KelStd::catalogue
