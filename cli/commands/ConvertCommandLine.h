#pragma once

#include <cli/terminal/CommandLine.h>

#include <KelStd/positions/InputForm.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// The options of 'kelstd convert' and its help.
CommandLine convertCommandLine();

/// "wgs84-llh, wgs84-xyz": the frames of positions, by the names that --from takes.
QString frameNames(const QString &separator);

/// "longitude [deg], latitude [deg], height [m]"
QString componentLabels(const positions::InputForm &form);

} // namespace KelStd::cli
