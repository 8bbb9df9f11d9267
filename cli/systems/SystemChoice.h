#pragma once

#include <cli/systems/RecordReview.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// What the help of a command says about FILE.xml|NAME.
QString systemChoiceHelp();

/// A system, and what of its document is not understood as it is written.
struct ChosenSystem
{
    Coord coord;
    SystemOrigin origin; ///< as its document has it, or its import
    RecordReview review;
};

/// Reads the system that `given` means: a file that exists, or else the system of exactly this name
/// in the library that --dir of the line names, or that of the home directory, custom before
/// standard; or else the one there whose origin has this code ("EPSG:28992"); or else a system that
/// PROJ's database or a definition gives, which needs PROJ not to be loaded. What is named like a
/// file makes no library where there is none. Nothing after a report. Whether it may be used is for
/// `mayBeUsed` to say.
std::optional<ChosenSystem> readChosenSystem(const QString &given, const CommandLine &line,
                                             Console &console);

/// Whether the loaded PROJ can convert by the system that `name` meant, and the system is
/// understood as it is written, or --lenient. False after a report.
bool canBeUsed(const Coord &coord, const RecordReview &review, const QString &name,
               const CommandLine &line, Console &console);

} // namespace KelStd::cli
