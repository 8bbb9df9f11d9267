#pragma once

#include <QtCore/QString>

#include <optional>
#include <vector>

namespace KelStd::cli {

class CommandLine;
class Console;

/// A form of output, which an option of its name picks.
struct OutputForm
{
    const char *option;
    const char *description; ///< may have several lines
};

/// The forms of a command: the first is the default on a terminal, the second elsewhere.
using OutputForms = std::vector<OutputForm>;

/// Adds an option for each.
void addFormOptions(CommandLine &line, const OutputForms &forms);

/// The place in `forms` of the one that is to be printed; nothing, with the `mistake`, when several
/// are asked for.
std::optional<std::size_t> chosenForm(const CommandLine &line, const OutputForms &forms,
                                      const Console &console, QString &mistake);

} // namespace KelStd::cli
