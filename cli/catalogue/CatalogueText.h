#pragma once

#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/SystemImport.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// What the catalogue of systems says, as a surveyor reads it.
namespace KelStd::cli {

/// A line for each system, in columns: code, kind, name, area.
QStringList tableOf(const std::vector<catalogue::FoundSystem> &systems);

/// A line for each datum shift, in columns: number, code, kind, accuracy, coverage, name and what
/// it lacks.
QStringList tableOf(const std::vector<catalogue::DatumShift> &shifts);

/// The whole report of an import: what was taken, how good it is, what would be better.
QStringList reportLines(const catalogue::ImportReport &report);

/// What has to be known before the numbers of an import are used: its shift and how accurate it is,
/// what misses of its heights, the warnings.
QStringList essentialLines(const catalogue::ImportReport &report);

/// "0.3 m", or "accuracy not known".
QString accuracyText(const std::optional<double> &accuracy);

} // namespace KelStd::cli
