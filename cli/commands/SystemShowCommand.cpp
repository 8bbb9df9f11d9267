#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/systems/SystemChoice.h>
#include <cli/systems/SystemProposals.h>
#include <cli/systems/SystemReport.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

ExitStatus runSystemShow(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] FILE.xml|NAME"),
                     QStringLiteral("Shows a coordinate system as a surveyor reads it: where it "
                                    "came from, its\nrecords, the PROJ definitions made of them, "
                                    "and what has to be known before its\nnumbers are trusted."),
                     systemChoiceHelp() + QStringLiteral("\n\n") + reviewHelp());
    line.setPositionals({systemValues()});
    line.setExamples(QStringLiteral("kelstd system show \"Amersfoort / RD New\""),
                     QStringLiteral("kelstd system show site.xml"));
    addDirectoryOption(line);
    addLenientOption(line);
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString given = line.positionals().value(0);
    if (given.isEmpty())
        return line.refuse(QStringLiteral("the coordinate system's FILE.xml is missing"), console);

    const auto chosen = readChosenSystem(given, line, console);
    if (!chosen || !mayBeUsed(chosen->review, line, console))
        return ExitStatus::Environment;
    showSystem(chosen->coord, chosen->origin, console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
