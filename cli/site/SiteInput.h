#pragma once

#include <cli/systems/SystemChoice.h>
#include <cli/terminal/ExitStatus.h>

#include <KelStd/coord/ControlPoint.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Adds --system and --points, with this description of the latter.
void addSiteInputOptions(CommandLine &line, const QString &pointsDescription);

/// What the help says about the list of points.
QString pointsHelp();

/// The system and the points that the options of a command name.
struct SiteInput
{
    ChosenSystem system;
    QString systemName; ///< as it was given
    QString pointsFile; ///< as it was given
    ControlPoints points;
};

/// Reads the points' file into `input`, whose system has been read: where its plane has a unit of
/// its own, northings and eastings without a unit are in it, after a note. Otherwise how the
/// command ends, after reports.
std::optional<ExitStatus> readPoints(SiteInput &input, Console &console);

} // namespace KelStd::cli
