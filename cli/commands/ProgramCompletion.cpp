#include <cli/commands/ProgramCompletion.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Completion.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShellWords.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString help = QStringLiteral("help");

QStringList wordsOf(const Command &command)
{
    return QString::fromLatin1(command.name).split(QLatin1Char(' '));
}

QString remarkOf(const Command &command)
{
    return QString::fromLatin1(command.summary);
}

/// The words that can stand behind those of a command's name that are typed.
QList<Proposal> namesBehind(const QStringList &typed, const QList<const Command *> &commands)
{
    QList<Proposal> names;
    for (const Command *command : commands) {
        const QStringList words = wordsOf(*command);
        if (words.size() <= typed.size() || words.mid(0, typed.size()) != typed)
            continue;
        const QString word = words.at(typed.size());
        // What stands behind the word of a group, for a remark on it.
        const QStringList members = words.mid(typed.size() + 1);
        const auto known = std::find_if(names.begin(), names.end(), [&word](const Proposal &each) {
            return each.text == word;
        });
        if (known == names.end())
            names.append({word, members.isEmpty() ? remarkOf(*command) : members.first()});
        else if (members.isEmpty())
            known->remark = remarkOf(*command);
        else
            known->remark += QLatin1String(", ") + members.first();
    }
    return names;
}

/// The command that words begin with: the one of the longest name.
const Command *commandOf(const QStringList &words, const QList<const Command *> &commands)
{
    const Command *found = nullptr;
    for (const Command *command : commands) {
        const QStringList name = wordsOf(*command);
        if (words.mid(0, name.size()) == name
            && (found == nullptr || wordsOf(*found).size() < name.size()))
            found = command;
    }
    return found;
}

/// What the program itself takes.
QList<Proposal> programWords(const QList<const Command *> &commands)
{
    return namesBehind({}, commands)
           + QList<Proposal>{{help, QStringLiteral("Help on a command")},
                             {QStringLiteral("--help"), QStringLiteral("Show the help")},
                             {QStringLiteral("--version"), QStringLiteral("Show the versions")}};
}

Completion helpCompletion(const QStringList &behind, const QString &word,
                          const QList<const Command *> &commands)
{
    QList<Proposal> proposals = namesBehind(behind, commands);
    if (behind.isEmpty() || commandOf(behind, commands) != nullptr) {
        proposals.append({QStringLiteral("full"), QStringLiteral("All of the help")});
        proposals.append({QStringLiteral("man"), QStringLiteral("The page of the manual")});
    }
    return {beginningWith(word, proposals)};
}

/// How a line goes on whose words, behind the program's own, are these.
Completion completionOfLine(QStringList before, const QString &word,
                            const QList<const Command *> &commands, Console &console)
{
    if (before.isEmpty())
        return {beginningWith(word, programWords(commands))};
    if (before.first() == help)
        return helpCompletion(before.mid(1), word, commands);
    const Command *command = commandOf(before, commands);
    Completion completion;
    if (command != nullptr) {
        const QStringList name = wordsOf(*command);
        CommandDescription description;
        console.setDescription(&description);
        command->run(QStringList(QLatin1String("kelstd ") + name.join(QLatin1Char(' '))), console);
        console.setDescription(nullptr);
        completion = completionOf(description, before.mid(name.size()), word);
    }
    // "time" is a command and the beginning of the name of another one.
    completion.proposals =
        beginningWith(word, namesBehind(before, commands)) + completion.proposals;
    return completion;
}

/// The files and directories whose names begin as a text does.
QList<Proposal> filesBeginningWith(const QString &beginning)
{
    const auto end = beginning.lastIndexOf(QLatin1Char('/')) + 1;
    const QString folder = beginning.left(end);
    const QString name = beginning.mid(end);
    const QDir dir(folder.isEmpty() ? QStringLiteral(".") : onDisk(folder));
    QDir::Filters wanted = QDir::AllEntries | QDir::NoDotAndDotDot;
    if (name.startsWith(QLatin1Char('.')))
        wanted |= QDir::Hidden;
    QList<Proposal> files;
    for (const QFileInfo &entry : dir.entryInfoList(wanted)) {
        if (entry.fileName().startsWith(name)) {
            files.append({folder + entry.fileName()
                              + (entry.isDir() ? QLatin1String("/") : QLatin1String("")),
                          QString()});
        }
    }
    return files;
}

bool isPrintable(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

QString instructions(const Completion &completion)
{
    QStringList words;
    if (completion.files == Values::Files::All)
        words += QStringLiteral("files");
    if (completion.files == Values::Files::Directories)
        words += QStringLiteral("directories");
    if (completion.isOpen)
        words += QStringLiteral("open");
    return words.join(QLatin1Char(' '));
}

/// For bash, which replaces a part of a word by what stands there on the line.
void printForBash(Completion completion, const ShellWords &line, Console &console)
{
    // Where nothing else is proposed, bash finds the files by itself.
    if (completion.files == Values::Files::All && !completion.proposals.isEmpty()) {
        completion.proposals += filesBeginningWith(line.words.last());
        completion.isOpen = completion.isOpen
                            || (completion.proposals.size() == 1
                                && completion.proposals.first().text.endsWith(QLatin1Char('/')));
    }
    QStringList replacing;
    bool needsAny = false;
    for (const Proposal &each : completion.proposals) {
        replacing += each.text.mid(line.kept);
        needsAny = needsAny || needsQuotes(replacing.last());
    }
    console.print(instructions(completion));
    for (const QString &text : replacing) {
        const QString quoted = quotedForShell(text, line.quote, needsAny);
        if (!quoted.isNull() && isPrintable(quoted))
            console.write(quoted.toUtf8() + '\n');
    }
}

void printProposals(const Completion &completion, Console &console)
{
    console.print(instructions(completion));
    for (const Proposal &each : completion.proposals) {
        if (isPrintable(each.text) && isPrintable(each.remark))
            console.write((each.text + QLatin1Char('\t') + each.remark).toUtf8() + '\n');
    }
}

} // namespace

ExitStatus completeLine(const QStringList &arguments, const QList<const Command *> &commands,
                        Console &console)
{
    const QString shell = arguments.value(0);
    const bool isBash = shell == QLatin1String("bash") && arguments.size() == 3;
    const bool isOther = shell == QLatin1String("zsh") || shell == QLatin1String("fish");
    if (!isBash && !(isOther && arguments.size() > 1)) {
        console.report(QStringLiteral("'kelstd complete' is for the shells that complete its "
                                      "command lines: 'bash BREAKS LINE', 'zsh WORD...' or "
                                      "'fish WORD...' is expected"));
        return ExitStatus::Usage;
    }
    ShellWords line;
    if (isBash) {
        line = ShellWords::of(arguments.at(2), arguments.at(1));
        line.words.removeFirst(); // the program's own name
    } else {
        for (const QString &word : arguments.mid(1))
            line.words += unquoted(word);
    }
    if (line.words.isEmpty()) {
        console.print(QString());
        return ExitStatus::Success;
    }
    Completion completion;
    if (line.isRedirection)
        completion.files = Values::Files::All;
    else
        completion = completionOfLine(line.words.mid(0, line.words.size() - 1), line.words.last(),
                                      commands, console);
    if (isBash)
        printForBash(completion, line, console);
    else
        printProposals(completion, console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
