#pragma once

#include <cli/conversion/EpochSource.h>
#include <cli/conversion/LocationForms.h>
#include <cli/values/DisplayOptions.h>

#include <KelStd/positions/ColumnSelection.h>
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
    std::optional<QString> to; ///< the system whose frames are printed; nothing for the same one
    const positions::FrameRow *frame = nullptr; ///< of positions at a site that of the plane
    bool isFromSite = false;
    bool isFrameGiven = false; ///< or the default was taken
    const LocationForm *form = nullptr;
    bool hasHeader = true;
    DisplayOptions display;
    positions::ColumnSelection columns;
    std::size_t threads = 1;
    QString rejects;              ///< the file's name; empty for none
    std::optional<double> height; ///< of positions that have none [m]
    bool isNmea = false;
    EpochSource::Names epochNames = EpochSource::Names::Number;
};

/// Nothing, with the `mistake`, when the options cannot be followed. `formOption`: the form of a
/// file that is written instead of printing; empty for none.
std::optional<ConvertOptions> convertOptionsOf(const CommandLine &line, const QString &formOption,
                                               PositionInput &input, const Console &console,
                                               QString &mistake);

} // namespace KelStd::cli
