#pragma once

#include <cli/conversion/ConversionSystem.h>
#include <cli/run/Notices.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Positions where the fit of a site does not hold, as notices of a run.
namespace KelStd::cli {

/// What is said of them: nothing without any, otherwise a warning with their count; two where
/// heights hold elsewhere than the plane. `firstNotice`: the number of the first notice.
/// `systemName`: what the system is called; empty where there is no other one.
QStringList extentRemarks(const Notices &notices, std::size_t firstNotice,
                          const ConversionSystem &system, const QString &systemName, qint64 taken,
                          const QString &inputName);

} // namespace KelStd::cli
