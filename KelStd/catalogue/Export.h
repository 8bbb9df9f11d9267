#pragma once

#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/SystemExport.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <optional>

namespace KelStd::catalogue {

/// Writes a system as a text (see `Catalogue::exportSystem`).
std::optional<ExportedSystem> exported(ProjSession &session, ShiftMemory &memory,
                                       const Coord &coord, ExportForm form, const QString &code,
                                       const std::optional<SystemOrigin::PlaneUnit> &planeUnit,
                                       CatalogueFailure *failure);

} // namespace KelStd::catalogue
