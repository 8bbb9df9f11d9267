#include <cli/commands/Command.h>

#include <cli/commands/ProgramCompletion.h>
#include <cli/commands/ProgramHelp.h>
#include <cli/commands/ProgramVersion.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/text/NearNames.h>

#include <QtCore/QList>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr Command commands[] = {
    {"convert", "Positions of one frame in all frames of a coordinate system", runConvert},
    {"formats", "The files of positions that are read and written", runFormats},
    {"format", "Values as the library shows them", runFormat},
    {"parse", "Values as the library reads them, with every digit", runParse},
    {"system show", "A coordinate system as a surveyor reads it", runSystemShow},
    {"system default", "Write a default transverse Mercator system", runSystemDefault},
    {"system search", "Find coordinate systems in PROJ's database", runSystemSearch},
    {"system shifts", "The datum shifts that a system can have", runSystemShifts},
    {"system import", "Make a document of a system that PROJ knows", runSystemImport},
    {"system export", "Write a system as WKT, PROJJSON or a PROJ string", runSystemExport},
    {"system compose", "Make a system from an ellipsoid and a projection", runSystemCompose},
    {"site fit", "Fit a building site to control points", runSiteFit},
    {"site check", "Hold independent points against a site", runSiteCheck},
    {"datum fit", "Fit the datum shift of a system to points", runDatumFit},
    {"library list", "The systems, ellipsoids and projections of a library", runLibraryList},
    {"library show", "An entry of a library", runLibraryShow},
    {"library add", "Add a document's record to a library", runLibraryAdd},
    {"library replace", "Replace an entry of a library", runLibraryReplace},
    {"library remove", "Remove an entry of a library", runLibraryRemove},
    {"library restore", "Bring delivered entries of a library back", runLibraryRestore},
    {"library check", "What loading a library skips, and why", runLibraryCheck},
    {"display show", "How tables print units, angles and decimals", runDisplayShow},
    {"display set", "Change a setting of how tables print", runDisplaySet},
    {"display reset", "Bring the defaults of all settings back", runDisplayReset},
    {"geoid height", "WGS84 positions with their heights above the geoid", runGeoidHeight},
    {"geoid list", "The geoid models that a coordinate system can name", runGeoidList},
    {"geoid info", "What is in a geoid grid", runGeoidInfo},
    {"geoid convert", "Turn a GGF grid into GTX", runGeoidConvert},
    {"grid add", "Put a grid of datum shifts where PROJ finds it", runGridAdd},
    {"grid list", "The grids of datum shifts that PROJ finds", runGridList},
    {"time leap-seconds", "The leap seconds, compared with the tz database", runLeapSeconds},
    {"time", "An instant in UTC, GPS time, GPS week and local time", runTime},
    {"doctor", "Is everything that a conversion needs in its place?", runDoctor},
};

QString nameOf(const Command &command)
{
    return QString::fromLatin1(command.name);
}

