// An entry of a library removed.

#include <cli/commands/Command.h>

#include <cli/library/LibraryChange.h>
#include <cli/library/LibraryOptions.h>
#include <cli/library/RecordProposals.h>
#include <cli/library/UnknownName.h>
#include <cli/run/LineReader.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/library/DeliveredRecords.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QFile>

namespace KelStd::cli {

namespace {

const QString forceOption = QStringLiteral("force");

/// An entry that is to be removed.
struct Entry
{
    RecordKind kind;
    QString name;

    QString text() const
    {
        return QStringLiteral("the %1 %2").arg(library::titleOf(kind), inQuotes(name));
    }
};

ExitStatus refuse(const Entry &entry, const QString &reason, Console &console)
{
    console.report(QStringLiteral("cannot remove %1: %2").arg(entry.text(), reason));
    return ExitStatus::SomeFailed;
}

/// Whether somebody at the terminal says yes.
bool isConfirmed(const Entry &entry, const QString &reason, bool comesBack, Console &console)
{
    console.report(QStringLiteral("%1: %2; %3. Remove it? (y or n)")
                       .arg(entry.text(), reason,
                            comesBack ? QStringLiteral("'kelstd library restore' brings it back")
                                      : QStringLiteral("nothing brings it back")));
    console.flush();
    LineReader lines;
    QString error;
    QByteArray line;
    if (!lines.open(QStringLiteral("-"), error) || lines.next(line) != LineReader::Result::Line)
        return false;
    const QByteArray answer = line.trimmed().toLower();
    return answer == "y" || answer == "yes";
}

/// Whether an entry that was delivered, or is a standard one, may go.
bool mayGo(const Entry &entry, const CommandLine &line, Console &console)
{
    const bool isDelivered =
        library::isDelivered(LibraryDirectory::delivered(), entry.kind, entry.name);
    if (line.isSet(forceOption) || (entry.kind != RecordKind::Standard && !isDelivered))
        return true;
    const QString reason = isDelivered ? QStringLiteral("it is a delivered one")
                                       : QStringLiteral("it is a standard system");
    if (!streams::isTerminal(streams::standardInput)
        || !streams::isTerminal(streams::standardError)) {
        refuse(entry, reason + QLatin1String("; --force removes it"), console);
        return false;
    }
    if (isConfirmed(entry, reason, isDelivered, console))
        return true;
    console.report(QStringLiteral("%1 stays").arg(entry.text()));
    return false;
}

/// The registry removes no standard systems: their file goes, which holds nothing else.
ExitStatus removeStandard(const LibraryDirectory &library, const Entry &entry, Console &console)
{
    if (const auto several = library::ambiguityFailure(library, entry.kind, entry.name))
        return refuse(entry, shown(several.text), console);
    QFile file(library::documentsHolding(library, entry.kind, entry.name).value(0));
    if (!file.remove()) {
        console.report(
            QStringLiteral("cannot remove %1: %2").arg(file.fileName(), file.errorString()));
        return ExitStatus::Environment;
    }
    console.printChange(QStringLiteral("removed %1: %2").arg(entry.text(), file.fileName()));
    return ExitStatus::Success;
}

ExitStatus removeRegistered(const LibraryDirectory &library, const Entry &entry, Console &console)
{
    const QString file = library::recordFile(library, entry.kind, entry.name);
    if (!library::removeRecord(entry.kind, entry.name)) {
        console.report(StandardLibrary::getInstance().lastFailure().text);
        return ExitStatus::Environment;
    }
    console.printChange(QStringLiteral("removed %1: %2").arg(entry.text(), file));
    return ExitStatus::Success;
}

} // namespace

ExitStatus runLibraryRemove(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME"),
                     QStringLiteral("Removes a system, an ellipsoid or a projection of a library "
                                    "with its file."),
                     QStringLiteral("A standard system, and what was delivered, is removed after a "
                                    "question, or with\n--force where nobody can be asked; "
                                    "'kelstd library restore' brings back what was\n"
                                    "delivered.\n\n")
                         + changeStatusHelp());
    line.setPositionals({recordValues()});
    line.setExamples(QStringLiteral("kelstd library remove \"My site\""),
                     QStringLiteral("kelstd library remove --force \"Amersfoort / RD New\""));
    addDirectoryOption(line);
    addOwnKindOption(line, QStringLiteral("the only kind that has the name"));
    line.addOption({forceOption, QStringLiteral("Remove a delivered entry without a question.")});
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("the NAME is missing"), console);
    const QString name = library::withoutMarks(line.positionals().constFirst());
    const auto library = openForChange(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;

    auto holding = library::kindsHolding(name, kinds);
    if (holding.isEmpty()) {
        console.report(unknownName(name, kinds, line));
        return ExitStatus::SomeFailed;
    }
    if (holding.size() > 1 && holding.contains(RecordKind::Custom))
        holding.removeAll(RecordKind::Standard);
    if (holding.size() > 1) {
        return line.refuse(QStringLiteral("%1 is %2 and %3; say which with --kind")
                               .arg(inQuotes(name), library::withArticle(holding.at(0)),
                                    library::withArticle(holding.at(1))),
                           console);
    }
    const Entry entry = {holding.constFirst(), name};
    const bool isStandard = entry.kind == RecordKind::Standard;
    if (!isStandard && !isChangeable(library->directory, entry.kind, name, "remove", console))
        return ExitStatus::SomeFailed;
    if (!mayGo(entry, line, console))
        return ExitStatus::SomeFailed;
    return isStandard ? removeStandard(library->directory, entry, console)
                      : removeRegistered(library->directory, entry, console);
}

} // namespace KelStd::cli
