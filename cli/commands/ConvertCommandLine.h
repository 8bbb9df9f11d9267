#pragma once

#include <cli/positions/InputForm.h>
#include <cli/terminal/CommandLine.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// The options of 'kelstd convert' and its help.
CommandLine convertCommandLine();

/// "wgs84-llh, wgs84-xyz": the frames of positions, by the names that --from takes.
QString frameNames(const QString &separator);

/// "longitude [deg], latitude [deg], height [m]"
QString componentLabels(const InputForm &form);

} // namespace KelStd::cli
