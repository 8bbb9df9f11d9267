#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// Adds the option --skip of commands that read positions.
void addSkipOption(CommandLine &line);

/// How many lines at the beginning of the input are passed over; nothing and the `mistake` for
/// what is no number of lines.
std::optional<qint64> skippedLines(const CommandLine &line, QString &mistake);

} // namespace KelStd::cli
