#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/SystemImport.h>

#include <QtCore/QByteArray>

/// What the catalogue of systems says, as JSON: an object in one line, with its end. May be
/// called on any thread.
namespace KelStd::catalogue {

/// Keys: code, name, kind, area, area_name, deprecated.
KELSTD_EXPORT QByteArray jsonLine(const FoundSystem &system);

/// Keys: number, code, name, kind, accuracy_m, coverage, grids, available.
KELSTD_EXPORT QByteArray jsonLine(const DatumShift &shift);

/// The report of an import. A refused one has the keys `refused` and `reason` besides, and, where
/// it lacks grids, `grids` with their names.
KELSTD_EXPORT QByteArray jsonLine(const ImportedSystem &imported);

} // namespace KelStd::catalogue
