#include <cli/commands/Command.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/StandardStreams.h>

#include <QtCore/QList>
#include <QtCore/QVector>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr Command commands[] = {
    {"convert", "Positions of one frame in all frames of a coordinate system", runConvert},
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
    {"library check", "What loading a library skips, and why", runLibraryCheck},
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

/// A command's line in a list.
QString listed(const Command &command)
{
    return QStringLiteral("  %1  %2")
        .arg(nameOf(command), -17)
        .arg(QString::fromLatin1(command.summary));
}

bool isHelpOption(const QString &word)
{
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

QString programHelp()
{
    QString help = QStringLiteral(
        "Usage: kelstd COMMAND [OPTIONS] [ARGUMENTS]\n"
        "Coordinate systems for GNSS surveying: a measured position in every frame.\n"
        "\n"
        "Commands:\n");
    for (const Command &command : commands)
        help += listed(command) + QLatin1Char('\n');
    help += QStringLiteral(
        "\n"
        "Options:\n"
        "  -h, --help      Show this help; 'kelstd help COMMAND' that of a command.\n"
        "  -v, --version   Show the version.\n"
        "\n"
        "Exit status:\n"
        "  0  everything was done\n"
        "  1  some positions or values failed; standard error lists them with their\n"
        "     lines. Or the leap seconds differ from the list, a change of the library\n"
        "     was refused, or its check found something\n"
        "  2  the command line, the input's header line or a time was not understood\n"
        "  3  no PROJ ('kelstd doctor' tells why), no usable coordinate system, geoid\n"
        "     model or library, or output that cannot be written\n"
        "  4  the change was made, but standard output cannot be written to say so;\n"
        "     standard error does\n"
        "\n"
        "Environment:\n"
        "  KELSTD_HOME_DIR  Directory of the user's own files, with the library; PROJ is\n"
        "                   unpacked into it.\n"
        "                   Default: the user's application-data directory.\n"
        "  KELSTD_BIN_DIR   Directory of the program's files, with proj/proj.zip.\n"
        "                   Default: the program's own.\n"
        "  PROJ_DEBUG       Set to 1, 2 or 3, it lets PROJ's notes on the coordinate\n"
        "                   systems through to standard error.");
    return help;
}

/// How many letters have to be added, removed or changed to make one word of the other.
int editDistance(const QString &left, const QString &right)
{
    QVector<int> row(right.size() + 1);
    for (int i = 0; i < row.size(); ++i)
        row[i] = i;
    for (int i = 0; i < left.size(); ++i) {
        int diagonal = row[0];
        row[0] = i + 1;
        for (int j = 0; j < right.size(); ++j) {
            const int changed = diagonal + (left.at(i) == right.at(j) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.last();
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

/// The commands that `words` may have meant.
QStringList similarCommands(const QStringList &words)
{
    constexpr int maxTypingErrors = 2;
    QStringList names;
    for (const Command &command : commands) {
        const QString name = nameOf(command);
        const int nameWords = 1 + name.count(QLatin1Char(' '));
        const QString given = words.mid(0, nameWords).join(QLatin1Char(' '));
        if (editDistance(given, name) <= maxTypingErrors)
            names += QLatin1Char('\'') + name + QLatin1Char('\'');
    }
    if (names.isEmpty()) {
        for (const Command *command : groupOf(words.first()))
            names += QLatin1Char('\'') + nameOf(*command) + QLatin1Char('\'');
    }
    return names;
}

ExitStatus refuseCommand(const QStringList &words, Console &console)
{
    // The second word belongs to the name where there are such names, unless it is an option.
    const bool hasSecond = !groupOf(words.first()).isEmpty() && words.size() > 1
                           && !words.at(1).startsWith(QLatin1Char('-'));
    const QStringList similar = similarCommands(words);
    console.report(QStringLiteral("there is no command '%1'; %2")
                       .arg(words.mid(0, hasSecond ? 2 : 1).join(QLatin1Char(' ')),
                            similar.isEmpty() ? QStringLiteral("'kelstd --help' lists the commands")
                                              : QStringLiteral("did you mean %1?")
                                                    .arg(similar.join(QLatin1String(" or ")))));
    return ExitStatus::Usage;
}

ExitStatus runCommand(const QStringList &words, Console &console)
{
    const Command *command = findCommand(words);
    if (command == nullptr) {
        const QList<const Command *> group = groupOf(words.first());
        if (group.isEmpty() || words.size() != 2 || !isHelpOption(words.last()))
            return refuseCommand(words, console);
        for (const Command *member : group)
            console.print(listed(*member));
        return ExitStatus::Success;
    }
    const QString name = nameOf(*command);
    const int nameWords = 1 + name.count(QLatin1Char(' '));
    return command->run(QStringList(QStringLiteral("kelstd ") + name) + words.mid(nameWords),
                        console);
}

/// An option that stands before the second word of a command goes behind it:
/// 'kelstd library --dir D list'.
QStringList withMemberSecond(QStringList words)
{
    const QString option = QStringLiteral("--dir");
    if (words.value(0) != QLatin1String("library"))
        return words;
    const int length = words.value(1) == option                               ? 2
                       : words.value(1).startsWith(option + QLatin1Char('=')) ? 1
                                                                              : 0;
    if (length == 0 || words.size() <= 1 + length)
        return words;
    words.move(1 + length, 1);
    return words;
}

ExitStatus dispatch(const QStringList &words, Console &console)
{
    const QString first = words.value(0);
    if (words.isEmpty()) {
        console.report(QStringLiteral("a command is missing; 'kelstd --help' lists them"));
        return ExitStatus::Usage;
    }
    const bool isHelp = first == QLatin1String("help");
    if (isHelpOption(first) || (isHelp && words.size() == 1)) {
        console.print(programHelp());
        return ExitStatus::Success;
    }
    if (isHelp)
        return runCommand(words.mid(1) + QStringList(QStringLiteral("--help")), console);
    if (first == QLatin1String("--version") || first == QLatin1String("-v")) {
        console.print(QStringLiteral("kelstd " KELSTD_VERSION));
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
