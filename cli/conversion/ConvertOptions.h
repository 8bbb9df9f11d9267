#pragma once

#include <cli/conversion/LocationForms.h>
#include <cli/values/DisplayOptions.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QString>

#include <cstddef>
#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;
class PositionInput;

/// What the options of the command convert say.
struct ConvertOptions
{
    QString system;
    const positions::FrameRow *frame = nullptr; ///< of positions at a site that of the plane
    bool isFromSite = false;
    const LocationForm *form = nullptr;
    bool hasHeader = true;
    DisplayOptions display;
    std::size_t threads = 1;
    QString rejects; ///< the file's name; empty for none
};

/// Nothing, with the `mistake`, when the options cannot be followed.
std::optional<ConvertOptions> convertOptionsOf(const CommandLine &line, PositionInput &input,
                                               const Console &console, QString &mistake);

} // namespace KelStd::cli
