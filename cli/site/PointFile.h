#pragma once

#include <cli/terminal/ExitStatus.h>

#include <KelStd/positions/ControlList.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class Console;

/// Reads all lines of a file, or of standard input ("-"), into a list. Nothing where each was
/// taken; otherwise how the command ends, after a report for each line that was refused: a list
/// with a gap is not used.
std::optional<ExitStatus> readPointFile(const QString &fileName,
                                        positions::ControlListReader &reader, Console &console);
std::optional<ExitStatus> readPointFile(const QString &fileName, positions::PairListReader &reader,
                                        Console &console);

} // namespace KelStd::cli
