#pragma once

#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/SystemImport.h>

#include <QtCore/QByteArray>

/// What the catalogue of systems says, as JSON: an object in one line, with its end.
namespace KelStd::cli {

/// Keys: code, name, kind, area, area_name, deprecated.
QByteArray jsonLine(const catalogue::FoundSystem &system);

/// Keys: number, code, name, kind, accuracy_m, coverage, grids, available.
QByteArray jsonLine(const catalogue::DatumShift &shift);

/// The report of an import. A refused one has the keys `refused` and `reason` besides, and, where
/// it lacks grids, `grids` with their names.
QByteArray jsonLine(const catalogue::ImportedSystem &imported);

} // namespace KelStd::cli
