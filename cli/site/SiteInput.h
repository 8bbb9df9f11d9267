#pragma once

#include <cli/proj/ProjEnvironment.h>
#include <cli/systems/SystemChoice.h>
#include <cli/terminal/ExitStatus.h>

#include <KelStd/coord/ControlPoint.h>
#include <KelStd/positions/ControlList.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Adds --system and the option of the list, with this description.
void addSiteInputOptions(CommandLine &line, const QString &listOption, const QString &description);

/// What the help says about the list of points.
QString pointsHelp();

/// A system and a list of points, as two options of a command name them: --system, and another one
/// for the list. What is read of them, and in which order the reasons not to, is the same for all
/// commands. PROJ is ready while this lives.
class SiteInput
{
public:
    /// `listOption`: the long name of the list's option.
    explicit SiteInput(QString listOption) : m_listOption(std::move(listOption)) {}

    /// Takes the two options. Otherwise how the command ends, after a report.
    std::optional<ExitStatus> takeOptions(const CommandLine &line, Console &console);

    /// The two names, as they were given.
    QStringList names() const { return {m_systemName, m_listName}; }

    /// Reads the system, which is to be usable, and makes PROJ ready. Otherwise how the command
    /// ends, after a report.
    std::optional<ExitStatus> readSystem(const CommandLine &line, Console &console);

    /// Reads the control points. Where the plane of the system has a unit of its own, northings and
    /// eastings without a unit are in it, after a note.
    std::optional<ExitStatus> readPoints(ControlPoints &points, Console &console) const;

    /// Reads pairs of positions.
    std::optional<ExitStatus> readPairs(positions::PairListReader &reader, Console &console) const;

    /// What was read.
    const ChosenSystem &system() const { return m_system; }

private:
    QString m_listOption;
    QString m_systemName;
    QString m_listName;
    ChosenSystem m_system;
    std::optional<ProjEnvironment> m_environment;
};

} // namespace KelStd::cli
