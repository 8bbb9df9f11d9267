#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

namespace KelStd::cli {

class CommandLine;
class Console;

/// What the help of a command says about FILE.xml|NAME.
QString systemChoiceHelp();

/// Reads the system that `given` means: a file that exists, or else the system of exactly this name
/// in the library that --dir of the line names, or that of the home directory, custom before
/// standard. What is named like a file makes no library where there is none. False after a report.
bool readChosenSystem(const QString &given, const CommandLine &line, Coord &coord,
                      Console &console);

} // namespace KelStd::cli
