#pragma once

#include <KelStd/positions/PrintOptions.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// "dms", "degree", ...
QStringList angleStyleNames();

/// The unit of that name on the command line; null for one that is not offered there.
const LengthUnit *findOfferedLengthUnit(const QString &option);

/// How the numbers of locations are to be printed, as the options of a command say it.
struct DisplayOptions : positions::PrintOptions
{
    /// Adds the options --format, --precision, --angle and --length-unit.
    static void addTo(CommandLine &line);

    /// What the options say; nothing and the `mistake` when they cannot be followed.
    static std::optional<DisplayOptions> from(const CommandLine &line, QString &mistake);
};

} // namespace KelStd::cli
