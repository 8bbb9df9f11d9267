#pragma once

#include <cli/run/Notices.h>

#include <KelStd/location/GridFactors.h>
#include <KelStd/positions/FactorColumns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// Factors that are not there, as the notices of a run.
namespace KelStd::cli {

/// The notice of a location's factors; none where all that are printed are there.
NoticeBits factorNotices(const GridFactors::Values &values,
                         const std::vector<const positions::FactorColumn *> &printed);

/// What is said of them, a line for each reason with its count and its first position.
QStringList factorRemarks(const Notices &notices, const QString &inputName);

} // namespace KelStd::cli
