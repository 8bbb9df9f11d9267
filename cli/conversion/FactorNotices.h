#pragma once

#include <cli/run/Notices.h>

#include <KelStd/location/GridFactors.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Factors that are not there, as the notices of a run.
namespace KelStd::cli {

/// The notice of a location's factors; none where all are there.
NoticeBits factorNotices(const GridFactors::Values &values);

/// What is said of them, a line for each reason with its count and its first position.
QStringList factorRemarks(const Notices &notices, const QString &inputName);

} // namespace KelStd::cli
