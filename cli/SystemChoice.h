#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>

namespace KelStd::cli {

class Console;

/// What the help of a command says about FILE.xml|NAME.
QString systemChoiceHelp();

/// Reads the system that `given` means: a file that exists, or else the system of exactly this name
/// in the library of the home directory, custom before standard. What is named like a file makes no
/// library where there is none. False after a report.
bool readChosenSystem(const QString &given, Coord &coord, Console &console);

} // namespace KelStd::cli
