#pragma once

#include <KelStd/positions/ColumnSelection.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// Adds the options --frames, --fields and --factors.
void addColumnOptions(CommandLine &line);

/// What they say; nothing and the `mistake` when they cannot be followed.
std::optional<positions::ColumnSelection> columnOptions(const CommandLine &line, QString &mistake);

} // namespace KelStd::cli