bool isHelpOption(const QString &word)
{
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

QList<const Command *> allCommands()
{
    QList<const Command *> all;
    for (const Command &command : commands)
        all += &command;
    return all;
}

/// The command whose name `words` begin with.
const Command *findCommand(const QStringList &words)
{
    for (const Command &command : commands) {
        const QStringList name = nameOf(command).split(QLatin1Char(' '));
        if (words.mid(0, name.size()) == name)
            return &command;
    }
    return nullptr;
}

/// The commands of two words that begin with `word`.
QList<const Command *> groupOf(const QString &word)
{
    QList<const Command *> group;
    for (const Command &command : commands) {
        if (nameOf(command).startsWith(word + QLatin1Char(' ')))
            group += &command;
    }
    return group;
}

QStringList namesOf(const QList<const Command *> &members)
{
    QStringList names;
    for (const Command *command : members)
        names += nameOf(*command);
    return names;
}

/// What to do instead of `words`, which are no command: the members of a group that they name, or
/// those that they are near to.
QString hintFor(const QStringList &words)
{
    const auto quoted = [](const QStringList &names) {
        QStringList list;
        for (const QString &name : names)
            list += QLatin1Char('\'') + name + QLatin1Char('\'');
        return list;
    };
    const QStringList group = namesOf(groupOf(words.first()));
    if (!group.isEmpty() && words.size() == 1)
        return QStringLiteral("there are ") + quoted(group).join(QLatin1String(", "));
    const QStringList all = namesOf(allCommands());
    const int maxWords = std::min(2, static_cast<int>(words.size()));
    for (int count = maxWords; count >= 1; --count) {
        const QStringList near = nearNames(words.mid(0, count).join(QLatin1Char(' ')), all);
        if (!near.isEmpty())
            return hintAt(quoted(near));
    }
    return QStringLiteral("'kelstd --help' lists the commands");
}

ExitStatus refuseCommand(const QStringList &words, Console &console)
{
    // The second word belongs to the name where there are such names, unless it is an option.
    const bool hasSecond = !groupOf(words.first()).isEmpty() && words.size() > 1
                           && !words.at(1).startsWith(QLatin1Char('-'));
    const QStringList given = words.mid(0, hasSecond ? 2 : 1);
    console.report(QStringLiteral("there is no command '%1'; %2")
                       .arg(given.join(QLatin1Char(' ')), hintFor(hasSecond ? given : words)));
    return ExitStatus::Usage;
}

/// The command with the words behind its name.
ExitStatus run(const Command &command, const QStringList &words, Console &console)
{
    return command.run(QStringList(QStringLiteral("kelstd ") + nameOf(command)) + words, console);
}

/// Whether words behind the name of a group ask for its help: --help, with a form or without.
bool asksForHelp(const QStringList &words)
{
    const bool hasForm = words.size() == 2 && helpForm(words.last());
    return isHelpOption(words.value(0)) && (words.size() == 1 || hasForm);
}

/// The help of a group: what its commands are for, or, in a form that was asked for, that of each.
ExitStatus showGroupHelp(const QList<const Command *> &group, const QStringList &words,
                         Console &console)
{
    const bool isList = words.size() == 1;
    for (const Command *member : group) {
        if (isList) {
            console.print(listed(*member));
            continue;
        }
        if (member != group.first())
            console.print(QString());
        run(*member, words, console);
    }
    return ExitStatus::Success;
}

ExitStatus runCommand(const QStringList &words, Console &console)
{
    if (const Command *command = findCommand(words)) {
        const auto nameWords = 1 + nameOf(*command).count(QLatin1Char(' '));
        return run(*command, words.mid(nameWords), console);
    }
    const QList<const Command *> group = groupOf(words.first());
    const QStringList behind = words.mid(1);
    return !group.isEmpty() && asksForHelp(behind) ? showGroupHelp(group, behind, console)
                                                   : refuseCommand(words, console);
}

/// An option that stands before the second word of a command goes behind it:
/// 'kelstd library --dir D list'.
QStringList withMemberSecond(QStringList words)
{
    const QString option = QStringLiteral("--dir");
    if (words.value(0) != QLatin1String("library") && words.value(0) != QLatin1String("display"))
        return words;
    const int length = words.value(1) == option                               ? 2
                       : words.value(1).startsWith(option + QLatin1Char('=')) ? 1
                                                                              : 0;
    if (length == 0 || words.size() <= 1 + length)
        return words;
    if (isHelpOption(words.at(1 + length)))
        return words.mid(0, 1) + words.mid(1 + length); // help is about no library
    words.move(1 + length, 1);
    return words;
}

/// `kelstd help` with these words behind it: those of a command, and then the form.
ExitStatus showHelp(QStringList words, Console &console)
{
    // For whoever writes a file for each command's manual page.
    if (words == QStringList(QStringLiteral("names"))) {
        for (const QString &name : namesOf(allCommands()))
            console.print(name);
        return ExitStatus::Success;
    }
    const auto form = helpForm(words.value(words.size() - 1));
    const QString word = form ? words.takeLast() : QString();
    if (words.isEmpty()) {
        const QString text = programHelp(allCommands(), form.value_or(HelpForm::Full));
        console.write(text.toUtf8() + '\n');
        return ExitStatus::Success;
    }
    words += QStringLiteral("--help");
    if (form)
        words += word;
    return runCommand(words, console);
}

ExitStatus dispatch(const QStringList &words, Console &console)
{
    const QString first = words.value(0);
    if (words.isEmpty()) {
        console.report(QStringLiteral("a command is missing; 'kelstd --help' lists them"));
        return ExitStatus::Usage;
    }
    if (isHelpOption(first) || first == QLatin1String("help"))
        return showHelp(words.mid(1), console);
    if (first == QLatin1String("complete"))
        return completeLine(words.mid(1), allCommands(), console);
    if (first == QLatin1String("--version") || first == QLatin1String("-v")) {
        for (const QString &text : versionLines())
            console.print(text);
        return ExitStatus::Success;
    }
    return runCommand(withMemberSecond(words), console);
}

} // namespace

ExitStatus runProgram(const QStringList &arguments)
{
    Console console;
    const ExitStatus status = dispatch(arguments.mid(1), console);
    if (!console.flush()) {
        // Whoever runs the command again because of its status would be refused, or change twice.
        const bool isDone = status == ExitStatus::Success && console.hasUnreportedChange();
        return isDone ? ExitStatus::Unreported : ExitStatus::Environment;
    }
    if (status == ExitStatus::Stopped)
        streams::endAsTold();
    return status;
}

} // namespace KelStd::cli
